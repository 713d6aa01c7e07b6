#include "Previews/HtmlAddress.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace wendlore {

QUrl pageAddress(const FileURL& file)
{
    return QUrl::fromEncoded(QByteArray(htmlScheme) + "://document" + file.bytes().toPercentEncoding("/"));
}

std::optional<FileURL> fileOfAddress(const QUrl& address)
{
    if (address.scheme() != QLatin1StringView(htmlScheme) && !address.isLocalFile())
        return std::nullopt;
    const QByteArray path = QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1());
    if (path.isEmpty() || path.contains('\0'))
        return std::nullopt;
    return FileURL::fromBytes(path, false).standardized();
}

FileURL folderOfPage(const FileURL& file, const std::optional<FileURL>& bucket)
{
    const FileURL page = file.standardized();
    return bucket && page.isBelow(bucket->standardized()) ? bucket->standardized()
                                                          : page.deletingLastPathComponent();
}

LinkAction actionOfLink(const QUrl& link, const FileURL& shown)
{
    if (isForTheDesktop(link))
        return LinkAction::openOutside;
    const auto file = fileOfAddress(link);
    if (!file)
        return LinkAction::follow;
    const bool isPlaceWithin = link.hasFragment() && file->hasPathOf(shown.standardized());
    return isPlaceWithin ? LinkAction::follow : LinkAction::openFile;
}

bool isForTheDesktop(const QUrl& address)
{
    const QString scheme = address.scheme();
    return scheme == "http"_L1 || scheme == "https"_L1 || scheme == "mailto"_L1;
}

bool isKnownToTheEngine(const QUrl& address)
{
    static const QStringList schemes{QString::fromLatin1(htmlScheme),
                                     u"about"_s,
                                     u"blob"_s,
                                     u"data"_s,
                                     u"file"_s,
                                     u"http"_s,
                                     u"https"_s,
                                     u"javascript"_s};
    return schemes.contains(address.scheme());
}

QByteArray htmlAsUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes).toUtf8() : bytes;
}

} // namespace wendlore
