#include "Vault/Collation.h"

#include "Vault/LatinOrder.h"

#include <QHash>
#include <QList>
#include <QtEndian>

#include <unicode/coll.h>
#include <unicode/stringpiece.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <numeric>
#include <optional>
#include <thread>

namespace wendlore {

namespace {

/// So many names are sorted sooner in two halves at a time.
constexpr std::size_t worthTwoThreads = 2'000;

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

/// The keys of many names, made in two parts that different threads can fill.
class SortKeys final
{
public:
    explicit SortKeys(std::size_t count)
        : m_keys(count)
    {}

    /// Makes the keys of the names from place `from` up to `to`, for `part` 0 or 1.
    void fill(std::size_t part, std::span<const std::string_view> names, std::size_t from, std::size_t to,
              const std::optional<LatinOrder>& latin)
    {
        std::string& bytes = m_bytes[part];
        std::size_t size = sizeof(quint64);
        for (std::size_t place = from; place < to; ++place)
            size += names[place].size() + 2;
        bytes.reserve(size);
        for (std::size_t place = from; place < to; ++place) {
            Key& key = m_keys[place];
            key.start = std::uint32_t(bytes.size());
            key.isLatin = latin && latin->appendKey(names[place], bytes);
            key.size = std::uint32_t(bytes.size() - key.start);
        }
        bytes.append(sizeof(quint64), '\0');
        for (std::size_t place = from; place < to; ++place) {
            m_keys[place].part = std::uint32_t(part);
            m_keys[place].beginning = qFromBigEndian<quint64>(bytes.data() + m_keys[place].start);
        }
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
        const int order = std::memcmp(bytesOf(one), bytesOf(two), common);
        return order != 0 ? order <=> 0 : std::size_t(one.size) <=> std::size_t(two.size);
    }

private:
    struct Key final
    {
        quint64 beginning = 0; ///< decides most comparisons
        std::uint32_t start = 0;
        std::uint32_t size : 30 = 0;
        std::uint32_t part : 1 = 0;
        std::uint32_t isLatin : 1 = 0;
    };

    [[nodiscard]] const char* bytesOf(const Key& key) const { return m_bytes[key.part].data() + key.start; }

    std::vector<Key> m_keys;
    std::array<std::string, 2> m_bytes;
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
    SortKeys keys(names.size());
    std::vector<std::uint32_t> places(names.size());
    std::iota(places.begin(), places.end(), 0U);
    const auto isFirst = [&](std::uint32_t left, std::uint32_t right) {
        const auto order = keys.compare(left, right);
        const auto known = order ? *order : compare(names[left], names[right]);
        return known == 0 ? isBefore(left, right) : known < 0;
    };
    const auto sortPart = [&](std::size_t part, std::size_t from, std::size_t to) {
        keys.fill(part, names, from, to, m_rules->latin);
        std::sort(places.begin() + std::ptrdiff_t(from), places.begin() + std::ptrdiff_t(to), isFirst);
    };
    const std::size_t middle = places.size() < worthTwoThreads ? places.size() : places.size() / 2;
    if (middle == places.size()) {
        sortPart(0, 0, middle);
        return places;
    }
    {
        const std::jthread other([&] { sortPart(1, middle, places.size()); });
        sortPart(0, 0, middle);
    }
    std::inplace_merge(places.begin(), places.begin() + std::ptrdiff_t(middle), places.end(), isFirst);
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
