#pragma once

#include <QMainWindow>

namespace wendlore {

class AppState;
class ContentView;

/// The program's main window. Closing it first waits for the keys that were typed last, and writes them.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(AppState& state, QWidget* parent = nullptr);

    [[nodiscard]] ContentView& content() const { return *m_content; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Closing { notAsked, waiting, settled };

    void restoreGeometryAndSplit();
    void keepGeometryAndSplit() const;
    void showTitle();

    AppState& m_state;
    ContentView* m_content;
    Closing m_closing = Closing::notAsked;
};

} // namespace wendlore
