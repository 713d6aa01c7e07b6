#pragma once

#include <QSplitter>

namespace wendlore {

class AppState;
class DetailView;

/// The main window's content: the sidebar and, beside it, what is selected there.
class ContentView final : public QSplitter
{
    Q_OBJECT

public:
    /// Takes `sidebar` over.
    ContentView(AppState& state, QWidget* sidebar, QWidget* parent = nullptr);

    [[nodiscard]] DetailView& detail() const { return *m_detail; }

private:
    DetailView* m_detail;
};

} // namespace wendlore
