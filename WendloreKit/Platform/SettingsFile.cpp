#include "Platform/SettingsFile.h"

#include "Platform/FileLock.h"

#include "Vault/AtomicFile.h"
#include "Vault/PrivateDirectory.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

Q_LOGGING_CATEGORY(settingsLog, "wendlore.settings")

/// The tag of bytes, which JSON does not know: {"data": "<base64>"}.
constexpr auto dataTag = "data"_L1;

QJsonObject taggedData(const QByteArray& bytes)
{
    return {{dataTag, QString::fromLatin1(bytes.toBase64())}};
}

std::optional<QByteArray> untaggedData(const QJsonValue& json)
{
    const QJsonValue text = json.toObject()[dataTag];
    const auto decoded =
        QByteArray::fromBase64Encoding(text.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!text.isString() || !decoded)
        return std::nullopt;
    return *decoded;
}

} // namespace

SettingsFile::SettingsFile(FileURL file)
    : m_file(std::move(file))
{}

std::optional<QByteArray> SettingsFile::data(const QString& key) const
{
    return untaggedData(value(key));
}

std::optional<QByteArrayList> SettingsFile::dataList(const QString& key) const
{
    const QJsonValue list = value(key);
    if (!list.isArray())
        return std::nullopt;
    QByteArrayList elements;
    for (const QJsonValue& element : list.toArray()) {
        if (const auto bytes = untaggedData(element))
            elements.append(*bytes);
    }
    return elements;
}

std::optional<QString> SettingsFile::string(const QString& key) const
{
    const QJsonValue text = value(key);
    return text.isString() ? std::optional(text.toString()) : std::nullopt;
}

double SettingsFile::number(const QString& key) const
{
    return value(key).toDouble();
}

void SettingsFile::setData(const QString& key, const QByteArray& bytes)
{
    set(key, taggedData(bytes));
}

void SettingsFile::setDataList(const QString& key, const QByteArrayList& values)
{
    QJsonArray list;
    for (const QByteArray& bytes : values)
        list.append(taggedData(bytes));
    set(key, list);
}

void SettingsFile::setString(const QString& key, const QString& text)
{
    set(key, text);
}

void SettingsFile::setNumber(const QString& key, double number)
{
    if (std::isfinite(number))
        set(key, number);
}

void SettingsFile::remove(const QString& key)
{
    set(key, QJsonValue(QJsonValue::Undefined));
}

QJsonValue SettingsFile::value(const QString& key) const
{
    refresh();
    return std::as_const(m_values)[key];
}

void SettingsFile::set(const QString& key, const QJsonValue& value)
{
    const FileURL folder = m_file.deletingLastPathComponent();
    if (!makePrivateDirectory(folder)) {
        qCWarning(settingsLog) << "cannot make" << folder.path() << std::strerror(errno);
        return;
    }
    const FileLock lock(FileURL::fromBytes(m_file.bytes() + ".lock", false));
    if (!lock.isHeld())
        qCWarning(settingsLog) << "cannot lock" << m_file.path() << std::strerror(errno);
    if (refresh() == Content::Broken && !putAside())
        return;

    QJsonObject values = m_values;
    values[key] = value;
    const WriteResult result = AtomicFile::write(m_file, QJsonDocument(values).toJson());
    if (!result.succeeded())
        qCWarning(settingsLog) << "cannot write" << m_file.path() << result.error;
}

std::optional<SettingsFile::Version> SettingsFile::versionOnDisk() const
{
    struct stat status;
    if (::stat(m_file.bytes().constData(), &status) != 0)
        return std::nullopt;
    return Version{status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

SettingsFile::Content SettingsFile::refresh() const
{
    const auto version = versionOnDisk();
    if (version && version == m_version)
        return Content::Valid;
    m_values = {};
    m_version = std::nullopt;
    if (!version)
        return Content::Missing;
    QFile file(QFile::decodeName(m_file.bytes()));
    const QJsonDocument json =
        file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()) : QJsonDocument();
    if (!json.isObject())
        return Content::Broken;
    m_values = json.object();
    m_version = version;
    return Content::Valid;
}

bool SettingsFile::putAside() const
{
    const QByteArray stem =
        m_file.bytes() + ".broken-" + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s).toLatin1();
    QByteArray place = stem;
    for (int number = 2; ::renameat2(AT_FDCWD, m_file.bytes().constData(), AT_FDCWD, place.constData(),
                                     RENAME_NOREPLACE) != 0;
         ++number) {
        if (errno != EEXIST) {
            qCWarning(settingsLog) << "cannot put aside" << m_file.path() << std::strerror(errno);
            return false;
        }
        place = stem + '-' + QByteArray::number(number);
    }
    qCWarning(settingsLog) << "the settings in" << m_file.path() << "cannot be read; they lie at"
                           << QFile::decodeName(place) << "now";
    return true;
}

} // namespace wendlore
