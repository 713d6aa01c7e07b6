#include "Look/FileSymbol.h"

#include "Vault/FilePreviewKind.h"
#include "Vault/FileURL.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

struct Row final
{
    QSet<QString> extensions;
    QString symbol;
};

template <std::size_t count>
QSet<QString> setOf(const std::array<std::string_view, count>& extensions)
{
    QSet<QString> set;
    for (const std::string_view extension : extensions)
        set.insert(QString::fromLatin1(extension.data(), static_cast<qsizetype>(extension.size())));
    return set;
}

} // namespace

QString symbolOf(const FileURL& file)
{
    static const Row table[] = {
        {setOf(imageExtensions), u"photo"_s},
        {setOf(pdfExtensions), u"doc.richtext"_s},
        {{u"txt"_s}, u"doc.plaintext"_s},
        {{u"doc"_s, u"docx"_s, u"rtf"_s, u"rtfd"_s, u"pages"_s, u"odt"_s}, u"doc.text"_s},
        {{u"xls"_s, u"xlsx"_s, u"csv"_s, u"tsv"_s, u"numbers"_s, u"ods"_s}, u"tablecells"_s},
        {{u"ppt"_s, u"pptx"_s, u"key"_s, u"odp"_s}, u"rectangle.on.rectangle.angled"_s},
        {{u"epub"_s}, u"book"_s},
        {setOf(htmlExtensions), u"globe"_s},
    };
    const QString extension = file.pathExtension().toLower();
    for (const Row& row : table) {
        if (row.extensions.contains(extension))
            return row.symbol;
    }
    return u"doc.plaintext"_s;
}

} // namespace wendlore
