#include "Previews/WebFindBar.h"

#include "Look/Drawing.h"
#include "Look/Metrics.h"

#include <QEvent>
#include <QWebEngineFindTextResult>
#include <QWebEngineView>

#include <algorithm>

namespace wendlore {

namespace {

constexpr int barWidth = 430;
constexpr int fromEdge = 10;
constexpr int fromScrollBar = 24;

} // namespace

WebFindBar::WebFindBar(QWebEngineView& view)
    : FindBar(&view)
    , m_view(view)
{
    view.installEventFilter(this);
    connect(view.page(), &QWebEnginePage::findTextFinished, this,
            [this](const QWebEngineFindTextResult& result) {
                showPlace(result.activeMatch(), result.numberOfMatches());
            });
    connect(this, &FindBar::closed, &view, [&view] { view.setFocus(); });
}

void WebFindBar::search(const QString& words)
{
    m_words = words;
    m_view.page()->findText(words);
    if (words.isEmpty())
        showPlace(0, 0);
}

void WebFindBar::step(int way)
{
    if (!m_words.isEmpty())
        m_view.page()->findText(m_words,
                                way < 0 ? QWebEnginePage::FindBackward : QWebEnginePage::FindFlags());
}

bool WebFindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        standInTheCorner();
    return FindBar::eventFilter(watched, event);
}

void WebFindBar::showEvent(QShowEvent*)
{
    standInTheCorner();
}

void WebFindBar::standInTheCorner()
{
    const int width = std::min(barWidth, m_view.width());
    setGeometry(std::max(0, m_view.width() - width - fromScrollBar), fromEdge, width, sizeHint().height());
}

void WebFindBar::paintEvent(QPaintEvent*)
{
    drawFloatingGround(*this);
}

} // namespace wendlore
