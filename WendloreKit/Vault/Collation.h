#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <compare>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace wendlore {

/// The order of names in a file browser: by the rules of a language, whatever the case, digit runs by their
/// value ("Note 9" before "Note 10"). May be used by several threads at once.
class NameOrder final
{
public:
    /// `locale` as in the environment ("sv_SE.UTF-8"); "C", "POSIX" and unknown ones give the rules that suit
    /// most languages.
    explicit NameOrder(const QByteArray& locale = userLocale());
    ~NameOrder();

    /// Compares UTF-8 texts. Bytes that are not UTF-8 compare as U+FFFD.
    [[nodiscard]] std::weak_ordering compare(QByteArrayView left, QByteArrayView right) const;

    /// The places of `names` in order, which is much faster than a sort that compares. Where names are equal,
    /// `isBefore` decides between two places, on several threads at once; without it they stay as they are.
    using IsBefore = std::function<bool(std::uint32_t left, std::uint32_t right)>;
    [[nodiscard]] std::vector<std::uint32_t> sorted(std::span<const std::string_view> names,
                                                    const IsBefore& isBefore = std::less<>()) const;

    /// The locale that the user has chosen for sorting.
    [[nodiscard]] static QByteArray userLocale();

private:
    struct Rules;

    [[nodiscard]] static std::shared_ptr<const Rules> rulesFor(const QByteArray& locale);

    std::shared_ptr<const Rules> m_rules;
};

} // namespace wendlore
