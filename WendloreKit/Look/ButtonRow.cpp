#include "Look/ButtonRow.h"

#include "Look/FlatButton.h"
#include "Look/Metrics.h"
#include "Look/Separator.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace wendlore {

ButtonRow::ButtonRow(QWidget* parent)
    : QWidget(parent)
    , m_more(new IconButton(u"chevron.right.2"_s, u"Fler kommandon"_s, u"Fler kommandon"_s, this))
{
    m_more->setMenu(new QMenu(m_more));
    m_more->hide();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ButtonRow::add(QWidget* control, QAction* action)
{
    control->setParent(this);
    control->show();
    m_items.push_back({control, action});
    m_more->raise(); // comes last for the keyboard as well
    setTabOrder(control, m_more);
    arrange();
    updateGeometry();
}

void ButtonRow::addSeparator()
{
    auto* separator = new Separator(this);
    separator->show();
    m_items.push_back({separator, nullptr});
}

void ButtonRow::arrange()
{
    const std::size_t shown = countThatFits();
    m_more->menu()->clear();
    int x = 0;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const auto& [control, action] = m_items[i];
        const QSize size = control->sizeHint().expandedTo(control->minimumSize());
        control->setVisible(i < shown);
        if (i < shown) {
            control->setGeometry(x, (height() - size.height()) / 2, size.width(), size.height());
            x += size.width() + metrics::toolbarSpacing;
        } else if (action) {
            m_more->menu()->addAction(action);
        } else {
            m_more->menu()->addSeparator();
        }
    }
    m_more->move(x, (height() - m_more->height()) / 2);
    m_more->setVisible(shown < m_items.size());
}

QSize ButtonRow::sizeHint() const
{
    int width = 0;
    for (const Item& item : m_items)
        width += item.control->sizeHint().expandedTo(item.control->minimumSize()).width() +
                 metrics::toolbarSpacing;
    return {std::max(0, width - metrics::toolbarSpacing), metrics::buttonHeight};
}

QSize ButtonRow::minimumSizeHint() const
{
    return m_more->sizeHint();
}

void ButtonRow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

std::size_t ButtonRow::countThatFits() const
{
    if (sizeHint().width() <= width())
        return m_items.size();
    int room = width() - m_more->sizeHint().width();
    std::size_t count = 0;
    for (; count < m_items.size(); ++count) {
        const QWidget& control = *m_items[count].control;
        room -= control.sizeHint().expandedTo(control.minimumSize()).width() + metrics::toolbarSpacing;
        if (room < 0)
            break;
    }
    return count;
}

} // namespace wendlore
