#include "Editor/VaultAddress.h"

#include <QMimeDatabase>

#include <array>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

struct KnownType final
{
    QLatin1String extension;
    const char* mimeType;
};

/// What the page cannot do without, where the system's registry knows nothing.
constexpr std::array knownTypes{
    KnownType{"js"_L1, "text/javascript"},
    KnownType{"css"_L1, "text/css"},
    KnownType{"html"_L1, "text/html"},
};

QByteArray decodedPath(const QUrl& address)
{
    return QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1());
}

} // namespace

std::optional<FileURL> vaultFile(const QUrl& address, const std::optional<FileURL>& bucket,
                                 const std::optional<FileURL>& page)
{
    QByteArray path = decodedPath(address);
    if (path.isEmpty() || path == "/")
        path = "/index.html";
    const std::optional<FileURL>& base = path.startsWith("/assets/") ? bucket : page;
    if (!base || path.contains('\0'))
        return std::nullopt;
    return base->appendingBytes(path.mid(1), false);
}

bool isAssetAddress(const QUrl& address)
{
    return decodedPath(address).startsWith("/assets/");
}

QByteArray mimeType(const QString& extension)
{
    const QMimeType registered =
        QMimeDatabase().mimeTypeForFile(u"file."_s + extension, QMimeDatabase::MatchExtension);
    if (registered.isValid() && !registered.isDefault())
        return registered.name().toLatin1();
    for (const KnownType& known : knownTypes) {
        if (extension.compare(known.extension, Qt::CaseInsensitive) == 0)
            return known.mimeType;
    }
    return "application/octet-stream";
}

} // namespace wendlore
