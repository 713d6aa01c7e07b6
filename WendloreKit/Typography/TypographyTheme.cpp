#include "Typography/TypographyTheme.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

template <typename Record, typename Value>
struct Field final
{
    QLatin1String key;
    Value Record::*member;
};

using Level = TypographyLevelStyle;

constexpr std::array numberFields{
    Field<Level, double>{"fontSize"_L1, &Level::fontSize},
    Field<Level, double>{"lineHeight"_L1, &Level::lineHeight},
    Field<Level, double>{"paragraphSpacing"_L1, &Level::paragraphSpacing},
    Field<Level, double>{"spacingAbove"_L1, &Level::spacingAbove},
    Field<Level, double>{"spacingBelow"_L1, &Level::spacingBelow},
    Field<Level, double>{"indent"_L1, &Level::indent},
};

constexpr std::array flagFields{
    Field<Level, bool>{"bold"_L1, &Level::bold},
    Field<Level, bool>{"italic"_L1, &Level::italic},
    Field<Level, bool>{"underline"_L1, &Level::underline},
    Field<Level, bool>{"uppercase"_L1, &Level::uppercase},
};

constexpr std::array levelFields{
    Field<TypographyTheme, Level>{"body"_L1, &TypographyTheme::body},
    Field<TypographyTheme, Level>{"list"_L1, &TypographyTheme::list},
    Field<TypographyTheme, Level>{"h1"_L1, &TypographyTheme::h1},
    Field<TypographyTheme, Level>{"h2"_L1, &TypographyTheme::h2},
    Field<TypographyTheme, Level>{"h3"_L1, &TypographyTheme::h3},
    Field<TypographyTheme, Level>{"h4"_L1, &TypographyTheme::h4},
    Field<TypographyTheme, Level>{"h5"_L1, &TypographyTheme::h5},
};

constexpr auto fontFamilyKey = "fontFamilyKey"_L1;

std::optional<Level> levelFromJson(const QJsonValue& json)
{
    const QJsonObject object = json.toObject();
    Level level;
    const QJsonValue family = object[fontFamilyKey];
    if (!family.isString())
        return std::nullopt;
    level.fontFamilyKey = family.toString();
    for (const auto& field : numberFields) {
        const QJsonValue value = object[field.key];
        if (!value.isDouble())
            return std::nullopt;
        level.*field.member = value.toDouble();
    }
    for (const auto& field : flagFields) {
        const QJsonValue value = object[field.key];
        if (!value.isBool())
            return std::nullopt;
        level.*field.member = value.toBool();
    }
    return level;
}

/// Nothing when a number is not finite: JSON cannot say it.
std::optional<QJsonObject> levelToJson(const Level& level)
{
    QJsonObject object{{fontFamilyKey, level.fontFamilyKey}};
    for (const auto& field : numberFields) {
        if (!std::isfinite(level.*field.member))
            return std::nullopt;
        object[field.key] = level.*field.member;
    }
    for (const auto& field : flagFields)
        object[field.key] = level.*field.member;
    return object;
}

} // namespace

TypographyTheme TypographyTheme::standard()
{
    const Level text{.fontFamilyKey = u"system"_s, .fontSize = 12, .lineHeight = 1.4, .indent = 20};
    const auto heading = [&](double size, double lineHeight, double above, double below) {
        Level level = text;
        level.fontSize = size;
        level.lineHeight = lineHeight;
        level.spacingAbove = above;
        level.spacingBelow = below;
        return level;
    };

    TypographyTheme theme{.body = text,
                          .list = text,
                          .h1 = heading(20, 1.0, 9.7, 12),
                          .h2 = heading(16, 1.15, 26, 7),
                          .h3 = heading(14, 1.15, 20, 3),
                          .h4 = heading(12, 1.15, 14, 3),
                          .h5 = heading(10, 1.15, 18, 3)};
    theme.body.paragraphSpacing = 5.5;
    theme.list.paragraphSpacing = 6;
    theme.h2.bold = theme.h3.bold = theme.h4.bold = true;
    theme.h5.underline = theme.h5.uppercase = true;
    return theme;
}

std::optional<TypographyTheme> TypographyTheme::fromJson(const QByteArray& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    TypographyTheme theme;
    for (const auto& field : levelFields) {
        const auto level = levelFromJson(object[field.key]);
        if (!level)
            return std::nullopt;
        theme.*field.member = *level;
    }
    return theme;
}

std::optional<QByteArray> TypographyTheme::toJson() const
{
    QJsonObject object;
    for (const auto& field : levelFields) {
        const auto level = levelToJson(this->*field.member);
        if (!level)
            return std::nullopt;
        object[field.key] = *level;
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace wendlore
