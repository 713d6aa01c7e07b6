#pragma once

#include <QtGlobal>

/// What the program and the process that decodes for it agree upon.
namespace wendlore::decoder {

inline constexpr auto programName = "wendlores-decoder";
/// Where the process finds the file that it is to read.
inline constexpr int fileDescriptor = 3;
/// Where it finds the memory for the pixels of a picture, if it is given any.
inline constexpr int pixelsDescriptor = 4;
/// The size of that memory, in bytes: a photograph of 150 megapixels.
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
