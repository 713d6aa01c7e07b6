#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <unicode/utypes.h>

#include <compare>
#include <memory>

U_NAMESPACE_BEGIN
class Collator;
U_NAMESPACE_END

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

    /// Bytes that compare as the texts do: for long lists, where many comparisons cost more than making keys.
    [[nodiscard]] QByteArray sortKey(QByteArrayView text) const;

    /// The locale that the user has chosen for sorting.
    [[nodiscard]] static QByteArray userLocale();

private:
    std::unique_ptr<icu::Collator> m_collator;
};

} // namespace wendlore
