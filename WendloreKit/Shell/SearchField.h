#pragma once

#include <QLineEdit>

namespace wendlore {

class IconButton;

/// Where the user types what to look for, with a button that empties it while it holds text. Escape asks to
/// end the search, Down to go to the results, and Enter to open one.
class SearchField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

Q_SIGNALS:
    void endRequested();
    void resultsRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    IconButton* m_clear;
};

} // namespace wendlore
