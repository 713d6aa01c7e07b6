#include "State/AppState.h"

#include "Vault/AtomicFile.h"
#include "Vault/DiskEntry.h"
#include "Vault/ExclusiveCopy.h"
#include "Vault/Log.h"
#include "Vault/NumberedName.h"
#include "Vault/ReadFile.h"
#include "Vault/RecoveredTexts.h"
#include "Vault/Trash.h"

#include <filesystem>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString noteEnding = u".md"_s;
/// Letters that stand for themselves in the path of an address.
const QByteArray pathLetters = "!$&'()*+,;=:@/";

/// Makes, with `make`, what carries the first of the names `nameOf(1)`, `nameOf(2)` and so on that nothing in
/// `folder` has. `make` gives an error number, `EEXIST` when another program was faster. Gives the location
/// and the error.
template <typename NameOf, typename Make>
std::pair<FileURL, int> makeNumbered(const FileURL& folder, bool isDirectory, const NameOf& nameOf,
                                     const Make& make)
{
    for (int number = 1;; ++number) {
        const FileURL candidate = folder.appending(nameOf(number), isDirectory);
        if (existsOnDisk(candidate))
            continue;
        if (const int error = make(candidate); error != EEXIST)
            return {candidate, error};
    }
}

int makeEmptyFile(const FileURL& url)
{
    const WriteResult result = AtomicFile::create(url, {});
    if (result.outcome == WriteOutcome::Failed)
        qCWarning(filesLog).noquote() << "newNote error:" << result.error;
    return result.outcome == WriteOutcome::Taken ? EEXIST : 0;
}

int makeFolder(const FileURL& url)
{
    constexpr mode_t ordinaryMode = 0777;
    const bool isMade =
        FileSystemCalls::real().makeDirectory(AT_FDCWD, url.bytes().constData(), ordinaryMode) == 0;
    return isMade ? 0 : errno;
}

/// Makes `folder` and what is missing above it; a failure shows when something is put into it.
void makeFolders(const FileURL& folder)
{
    std::error_code error;
    if (!folder.bytes().contains('\0'))
        std::filesystem::create_directories(folder.bytes().toStdString(), error);
}

/// The file that `file` leads to, which a copy of a symbolic link might miss from its new place.
FileURL linkedFile(const FileURL& file)
{
    std::error_code error;
    const auto path = std::filesystem::canonical(file.bytes().toStdString(), error);
    return error ? file : FileURL::fromBytes(QByteArray::fromStdString(path.native()), file.isDirectory());
}

} // namespace

void AppState::newNote(const std::optional<FileURL>& folder)
{
    const std::optional<FileURL> parent = folder ? folder : activeDirectory();
    if (!parent)
        return;
    Operation operation(*this);
    const auto nameOf = [](int number) { return newItemName(u"Ny not"_s, noteEnding, number); };
    const FileURL note = makeNumbered(*parent, false, nameOf, &makeEmptyFile).first;
    selectNewNote(note);
    setPendingFocusFile(note);
}

void AppState::createNote(const QString& name, const FileURL& folder)
{
    Operation operation(*this);
    const QString fileName = name.endsWith(noteEnding) ? name : name + noteEnding;
    const FileURL note = folder.appending(fileName).standardized();
    makeFolders(note.deletingLastPathComponent());
    writeNewNote(note, note.nameWithoutExtension());
    selectNewNote(note);
}

void AppState::writeNewNote(const FileURL& note, const QString& heading)
{
    const QByteArray text = "# " + heading.toUtf8() + '\n';
    WriteResult result = AtomicFile::create(note, text);
    if (result.outcome == WriteOutcome::Taken) {
        const auto old = readFile(note);
        if (old == text)
            return;
        const bool isKept =
            old &&
            (old->isEmpty() || !m_services.recovered.keep(note, *old, u"replaced by a new note"_s).isEmpty());
        if (isKept)
            result = AtomicFile::writeOver(note, *old, text);
    }
    if (!result.succeeded())
        qCWarning(filesLog).noquote() << "createNote error:" << result.error;
}

void AppState::selectNewNote(const FileURL& note)
{
    reloadTreeAround(note.deletingLastPathComponent());
    setSelectedFile(note);
}

void AppState::newFolder(const FileURL& folder)
{
    Operation operation(*this);
    makeFolders(folder);
    const auto nameOf = [](int number) { return newItemName(u"Ny mapp"_s, {}, number); };
    if (const int error = makeNumbered(folder, true, nameOf, &makeFolder).second) {
        qCWarning(filesLog).noquote() << "newFolder error:" << qt_error_string(error);
        return;
    }
    reloadTreeAround(folder);
}

void AppState::deleteFile(const FileURL& item)
{
    Operation operation(*this);
    const FileURL deleted = item; // may be the selection itself, which is about to change
    Q_EMIT aboutToMove(deleted);
    if (!m_services.trash.put(deleted))
        m_services.recovered.take(deleted, u"there is no trash"_s);
    if (!existsOnDisk(deleted))
        announceDeletion(deleted);
    if (m_selectedFile == deleted)
        setSelectedFile(std::nullopt);
    reloadTreeAround(deleted.deletingLastPathComponent());
}

void AppState::announceDeletion(const FileURL& item)
{
    if (m_selectedFolder && (m_selectedFolder->hasPathOf(item) || m_selectedFolder->isBelow(item)))
        setSelectedFolder(std::nullopt);
    Q_EMIT didDelete(item);
}

std::optional<QString> AppState::importAsset(const FileURL& file)
{
    if (!m_vaultURL)
        return std::nullopt;
    const FileURL assets = m_vaultURL->appending(u"assets"_s, true);
    makeFolders(assets);
    const auto nameOf = [&](int number) { return assetName(file, number); };
    const FileURL source = linkedFile(file);
    const auto [copy, error] =
        makeNumbered(assets, false, nameOf, [&](const FileURL& url) { return copyExclusively(source, url); });
    reloadTreeAround(assets);
    if (error != 0) {
        qCWarning(filesLog).noquote() << "importAsset error:" << qt_error_string(error);
        return std::nullopt;
    }
    const QByteArray link = "assets/" + copy.lastPathComponent().toUtf8();
    return QString::fromLatin1(link.toPercentEncoding(pathLetters));
}

} // namespace wendlore
