#include "Shell/SearchField.h"

#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"

#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int fieldHeight = 30;
constexpr int clearSize = 24;

} // namespace

SearchField::SearchField(QWidget* parent)
    : QLineEdit(parent)
    , m_clear(new IconButton(u"xmark.circle.fill"_s, u"Rensa sökningen"_s, u"Rensa sökningen"_s, this))
{
    setFont(sized(font(), metrics::textSize));
    setFixedHeight(fieldHeight);
    setPlaceholderText(u"Sök i bucketen"_s);
    setAccessibleName(u"Sök i bucketen"_s);
    setTextMargins(metrics::icon + metrics::inset, 0, clearSize, 0);
    m_clear->setFixedSize(clearSize, clearSize);
    m_clear->setCursor(Qt::ArrowCursor);
    m_clear->hide();
    connect(m_clear, &IconButton::clicked, this, [this] {
        clear();
        setFocus();
    });
    connect(this, &QLineEdit::textChanged, m_clear,
            [this](const QString& text) { m_clear->setVisible(!text.isEmpty()); });
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        Q_EMIT endRequested();
        return;
    case Qt::Key_Down:
        Q_EMIT resultsRequested();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void SearchField::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    drawSymbol(painter, QRect(metrics::inset, 0, metrics::icon, height()), u"magnifyingglass"_s,
               Colors::of(palette()).muted, metrics::icon - 2);
}

void SearchField::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    const int margin = (height() - clearSize) / 2;
    m_clear->move(width() - clearSize - margin, margin);
}

} // namespace wendlore
