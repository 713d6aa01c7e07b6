#pragma once

#include "State/FolderBookmarks.h"
#include "State/Panels.h"
#include "State/Workspace.h"
#include "Vault/FileCoordinator.h"
#include "Vault/Trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QStringList>

#include <functional>
#include <utility>

namespace wendlore {

/// Bookmarks that are the folder's path; they resolve while the folder exists.
class FakeBookmarks final : public FolderBookmarks
{
public:
    [[nodiscard]] std::optional<QByteArray> create(const FileURL& folder) override
    {
        return QFileInfo(folder.path()).isDir() ? std::optional(folder.bytes()) : std::nullopt;
    }
    [[nodiscard]] std::optional<FileURL> resolve(const QByteArray& bookmark) override
    {
        const auto folder = FileURL::fromBytes(bookmark, true);
        return QFileInfo(folder.path()).isDir() ? std::optional(folder) : std::nullopt;
    }
};

/// Records what was handed to the desktop.
class FakeWorkspace final : public Workspace
{
public:
    void open(const QUrl& address) override { addresses.append(address); }
    void open(const FileURL& file) override { files.append(file); }
    [[nodiscard]] QString computerName() const override { return name; }

    QList<QUrl> addresses;
    QList<FileURL> files;
    QString name = QStringLiteral("Annas dator");
};

/// Answers every panel with what the test chose.
class FakePanels final : public Panels
{
public:
    [[nodiscard]] std::optional<FileURL> chooseFolder(const QString& prompt, const QString& message) override
    {
        shown.append(prompt + QLatin1Char('|') + message);
        return answer;
    }
    [[nodiscard]] std::optional<FileURL> chooseFile(const QString& prompt, const QString& message,
                                                    const QStringList& patterns, Start start) override
    {
        isAtPictures = start == Start::pictures;
        shown.append(prompt + QLatin1Char('|') + message + QLatin1Char('|') +
                     patterns.join(QLatin1Char(' ')));
        if (whileShown)
            whileShown();
        return answer;
    }

    std::optional<FileURL> answer;
    /// What happens while a file panel is open.
    std::function<void()> whileShown;
    QStringList shown;
    /// Whether the last file panel started at the user's pictures.
    bool isAtPictures = false;
};

/// Reads plainly and records what was asked of the cloud service. Refuses to read what a test lists, and lets
/// a test act between a read and its end.
class FakeFileCoordinator final : public FileCoordinator
{
public:
    void startDownloading(const FileURL& url) override { downloads.append(url); }
    [[nodiscard]] std::optional<QByteArray> readWhole(const FileURL& url) override
    {
        QFile file(url.path());
        const bool isReadable = !unreadable.contains(url) && file.open(QIODevice::ReadOnly);
        const std::optional<QByteArray> bytes = isReadable ? std::optional(file.readAll()) : std::nullopt;
        if (const auto act = std::exchange(afterNextRead, nullptr))
            act();
        return bytes;
    }

    void visitEverythingBelow(const FileURL& folder) override { visited.append(folder); }

    QList<FileURL> downloads;
    QList<FileURL> unreadable;
    QList<FileURL> visited;
    std::function<void()> afterNextRead;
};

/// A trash that is a folder, as long as it works.
class FakeTrash final : public Trash
{
public:
    explicit FakeTrash(FileURL directory)
        : folder(std::move(directory))
    {}

    [[nodiscard]] bool put(const FileURL& item) override
    {
        QDir().mkpath(folder.path());
        return isWorking && QFile::rename(item.path(), folder.appending(item.lastPathComponent()).path());
    }

    FileURL folder;
    bool isWorking = true;
};

} // namespace wendlore
