#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QUrl>
#include <QVersionNumber>

#include <optional>
#include <vector>

namespace wendlore {

class PublicKey;

/// A version that a publisher offers, and its package.
struct Release final
{
    QVersionNumber version;
    QUrl package;
    qint64 size = 0; ///< of the package, in bytes
    QByteArray signature;

    friend bool operator==(const Release&, const Release&) = default;
};

/// What a publisher offers, and since when.
struct Appcast final
{
    QDateTime published;
    std::vector<Release> releases;
};

/// Reads a feed of releases: RSS with a <lastBuildDate>, each item with an <enclosure url length version
/// signature>, and in its last line the feed's own signature as <!-- ed25519: BASE64 -->. Nothing when that
/// is not by `key` for every byte before it, or when the date or something of an enclosure is missing.
[[nodiscard]] std::optional<Appcast> readAppcast(const QByteArray& feed, const PublicKey& key);

/// The newest release that is newer than `current`; older ones are never offered.
[[nodiscard]] std::optional<Release> newestAfter(const QVersionNumber& current,
                                                 const std::vector<Release>& releases);

} // namespace wendlore
