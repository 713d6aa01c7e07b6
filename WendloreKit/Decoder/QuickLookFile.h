#pragma once

#include "Vault/FileURL.h"

#include <QFile>

#include <memory>

namespace wendlore {

/// A file that a preview is made of: open, and with its name.
class QuickLookFile final
{
public:
    /// Opens the file.
    QuickLookFile(const FileURL& file);
    /// A file that is open already, and stays so.
    QuickLookFile(int descriptor, QString name);

    [[nodiscard]] bool isOpen() const { return m_file->isOpen(); }
    [[nodiscard]] const QString& name() const { return m_name; }
    /// The name's extension in lower case.
    [[nodiscard]] QString extension() const;
    /// The file to be read from its beginning.
    [[nodiscard]] QFile& contents() const;

private:
    QString m_name;
    std::unique_ptr<QFile> m_file;
};

} // namespace wendlore
