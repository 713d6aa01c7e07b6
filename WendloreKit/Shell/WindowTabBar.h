#pragma once

#include <QTabBar>

namespace wendlore {

/// The main window's row of tabs: one for itself and one for each window of a single file. A click brings
/// that window forward; the main window's own tab always is the current one here.
class WindowTabBar final : public QTabBar
{
    Q_OBJECT

public:
    explicit WindowTabBar(QWidget* parent = nullptr);

    /// Shows `windows`, the main window's first.
    void setWindows(const QList<QWidget*>& windows);

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override;

private:
    void leaveFor(int index);

    QList<QWidget*> m_windows;
};

} // namespace wendlore
