#include "Support/SampleFiles.h"

#include "Fakes/Bucket.h"
#include "Support/Pictures.h"
#include "Support/Programs.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

QByteArray packed(const SampleFiles& files, const QString& format)
{
    const Bucket bucket;
    for (const auto& [name, bytes] : files)
        bucket.write(u"in/"_s + name, bytes);
    const QString archive = bucket.file(u"a."_s + format).path();
    QProcess process;
    process.setWorkingDirectory(bucket.folder(u"in"_s).path());
    if (format == u"zip"_s)
        process.start(u"zip"_s, {u"-qr"_s, archive, u"."_s});
    else
        process.start(
            u"tar"_s,
            QStringList{u"-caf"_s, archive} +
                QDir(process.workingDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot));
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("cannot pack");
    return bucket.read(u"a."_s + format);
}

QByteArray tarOfMany(int count)
{
    constexpr int blockSize = 512;
    QByteArray archive;
    archive.reserve(qsizetype(count + 2) * blockSize);
    for (int number = 0; number < count; ++number) {
        QByteArray header = "mapp/anteckning " + QByteArray::number(number) + ".md";
        header = header.leftJustified(100, '\0') + QByteArray("0000644\0"
                                                              "0000000\0"
                                                              "0000000\0"
                                                              "00000000000\0"
                                                              "14600000000\0",
                                                              48);
        QByteArray rest = QByteArray("        0").leftJustified(109, '\0') + QByteArray("ustar\0"
                                                                                        "00",
                                                                                        8);
        header = (header + rest).leftJustified(blockSize, '\0');
        unsigned sum = 0;
        for (const char byte : std::as_const(header))
            sum += uchar(byte);
        header.replace(148, 8, QByteArray::number(sum, 8).rightJustified(6, '0') + QByteArray("\0 ", 2));
        archive += header;
    }
    return archive + QByteArray(2 * blockSize, '\0');
}

QByteArray bookOf(int chapters, int paragraphs)
{
    SampleFiles files{{u"META-INF/container.xml"_s,
                       "<container><rootfiles><rootfile full-path='OPS/b.opf'/></rootfiles></container>"},
                      {u"OPS/omslag.png"_s, twoHalves(u"a.png"_s)}};
    QByteArray items;
    QByteArray spine;
    for (int chapter = 1; chapter <= chapters; ++chapter) {
        const QByteArray number = QByteArray::number(chapter);
        items += "<item id='k" + number + "' href='" + number + ".xhtml'/>";
        spine += "<itemref idref='k" + number + "'/>";
        files.append({u"OPS/%1.xhtml"_s.arg(chapter),
                      "<html><body><h1>Kapitel " + number + "</h1>" +
                          QByteArray("<p>Det var en gång en räv som gick över isen och inte såg sig om.</p>")
                              .repeated(paragraphs) +
                          "</body></html>"});
    }
    files.append({u"OPS/b.opf"_s,
                  "<package><metadata><title>Räven på isen</title><creator>Anna Berg</creator></metadata>"
                  "<manifest><item id='o' href='omslag.png' properties='cover-image'/>" +
                      items + "</manifest><spine>" + spine + "</spine></package>"});
    return packed(files, u"zip"_s);
}

QByteArray silence()
{
    constexpr quint32 rate = 8000;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + rate);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(1) << rate << rate << quint16(1) << quint16(8);
    stream.writeRawData("data", 4);
    stream << rate;
    return bytes + QByteArray(rate, '\x80');
}

QByteArray mediaFile(const QString& name)
{
    static const QStringList films{u"mp4"_s, u"webm"_s, u"mkv"_s, u"mov"_s, u"ogv"_s};
    const bool isFilm = films.contains(QFileInfo(name).suffix());
    QStringList arguments{u"-loglevel"_s, u"error"_s, u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=3"_s};
    if (isFilm)
        arguments += {u"-f"_s,       u"lavfi"_s,  u"-i"_s, u"testsrc=duration=3:size=160x90:rate=10"_s,
                      u"-pix_fmt"_s, u"yuv420p"_s};
    const Bucket bucket;
    runProgram(u"ffmpeg"_s, arguments + QStringList{bucket.file(name).path()});
    return bucket.read(name);
}

QByteArray drawing()
{
    QByteArray lines;
    for (int line = 0; line < 500; ++line)
        lines += "<line x1='0' y1='" + QByteArray::number(line) + "' x2='400' y2='" +
                 QByteArray::number(500 - line) + "' stroke='#246'/>";
    return "<svg xmlns='http://www.w3.org/2000/svg' width='400' height='500'>" + lines + "</svg>";
}

QByteArray systemFont()
{
    QProcess process;
    process.start(u"fc-match"_s, {u"--format=%{file}"_s, u":fontformat=TrueType"_s});
    if (!process.waitForFinished())
        qFatal("fc-match does not answer");
    QFile file(QString::fromLocal8Bit(process.readAllStandardOutput()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace wendlore
