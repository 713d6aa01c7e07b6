#include "Vault/Blanks.h"

#include <algorithm>

namespace wendlore {

namespace {

bool isBlank(QChar letter)
{
    return letter == u'\t' || letter.category() == QChar::Separator_Space;
}

} // namespace

QString withoutOuterBlanks(const QString& text)
{
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return text.mid(first - text.begin(), last - first);
}

} // namespace wendlore
