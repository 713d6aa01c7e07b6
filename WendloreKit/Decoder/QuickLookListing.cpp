#include "Decoder/QuickLookListing.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace wendlore {

QuickLookPage listingPage(const ArchiveListing& listing)
{
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    QuickLookPage page;
    if (!listing.isWhole)
        page.body = noticeMarkup(u"Här visas de första %1 posterna."_s.arg(listing.entries.size()));
    page.body += "<table class=\"listing\"><thead><tr><th>Namn</th><th class=\"number\">Storlek</th>"
                 "<th>Ändrad</th></tr></thead>";
    for (const ArchiveEntry& entry : listing.entries) {
        page.body += QByteArray("<tr") + (entry.isFolder ? " class=\"folder\"" : "") + "><td>" +
                     escaped(entry.path) + "</td><td class=\"number\">";
        if (entry.size)
            page.body += escaped(swedish.formattedDataSize(*entry.size, 1, QLocale::DataSizeSIFormat));
        page.body += "</td><td>";
        if (entry.modified.isValid())
            page.body += escaped(swedish.toString(entry.modified, u"d MMM yyyy HH:mm"_s));
        page.body += "</td></tr>";
    }
    page.body += "</table>";
    return page;
}

} // namespace wendlore
