#pragma once

#include <chrono>

/// Every measure of the program by name, in device-independent pixels.
namespace wendlore::metrics {

inline constexpr int rowHeight = 28;
inline constexpr int radius = 7;
inline constexpr int inset = 8;   ///< from a pane's edge to its rows
inline constexpr int indent = 26; ///< of a level of the tree
inline constexpr int icon = 16;
inline constexpr int disclosure = 12;
inline constexpr int gap = 7; ///< between an icon and what follows it

inline constexpr int toolbarHeight = 48;
inline constexpr int toolbarMargin = 12;
inline constexpr int toolbarSpacing = 2;
inline constexpr int buttonWidth = 30;
inline constexpr int buttonHeight = 28;
inline constexpr int focusRing = 2;

inline constexpr int sidebarMinimum = 180;
inline constexpr int sidebarIdeal = 220;
inline constexpr int sidebarMaximum = 500;

inline constexpr int textSize = 13;
inline constexpr int titleSize = 20;  ///< of an empty state
inline constexpr int noticeSize = 12; ///< secondary lines
inline constexpr int smallSize = 11;
inline constexpr int emptyIcon = 48;

inline constexpr std::chrono::milliseconds motion{120};

} // namespace wendlore::metrics
