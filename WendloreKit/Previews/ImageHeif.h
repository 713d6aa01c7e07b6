#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QImage>

namespace wendlore {

/// Whether `bytes` begin like a HEIC, HEIF or AVIF image.
[[nodiscard]] bool isHeif(const QByteArray& bytes);

/// The primary image of such a file, turned and cropped as the file says and ready to be drawn. Null when it
/// is damaged, or would take more than `limit` bytes of memory or more time than there is. A process of its
/// own decodes it. Blocks: to be called in the background.
[[nodiscard]] QImage decodeHeif(const QByteArray& bytes, qint64 limit, QDeadlineTimer deadline);

} // namespace wendlore
