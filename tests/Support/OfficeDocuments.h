#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace wendlore {

/// What LibreOffice makes documents of, by their ending: text ("docx", "odt", "rtf", "doc"), sheets ("xlsx",
/// "ods", "xls") and slides ("pptx", "odp", "ppt").
[[nodiscard]] const QStringList& officeFormats();

/// A document in one of these formats, made by LibreOffice.
[[nodiscard]] QByteArray officeDocument(const QString& format);

} // namespace wendlore
