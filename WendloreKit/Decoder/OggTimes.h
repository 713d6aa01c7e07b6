#pragma once

#include <QByteArray>

namespace wendlore {

/// An Ogg file, or its beginning, with its sound a twentieth of a second later. Vorbis and Opus begin before
/// the zero of their time, with what decoders need to get going, and web engines built on the system's FFmpeg
/// refuse to play that; that the times of what follows a beginning are what they were is nothing to them.
/// What is no Ogg file, or comes after damage, stays as it is.
[[nodiscard]] QByteArray oggWithLaterSound(QByteArray file);

} // namespace wendlore
