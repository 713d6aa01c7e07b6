#pragma once

#include "Decoder/QuickLookPage.h"

#include <QList>

#include <optional>
#include <utility>

namespace wendlore {

/// An e-mail as it is saved in a file.
struct MailMessage final
{
    /// The decoded headers by their names in lower case, in their order.
    QList<std::pair<QByteArray, QString>> headers;
    QString text;
    QStringList attachments;

    [[nodiscard]] static MailMessage parse(const QByteArray& bytes);
    [[nodiscard]] QString header(QByteArrayView name) const;
};

/// The text of encoded words in a header ("=?utf-8?q?=C3=A5?=").
[[nodiscard]] QString decodedHeader(const QByteArray& value);

/// What an HTML text says, without its markup.
[[nodiscard]] QString textOfHtml(const QString& html);

/// The e-mail as a page; nothing when the bytes have none of the headers of an e-mail.
[[nodiscard]] std::optional<QuickLookPage> mailPage(const QByteArray& bytes);

} // namespace wendlore
