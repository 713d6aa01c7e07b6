#include "Typography/TypographyScript.h"

#include "Typography/TypographyTheme.h"

#include <QHash>

#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto systemFont = "system"_L1;

QString fontStack(const QString& key)
{
    static const QHash<QString, QString> stacks{
        {systemFont, u"-apple-system, BlinkMacSystemFont, \"SF Pro Text\", system-ui, sans-serif"_s},
        {u"helvetica"_s, u"\"Helvetica Neue\", Helvetica, Arial, sans-serif"_s},
        {u"avenir"_s, u"\"Avenir Next\", Avenir, sans-serif"_s},
        {u"gill-sans"_s, u"\"Gill Sans\", \"Gill Sans MT\", Calibri, sans-serif"_s},
        {u"new-york"_s, u"\"New York\", Georgia, serif"_s},
        {u"georgia"_s, u"Georgia, \"Times New Roman\", serif"_s},
        {u"palatino"_s, u"Palatino, \"Palatino Linotype\", \"Book Antiqua\", serif"_s},
        {u"baskerville"_s, u"Baskerville, \"Baskerville Old Face\", serif"_s},
        {u"mono"_s, u"\"SF Mono\", ui-monospace, Menlo, \"Courier New\", monospace"_s},
        {u"courier"_s, u"\"Courier New\", Courier, monospace"_s},
    };
    return stacks.value(key, stacks[systemFont]);
}

/// Builds the script's statements, each for one property of a level.
class StyleScript final
{
public:
    /// The properties of running text, where `gap` names the space between two paragraphs or items.
    void addText(const QString& prefix, const TypographyLevelStyle& level, const QString& gap)
    {
        addFont(prefix, level);
        set(prefix + gap, pixels(level.paragraphSpacing));
        addLook(prefix, level, 700);
    }
    void addHeading(const QString& prefix, const TypographyLevelStyle& level, int boldWeight)
    {
        addFont(prefix, level);
        set(prefix + "-spacing"_L1, pixels(level.spacingAbove));
        set(prefix + "-spacing-below"_L1, pixels(level.spacingBelow));
        addLook(prefix, level, boldWeight);
    }
    void addIndent(const QString& prefix, const TypographyLevelStyle& level)
    {
        set(prefix + "-indent"_L1, pixels(level.indent));
    }

    [[nodiscard]] QString text() const
    {
        return "(function(){\nvar r=document.documentElement;\n"_L1 + m_statements + "})();"_L1;
    }

private:
    static QString pixels(double value) { return decimalText(value) + "px"_L1; }

    void addFont(const QString& prefix, const TypographyLevelStyle& level)
    {
        set(prefix + "-font"_L1, fontStack(level.fontFamilyKey));
        set(prefix + "-size"_L1, pixels(level.fontSize));
        set(prefix + "-lh"_L1, decimalText(level.lineHeight));
    }
    void addLook(const QString& prefix, const TypographyLevelStyle& level, int boldWeight)
    {
        set(prefix + "-weight"_L1, QString::number(level.bold ? boldWeight : 400));
        set(prefix + "-style"_L1, level.italic ? u"italic"_s : u"normal"_s);
        set(prefix + "-decoration"_L1, level.underline ? u"underline"_s : u"none"_s);
        set(prefix + "-transform"_L1, level.uppercase ? u"uppercase"_s : u"none"_s);
    }
    /// `value` holds no single quote: it is a number or one of this file's own texts.
    void set(const QString& property, const QString& value)
    {
        m_statements += "r.style.setProperty('"_L1 + property + "','"_L1 + value + "');\n"_L1;
    }

    QString m_statements;
};

} // namespace

QString typographyScript(const TypographyTheme& theme)
{
    StyleScript script;
    script.addText(u"--body"_s, theme.body, u"-spacing"_s);
    script.addText(u"--list"_s, theme.list, u"-item-spacing"_s);
    script.addIndent(u"--list"_s, theme.list);
    script.addHeading(u"--h1"_s, theme.h1, 800);
    script.addHeading(u"--h2"_s, theme.h2, 700);
    script.addHeading(u"--h3"_s, theme.h3, 700);
    script.addHeading(u"--h4"_s, theme.h4, 700);
    script.addHeading(u"--h5"_s, theme.h5, 600);
    return script.text();
}

QString zoomScript(double zoom)
{
    return "document.documentElement.style.setProperty('--editor-zoom','"_L1 + decimalText(zoom) + "')"_L1;
}

QString decimalText(double value)
{
    std::array<char, 400> digits; // the longest double takes 345 characters without an exponent
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
    QString text = QString::fromLatin1(digits.data(), end - digits.data());
    return text.contains(u'.') ? text : text + ".0"_L1;
}

} // namespace wendlore
