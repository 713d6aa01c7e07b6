#include "Previews/FileKind.h"

#include "Vault/FilePreviewKind.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace wendlore {

QString kindOf(const FileURL& file)
{
    static const QHash<QString, QString> names{
        {u"gdoc"_s, u"Google-dokument"_s},
        {u"gsheet"_s, u"Google-kalkylark"_s},
        {u"gslides"_s, u"Google-presentation"_s},
        {u"doc"_s, u"Textdokument"_s},
        {u"docx"_s, u"Textdokument"_s},
        {u"rtf"_s, u"Textdokument"_s},
        {u"rtfd"_s, u"Textdokument"_s},
        {u"pages"_s, u"Textdokument"_s},
        {u"odt"_s, u"Textdokument"_s},
        {u"xls"_s, u"Kalkylark"_s},
        {u"xlsx"_s, u"Kalkylark"_s},
        {u"numbers"_s, u"Kalkylark"_s},
        {u"ods"_s, u"Kalkylark"_s},
        {u"csv"_s, u"Tabell"_s},
        {u"tsv"_s, u"Tabell"_s},
        {u"ppt"_s, u"Presentation"_s},
        {u"pptx"_s, u"Presentation"_s},
        {u"key"_s, u"Presentation"_s},
        {u"odp"_s, u"Presentation"_s},
        {u"epub"_s, u"E-bok"_s},
    };
    switch (FilePreviewKind::of(file)) {
    case FilePreviewKind::editor:
        return u"Anteckning"_s;
    case FilePreviewKind::image:
        return u"Bild"_s;
    case FilePreviewKind::pdf:
        return u"PDF-dokument"_s;
    case FilePreviewKind::html:
        return u"Webbsida"_s;
    case FilePreviewKind::google:
    case FilePreviewKind::other:
        break;
    }
    const QString extension = file.pathExtension();
    const QString known = names.value(extension.toLower());
    if (!known.isEmpty())
        return known;
    return extension.isEmpty() ? u"Fil"_s : u"%1-fil"_s.arg(extension.toUpper());
}

} // namespace wendlore
