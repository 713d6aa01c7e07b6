#pragma once

#include <QtGlobal>

/// What the program and the process that decodes for it agree upon.
namespace wendlore::decoder {

inline constexpr auto programName = "wendlores-decoder";
/// Where the process finds the file that it is to read.
inline constexpr int fileDescriptor = 3;
/// For everything that it takes, in bytes.
#ifdef __SANITIZE_ADDRESS__
inline constexpr quint64 mostMemory = ~quint64(0); // the sanitizer maps terabytes for itself
#else
inline constexpr quint64 mostMemory = 3'000'000'000;
#endif
/// For one answer.
inline constexpr unsigned mostSeconds = 30;

} // namespace wendlore::decoder
