#pragma once

#include "Previews/GoogleAddresses.h"

#include "Vault/FileURL.h"

#include <optional>

namespace wendlore {

/// A file that stands for a document at Google: what it says, and the addresses that follow from it.
class GoogleDocPointer final
{
public:
    static constexpr qint64 maximumSize = 1 << 20;

    /// Reads the pointer at `file`. Nothing when it cannot be read or names no document.
    [[nodiscard]] static std::optional<QUrl>
    previewURL(const FileURL& file, const GoogleAddresses& addresses = GoogleAddresses::configured());
    /// Where the document of the pointer at `file` is shown, which holds `bytes`: its own address if it has
    /// one, else the one that its identifier and its kind give.
    [[nodiscard]] static std::optional<QUrl>
    previewURL(const FileURL& file, const QByteArray& bytes,
               const GoogleAddresses& addresses = GoogleAddresses::configured());

    /// The page where the account of the pointer at `file` is chosen, and which goes on to `address`.
    [[nodiscard]] static std::optional<QUrl>
    signInURL(const FileURL& file, const QUrl& address,
              const GoogleAddresses& addresses = GoogleAddresses::configured());

    /// The account whose synchronised folder `file` lies in; empty when it lies in none.
    [[nodiscard]] static QString accountEmail(const FileURL& file);
    /// The address that only shows a document, made from one that may edit it; other addresses as they are.
    [[nodiscard]] static QUrl asPreview(const QUrl& address, const GoogleAddresses& addresses);
    /// `address` for the account `email`; unchanged without an account, or when it already names one.
    [[nodiscard]] static QUrl withAuthUser(const QUrl& address, const QString& email);
};

} // namespace wendlore
