#include "Vault/Collation.h"

#include <QList>

#include <unicode/coll.h>
#include <unicode/stringpiece.h>

namespace wendlore {

namespace {

/// The rules for `locale`, which names no charset: "sv_SE". Never leaves the choice of the locale to ICU,
/// which would take the "C" locale's own order with all capitals first.
icu::Locale collationLocale(const QByteArray& locale)
{
    const QByteArray language = locale.split('.').constFirst();
    return language.isEmpty() || language == "C" || language == "POSIX"
               ? icu::Locale::getRoot()
               : icu::Locale::createCanonical(language.constData());
}

icu::StringPiece piece(QByteArrayView text)
{
    return {text.data(), static_cast<int32_t>(text.size())};
}

} // namespace

NameOrder::NameOrder(const QByteArray& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    m_collator.reset(icu::Collator::createInstance(collationLocale(locale), status));
    if (U_FAILURE(status)) {
        // The environment names no locale at all: any text can stand there.
        status = U_ZERO_ERROR;
        m_collator.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }
    if (U_FAILURE(status))
        qFatal("the collation rules of ICU are missing: %s", u_errorName(status));
    m_collator->setStrength(icu::Collator::SECONDARY);
    m_collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    m_collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
}

NameOrder::~NameOrder() = default;

std::weak_ordering NameOrder::compare(QByteArrayView left, QByteArrayView right) const
{
    UErrorCode status = U_ZERO_ERROR;
    return m_collator->compareUTF8(piece(left), piece(right), status) <=> 0;
}

QByteArray NameOrder::sortKey(QByteArrayView text) const
{
    const icu::UnicodeString decoded = icu::UnicodeString::fromUTF8(piece(text));
    QByteArray key(128, Qt::Uninitialized);
    const auto bytes = [&key] { return reinterpret_cast<uint8_t*>(key.data()); };
    const int32_t size = m_collator->getSortKey(decoded, bytes(), static_cast<int32_t>(key.size()));
    if (size > key.size()) {
        key.resize(size);
        m_collator->getSortKey(decoded, bytes(), size);
    }
    key.truncate(size);
    return key;
}

QByteArray NameOrder::userLocale()
{
    for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        if (const QByteArray value = qgetenv(name); !value.isEmpty())
            return value;
    }
    return {};
}

} // namespace wendlore
