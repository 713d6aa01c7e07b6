#pragma once

#include <QDialog>

class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace wendlore {

/// A small dialog that belongs to one window: a title, what is asked, and buttons at its end. It goes away by
/// itself once it is closed.
class Sheet : public QDialog
{
    Q_OBJECT

public:
    Sheet(const QString& title, QWidget* parent);

protected:
    /// Where the sheet's own contents go, between title and buttons.
    [[nodiscard]] QVBoxLayout& contents() { return *m_contents; }
    /// A field to type into, named by what stands in it while it is empty.
    [[nodiscard]] QLineEdit* makeField(const QString& placeholder);
    /// Adds a button at the end of the row.
    QPushButton* addButton(const QString& text);
    /// Adds "Avbryt", which closes the sheet without doing anything, as Escape does.
    QPushButton* addCancelButton();

    /// The Enter key presses the button that has the focus, else the default one.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QVBoxLayout* m_contents;
    QHBoxLayout* m_buttons;
};

} // namespace wendlore
