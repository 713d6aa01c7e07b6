#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace wendlore {

/// Files by their places, with what they hold.
using SampleFiles = QList<std::pair<QString, QByteArray>>;

/// The files in an archive, packed by the system's own program: "zip", or what `tar` calls "tar", "tar.gz"
/// and so on.
[[nodiscard]] QByteArray packed(const SampleFiles& files, const QString& format);

/// A tar archive of `count` empty files.
[[nodiscard]] QByteArray tarOfMany(int count);

/// An EPUB book, with a cover, of `chapters` chapters that say "Kapitel 1" and have `paragraphs` paragraphs.
[[nodiscard]] QByteArray bookOf(int chapters, int paragraphs);

/// A second of silence as a WAV file.
[[nodiscard]] QByteArray silence();

/// Three seconds of a film, or of a tone, in the format of the file name `name`.
[[nodiscard]] QByteArray mediaFile(const QString& name);

/// A drawing of many lines: an SVG file.
[[nodiscard]] QByteArray drawing();

/// A TrueType font of the system.
[[nodiscard]] QByteArray systemFont();

} // namespace wendlore
