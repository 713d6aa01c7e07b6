#pragma once

#include <QByteArray>

namespace wendlore {

/// A fresh hidden name for a file that is being made: short, so that it fits wherever any name fits.
[[nodiscard]] QByteArray temporaryName();

/// True for names that `temporaryName` gives.
[[nodiscard]] bool isTemporaryName(QByteArrayView name);

} // namespace wendlore
