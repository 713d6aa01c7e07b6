#include "Screenshots/ViewedFiles.h"

#include "Fakes/Bucket.h"
#include "Support/OfficeDocuments.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"
#include "Support/Programs.h"
#include "Support/SampleFiles.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto webPage =
    "<!doctype html><meta charset=utf-8><title>Resan</title><style>body{font-family:serif}td,th{border:1px "
    "solid "
    "#999;padding:4px 12px}</style><h1>Resan till Gotland</h1><p>Vi tar färjan från <a "
    "href='b.html'>Nynäshamn"
    "</a> och <b>hyr cyklar</b> i Visby. Det här behöver vi <i>innan</i> vi "
    "far:</p><ul><li>tält</li><li>stormkök"
    "</li></ul><h2>Kostnader</h2><table><tr><th>Vad</th><th>Kronor</th></tr><tr><td>Färja</td><td>1 "
    "240</td></tr>"
    "<tr><td>Cyklar</td><td>600</td></tr></table>";

constexpr auto letter = R"({\rtf1\ansi\ansicpg1252 {\b Hej!}\par Vi ses p\'e5 fredag.\par})";

void makePictures(const Bucket& bucket)
{
    const QStringList gradient{u"-size"_s, u"1600x900"_s, u"gradient:#2f6f8f-#f0d9a8"_s};
    for (const char* ending : {"jpg", "png", "heic", "webp", "tiff", "bmp", "avif", "ico"}) {
        const QString name = u"bild."_s + QString::fromLatin1(ending);
        const QStringList size =
            name.endsWith(u"ico"_s) ? QStringList{u"-resize"_s, u"64x64"_s} : QStringList();
        bucket.write(name, pictureFile(name, gradient + size));
    }
    bucket.write(u"rörlig.gif"_s, movingFile(u"a.gif"_s, 0));
    bucket.write(u"ritning.svg"_s, drawing());
    bucket.write(u"skadad.png"_s, "ingen bild");
}

void makeTexts(const Bucket& bucket)
{
    bucket.write(u"sida.html"_s, webPage);
    bucket.write(u"kod.cpp"_s, "// Hälsar.\nint main()\n{\n    print(\"Hej\", 42);\n    return 0;\n}\n");
    bucket.write(
        u"kod.py"_s,
        "import os\n\ndef hej(namn):\n    \"\"\"Hälsar.\"\"\"\n    print(f'Hej {namn}', 42)  # ut\n");
    bucket.write(u"tabell.csv"_s, "Datum;Vad;Belopp\n2024-05-17;Porto;12,50\n2024-05-18;Papper;80,00\n");
    bucket.write(
        u"data.json"_s,
        "{\n  \"namn\": \"Anna\",\n  \"antal\": 3,\n  \"aktiv\": true,\n  \"taggar\": [null, 1.5]\n}\n");
    bucket.write(u"data.xml"_s, "<?xml version=\"1.0\"?>\n<!-- Adresser -->\n<personer>\n  <person "
                                "id=\"1\">Anna &amp; Bo</person>\n</personer>\n");
    bucket.write(u"data.yaml"_s,
                 "# Inställningar\nnamn: Anna\nantal: 3\naktiv: true\nlista:\n  - 'ett'\n  - \"två\"\n");
    bucket.write(u"server.log"_s,
                 "2024-05-17 12:00:01 INFO server: svar på 12 ms\n2024-05-17 12:00:02 ERROR disk full\n");
    bucket.write(u"lång.log"_s,
                 QByteArray("2024-05-17 12:00:01 INFO server: svar på 12 ms\n").repeated(60'000));
    bucket.write(u"brev.eml"_s, "From: Anna <anna@exempel.se>\nTo: Bo <bo@exempel.se>\nSubject: Mötet\n"
                                "Date: Fri, 17 May 2024 12:00:00 +0200\n\nHej!\n\nVi ses på fredag.\n");
    bucket.write(u"pekare.gdoc"_s, "ingen pekare");
    bucket.write(u"okänd.bin"_s, QByteArray("\0\1\2", 3));
}

void makePackages(const Bucket& bucket)
{
    const QByteArray pages = pdfOf({u"Sidor som följer med"_s});
    const QByteArray picture =
        pictureFile(u"a.jpg"_s, {u"-size"_s, u"400x560"_s, u"gradient:#fff-#c7d8e6"_s});
    for (const char* ending : {"pages", "numbers", "key"})
        bucket.write(u"medskickad."_s + QString::fromLatin1(ending),
                     packed({{u"QuickLook/Preview.pdf"_s, pages}}, u"zip"_s));
    bucket.write(u"bild.pages"_s, packed({{u"preview.jpg"_s, picture}, {u"Index.zip"_s, "x"}}, u"zip"_s));
    bucket.write(u"mapp.pages/preview.jpg"_s, picture);
    bucket.write(u"mapp.rtfd/TXT.rtf"_s, letter);
    bucket.write(u"bok.epub"_s, bookOf(3, 4));
    const SampleFiles files{{u"kod/a.cpp"_s, "int a;"}, {u"brev.txt"_s, "hej"}};
    for (const auto& ending : {u"zip"_s, u"tar"_s, u"tar.xz"_s})
        bucket.write(u"arkiv."_s + ending, packed(files, ending));
}

void makePdfs(const Bucket& bucket)
{
    bucket.write(u"sidor.pdf"_s, pdfOf({u"Protokoll\nAtt minnas från mötet"_s, u"Sida två"_s}));
    bucket.write(u"skadad.pdf"_s, "%PDF-1.4\ningenting");
    runProgram(u"qpdf"_s, {u"--encrypt"_s, u"hemlig"_s, u"hemlig"_s, u"256"_s, u"--"_s,
                           bucket.file(u"sidor.pdf"_s).path(), bucket.file(u"låst.pdf"_s).path()});
}

} // namespace

void makeViewedFiles(const Bucket& bucket)
{
    makePdfs(bucket);
    makePictures(bucket);
    makeTexts(bucket);
    makePackages(bucket);
    bucket.write(u"typsnitt.ttf"_s, systemFont());
    if (hasProgram(u"ffmpeg"_s)) {
        for (const auto& name : {u"film.mp4"_s, u"film.webm"_s, u"ton.mp3"_s, u"ton.ogg"_s})
            bucket.write(name, mediaFile(name));
    }
    if (!hasProgram(u"soffice"_s))
        return;
    for (const QString& format : officeFormats())
        bucket.write(u"dokument."_s + format, officeDocument(format));
}

} // namespace wendlore
