#include "Decoder/QuickLookPictures.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

const QStringList& picturePlaces()
{
    static const QStringList places{
        u"preview.jpg"_s,           u"QuickLook/Thumbnail.jpg"_s,  u"preview-web.jpg"_s,
        u"QuickLook/Preview.jpg"_s, u"Thumbnails/thumbnail.png"_s, u"docProps/thumbnail.jpeg"_s};
    return places;
}

std::optional<QuickLookPage> picturePage(const QHash<QString, QByteArray>& pictures)
{
    const auto place =
        std::ranges::find_if(picturePlaces(), [&](const QString& known) { return pictures.contains(known); });
    if (place == picturePlaces().end())
        return std::nullopt;
    QuickLookPage page;
    page.body = "<div class=\"centered\"><img src=\"r/bild\" alt=\"\"></div>";
    page.resources.insert(u"bild"_s,
                          {pictures.value(*place), place->endsWith(u"png"_s) ? "image/png" : "image/jpeg"});
    return page;
}

} // namespace wendlore
