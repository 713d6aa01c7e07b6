#pragma once

#include <QObject>

#include <functional>

class QMenu;

namespace wendlore {

class FileURL;
class NoticeBar;
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

/// The command that looks for updates, and the notice that tells what came of it: by then the user has long
/// gone on writing.
class CheckForUpdatesView final : public QObject
{
    Q_OBJECT

public:
    /// Adds the command to `menu`, after its first entry.
    CheckForUpdatesView(QMenu& menu, Updater& updater, Workspace& workspace, NoticeBar& notice);

private:
    void offer(const Release& release);
    void download(const Release& release);
    void offerToOpen(const FileURL& package);
    void tell(const QString& title, const QString& text);
    /// Adds a button that hides the notice, and then does what there is to do.
    void addAnswer(const QString& text, const std::function<void()>& act = {});

    CheckForUpdatesViewModel m_viewModel;
    Updater& m_updater;
    Workspace& m_workspace;
    NoticeBar& m_notice;
};

} // namespace wendlore
