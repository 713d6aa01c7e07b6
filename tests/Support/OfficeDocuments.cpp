#include "Support/OfficeDocuments.h"

#include "Fakes/Bucket.h"
#include "Support/Pictures.h"
#include "Support/Programs.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto letter = R"(<!doctype html><meta charset=utf-8><title>Resan</title>
<h1>Resan till Gotland</h1><p>Vi tar färjan från <a href='https://exempel.se/'>Nynäshamn</a> och
<b>hyr cyklar</b> i <i>Visby</i>.</p><p><img src='bild.png'></p><ul><li>tält<li>stormkök</ul>
<h2>Kostnader</h2><table border=1><tr><th>Vad<th>Kronor<tr><td>Färja<td>1 240<tr><td>Cyklar<td>600</table>)";

constexpr auto sheets = R"X(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>
<table:table table:name="Kassa"><table:table-column table:number-columns-repeated="3"/>
<table:table-row><table:table-cell office:value-type="string"><text:p>Datum</text:p></table:table-cell><table:table-cell
 office:value-type="string"><text:p>Vad</text:p></table:table-cell><table:table-cell office:value-type="string"><text:p>Belopp</text:p>
</table:table-cell></table:table-row>
<table:table-row><table:table-cell office:value-type="date" office:date-value="2024-05-17"/><table:table-cell
 office:value-type="string"><text:p>Porto</text:p></table:table-cell><table:table-cell office:value-type="float" office:value="12.5"/>
</table:table-row><table:table-row table:number-rows-repeated="4"><table:table-cell office:value-type="date"
 office:date-value="2024-05-18"/><table:table-cell office:value-type="string"><text:p>Papper</text:p></table:table-cell><table:table-cell
 office:value-type="float" office:value="80"/></table:table-row>
<table:table-row><table:table-cell table:number-columns-spanned="2" office:value-type="string"><text:p>Summa</text:p></table:table-cell>
<table:covered-table-cell/><table:table-cell table:formula="of:=SUM([.C2:.C6])*IF([.C2]&gt;10;1;2)"/></table:table-row>
</table:table><table:table table:name="Två"><table:table-row><table:table-cell table:formula="of:=VLOOKUP(80;[$Kassa.C1:.C6];1;0)"/>
</table:table-row></table:table></office:spreadsheet></office:body></office:document>)X";

constexpr auto slides = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.presentation"><office:body><office:presentation>
<draw:page draw:name="Ett"><draw:frame svg:x="2cm" svg:y="3cm" svg:width="22cm" svg:height="4cm"><draw:text-box>
<text:p>Budget 2025</text:p><text:p>Styrelsens förslag</text:p></draw:text-box></draw:frame><draw:ellipse svg:x="4cm" svg:y="9cm"
 svg:width="6cm" svg:height="3cm"/></draw:page>
<draw:page draw:name="Två"><draw:frame svg:x="2cm" svg:y="3cm" svg:width="22cm" svg:height="4cm"><draw:text-box>
<text:p>Kostnader</text:p><text:list><text:list-item><text:p>Porto</text:p></text:list-item></text:list></draw:text-box></draw:frame>
</draw:page></office:presentation></office:body></office:document>)";

/// What a document is made of: a file, and how LibreOffice reads it.
struct Source final
{
    QString name;
    QString filter;
};

Source sourceOf(const QString& format)
{
    if (QStringList{u"xlsx"_s, u"ods"_s, u"xls"_s}.contains(format))
        return {u"ark.fods"_s, u"OpenDocument Spreadsheet Flat XML"_s};
    if (QStringList{u"pptx"_s, u"odp"_s, u"ppt"_s}.contains(format))
        return {u"bilder.fodp"_s, u"OpenDocument Presentation Flat XML"_s};
    // As a text document, and not as a page of the web.
    return {u"brev.html"_s, u"HTML (StarWriter)"_s};
}

} // namespace

const QStringList& officeFormats()
{
    static const QStringList formats{u"docx"_s, u"odt"_s, u"rtf"_s,  u"doc"_s, u"xlsx"_s,
                                     u"ods"_s,  u"xls"_s, u"pptx"_s, u"odp"_s, u"ppt"_s};
    return formats;
}

QByteArray officeDocument(const QString& format)
{
    const Bucket bucket;
    bucket.write(u"brev.html"_s, letter);
    bucket.write(u"bild.png"_s, twoHalves(u"bild.png"_s));
    bucket.write(u"ark.fods"_s, sheets);
    bucket.write(u"bilder.fodp"_s, slides);
    const Source source = sourceOf(format);
    runProgram(u"soffice"_s, {u"-env:UserInstallation=file://"_s + bucket.folder(u"profil"_s).path(),
                              u"--headless"_s, u"--infilter="_s + source.filter, u"--convert-to"_s, format,
                              u"--outdir"_s, bucket.root().path(), bucket.file(source.name).path()});
    return bucket.read(QFileInfo(source.name).completeBaseName() + u'.' + format);
}

} // namespace wendlore
