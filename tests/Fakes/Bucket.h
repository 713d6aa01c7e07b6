#pragma once

#include "Vault/FileURL.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <initializer_list>
#include <utility>

namespace wendlore {

/// A folder of notes on the real disk, for one test: `Bucket bucket({{"A.md", "text"}})`. A path that ends in
/// "/" is a folder.
class Bucket final
{
public:
    Bucket(std::initializer_list<std::pair<const char*, const char*>> entries = {})
    {
        for (const auto& [path, text] : entries)
            write(QString::fromUtf8(path), QByteArray(text));
    }

    [[nodiscard]] FileURL root() const { return FileURL::directory(QDir(m_folder.path()).canonicalPath()); }
    [[nodiscard]] FileURL file(const QString& path) const { return root().appending(path); }
    [[nodiscard]] FileURL folder(const QString& path) const { return root().appending(path, true); }

    void write(const QString& path, const QByteArray& bytes) const
    {
        const QString location = root().appending(path).path();
        if (path.endsWith(QLatin1Char('/'))) {
            QDir().mkpath(location);
            return;
        }
        QDir().mkpath(root().appending(path).deletingLastPathComponent().path());
        QFile file(location);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(location));
    }
    [[nodiscard]] QByteArray read(const QString& path) const
    {
        QFile file(root().appending(path).path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] bool exists(const QString& path) const
    {
        return QFile::exists(root().appending(path).path());
    }
    void remove(const QString& path) const { QFile::remove(root().appending(path).path()); }
    /// Names in `folder`, sorted, hidden ones included.
    [[nodiscard]] QStringList names(const QString& folder = {}) const
    {
        return QDir(root().appending(folder).path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace wendlore
