#pragma once

#include "Vault/CaseFolding.h"

#include <QString>

namespace wendlore {

/// A text that is compared with others by its letters alone: upper and lower case are equal, and so are the
/// ways of composing one letter ("é" with and without a combining accent). Accents count.
class CaselessText final
{
public:
    explicit CaselessText(QString text, FoldingRule rule = userFoldingRule());

    [[nodiscard]] bool equals(const QString& other) const;

private:
    QString m_text;
    FoldingRule m_rule;
};

} // namespace wendlore
