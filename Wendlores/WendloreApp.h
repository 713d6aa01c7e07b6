#pragma once

#include "Wendlores/MainWindow.h"
#include "Wendlores/Updater.h"

#include "Shell/Appearance.h"
#include "Shell/WendloreFileScene.h"
#include "State/AppState.h"

#include <QObject>
#include <QUrl>

namespace wendlore {

/// The whole application: the main window's state, its look, the main window and the windows of single files.
class WendloreApp final : public QObject
{
    Q_OBJECT

public:
    WendloreApp(const Services& services, SystemAppearance& system, Style& style,
                const Updater::Configuration& updates);

    [[nodiscard]] AppState& appState() { return m_appState; }
    [[nodiscard]] MainWindow& mainWindow() { return m_mainWindow; }
    [[nodiscard]] WendloreFileScene& fileScene() { return m_fileScene; }

    /// Shows the main window and those of single files that the last run left.
    void start();
    /// Shows a file or folder, where it is edited.
    void show(const FileURL& location);
    /// Opens what somebody else handed over: files, folders, links of the program's own scheme.
    void open(const QList<QUrl>& addresses);
    /// Writes everything and closes all windows; those of single files come back at the next start.
    void quit();

private:
    void equip(WendloreFileWindowView& window);
    void showWindows();
    void showLight();

    Updater m_updater;
    AppState m_appState;
    Appearance m_appearance;
    MainWindow m_mainWindow;
    WendloreFileScene m_fileScene;
};

} // namespace wendlore
