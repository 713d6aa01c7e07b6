#pragma once

#include <QString>

namespace wendlore {

class FileURL;

/// What people call files of that kind: "PDF-dokument", "Kalkylark", or "ZIP-fil" for an extension that the
/// program does not know.
[[nodiscard]] QString kindOf(const FileURL& file);

} // namespace wendlore
