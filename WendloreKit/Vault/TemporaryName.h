#pragma once

#include <QByteArray>

namespace wendlore {

/// A fresh hidden name for a file that is being made: short, so that it fits wherever any name fits.
[[nodiscard]] QByteArray temporaryName();

/// True for names that `temporaryName` gives.
[[nodiscard]] bool isTemporaryName(QByteArrayView name);

/// A fresh hidden name for a file that a new one takes the place of: nobody may simply remove it.
[[nodiscard]] QByteArray displacedName();

/// True for names that `displacedName` gives.
[[nodiscard]] bool isDisplacedName(QByteArrayView name);

} // namespace wendlore
