#pragma once

#include <functional>

namespace wendlore {

/// Runs `work` to its end on a thread that takes the processor only as far as others leave it, and so do the
/// threads that it starts. For work that nobody waits for.
void atLowPriority(const std::function<void()>& work);

} // namespace wendlore
