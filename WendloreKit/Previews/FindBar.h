#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace wendlore {

/// The bar to search a file with: what is typed in its field, and the way from one place to the next. What
/// derives from it knows how the file is searched.
class FindBar : public QWidget
{
    Q_OBJECT

public:
    /// The bar of the file that is seen in a window, open or not; null when there is none.
    [[nodiscard]] static FindBar* seenIn(const QWidget& window);

    /// Shows the bar, ready to type in.
    void open();
    /// Goes on to the next place, or for -1 back to the one before.
    virtual void step(int way) = 0;

Q_SIGNALS:
    void closed();

protected:
    explicit FindBar(QWidget* parent);

    /// Searches for `words` from the beginning; for none it only forgets what was found.
    virtual void search(const QString& words) = 0;
    /// Says which of how many places is shown, from 1. With none it says so once the search has come to its
    /// end.
    void showPlace(int current, int count, bool isAtItsEnd = true);

    void keyPressEvent(QKeyEvent* event) override;

private:
    void close();
    [[nodiscard]] QString words() const;

    QLineEdit* m_field;
    QLabel* m_count;
};

} // namespace wendlore
