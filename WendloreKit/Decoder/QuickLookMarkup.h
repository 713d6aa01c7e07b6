#pragma once

#include "Decoder/QuickLookLimits.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace wendlore {

/// A part of a book as markup that is safe to show.
struct SafeMarkup final
{
    QByteArray body;
    /// The first heading, or else the title that the document gives itself.
    QString title;
};

/// What an XHTML document says, without scripts, styles, links and forms: only elements that give a text its
/// shape, without attributes. `imageAddress` gives the address of an image from the one in the document; an
/// image without address is left out. A document that breaks off gives what came before.
[[nodiscard]] SafeMarkup safeMarkup(const QByteArray& xhtml,
                                    const std::function<QString(const QString&)>& imageAddress,
                                    const QuickLookLimits& limits);

} // namespace wendlore
