#pragma once

// The workspace: one observable object, its topics in small files.
//
//   fields, setters, start-up, zoom     State/AppState.cpp
//   what is kept between runs           State/AppState+Persistence.cpp
//   buckets                             State/AppState+Buckets.cpp
//   back and forward                    State/AppState+History.cpp
//   typography                          State/AppState+Typography.cpp
//   the open bucket's tree              Vault/AppState+Tree.cpp
//   new notes and folders, deleting     Vault/AppState+Files.cpp
//   renaming, moving                    Vault/AppState+Moves.cpp
//   following links                     Vault/AppState+Links.cpp
//   search                              Vault/AppState+Search.cpp

#include "State/AppTheme.h"
#include "State/BucketTree.h"
#include "State/NavigationHistory.h"
#include "State/Services.h"
#include "State/SyncedVaultEntry.h"
#include "State/VaultUIState.h"
#include "Typography/TypographyTheme.h"
#include "Vault/FileNode.h"
#include "Vault/SearchHit.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace wendlore {

class ScheduledTask;
class UndoRegistrar;
class WebEditorController;

/// The whole workspace: the registered buckets, the open one, its tree, the selection, typography, zoom and
/// history. Views read it, observe its signals and call its operations; all of it lives on the main thread.
class AppState final : public QObject
{
    Q_OBJECT

public:
    static constexpr double minimumZoom = 0.5;
    static constexpr double maximumZoom = 3.0;
    static constexpr double zoomStep = 0.1;

    /// Restores what the last run left: theme, zoom, buckets, the open bucket and its selection.
    explicit AppState(const Services& services, QObject* parent = nullptr);
    ~AppState() override;

    [[nodiscard]] const Services& services() const { return m_services; }

    // Observable facts.
    [[nodiscard]] const std::vector<FileURL>& vaults() const { return m_vaults; }
    [[nodiscard]] const std::optional<FileURL>& vaultURL() const { return m_vaultURL; }
    /// Read when it is first asked for, if that was not done in the background before.
    [[nodiscard]] const std::vector<FileNode>& fileTree() const { return m_tree.nodes(); }
    [[nodiscard]] bool isFileTreeRead() const { return m_tree.isRead(); }
    [[nodiscard]] const std::optional<FileURL>& selectedFile() const { return m_selectedFile; }
    [[nodiscard]] const std::optional<FileURL>& selectedFolder() const { return m_selectedFolder; }
    [[nodiscard]] const QString& searchQuery() const { return m_searchQuery; }
    [[nodiscard]] const std::vector<SearchHit>& searchResults() const { return m_searchResults; }
    [[nodiscard]] const std::optional<FileURL>& pendingFocusFile() const { return m_pendingFocusFile; }
    /// Buckets of the user's other devices that are not linked on this one.
    [[nodiscard]] const std::vector<SyncedVaultEntry>& pendingVaults() const { return m_pendingVaults; }
    [[nodiscard]] const TypographyTheme& typographyTheme() const { return m_typographyTheme; }
    [[nodiscard]] double editorZoom() const { return m_editorZoom; }
    [[nodiscard]] AppTheme theme() const { return m_theme; }
    [[nodiscard]] const NavigationHistory& history() const { return m_history; }
    [[nodiscard]] WebEditorController& editorController() const { return *m_editorController; }

    /// Shows `file` in the detail area; records the history and keeps the selection.
    void setSelectedFile(const std::optional<FileURL>& file);
    /// Makes `folder` the target of new notes and folders; keeps the selection.
    void setSelectedFolder(const std::optional<FileURL>& folder);
    void setPendingFocusFile(const std::optional<FileURL>& file);
    void setTheme(AppTheme theme);
    void setSearchQuery(const QString& query);

    // Zoom.
    /// Rounds to tenths, keeps within the allowed range, stores, and shows it in the editor page.
    void setEditorZoom(double zoom);
    void zoomIn();
    void zoomOut();
    void resetZoom();

    // What is kept between runs.
    void persistSelection();
    void restoreSelection(const FileURL& bucket);
    [[nodiscard]] VaultUIStates loadUIStates() const;
    void saveUIStates(const VaultUIStates& states);
    /// The bucket's own width, else the last one set in any bucket, else nothing.
    [[nodiscard]] std::optional<double> savedSidebarWidth(const FileURL& bucket) const;
    void saveSidebarWidth(double width, const FileURL& bucket);

    // Buckets.
    void restoreVaults();
    /// Lets the user choose a folder, and adds and opens it.
    void pickVault();
    /// Registers a folder and opens it.
    void addVault(const FileURL& folder);
    void switchVault(const FileURL& bucket);
    /// The bucket that `file` lies in: the open one where that holds it, else the first of the registered
    /// ones.
    [[nodiscard]] std::optional<FileURL> bucketHolding(const FileURL& file) const;
    /// Opens the bucket that holds `file`, or none, for a window of that file alone: the next start still
    /// opens the bucket that the user chose last.
    void openBucketOf(const FileURL& file);
    /// Forgets a bucket, and on the other devices no longer offers it; its files are untouched.
    void removeBucket(const FileURL& bucket);
    /// Makes `pendingVaults` what the cloud says now.
    void refreshPendingVaults();

    // History.
    void goBack();
    void goForward();

    // Typography.
    void applyTypographyTheme(const TypographyTheme& theme);
    /// Lets the user choose a theme file; a file that is no theme changes nothing.
    void importTypographyTheme();

    // The open bucket's tree.
    void reloadTree();
    /// The same without waiting, for a large bucket; calls `then` when the tree is what was found on disk.
    void reloadTreeInBackground(std::function<void()> then);
    /// The same when something was made in `folder` or taken away: that is shown at once.
    void reloadTreeAround(const FileURL& folder);
    /// The same when `from` was moved to `to`.
    void reloadTreeAfterMove(const FileURL& from, const FileURL& to);
    /// The directory that receives new notes and folders: the selected folder, else the selected file's, else
    /// the bucket. One that is gone from the disk does not count: nothing could be kept there.
    [[nodiscard]] std::optional<FileURL> activeDirectory() const;

    // Files. Nothing here tells the user of a failure.
    /// Creates an empty note ("Ny not.md", then numbered) in `folder` or the active directory and selects it.
    void newNote(const std::optional<FileURL>& folder = std::nullopt);
    /// Creates the note `name` (which may hold folders, made when missing) below `folder`, with its name as
    /// heading, and selects it. What a file of that name holds is replaced, and kept as a recovered text.
    void createNote(const QString& name, const FileURL& folder);
    /// Creates a folder ("Ny mapp", then numbered) in `folder`.
    void newFolder(const FileURL& folder);
    /// Renames an item; its extension is kept. Does nothing for a blank name, a taken one or one with a "/".
    void renameFile(const FileURL& item, const QString& newName);
    /// Moves an item into `folder`, and leaves the way back in `undo`. Does nothing when the name is taken
    /// there, or for a folder that would end inside itself.
    void moveFile(const FileURL& item, const FileURL& folder, UndoRegistrar* undo = nullptr);
    /// Puts an item into the trash, or removes it where there is none.
    void deleteFile(const FileURL& item);
    /// Copies an outside file into the bucket's "assets" folder. Gives the link to it from the bucket's root.
    [[nodiscard]] std::optional<QString> importAsset(const FileURL& file);

    // Links.
    /// Follows a link inside a note that is no web address. `allowCreate` makes a missing note.
    void openLink(const QString& text, const std::optional<FileURL>& linkingNote, bool allowCreate);
    /// Selects the note of that name, wherever it lies, or makes it in the bucket's root.
    void openNote(const QString& name);
    /// Shows a file that a shown document links to, or opens it with its own program.
    void openLinkedFile(const FileURL& file);
    /// Selects a file of the open bucket, as a host asks for it.
    void revealFile(const FileURL& file);

    // Search.
    /// Replaces the results by the notes that hold the query, as they are on disk now; blank finds nothing.
    void performSearch();
    /// The same without waiting: the results come when they are found, those of the last query only.
    void performSearchInBackground();
    /// Opens a note that was found, where it shows what was looked for.
    void openSearchHit(const FileURL& note);
    /// What was looked for when `note` was opened; asked once, and empty for any other note.
    [[nodiscard]] QString takeSoughtText(const FileURL& note);
    /// Whether results are still to come.
    [[nodiscard]] bool isSearching() const { return m_search != nullptr; }
    /// The names of the bucket's Markdown notes, without their extension, each once, in order.
    [[nodiscard]] QStringList noteNames() const;

Q_SIGNALS:
    void vaultsChanged();
    void vaultURLChanged();
    void fileTreeChanged();
    void selectedFileChanged();
    void selectedFolderChanged();
    void searchQueryChanged();
    void searchResultsChanged();
    void isSearchingChanged();
    void pendingFocusFileChanged();
    /// A note was opened from the search, or once more.
    void searchHitOpened();
    void pendingVaultsChanged();
    void typographyThemeChanged();
    void editorZoomChanged();
    void themeChanged();
    void historyChanged();
    /// A file operation is about to move, rename or delete `item` (a folder with all below it): sessions
    /// write what they hold.
    void aboutToMove(const wendlore::FileURL& item);
    /// `from` lies at `to` now. Edits that were still under way belong to the new place.
    void didMove(const wendlore::FileURL& from, const wendlore::FileURL& to);
    /// `item` (a folder with all below it) was put into the trash or removed.
    void didDelete(const wendlore::FileURL& item);

private:
    using Signal = void (AppState::*)();

    /// While one lives, signals wait; the end of the outermost one emits them, each once, when everything
    /// that belongs together has been stored.
    class Operation final
    {
    public:
        explicit Operation(AppState& state);
        ~Operation();
        Q_DISABLE_COPY_MOVE(Operation)

    private:
        AppState& m_state;
    };

    /// What `performSearch` looks for; empty when there is nothing to look for.
    [[nodiscard]] QString wantedText() const;
    void restoreTypography();
    void restoreZoom();
    void recordHistory(const std::optional<FileURL>& previous);
    void applyHistoryEntry(const std::optional<FileURL>& entry);
    void openBucket(const std::optional<FileURL>& bucket);
    void selectNewNote(const FileURL& note);
    void writeNewNote(const FileURL& note, const QString& heading);
    /// Tells that `from` was moved; the selected folder goes along.
    void announceMove(const FileURL& from, const FileURL& to);
    void followMove(const FileURL& from, const FileURL& to);
    /// Tells that `item` was deleted; a selected folder that went with it is let go.
    void announceDeletion(const FileURL& item);
    void openNoteName(const QString& name, bool allowCreate);
    void appendBookmark(const FileURL& folder);
    void rewriteBookmarks();
    void setupKVSync();
    [[nodiscard]] std::vector<SyncedVaultEntry> loadKVVaults() const;
    void saveKVVaults(const std::vector<SyncedVaultEntry>& entries);
    void addToKV(const FileURL& folder);
    /// Stores `value` and emits `changed`, when it differs from what is there.
    template <typename Value>
    void store(Value& field, std::type_identity_t<Value> value, Signal changed);
    /// Emits `changed` at the end of the operation that is under way, or at once when there is none.
    void noteChange(Signal changed);

    Services m_services;
    std::vector<FileURL> m_vaults;
    std::optional<FileURL> m_vaultURL;
    BucketTree m_tree;
    std::optional<FileURL> m_selectedFile;
    QString m_searchQuery;
    std::vector<SearchHit> m_searchResults;
    std::unique_ptr<ScheduledTask> m_search;
    std::optional<FileURL> m_pendingFocusFile;
    /// The note that was opened from the search last, and what was looked for; until its editor asks.
    std::optional<std::pair<FileURL, QString>> m_openedHit;
    std::vector<SyncedVaultEntry> m_pendingVaults;
    std::optional<FileURL> m_selectedFolder;
    TypographyTheme m_typographyTheme = TypographyTheme::standard();
    double m_editorZoom = 1.0;
    NavigationHistory m_history;
    bool m_isNavigatingHistory = false;
    std::unique_ptr<WebEditorController> m_editorController;
    AppTheme m_theme = AppTheme::automatic;
    int m_operations = 0;
    std::vector<Signal> m_changes;
};

template <typename Value>
void AppState::store(Value& field, std::type_identity_t<Value> value, Signal changed)
{
    if (field == value)
        return;
    field = std::move(value);
    noteChange(changed);
}

} // namespace wendlore
