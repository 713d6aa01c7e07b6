#include "State/AppState.h"

#include "State/Workspace.h"

#include "Vault/Blanks.h"
#include "Vault/DiskEntry.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/FileTree.h"
#include "Vault/LinkResolution.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Documents that a link opens in their own program: a still picture of a workbook is of little use.
constexpr auto spreadsheetExtensions = std::to_array<QStringView>({u"xlsx", u"xls", u"ods", u"numbers"});

bool opensHere(const FileURL& file)
{
    const QString extension = file.pathExtension().toLower();
    return isViewableFile(file) &&
           std::ranges::find(spreadsheetExtensions, extension) == spreadsheetExtensions.end();
}

/// The folders in which a relative link is looked up, in order.
std::vector<FileURL> searchFolders(const std::optional<FileURL>& linkingNote, const FileURL& root)
{
    std::vector<FileURL> folders;
    if (linkingNote)
        folders.push_back(linkingNote->deletingLastPathComponent());
    folders.push_back(root);
    return folders;
}

} // namespace

void AppState::openLink(const QString& text, const std::optional<FileURL>& linkingNote, bool allowCreate)
{
    if (!m_vaultURL)
        return;
    QString path = linkedPath(text);
    if (!path.contains(u'/')) {
        openNoteName(linkedNoteName(path), allowCreate);
        return;
    }
    const bool isAbsolute = path.startsWith(u'/');
    while (path.startsWith(u'/'))
        path.remove(0, 1);
    if (path.isEmpty())
        return;
    const auto found = isAbsolute ? resolveBundleAbsolute(path, linkingNote, *m_vaultURL)
                                  : existingCandidate(path, searchFolders(linkingNote, *m_vaultURL));
    if (found)
        setSelectedFile(found);
    else if (allowCreate)
        createNote(path, *m_vaultURL);
}

void AppState::openNoteName(const QString& name, bool allowCreate)
{
    if (name.isEmpty())
        return;
    if (allowCreate)
        openNote(name);
    else if (const auto found = findNote(name, m_tree.nodes()))
        setSelectedFile(found);
}

void AppState::openNote(const QString& name)
{
    const QString trimmed = withoutOuterBlanks(name);
    if (!m_vaultURL || trimmed.isEmpty())
        return;
    Operation operation(*this);
    auto found = findNote(trimmed, m_tree.nodes());
    if (!found) {
        // Another program may have brought the note since the tree was read; it must not be made over it.
        reloadTree();
        found = findNote(trimmed, m_tree.nodes());
    }
    if (found) {
        setSelectedFile(found);
        return;
    }
    const FileURL note = m_vaultURL->appending(trimmed + u".md"_s);
    writeNewNote(note, trimmed);
    selectNewNote(note);
}

void AppState::openLinkedFile(const FileURL& file)
{
    FileURL target = file.standardized();
    if (!existsOnDisk(target) && target.pathExtension().isEmpty())
        target = FileURL::fromBytes(target.bytes() + ".md", false);
    if (!existsOnDisk(target))
        return;
    if (opensHere(target))
        setSelectedFile(target);
    else
        m_services.workspace.open(target);
}

void AppState::revealFile(const FileURL& file)
{
    const FileURL target = file.standardized();
    if (!m_vaultURL || !target.isBelow(m_vaultURL->standardized()) || !existsOnDisk(target))
        return;
    Operation operation(*this);
    if (!urlInTree(target.path(), m_tree.nodes()))
        reloadTree();
    setSelectedFile(urlInTree(target.path(), m_tree.nodes()).value_or(target));
}

} // namespace wendlore
