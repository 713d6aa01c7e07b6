#include "Look/NoticeView.h"

#include "Look/Colors.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/SymbolView.h"
#include "Look/WrappedLabel.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace wendlore {

namespace {

constexpr int spacing = 16;
constexpr int smallSpacing = 14;
constexpr int headlineSize = 15;
constexpr int margin = 32;
constexpr int textWidth = 360;

} // namespace

NoticeView::NoticeView(const QString& symbol, int symbolSize, QWidget* parent)
    : QWidget(parent)
    , m_symbol(new SymbolView(symbol, symbolSize, this))
    , m_title(new WrappedLabel(textWidth, this))
    , m_message(new WrappedLabel(textWidth, this))
    , m_stack(new QVBoxLayout(this))
{
    m_message->setForegroundRole(mutedRole);
    m_title->hide();
    m_message->hide();
    m_stack->setContentsMargins(margin, margin, margin, margin);
    setSize(Size::large);
    m_stack->addStretch();
    m_stack->addWidget(m_symbol, 0, Qt::AlignHCenter);
    m_stack->addWidget(m_title, 0, Qt::AlignHCenter);
    m_stack->addWidget(m_message, 0, Qt::AlignHCenter);
    m_stack->addStretch();
}

void NoticeView::setSize(Size size)
{
    const bool isLarge = size == Size::large;
    m_title->setFont(sized(font(), isLarge ? metrics::titleSize : headlineSize, QFont::DemiBold));
    m_stack->setSpacing(isLarge ? spacing : smallSpacing);
}

void NoticeView::setSymbol(const QString& symbol)
{
    m_symbol->setName(symbol);
}

void NoticeView::setTitle(const QString& title)
{
    m_title->setText(title);
    m_title->show();
}

void NoticeView::setMessage(const QString& message)
{
    m_message->setText(message);
    m_message->show();
}

QPushButton* NoticeView::addButton(const QString& text)
{
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    m_stack->insertWidget(m_stack->count() - 1, button, 0, Qt::AlignHCenter);
    return button;
}

} // namespace wendlore
