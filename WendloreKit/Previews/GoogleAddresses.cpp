#include "Previews/GoogleAddresses.h"

using namespace Qt::StringLiterals;

namespace wendlore {

const GoogleAddresses& GoogleAddresses::configured()
{
    static const GoogleAddresses addresses{QUrl(u"" WENDLORE_GOOGLE_DOCUMENTS ""_s),
                                           QUrl(u"" WENDLORE_GOOGLE_ACCOUNTS ""_s)};
    return addresses;
}

bool GoogleAddresses::isSignIn(const QUrl& address) const
{
    const QString host = address.host();
    return host == accounts.host() || host.endsWith(u'.' + accounts.host());
}

} // namespace wendlore
