#pragma once

#include <QtGlobal>

/// What the program and the process that decodes for it agree upon.
namespace wendlore::decoder {

inline constexpr auto programName = "wendlores-decoder";
/// Where the process finds the file that it is to read.
inline constexpr int fileDescriptor = 3;
/// For everything that it takes, in bytes.
inline constexpr quint64 mostMemory = 3'000'000'000;
/// For one answer.
inline constexpr unsigned mostSeconds = 30;

} // namespace wendlore::decoder
