#pragma once

#include <QWidget>

#include <vector>

class QAction;

namespace wendlore {

class IconButton;

/// Controls side by side. Those that find no room, from the last on, are offered in a menu at the row's end.
class ButtonRow final : public QWidget
{
    Q_OBJECT

public:
    explicit ButtonRow(QWidget* parent = nullptr);

    /// Adds `control`; in the menu `action` stands for it. Takes the control over, not the action.
    void add(QWidget* control, QAction* action);
    /// A hairline before what is added next.
    void addSeparator();
    /// Places the controls anew, after one has changed its size.
    void arrange();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Item final
    {
        QWidget* control;
        QAction* action; ///< none for a separator
    };

    [[nodiscard]] std::size_t countThatFits() const;

    std::vector<Item> m_items;
    IconButton* m_more;
};

} // namespace wendlore
