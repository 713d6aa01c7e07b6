#pragma once

#include "Fakes/Bucket.h"
#include "Support/Programs.h"

namespace wendlore {

/// A HEIC photograph, 200 times 100 pixels, all green.
[[nodiscard]] inline QByteArray heicPhotograph()
{
    const Bucket bucket;
    const QString name = QStringLiteral("a.heic");
    runProgram(QStringLiteral("convert"), {QStringLiteral("-size"), QStringLiteral("200x100"),
                                           QStringLiteral("xc:green"), bucket.file(name).path()});
    return bucket.read(name);
}

} // namespace wendlore
