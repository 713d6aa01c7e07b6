#include "Wendlores/Appcast.h"

#include "Wendlores/Signature.h"

#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr QByteArrayView signatureStart = "<!-- ed25519: ";
constexpr QByteArrayView signatureEnd = " -->";

/// The feed without its signature; nothing when that is missing or not by `key`.
std::optional<QByteArray> signedPart(const QByteArray& feed, const PublicKey& key)
{
    const qsizetype start = feed.lastIndexOf(signatureStart);
    if (start < 0)
        return std::nullopt;
    const QByteArray line = feed.mid(start + signatureStart.size()).trimmed();
    const QByteArray content = feed.left(start);
    if (!line.endsWith(signatureEnd) || !key.verifies(content, line.chopped(signatureEnd.size())))
        return std::nullopt;
    return content;
}

std::optional<Release> releaseOf(const QXmlStreamAttributes& enclosure)
{
    const Release release{QVersionNumber::fromString(enclosure.value("version"_L1)),
                          QUrl(enclosure.value("url"_L1).toString(), QUrl::StrictMode),
                          enclosure.value("length"_L1).toLongLong(),
                          enclosure.value("signature"_L1).toLatin1()};
    if (release.version.isNull() || !release.package.isValid() || release.package.fileName().isEmpty() ||
        release.size <= 0 || release.signature.isEmpty())
        return std::nullopt;
    return release;
}

} // namespace

std::optional<Appcast> readAppcast(const QByteArray& feed, const PublicKey& key)
{
    const auto content = signedPart(feed, key);
    if (!content)
        return std::nullopt;
    Appcast appcast;
    QXmlStreamReader xml(*content);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "lastBuildDate"_L1) {
            appcast.published = QDateTime::fromString(xml.readElementText(), Qt::RFC2822Date);
        } else if (xml.name() == "enclosure"_L1) {
            const auto release = releaseOf(xml.attributes());
            if (!release)
                return std::nullopt;
            appcast.releases.push_back(*release);
        }
    }
    if (xml.hasError() || !appcast.published.isValid())
        return std::nullopt;
    return appcast;
}

std::optional<Release> newestAfter(const QVersionNumber& current, const std::vector<Release>& releases)
{
    const auto newest = std::ranges::max_element(releases, {}, &Release::version);
    if (newest == releases.end() || newest->version.normalized() <= current.normalized())
        return std::nullopt;
    return *newest;
}

} // namespace wendlore
