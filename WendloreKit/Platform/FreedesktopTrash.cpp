#include "Platform/FreedesktopTrash.h"

#include "Vault/AtomicFile.h"
#include "Vault/ExclusiveMove.h"
#include "Vault/FileName.h"
#include "Vault/Log.h"
#include "Vault/PrivateDirectory.h"

#include <QFileInfo>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qsizetype maximumNameBytes = 255;
constexpr QByteArrayView informationEnding = ".trashinfo";
constexpr int maximumNumber = 10'000;

/// The name that `item` may get in the trash as the `number`-th of its name, short enough for its information
/// file.
QByteArray trashedName(const FileURL& item, int number)
{
    const QByteArray name = item.nameBytes();
    const QByteArrayView extension = extensionOf(name);
    QByteArray ending = extension.isEmpty() ? QByteArray() : '.' + extension.toByteArray();
    QByteArray stem = withoutExtension(name).toByteArray();
    if (number > 1)
        ending.prepend(' ' + QByteArray::number(number));
    const qsizetype room = maximumNameBytes - informationEnding.size();
    ending.truncate(room);
    qsizetype length = std::min(stem.size(), room - ending.size());
    // Never in the middle of a letter.
    while (length > 0 && length < stem.size() && (uchar(stem[length]) & 0xc0) == 0x80)
        --length;
    return stem.first(length) + ending;
}

std::optional<struct stat> statusOf(const FileURL& url)
{
    struct stat status = {};
    return ::lstat(url.bytes().constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// The highest folder above `item` on the same disk.
FileURL topOfDisk(const FileURL& item, dev_t disk)
{
    FileURL top = item.deletingLastPathComponent();
    for (;;) {
        const FileURL above = top.deletingLastPathComponent();
        const auto status = statusOf(above);
        if (above == top || !status || status->st_dev != disk)
            return top;
        top = above;
    }
}

/// A folder that all users of a disk share must keep them apart, or one could plant a trash for another.
bool isSafeToShare(const FileURL& folder)
{
    const auto status = statusOf(folder);
    return status && S_ISDIR(status->st_mode) && (status->st_mode & S_ISVTX) != 0;
}

bool isOwnFolder(const FileURL& folder)
{
    const auto status = statusOf(folder);
    return status && S_ISDIR(status->st_mode) && status->st_uid == ::geteuid();
}

/// The item with the links in the folders above it resolved.
FileURL canonical(const FileURL& item)
{
    const FileURL standardized = item.standardized();
    const QString parent = QFileInfo(standardized.deletingLastPathComponent().path()).canonicalFilePath();
    return parent.isEmpty() ? standardized
                            : FileURL::directory(parent).appendingBytes(standardized.nameBytes(),
                                                                        standardized.isDirectory());
}

} // namespace

FreedesktopTrash::FreedesktopTrash(FileURL home, std::function<QDateTime()> now)
    : m_home(std::move(home))
    , m_now(std::move(now))
{}

FileURL FreedesktopTrash::userTrash()
{
    return FileURL::directory(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                              u"/Trash"_s);
}

bool FreedesktopTrash::put(const FileURL& item)
{
    const FileURL target = canonical(item);
    for (const Folder& folder : foldersFor(target)) {
        if (put(target, folder))
            return true;
    }
    qCWarning(filesLog) << item.path() << "could not be put into the trash";
    return false;
}

std::vector<FreedesktopTrash::Folder> FreedesktopTrash::foldersFor(const FileURL& item) const
{
    const Folder home{m_home, std::nullopt};
    const auto status = statusOf(item);
    if (!status)
        return {};
    if (!makePrivateDirectory(m_home) || statusOf(m_home)->st_dev == status->st_dev)
        return {home};
    const FileURL top = topOfDisk(item, status->st_dev);
    const QString user = QString::number(::geteuid());
    std::vector<Folder> folders;
    if (const FileURL shared = top.appending(u".Trash"_s, true); isSafeToShare(shared))
        folders.push_back({shared.appending(user, true), top});
    folders.push_back({top.appending(u".Trash-"_s + user, true), top});
    folders.push_back(home);
    return folders;
}

bool FreedesktopTrash::put(const FileURL& item, const Folder& folder) const
{
    const FileURL files = folder.url.appending(u"files"_s, true);
    const FileURL descriptions = folder.url.appending(u"info"_s, true);
    if (!makePrivateDirectory(folder.url) || !isOwnFolder(folder.url) || !makePrivateDirectory(files) ||
        !makePrivateDirectory(descriptions))
        return false;
    const QByteArray text = information(item, folder);
    for (int number = 1; number <= maximumNumber; ++number) {
        const QByteArray name = trashedName(item, number);
        const FileURL description =
            descriptions.appendingBytes(name + informationEnding.toByteArray(), false);
        const WriteResult described = AtomicFile::create(description, text);
        if (described.outcome == WriteOutcome::Taken)
            continue;
        if (!described.succeeded())
            return false;
        const int error = moveExclusively(item, files.appendingBytes(name, item.isDirectory()));
        if (error == 0)
            return true;
        ::unlink(description.bytes().constData());
        if (error != EEXIST)
            return false;
    }
    return false;
}

QByteArray FreedesktopTrash::information(const FileURL& item, const Folder& folder) const
{
    const qsizetype prefix = !folder.top                  ? 0
                             : folder.top->bytes() == "/" ? 1
                                                          : folder.top->bytes().size() + 1;
    const QByteArray path = item.bytes().mid(prefix).toPercentEncoding("/");
    const QByteArray time = m_now().toString(u"yyyy-MM-ddTHH:mm:ss"_s).toLatin1();
    return "[Trash Info]\nPath=" + path + "\nDeletionDate=" + time + '\n';
}

} // namespace wendlore
