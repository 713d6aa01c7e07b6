#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

/// The width of an embedded sidebar, in device-independent pixels.
namespace wendlore::sidebarWidth {

inline constexpr double minimum = 200;
inline constexpr double standard = 250;
inline constexpr double maximum = 380;

/// The width to start with, after the one that was saved.
[[nodiscard]] inline double initial(std::optional<double> saved)
{
    return saved ? std::clamp(*saved, minimum, maximum) : standard;
}

/// Whether `width` differs enough from what is saved to be saved anew.
[[nodiscard]] inline bool isWorthSaving(double width, std::optional<double> saved)
{
    constexpr double tolerance = 0.5;
    return width > 0 && std::abs(width - saved.value_or(-1)) > tolerance;
}

} // namespace wendlore::sidebarWidth
