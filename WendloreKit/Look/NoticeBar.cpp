#include "Look/NoticeBar.h"

#include "Look/Colors.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/SymbolView.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace wendlore {

namespace {

constexpr int margin = 16;
constexpr int lineSpacing = 2;

} // namespace

NoticeBar::NoticeBar(const QString& symbol, QWidget* parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
    , m_message(new QLabel(this))
    , m_row(new QHBoxLayout(this))
{
    m_title->setTextFormat(Qt::PlainText);
    m_title->setFont(sized(font(), metrics::textSize, QFont::DemiBold));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    auto* text = new QVBoxLayout;
    text->setSpacing(lineSpacing);
    text->addWidget(m_title);
    text->addWidget(m_message);
    m_row->setContentsMargins(margin, metrics::toolbarMargin, margin, metrics::toolbarMargin);
    m_row->setSpacing(metrics::toolbarMargin);
    m_row->addWidget(new SymbolView(symbol, metrics::icon, this), 0, Qt::AlignTop);
    m_row->addLayout(text, 1);
    hide();
}

void NoticeBar::tell(const QString& title, const QString& message)
{
    m_title->setText(title);
    m_message->setText(message);
    setAccessibleName(title);
    setAccessibleDescription(message);
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QPushButton* NoticeBar::addButton(const QString& text)
{
    auto* button = new QPushButton(text, this);
    button->setFocusPolicy(Qt::TabFocus);
    m_row->addWidget(button, 0, Qt::AlignVCenter);
    return button;
}

void NoticeBar::removeButtons()
{
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->hide();
        button->deleteLater(); // its click may be what brought us here
    }
}

void NoticeBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Colors& colors = Colors::of(palette());
    painter.fillRect(rect(), colors.side);
    painter.fillRect(0, height() - 1, width(), 1, colors.line);
}

} // namespace wendlore
