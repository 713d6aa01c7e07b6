#pragma once

#include "Vault/Trash.h"

#include <QDateTime>

#include <functional>
#include <optional>

namespace wendlore {

/// The trash that the desktop's file managers show: the user's own, or the one at the top of the disk that
/// holds the item. An item whose disk cannot have one is copied into the user's own.
class FreedesktopTrash final : public Trash
{
public:
    /// `home` is the user's own trash folder, made when needed.
    explicit FreedesktopTrash(
        FileURL home = userTrash(),
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    [[nodiscard]] bool put(const FileURL& item) override;

    /// Where the desktop keeps the user's own trash.
    [[nodiscard]] static FileURL userTrash();

private:
    /// A trash folder, and the top of the disk that its paths are relative to.
    struct Folder final
    {
        FileURL url;
        std::optional<FileURL> top;
    };

    [[nodiscard]] std::vector<Folder> foldersFor(const FileURL& item) const;
    [[nodiscard]] bool put(const FileURL& item, const Folder& folder) const;
    [[nodiscard]] QByteArray information(const FileURL& item, const Folder& folder) const;

    FileURL m_home;
    std::function<QDateTime()> m_now;
};

} // namespace wendlore
