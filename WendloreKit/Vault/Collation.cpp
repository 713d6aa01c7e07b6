#include "Vault/Collation.h"

#include "Vault/LatinOrder.h"

#include <QHash>
#include <QList>
#include <QtEndian>

#include <unicode/coll.h>
#include <unicode/stringpiece.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <numeric>
#include <optional>
#include <thread>

namespace wendlore {

namespace {

/// So many names are sorted sooner in two halves at a time.
constexpr std::size_t worthTwoThreads = 10'000;

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

std::unique_ptr<icu::Collator> collatorFor(const QByteArray& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(collationLocale(locale), status));
    if (U_FAILURE(status)) {
        // The environment names no locale at all: any text can stand there.
        status = U_ZERO_ERROR;
        collator.reset(icu::Collator::createInstance(icu::Locale::getRoot(), status));
    }
    if (U_FAILURE(status))
        qFatal("the collation rules of ICU are missing: %s", u_errorName(status));
    collator->setStrength(icu::Collator::SECONDARY);
    collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    return collator;
}

/// The keys of many names in one piece of memory.
class SortKeys final
{
public:
    SortKeys(std::span<const std::string_view> names, const std::optional<LatinOrder>& latin)
    {
        m_keys.reserve(names.size());
        std::size_t size = sizeof(quint64);
        for (const std::string_view name : names)
            size += name.size() + 2;
        m_bytes.reserve(size);
        for (const std::string_view name : names) {
            const std::size_t start = m_bytes.size();
            const bool isLatin = latin && latin->appendKey(name, m_bytes);
            m_keys.push_back({0, std::uint32_t(start), std::uint32_t(m_bytes.size() - start), isLatin});
        }
        m_bytes.append(sizeof(quint64), '\0');
        for (Key& key : m_keys)
            key.beginning = qFromBigEndian<quint64>(m_bytes.data() + key.start);
    }

    /// Nothing where one of the names has no key.
    [[nodiscard]] std::optional<std::weak_ordering> compare(std::uint32_t left, std::uint32_t right) const
    {
        const Key& one = m_keys[left];
        const Key& two = m_keys[right];
        if (!one.isLatin || !two.isLatin)
            return std::nullopt;
        const std::size_t common = std::min<std::size_t>(one.size, two.size);
        if (common >= sizeof one.beginning && one.beginning != two.beginning)
            return one.beginning <=> two.beginning;
        const int order = std::memcmp(m_bytes.data() + one.start, m_bytes.data() + two.start, common);
        return order != 0 ? order <=> 0 : std::size_t(one.size) <=> std::size_t(two.size);
    }

private:
    struct Key final
    {
        quint64 beginning = 0; ///< decides most comparisons
        std::uint32_t start = 0;
        std::uint32_t size : 31 = 0;
        std::uint32_t isLatin : 1 = 0;
    };

    std::vector<Key> m_keys;
    std::string m_bytes;
};

} // namespace

struct NameOrder::Rules final
{
    explicit Rules(std::unique_ptr<icu::Collator> rules)
        : collator(std::move(rules))
    {
        if (const auto* ofTable = dynamic_cast<const icu::RuleBasedCollator*>(collator.get()))
            latin.emplace(*ofTable);
    }

    std::unique_ptr<icu::Collator> collator;
    std::optional<LatinOrder> latin;
};

NameOrder::NameOrder(const QByteArray& locale)
    : m_rules(rulesFor(locale))
{}

NameOrder::~NameOrder() = default;

std::shared_ptr<const NameOrder::Rules> NameOrder::rulesFor(const QByteArray& locale)
{
    // One user has one locale, and learning an order takes longer than sorting by it.
    static std::mutex mutex;
    static QHash<QByteArray, std::shared_ptr<const Rules>> known;
    const std::lock_guard lock(mutex);
    std::shared_ptr<const Rules>& rules = known[locale];
    if (!rules)
        rules = std::make_shared<const Rules>(collatorFor(locale));
    return rules;
}

std::weak_ordering NameOrder::compare(QByteArrayView left, QByteArrayView right) const
{
    UErrorCode status = U_ZERO_ERROR;
    return m_rules->collator->compareUTF8(piece(left), piece(right), status) <=> 0;
}

std::vector<std::uint32_t> NameOrder::sorted(std::span<const std::string_view> names,
                                             const IsBefore& isBefore) const
{
    const SortKeys keys(names, m_rules->latin);
    std::vector<std::uint32_t> places(names.size());
    std::iota(places.begin(), places.end(), 0U);
    const auto isFirst = [&](std::uint32_t left, std::uint32_t right) {
        const auto order = keys.compare(left, right);
        const auto known = order ? *order : compare(names[left], names[right]);
        return known == 0 ? isBefore(left, right) : known < 0;
    };
    if (places.size() < worthTwoThreads) {
        std::ranges::sort(places, isFirst);
        return places;
    }
    const auto middle = places.begin() + std::ptrdiff_t(places.size() / 2);
    {
        const std::jthread other([&] { std::sort(middle, places.end(), isFirst); });
        std::sort(places.begin(), middle, isFirst);
    }
    std::inplace_merge(places.begin(), middle, places.end(), isFirst);
    return places;
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
