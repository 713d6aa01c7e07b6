#pragma once

#include <QByteArray>
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

/// Reads a feed of releases: RSS, each item with an <enclosure url length version signature>, and in its last
/// line the feed's own signature as <!-- ed25519: BASE64 -->. Nothing when that is not by `key` for every
/// byte before it, or when an enclosure lacks something.
[[nodiscard]] std::optional<std::vector<Release>> readAppcast(const QByteArray& feed, const PublicKey& key);

/// The newest release that is newer than `current`; older ones are never offered.
[[nodiscard]] std::optional<Release> newestAfter(const QVersionNumber& current,
                                                 const std::vector<Release>& releases);

} // namespace wendlore
