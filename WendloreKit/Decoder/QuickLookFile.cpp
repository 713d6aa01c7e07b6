#include "Decoder/QuickLookFile.h"

namespace wendlore {

QuickLookFile::QuickLookFile(const FileURL& file)
    : m_name(file.lastPathComponent())
    , m_file(std::make_unique<QFile>(QFile::decodeName(file.bytes())))
{
    static_cast<void>(m_file->open(QIODevice::ReadOnly));
}

QuickLookFile::QuickLookFile(int descriptor, QString name)
    : m_name(std::move(name))
    , m_file(std::make_unique<QFile>())
{
    static_cast<void>(m_file->open(descriptor, QIODevice::ReadOnly));
}

QString QuickLookFile::extension() const
{
    return FileURL::file(m_name).pathExtension().toLower();
}

QFile& QuickLookFile::contents() const
{
    if (isOpen())
        m_file->seek(0);
    return *m_file;
}

} // namespace wendlore
