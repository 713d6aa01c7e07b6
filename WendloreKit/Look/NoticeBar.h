#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace wendlore {

/// Says something above what the user works with, and stays there until it is answered. It is for what comes
/// when nobody asked just now: a window that opened for it would take the keys that are being typed, and the
/// first space among them would press its button.
class NoticeBar : public QWidget
{
    Q_OBJECT

public:
    explicit NoticeBar(const QString& symbol, QWidget* parent = nullptr);

    /// Shows the bar with these texts, in place of what it said before. Assistive technology is told.
    void tell(const QString& title, const QString& message);
    /// Adds a button behind the others. It is reached by a click or by Tab, and never has the focus by
    /// itself.
    QPushButton* addButton(const QString& text);
    void removeButtons();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_title;
    QLabel* m_message;
    QHBoxLayout* m_row;
};

} // namespace wendlore
