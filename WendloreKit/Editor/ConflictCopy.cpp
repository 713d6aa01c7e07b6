#include "Editor/ConflictCopy.h"

#include "Vault/DiskEntry.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qsizetype maximumNameBytes = 255;
constexpr qsizetype maximumComputerNameBytes = 100;

/// The start of `text` that fits into `maximum` bytes of UTF-8.
QString truncatedToBytes(QString text, qsizetype maximum)
{
    while (text.toUtf8().size() > std::max<qsizetype>(maximum, 0))
        text.chop(text.size() > 1 && text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

/// `computerName` as a part of a file name.
QString hostPart(QString computerName)
{
    computerName.replace(u'/', u'-').remove(QChar::Null);
    return computerName.isEmpty() ? u"Mac"_s : truncatedToBytes(computerName, maximumComputerNameBytes);
}

QString copyName(const FileURL& note, const QString& mark, int number)
{
    const QString extension = note.pathExtension();
    const QString ending = u" (konflikt "_s + mark +
                           (number > 1 ? u' ' + QString::number(number) : QString()) + u')' +
                           (extension.isEmpty() ? QString() : u'.' + extension);
    return truncatedToBytes(note.nameWithoutExtension(), maximumNameBytes - ending.toUtf8().size()) + ending;
}

} // namespace

FileURL conflictCopyURL(const FileURL& note, const QString& computerName, const QDateTime& now)
{
    const FileURL folder = note.deletingLastPathComponent();
    const QString mark = hostPart(computerName) + u' ' + now.toString(u"yyyy-MM-dd HHmm"_s);
    for (int number = 1;; ++number) {
        const FileURL copy = folder.appending(copyName(note, mark, number));
        if (!existsOnDisk(copy))
            return copy;
    }
}

} // namespace wendlore
