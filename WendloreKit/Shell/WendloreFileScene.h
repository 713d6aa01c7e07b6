#pragma once

#include "Shell/WindowGeometry.h"

#include "Vault/FileURL.h"

#include <QObject>

#include <functional>
#include <set>
#include <vector>

namespace wendlore {

class AppState;
class WendloreFileWindowView;

/// The group of windows that show one file each. A file has one window at most: opening it again brings that
/// one forward. What happens to files in one window is told to all others and to the main window's state, and
/// the windows that are open when the program ends come back with `restore`.
class WendloreFileScene final : public QObject
{
    Q_OBJECT

public:
    /// Writes what the main window still holds of a file, and then calls the second argument.
    using SettleMain = std::function<void(const FileURL& file, std::function<void()> then)>;

    WendloreFileScene(AppState& mainState, SettleMain settleMain, QObject* parent = nullptr);
    ~WendloreFileScene() override;

    /// The windows in the order in which they were opened.
    [[nodiscard]] const std::vector<WendloreFileWindowView*>& windows() const { return m_windows; }

    void open(const FileURL& file);
    void dismiss(const FileURL& file);
    /// Opens the windows that the last run left.
    void restore();
    /// Closes every window because the program ends; they come back at its next start.
    void closeForQuitting();

Q_SIGNALS:
    void windowMade(wendlore::WendloreFileWindowView& window);
    /// Windows came, went or changed their file.
    void windowsChanged();
    /// A link in one of the windows leads to a file that it does not show.
    void fileRequested(const wendlore::FileURL& file);

private:
    void show(const std::optional<FileURL>& file, const std::optional<WindowGeometry>& geometry);
    void forget(WendloreFileWindowView* window);
    void keepWindows() const;
    [[nodiscard]] WendloreFileWindowView* windowOf(const FileURL& file) const;
    /// Passes what happens to files in `state` on to all other states.
    void relay(AppState& state);
    void passTypographyOn();
    void tellOthers(const AppState& origin, const std::function<void(AppState&)>& tell);

    AppState& m_mainState;
    SettleMain m_settleMain;
    std::vector<WendloreFileWindowView*> m_windows;
    /// Files whose window waits for the main window to have written them.
    std::set<FileURL> m_awaited;
    bool m_isRelaying = false;
    /// What is closed because the program ends. It may yet go on: text that can be kept nowhere holds it.
    std::set<const WendloreFileWindowView*> m_leaving;
};

} // namespace wendlore
