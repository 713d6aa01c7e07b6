#pragma once

#include <QByteArray>
#include <QImage>

namespace wendlore {

/// Whether `bytes` begin like a HEIC, HEIF or AVIF image.
[[nodiscard]] bool isHeif(const QByteArray& bytes);

/// The primary image of a HEIC, HEIF or AVIF file, turned and cropped as the file says. Null when it is
/// damaged, or would take more than `limit` bytes of memory.
[[nodiscard]] QImage heifPicture(const QByteArray& bytes, qint64 limit);

} // namespace wendlore
