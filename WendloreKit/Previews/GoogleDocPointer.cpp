#include "Previews/GoogleDocPointer.h"

#include "Vault/ReadFile.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto accountFolder = "GoogleDrive-"_L1;

/// A query's value with all that has a meaning in a query encoded.
QString asQueryValue(const QString& value)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(value, "@"));
}

QString typeOf(const FileURL& file)
{
    const QString extension = file.pathExtension().toLower();
    if (extension == "gsheet"_L1)
        return u"spreadsheets"_s;
    return extension == "gslides"_L1 ? u"presentation"_s : u"document"_s;
}

/// The address that the pointer itself names. Only web addresses are any.
std::optional<QUrl> ownAddress(const QJsonObject& pointer)
{
    const QUrl address(pointer[u"url"_s].toString(), QUrl::StrictMode);
    const bool isWeb = address.scheme() == "https"_L1 || address.scheme() == "http"_L1;
    return address.isValid() && isWeb && !address.host().isEmpty() ? std::optional(address) : std::nullopt;
}

std::optional<QUrl> addressOfIdentifier(const QJsonObject& pointer, const FileURL& file,
                                        const GoogleAddresses& addresses)
{
    const QJsonValue documentId = pointer[u"doc_id"_s];
    const QJsonValue identifier = documentId.isString() ? documentId : pointer[u"resource_id"_s];
    if (!identifier.isString())
        return std::nullopt;
    const QUrl address(addresses.documents.toString(QUrl::StripTrailingSlash) + u'/' + typeOf(file) +
                           "/d/"_L1 + identifier.toString() + "/preview"_L1,
                       QUrl::StrictMode);
    return address.isValid() ? std::optional(address) : std::nullopt;
}

} // namespace

std::optional<QUrl> GoogleDocPointer::previewURL(const FileURL& file, const GoogleAddresses& addresses)
{
    const auto bytes = readFile(file);
    return bytes ? previewURL(file, *bytes, addresses) : std::nullopt;
}

std::optional<QUrl> GoogleDocPointer::previewURL(const FileURL& file, const QByteArray& bytes,
                                                 const GoogleAddresses& addresses)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject pointer = document.object();
    const QString email = accountEmail(file);
    if (const auto own = ownAddress(pointer))
        return withAuthUser(asPreview(*own, addresses), email);
    const auto address = addressOfIdentifier(pointer, file, addresses);
    return address ? std::optional(withAuthUser(*address, email)) : std::nullopt;
}

std::optional<QUrl> GoogleDocPointer::signInURL(const FileURL& file, const QUrl& address,
                                                const GoogleAddresses& addresses)
{
    QUrlQuery query;
    if (const QString email = accountEmail(file); !email.isEmpty())
        query.addQueryItem(u"Email"_s, asQueryValue(email));
    query.addQueryItem(u"continue"_s, asQueryValue(address.toString(QUrl::FullyEncoded)));
    QUrl page = addresses.accounts;
    page.setPath(u"/AccountChooser"_s);
    page.setQuery(query);
    return page.isValid() ? std::optional(page) : std::nullopt;
}

QString GoogleDocPointer::accountEmail(const FileURL& file)
{
    for (const QString& component : file.path().split(u'/', Qt::SkipEmptyParts)) {
        if (!component.startsWith(accountFolder))
            continue;
        const QString account = component.mid(accountFolder.size());
        const QString email = account.left(account.indexOf(" ("_L1)).trimmed();
        if (email.contains(u'@'))
            return email;
    }
    return {};
}

QUrl GoogleDocPointer::asPreview(const QUrl& address, const GoogleAddresses& addresses)
{
    if (!address.host().contains(addresses.documents.host()))
        return address;
    static const QRegularExpression identifier(u"/d/[^/]+/"_s);
    const QString text = address.toString(QUrl::FullyEncoded);
    const QRegularExpressionMatch match = identifier.match(text);
    if (!match.hasMatch())
        return address;
    const QUrl preview(text.left(match.capturedEnd()) + "preview"_L1, QUrl::StrictMode);
    return preview.isValid() ? preview : address;
}

QUrl GoogleDocPointer::withAuthUser(const QUrl& address, const QString& email)
{
    QUrlQuery query(address);
    if (email.isEmpty() || query.hasQueryItem(u"authuser"_s))
        return address;
    query.addQueryItem(u"authuser"_s, asQueryValue(email));
    QUrl extended = address;
    extended.setQuery(query);
    return extended;
}

} // namespace wendlore
