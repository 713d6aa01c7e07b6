#pragma once

#include <QByteArray>

#include <functional>

class QRandomGenerator;

namespace wendlore {

/// A copy of `bytes` with some changed, and at times the end cut off.
[[nodiscard]] QByteArray damagedCopy(QByteArray bytes, QRandomGenerator& random);

/// Whether a process of limited memory and time lives through `open` on copies of a file that are damaged:
/// bytes changed, and some cut off. 60 copies, with LONG set 2,000. The process is a copy of the test's,
/// without its threads: before any test that starts some.
[[nodiscard]] bool survivesDamage(const QByteArray& file, const std::function<void(const QByteArray&)>& open);

} // namespace wendlore
