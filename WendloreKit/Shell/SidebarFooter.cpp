#include "Shell/SidebarFooter.h"

#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "State/Workspace.h"

#include <QPainter>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int feedbackIcon = 14;

/// A line of small print in the colours of the window around it.
class SmallPrint final : public QWidget
{
public:
    SmallPrint(QString text, QWidget* parent)
        : QWidget(parent)
        , m_text(std::move(text))
    {
        setFont(sized(font(), metrics::smallSize));
        setFixedHeight(fontMetrics().height());
        setAccessibleName(m_text);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(Colors::of(palette()).faintText);
        painter.drawText(rect().adjusted(2 * metrics::inset, 0, 0, 0), Qt::AlignVCenter, m_text);
    }

private:
    QString m_text;
};

} // namespace

SidebarFooter::SidebarFooter(Workspace& workspace, QWidget* parent)
    : QWidget(parent)
{
    auto* feedback = new LabelButton(u"Rapportera fel & önskemål"_s, Tone::muted, this);
    feedback->setFont(sized(font(), metrics::noticeSize));
    feedback->setLeadingSymbol(u"exclamationmark.bubble"_s, feedbackIcon);
    feedback->describe(feedback->text(), {});
    connect(feedback, &LabelButton::clicked, this,
            [&workspace] { workspace.open(QUrl(QStringLiteral(WENDLORE_FEEDBACK_ADDRESS))); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 12);
    layout->setSpacing(1);
    auto* inset = new QVBoxLayout;
    inset->setContentsMargins(metrics::inset, 0, metrics::inset, 0);
    inset->addWidget(feedback, 0, Qt::AlignLeft);
    layout->addLayout(inset);
    layout->addWidget(new SmallPrint(QStringLiteral(WENDLORE_VERSION " · " WENDLORE_BUILD), this));
}

void SidebarFooter::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(metrics::inset, 0, width() - 2 * metrics::inset, 1, Colors::of(palette()).line);
}

} // namespace wendlore
