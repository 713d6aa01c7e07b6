#pragma once

#include <QByteArrayView>

namespace wendlore {

/// Where the extension's full stop stands in a file name, or -1 when the name has no extension (as "README",
/// ".profile" and a name that ends in a full stop).
[[nodiscard]] inline qsizetype extensionStop(QByteArrayView name)
{
    const qsizetype stop = name.lastIndexOf('.');
    return stop <= 0 || stop == name.size() - 1 ? -1 : stop;
}

/// "md" of "a.b.md"; empty when the name has no extension.
[[nodiscard]] inline QByteArrayView extensionOf(QByteArrayView name)
{
    const qsizetype stop = extensionStop(name);
    return stop < 0 ? QByteArrayView() : name.sliced(stop + 1);
}

/// "a.b" of "a.b.md".
[[nodiscard]] inline QByteArrayView withoutExtension(QByteArrayView name)
{
    const qsizetype stop = extensionStop(name);
    return stop < 0 ? name : name.first(stop);
}

} // namespace wendlore
