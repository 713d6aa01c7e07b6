#include "Vault/CaselessText.h"

#include <unicode/uchar.h>
#include <unicode/unorm.h>

namespace wendlore {

CaselessText::CaselessText(QString text, const QByteArray& locale)
    : m_text(std::move(text))
    , m_options(U_COMPARE_IGNORE_CASE)
{
    if (locale.startsWith("tr") || locale.startsWith("az"))
        m_options |= U_FOLD_CASE_EXCLUDE_SPECIAL_I;
}

bool CaselessText::equals(const QString& other) const
{
    UErrorCode status = U_ZERO_ERROR;
    const int32_t order = unorm_compare(reinterpret_cast<const UChar*>(m_text.utf16()),
                                        int32_t(m_text.size()), reinterpret_cast<const UChar*>(other.utf16()),
                                        int32_t(other.size()), m_options, &status);
    return U_SUCCESS(status) && order == 0;
}

QByteArray CaselessText::userLocale()
{
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (const QByteArray value = qgetenv(name); !value.isEmpty())
            return value;
    }
    return {};
}

} // namespace wendlore
