#pragma once

#include "Decoder/QuickLookText.h"

namespace wendlore {

/// The rows and cells of a text whose cells are separated by `separator`; cells in quotation marks may hold
/// separators and line breaks, and two quotation marks in them stand for one. At most `limit` cells.
[[nodiscard]] QList<QStringList> tableRows(QStringView text, QChar separator, qsizetype limit);

/// The separator that the first line has most of: a comma, a semicolon, a tabulator or a vertical bar.
[[nodiscard]] QChar separatorOf(QStringView text);

/// A csv or tsv file as a table, its first line as the head.
[[nodiscard]] QuickLookPage tablePage(const TextBeginning& beginning);
[[nodiscard]] QuickLookPage tablePage(const TextBeginning& beginning, QChar separator);

} // namespace wendlore
