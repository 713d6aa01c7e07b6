#include "Support/Pictures.h"

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

#include <QHash>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

void append(QByteArray& png, const QByteArray& type, const QByteArray& data)
{
    const auto bigEndian = [](quint32 number) {
        QByteArray bytes(4, 0);
        qToBigEndian(number, bytes.data());
        return bytes;
    };
    quint32 crc = 0xffffffff;
    for (const char byte : type + data) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? (crc >> 1) ^ 0xedb88320 : crc >> 1;
    }
    png += bigEndian(quint32(data.size())) + type + data + bigEndian(~crc);
}

} // namespace

QByteArray pictureFile(const QString& name, const QStringList& arguments)
{
    static QHash<QStringList, QByteArray> made;
    QByteArray& bytes = made[arguments + QStringList{name}];
    if (bytes.isEmpty()) {
        const Bucket bucket;
        runProgram(u"convert"_s, arguments + QStringList{bucket.file(name).path()});
        bytes = bucket.read(name);
    }
    return bytes;
}

QByteArray twoHalves(const QString& name)
{
    return pictureFile(name, {u"-size"_s, u"48x64"_s, u"xc:red"_s, u"xc:blue"_s, u"+append"_s});
}

QByteArray heicPhotograph()
{
    return pictureFile(u"a.heic"_s, {u"-size"_s, u"200x100"_s, u"xc:green"_s});
}

QByteArray movingFile(const QString& name, int rounds)
{
    return pictureFile(name, {u"-size"_s, u"16x16"_s, u"-loop"_s, QString::number(rounds), u"-delay"_s,
                              u"20"_s, u"xc:red"_s, u"-delay"_s, u"30"_s, u"xc:blue"_s});
}

QByteArray blackPng(quint32 width, quint32 height)
{
    QByteArray header(8, 0);
    qToBigEndian(width, header.data());
    qToBigEndian(height, header.data() + 4);
    header += QByteArray::fromHex("0100000000"); // one bit a pixel, grey
    QByteArray png = QByteArray::fromHex("89504e470d0a1a0a");
    append(png, "IHDR", header);
    const QByteArray rows(qsizetype((width + 7) / 8 + 1) * height, 0);
    append(png, "IDAT", qCompress(rows, 1).mid(4));
    append(png, "IEND", {});
    return png;
}

} // namespace wendlore
