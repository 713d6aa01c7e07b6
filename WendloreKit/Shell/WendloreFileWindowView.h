#pragma once

#include "Vault/FileURL.h"

#include <QMainWindow>

#include <memory>
#include <optional>

namespace wendlore {

class AppState;
class EditorView;
class TitleField;
class WindowClosing;
struct Services;

/// The windows of single files.
namespace WendloreFileWindow {

/// Names the group of these windows.
inline constexpr QStringView identifier = u"wendloreFile";

} // namespace WendloreFileWindow

/// One file in a window of its own, always light; a note can be renamed there too. While it is open the file
/// stands in `OpenFileWindows`, and the main window does not edit it.
class WendloreFileWindowView final : public QMainWindow
{
    Q_OBJECT

public:
    /// Without a file the window says that there is nothing to show.
    WendloreFileWindowView(const Services& services, const std::optional<FileURL>& file,
                           QWidget* parent = nullptr);
    ~WendloreFileWindowView() override;

    [[nodiscard]] const std::optional<FileURL>& fileURL() const { return m_fileURL; }
    /// The window's own state; null without a file.
    [[nodiscard]] AppState* windowState() const { return m_windowState.get(); }
    /// The note's editor; null for other kinds of files.
    [[nodiscard]] EditorView* editor() const { return m_editor; }

Q_SIGNALS:
    void fileURLChanged();
    /// The window was closed, and everything that was typed in it is written.
    void disappeared();
    /// A link was followed to another file, which this window does not show.
    void fileRequested(const wendlore::FileURL& file);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] QWidget* makeContent();
    [[nodiscard]] QWidget* makeEditor();
    void observeState();
    void showTitle();
    void appear();
    void disappear();
    void follow(const FileURL& from, const FileURL& to);
    void leaveDeleted(const FileURL& item);
    void passOtherSelectionOn();

    std::optional<FileURL> m_fileURL;
    std::unique_ptr<AppState> m_windowState;
    EditorView* m_editor = nullptr;
    /// Where the user renames the note; null for other kinds of files.
    TitleField* m_title = nullptr;
    std::unique_ptr<WindowClosing> m_closing;
    bool m_isRegistered = false;
};

} // namespace wendlore
