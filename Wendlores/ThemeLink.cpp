#include "Wendlores/ThemeLink.h"

#include <QUrlQuery>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace wendlore {

bool isOwnLink(const QUrl& link)
{
    return link.scheme().compare("wendlore"_L1, Qt::CaseInsensitive) == 0;
}

std::optional<TypographyTheme> themeOfLink(const QUrl& link)
{
    if (!isOwnLink(link) || link.host().compare("apply-theme"_L1, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    const auto items = QUrlQuery(link).queryItems(QUrl::FullyDecoded);
    const auto data = std::ranges::find_if(items, [](const auto& item) { return item.first == "data"_L1; });
    if (data == items.end())
        return std::nullopt;
    return TypographyTheme::fromJson(data->second.toUtf8());
}

} // namespace wendlore
