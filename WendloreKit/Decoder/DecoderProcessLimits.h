#pragma once

#include <QtGlobal>

/// What the program and the process that decodes for it agree upon.
namespace wendlore::decoder {

inline constexpr auto programName = "wendlores-decoder";
/// The size of the memory for the pixels of a picture, in bytes: a photograph of 150 megapixels.
inline constexpr qint64 mostPixels = 600LL << 20;
/// For everything that it takes, in bytes.
#ifdef __SANITIZE_ADDRESS__
inline constexpr quint64 mostMemory = ~quint64(0); // the sanitizer maps terabytes for itself
#else
inline constexpr quint64 mostMemory = 3'000'000'000;
#endif
/// For one answer.
inline constexpr unsigned mostSeconds = 30;

} // namespace wendlore::decoder
