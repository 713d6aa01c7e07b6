#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace wendlore {

/// Files of the formats that people have, made by the program that makes such files.

/// What `convert` makes of `arguments`, in the format of the file name `name`.
[[nodiscard]] QByteArray pictureFile(const QString& name, const QStringList& arguments);

/// 96 x 64, the left half red and the right half blue.
[[nodiscard]] QByteArray twoHalves(const QString& name);

/// A HEIC photograph, 200 x 100, all green.
[[nodiscard]] QByteArray heicPhotograph();

/// A red and a blue picture, 16 x 16, 200 and 300 ms long, shown `rounds` times (0: without end).
[[nodiscard]] QByteArray movingFile(const QString& name, int rounds);

/// A black and white PNG file of that size, all black: a few kilobytes, however large it is.
[[nodiscard]] QByteArray blackPng(quint32 width, quint32 height);

} // namespace wendlore
