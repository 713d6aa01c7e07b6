#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QStringList>

namespace wendlore {

/// A PDF document of A4 pages; each shows its text, a line of it in a line.
[[nodiscard]] QByteArray pdfOf(const QStringList& pages);

/// A PDF file of two pages of 595 times 842 points. On the first, the area that begins at (100, 92) from the
/// top left and is 200 times 50 large leads to `address`, and the one of that size at (100, 292) to the
/// middle of the second page.
[[nodiscard]] QByteArray pdfWithLinks(const QByteArray& address);

/// A PDF file with empty pages of these sizes, in points.
[[nodiscard]] QByteArray pdfOfSizes(const QList<QSize>& pages);

} // namespace wendlore
