#pragma once

#include <QString>
#include <QUrl>

namespace wendlore {

/// Where Google documents are shown and where one signs in.
struct GoogleAddresses final
{
    /// The origin of the documents' addresses, without a path.
    QUrl documents;
    /// The origin of the sign-in pages.
    QUrl accounts;

    /// What the program was configured with.
    [[nodiscard]] static const GoogleAddresses& configured();

    /// Whether `address` is one of the sign-in pages, or lies below their host.
    [[nodiscard]] bool isSignIn(const QUrl& address) const;
};

} // namespace wendlore
