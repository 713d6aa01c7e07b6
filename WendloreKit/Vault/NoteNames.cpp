#include "Vault/NoteNames.h"

#include "Vault/Collation.h"
#include "Vault/FileTree.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

QStringList namesOfNotes(const FileURL& root)
{
    QSet<QString> names;
    for (const FileURL& note : allMarkdownFiles(root)) {
        if (note.pathExtension().toLower() == u"md"_s)
            names.insert(note.nameWithoutExtension());
    }
    QStringList sorted(names.begin(), names.end());
    // Names that the order holds for equal ("Plan" and "PLAN") stand in a fixed order all the same.
    std::ranges::sort(sorted);
    const NameOrder order;
    std::ranges::stable_sort(sorted, [&order](const QString& left, const QString& right) {
        return order.compare(left.toUtf8(), right.toUtf8()) < 0;
    });
    return sorted;
}

} // namespace wendlore
