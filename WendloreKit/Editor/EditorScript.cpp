#include "Editor/EditorScript.h"

namespace wendlore {

namespace {

void appendUnicodeEscape(QString& literal, char16_t unit)
{
    constexpr char digits[] = "0123456789abcdef";
    literal += QLatin1String("\\u");
    for (const int shift : {12, 8, 4, 0})
        literal += QLatin1Char(digits[(unit >> shift) & 0xF]);
}

/// The letter of the two-character escape of `unit`, or 0 when it has none.
char shortEscape(char16_t unit)
{
    switch (unit) {
    case '"':
    case '\\':
    case '/':
        return static_cast<char>(unit);
    case '\b':
        return 'b';
    case '\f':
        return 'f';
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return 0;
    }
}

/// True when the unit at `index` is half of a surrogate pair whose other half is missing.
bool isLoneSurrogate(QStringView text, qsizetype index)
{
    if (text[index].isHighSurrogate())
        return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    return text[index].isLowSurrogate() && (index == 0 || !text[index - 1].isHighSurrogate());
}

} // namespace

QString jsString(const QString& text)
{
    QString literal;
    literal.reserve(text.size() + text.size() / 16 + 2);
    literal += QLatin1Char('"');
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index].unicode();
        if (const char letter = shortEscape(unit))
            (literal += QLatin1Char('\\')) += QLatin1Char(letter);
        else if (unit < 0x20 || isLoneSurrogate(text, index))
            appendUnicodeEscape(literal, unit);
        else
            literal += text[index];
    }
    literal += QLatin1Char('"');
    return literal;
}

QByteArray asciiScript(const QString& script)
{
    constexpr char16_t lastAscii = 0x7f;
    QString escaped;
    escaped.reserve(script.size() + script.size() / 8);
    for (const QChar character : script) {
        if (character.unicode() <= lastAscii)
            escaped += character;
        else
            appendUnicodeEscape(escaped, character.unicode());
    }
    return escaped.toLatin1();
}

} // namespace wendlore
