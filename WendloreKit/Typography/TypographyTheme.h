#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace wendlore {

/// The style of one text level. Sizes and spacings are in points; `lineHeight` is a multiple of the font
/// size.
struct TypographyLevelStyle final
{
    QString fontFamilyKey; ///< key of a font family; "system" is the system font
    double fontSize = 0;
    double lineHeight = 0;
    double paragraphSpacing = 0;
    double spacingAbove = 0;
    double spacingBelow = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool uppercase = false;
    double indent = 0;

    friend bool operator==(const TypographyLevelStyle&, const TypographyLevelStyle&) = default;
};

/// The typography of the editor: body text, list items and five heading levels.
struct TypographyTheme final
{
    TypographyLevelStyle body;
    TypographyLevelStyle list;
    TypographyLevelStyle h1;
    TypographyLevelStyle h2;
    TypographyLevelStyle h3;
    TypographyLevelStyle h4;
    TypographyLevelStyle h5;

    /// The theme that is used when none is stored and none is shipped.
    [[nodiscard]] static TypographyTheme standard();
    /// Reads a theme file. Strict: a missing level or key, or a value of the wrong type, gives nothing; extra
    /// keys are ignored.
    [[nodiscard]] static std::optional<TypographyTheme> fromJson(const QByteArray& json);
    /// Compact JSON of the form that `fromJson` reads; nothing when a number is not finite.
    [[nodiscard]] std::optional<QByteArray> toJson() const;

    friend bool operator==(const TypographyTheme&, const TypographyTheme&) = default;
};

} // namespace wendlore
