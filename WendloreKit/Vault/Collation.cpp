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
#include <optional>
#include <thread>
#include <utility>

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

/// Does both, at the same time where that is worth it.
template <typename One, typename Other>
void doBoth(bool isWorthTwoThreads, const One& one, const Other& other)
{
    if (!isWorthTwoThreads) {
        one();
        other();
        return;
    }
    const std::jthread thread(other);
    one();
}

/// The keys of many names. Those of one list of a thread take over the memory of the one before while that is
/// small: most folders are.
class SortKeys final
{
public:
    SortKeys(std::span<const std::string_view> names, const std::optional<LatinOrder>& latin)
        : m_memory(std::exchange(s_spare, {}))
    {
        const bool isLarge = names.size() >= worthTwoThreads;
        const std::size_t middle = isLarge ? names.size() / 2 : names.size();
        m_memory.keys.resize(names.size());
        doBoth(
            isLarge, [&] { fill(0, names, 0, middle, latin); },
            [&] { fill(1, names, middle, names.size(), latin); });
    }
    ~SortKeys()
    {
        if (m_memory.keys.size() < worthTwoThreads)
            s_spare = std::move(m_memory);
    }
    SortKeys(const SortKeys&) = delete;
    SortKeys& operator=(const SortKeys&) = delete;

    [[nodiscard]] std::size_t count() const { return m_memory.keys.size(); }
    /// Only names in Latin letters have a key.
    [[nodiscard]] bool has(std::size_t place) const { return m_memory.keys[place].isLatin; }
    /// The eight bytes of a key from `start` on as a number that compares like them; zeros stand behind its
    /// end, and nowhere in a key.
    [[nodiscard]] quint64 part(std::uint32_t place, std::size_t start) const
    {
        const Key& key = m_memory.keys[place];
        if (start >= key.size)
            return 0;
        const auto bytes = qFromBigEndian<quint64>(m_memory.bytes[key.half].get() + key.start + start);
        const std::size_t left = key.size - start;
        return left >= partSize ? bytes : bytes & ~quint64(0) << 8 * (partSize - left);
    }

    static constexpr std::size_t partSize = sizeof(quint64);

private:
    struct Key final
    {
        std::uint32_t start = 0;
        std::uint32_t size : 30 = 0;
        std::uint32_t half : 1 = 0;
        std::uint32_t isLatin : 1 = 0;
    };
    struct Memory final
    {
        std::vector<Key> keys;
        std::array<std::unique_ptr<char[]>, 2> bytes;
        std::array<std::size_t, 2> capacities{};
    };

    void fill(std::size_t half, std::span<const std::string_view> names, std::size_t from, std::size_t to,
              const std::optional<LatinOrder>& latin)
    {
        std::size_t size = partSize;
        for (std::size_t place = from; place < to; ++place)
            size += LatinOrder::largestKey(names[place].size());
        if (size > m_memory.capacities[half]) {
            m_memory.bytes[half].reset(new char[size]);
            m_memory.capacities[half] = size;
        }
        char* const start = m_memory.bytes[half].get();
        char* next = start;
        for (std::size_t place = from; place < to; ++place) {
            char* const end = latin ? latin->writeKey(names[place], next) : nullptr;
            Key& key = m_memory.keys[place];
            key.start = std::uint32_t(next - start);
            key.size = std::uint32_t(end != nullptr ? end - next : 0) & largestSize;
            key.half = half & 1;
            key.isLatin = end != nullptr;
            next = end != nullptr ? end : next;
        }
        std::memset(next, 0, partSize);
    }

    static constexpr std::uint32_t largestSize = (1U << 30) - 1;
    static thread_local Memory s_spare;

    Memory m_memory;
};

thread_local SortKeys::Memory SortKeys::s_spare;

/// Sorts places by their keys, eight bytes of all keys at a time, which lie beside each other then.
class KeySort final
{
public:
    KeySort(const SortKeys& keys, const NameOrder::IsBefore& isBefore)
        : m_keys(keys)
        , m_isBefore(isBefore)
    {}

    /// The places that have a key, in order; the others are appended to `rest`.
    [[nodiscard]] std::vector<std::uint32_t> sorted(std::vector<std::uint32_t>& rest) const
    {
        std::vector<Slot> slots;
        slots.reserve(m_keys.count());
        for (std::uint32_t place = 0; place < m_keys.count(); ++place) {
            if (m_keys.has(place))
                slots.push_back({m_keys.part(place, 0), place});
            else
                rest.push_back(place);
        }
        const bool isLarge = slots.size() >= worthTwoThreads;
        const auto upper = isLarge ? splitInTwo(slots) : slots.end();
        doBoth(
            isLarge,
            [&] {
                sort({slots.begin(), upper}, 0);
            },
            [&] {
                sort({upper, slots.end()}, 0);
            });
        std::vector<std::uint32_t> places(slots.size());
        std::ranges::transform(slots, places.begin(), &Slot::place);
        return places;
    }

private:
    struct Slot final
    {
        quint64 part;
        std::uint32_t place;
    };
    using Slots = std::span<Slot>;

    /// Puts about the smaller half first; equal ones stay together.
    [[nodiscard]] static std::vector<Slot>::iterator splitInTwo(std::vector<Slot>& slots)
    {
        std::array<quint64, 101> samples;
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = slots[i * slots.size() / samples.size()].part;
        const auto middle = samples.begin() + samples.size() / 2;
        std::ranges::nth_element(samples, middle);
        return std::partition(slots.begin(), slots.end(),
                              [pivot = *middle](const Slot& slot) { return slot.part < pivot; });
    }

    /// Sorts slots whose keys are the same up to `start`.
    void sort(Slots slots, std::size_t start) const
    {
        std::ranges::sort(slots, {}, &Slot::part);
        for (auto first = slots.begin(); first != slots.end();) {
            const auto end = std::find_if(
                first, slots.end(), [part = first->part](const Slot& slot) { return slot.part != part; });
            if (end - first > 1)
                sortEqual({first, end}, start);
            first = end;
        }
    }

    void sortEqual(Slots slots, std::size_t start) const
    {
        const bool isWholeKey = (slots.front().part & 0xFF) == 0;
        if (isWholeKey) {
            std::ranges::sort(slots, m_isBefore, &Slot::place);
            return;
        }
        for (Slot& slot : slots)
            slot.part = m_keys.part(slot.place, start + SortKeys::partSize);
        sort(slots, start + SortKeys::partSize);
    }

    const SortKeys& m_keys;
    const NameOrder::IsBefore& m_isBefore;
};

/// Both sorted lists as one; `few` may well be the shorter one.
template <typename IsFirst>
std::vector<std::uint32_t> merged(const std::vector<std::uint32_t>& many,
                                  const std::vector<std::uint32_t>& few, const IsFirst& isFirst)
{
    std::vector<std::uint32_t> all;
    all.reserve(many.size() + few.size());
    auto next = many.begin();
    for (const std::uint32_t place : few) {
        const auto end = std::upper_bound(next, many.end(), place, isFirst);
        all.insert(all.end(), next, end);
        all.push_back(place);
        next = end;
    }
    all.insert(all.end(), next, many.end());
    return all;
}

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
    if (names.size() <= 1)
        return std::vector<std::uint32_t>(names.size());
    const SortKeys keys(names, m_rules->latin);
    std::vector<std::uint32_t> rest;
    std::vector<std::uint32_t> places = KeySort(keys, isBefore).sorted(rest);
    if (rest.empty())
        return places;

    const auto isFirst = [&](std::uint32_t left, std::uint32_t right) {
        const auto order = compare(names[left], names[right]);
        return order == 0 ? isBefore(left, right) : order < 0;
    };
    const auto middle = rest.begin() + std::ptrdiff_t(rest.size() / 2);
    doBoth(
        rest.size() >= worthTwoThreads, [&] { std::sort(rest.begin(), middle, isFirst); },
        [&] { std::sort(middle, rest.end(), isFirst); });
    std::inplace_merge(rest.begin(), middle, rest.end(), isFirst);
    return merged(places, rest, isFirst);
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
