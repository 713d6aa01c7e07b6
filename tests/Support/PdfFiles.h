#pragma once

#include <QByteArray>
#include <QStringList>

namespace wendlore {

/// A PDF document of A4 pages; each shows its text, a line of it in a line.
[[nodiscard]] QByteArray pdfOf(const QStringList& pages);

} // namespace wendlore
