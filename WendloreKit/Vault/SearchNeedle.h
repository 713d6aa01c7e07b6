#pragma once

#include "Vault/ByteScanner.h"
#include "Vault/CaseFolding.h"

#include <optional>
#include <string_view>
#include <vector>

namespace wendlore {

/// A query, made ready to be looked for in UTF-8 text: case-insensitively, with accents significant, and with
/// canonically equal spellings equal. A match begins and ends between user-perceived characters. Safe to use
/// from several threads.
class SearchNeedle final
{
public:
    /// One line of a text, without its end: byte offsets.
    struct Line final
    {
        std::size_t start = 0;
        std::size_t end = 0;

        friend bool operator==(const Line&, const Line&) = default;
    };

    /// `query` is UTF-8 and not empty.
    explicit SearchNeedle(std::string_view query, FoldingRule rule = FoldingRule::standard,
                          ByteScanner::Width width = ByteScanner::Width::widest);

    /// The first line of `text` that holds the query. `text` is valid UTF-8, and `ByteScanner::padding` bytes
    /// behind it are readable. A byte order mark at its start belongs to no line. For a query that itself
    /// holds a line end the line is empty.
    [[nodiscard]] std::optional<Line> firstLine(std::string_view text) const;
    /// True when a short text such as a file name holds the query; needs no padding.
    [[nodiscard]] bool isIn(std::string_view text) const;

private:
    enum class Verdict { matches, differs, unsure };

    [[nodiscard]] Verdict verify(std::string_view text, std::size_t candidate) const;
    [[nodiscard]] Verdict compareFrom(std::string_view text, std::size_t start) const;
    [[nodiscard]] Verdict besideOddCharacter(char first) const;
    [[nodiscard]] static Verdict differAt(char32_t wanted, char32_t found);
    [[nodiscard]] bool lineHolds(std::string_view line) const;

    FoldingRule m_rule;
    icu::UnicodeString m_form;
    std::vector<char32_t> m_codePoints;
    ByteScanner m_scanner;
    int m_unitsBefore = 0;
    bool m_spansLines = false;
    bool m_hasControls = false;
};

} // namespace wendlore
