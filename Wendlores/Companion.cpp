#include "Wendlores/Companion.h"

#include "Wendlores/CompanionCommands.h"

#include "Vault/Blanks.h"
#include "Vault/Collation.h"
#include "Vault/FileTree.h"
#include "Vault/NoteSearch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Companion::Answer refusal(const QString& reason)
{
    return {Companion::Misused, {}, u"wendlores: %1\n"_s.arg(reason).toUtf8()};
}

/// Appends the path of what lies below `root`, as seen from there.
void appendPath(QByteArray& output, const FileURL& url, const FileURL& root)
{
    // The root directory's path ends with its separator already.
    const std::size_t size = root.folder().size() + (root.name().empty() ? 0 : root.name().size() + 1);
    const auto append = [&output](std::string_view part) {
        output.append(part.data(), qsizetype(part.size()));
    };
    append(url.folder().substr(size));
    append(url.name());
}

Companion::Answer search(const FileURL& root, const QString& text)
{
    const QString query = withoutOuterBlanks(text);
    Companion::Answer answer{Companion::NothingFound, {}, {}};
    if (query.isEmpty())
        return answer;
    for (const SearchHit& hit : searchNotes(root, query, NameOrder(), userFoldingRule())) {
        appendPath(answer.output, hit.url(), root);
        answer.output += '\t' + hit.snippet() + '\n';
        answer.status = Companion::Succeeded;
    }
    return answer;
}

void writeTree(QByteArray& output, const std::vector<FileNode>& nodes, const FileURL& root)
{
    for (const FileNode& node : nodes) {
        appendPath(output, node.url, root);
        output += node.isDirectory ? "/\n" : "\n";
        if (node.children)
            writeTree(output, *node.children, root);
    }
}

} // namespace

Companion::Answer Companion::run(const QStringList& arguments, const QString& currentFolder)
{
    const bool isSearch = arguments.value(0).toStdString() == searchCommand;
    if (arguments.size() != (isSearch ? 3 : 2))
        return refusal(isSearch ? u"användning: wendlores search MAPP TEXT"_s
                                : u"användning: wendlores tree MAPP"_s);
    const QString path = QDir::cleanPath(QDir(currentFolder).absoluteFilePath(arguments[1]));
    if (arguments[1].isEmpty() || !QFileInfo(path).isDir())
        return refusal(u"ingen mapp: %1"_s.arg(arguments[1]));

    const auto root = FileURL::fromBytes(QFile::encodeName(path), true);
    if (isSearch)
        return search(root, arguments[2]);
    Answer answer;
    writeTree(answer.output, buildTree(root), root);
    return answer;
}

} // namespace wendlore
