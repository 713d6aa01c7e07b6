#include "Vault/CaselessText.h"

#include <unicode/uchar.h>
#include <unicode/unorm.h>

namespace wendlore {

CaselessText::CaselessText(QString text, FoldingRule rule)
    : m_text(std::move(text))
    , m_rule(rule)
{}

bool CaselessText::equals(const QString& other) const
{
    UErrorCode status = U_ZERO_ERROR;
    const uint32_t special = m_rule == FoldingRule::turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : 0;
    const int32_t order = unorm_compare(reinterpret_cast<const UChar*>(m_text.utf16()),
                                        int32_t(m_text.size()), reinterpret_cast<const UChar*>(other.utf16()),
                                        int32_t(other.size()), U_COMPARE_IGNORE_CASE | special, &status);
    return U_SUCCESS(status) && order == 0;
}

} // namespace wendlore
