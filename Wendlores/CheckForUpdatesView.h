#pragma once

#include <QObject>

class QAction;
class QMenu;
class QWidget;

namespace wendlore {

class FileURL;
class Updater;
class Workspace;
struct Release;

/// What the update command shows: whether a check may be started now.
class CheckForUpdatesViewModel final : public QObject
{
    Q_OBJECT

public:
    explicit CheckForUpdatesViewModel(Updater& updater, QObject* parent = nullptr);

    [[nodiscard]] bool canCheckForUpdates() const { return m_canCheckForUpdates; }

Q_SIGNALS:
    void canCheckForUpdatesChanged();

private:
    bool m_canCheckForUpdates = false;
};

/// The command that looks for updates, and the dialogs that tell what came of it.
class CheckForUpdatesView final : public QObject
{
    Q_OBJECT

public:
    /// Adds the command to `menu`, after its first entry.
    CheckForUpdatesView(QMenu& menu, Updater& updater, Workspace& workspace, QWidget& window);

private:
    void offer(const Release& release);
    void offerToOpen(const FileURL& package);

    void tell(const QString& title, const QString& text);

    CheckForUpdatesViewModel m_viewModel;
    Updater& m_updater;
    Workspace& m_workspace;
    QWidget& m_window;
};

} // namespace wendlore
