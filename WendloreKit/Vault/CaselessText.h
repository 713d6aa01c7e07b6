#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace wendlore {

/// A text that is compared with others by its letters alone: upper and lower case are equal, and so are the
/// ways of composing one letter ("é" with and without a combining accent). Accents count.
class CaselessText final
{
public:
    /// `locale` as in the environment; Turkish and Azeri keep dotted and dotless i apart.
    explicit CaselessText(QString text, const QByteArray& locale = userLocale());

    [[nodiscard]] bool equals(const QString& other) const;

    /// The locale that the user has chosen for letters.
    [[nodiscard]] static QByteArray userLocale();

private:
    QString m_text;
    uint32_t m_options;
};

} // namespace wendlore
