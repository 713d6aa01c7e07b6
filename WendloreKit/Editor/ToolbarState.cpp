#include "Editor/ToolbarState.h"

namespace wendlore {

namespace {

bool flag(const QJsonObject& message, QLatin1String key)
{
    return message.value(key).toBool(false);
}

} // namespace

ToolbarState ToolbarState::fromMessage(const QJsonObject& message)
{
    return {
        .bold = flag(message, QLatin1String("bold")),
        .italic = flag(message, QLatin1String("italic")),
        .highlight = flag(message, QLatin1String("highlight")),
        .bulletList = flag(message, QLatin1String("bulletList")),
        .orderedList = flag(message, QLatin1String("orderedList")),
        .inTable = flag(message, QLatin1String("inTable")),
        .heading = message.value(QLatin1String("heading")).toInt(0),
    };
}

} // namespace wendlore
