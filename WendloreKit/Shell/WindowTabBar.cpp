#include "Shell/WindowTabBar.h"

#include "Shell/Windows.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "Look/ToolTip.h"

#include <QPainter>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr int tabMinimum = 90;

} // namespace

WindowTabBar::WindowTabBar(QWidget* parent)
    : QTabBar(parent)
{
    setAccessibleName(u"Flikrad"_s);
    setDrawBase(false);
    setExpanding(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideMiddle);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QTabBar::currentChanged, this, &WindowTabBar::leaveFor);
}

void WindowTabBar::setWindows(const QList<QWidget*>& windows)
{
    const QSignalBlocker blocker(this);
    for (QWidget* window : std::as_const(m_windows))
        disconnect(window, &QWidget::windowTitleChanged, this, nullptr);
    while (count() > windows.size())
        removeTab(count() - 1);
    while (count() < windows.size())
        addTab({});
    m_windows = windows;
    for (int index = 0; index < count(); ++index) {
        QWidget* window = windows[index];
        const auto showTitle = [this, window] {
            setTabText(int(m_windows.indexOf(window)), windowName(*window));
            setTabToolTip(int(m_windows.indexOf(window)), plainToolTip(windowName(*window)));
        };
        connect(window, &QWidget::windowTitleChanged, this, showTitle);
        showTitle();
    }
    setCurrentIndex(0);
}

void WindowTabBar::leaveFor(int index)
{
    if (index <= 0)
        return;
    QWidget& window = *m_windows[index];
    const QSignalBlocker blocker(this);
    setCurrentIndex(0);
    bringForward(window);
}

QSize WindowTabBar::tabSizeHint(int index) const
{
    return {std::max(QTabBar::tabSizeHint(index).width(), tabMinimum), metrics::rowHeight};
}

QSize WindowTabBar::minimumTabSizeHint(int) const
{
    return {tabMinimum, metrics::rowHeight};
}

void WindowTabBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Colors& colors = Colors::of(palette());
    painter.fillRect(rect(), colors.side);
    for (int index = 0; index < count(); ++index) {
        const QRect tab = tabRect(index);
        const bool isCurrent = index == currentIndex();
        if (isCurrent)
            painter.fillRect(tab, colors.paper);
        painter.fillRect(tab.right(), tab.top(), 1, tab.height(), colors.line);
        painter.setPen(isCurrent ? colors.text : colors.muted);
        const QRect place = tab.adjusted(metrics::inset, 0, -metrics::inset, 0);
        painter.drawText(place, Qt::AlignCenter,
                         fontMetrics().elidedText(tabText(index), Qt::ElideMiddle, place.width()));
        if (isCurrent && hasFocus()) {
            painter.setPen(QPen(colors.accent, metrics::focusRing));
            painter.drawRect(tab.adjusted(1, 1, -2, -2));
        }
    }
    painter.fillRect(0, height() - 1, width(), 1, colors.line);
}

} // namespace wendlore
