#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

namespace wendlore {

class FileURL;

/// A few values by key that follow the user to all of their devices. Used on the main thread.
class CloudKeyValueStore : public QObject
{
    Q_OBJECT

public:
    /// What is stored under `key` as far as this device knows; nothing when there is no such value.
    [[nodiscard]] virtual std::optional<QByteArray> data(const QString& key) = 0;
    virtual void setData(const QString& key, const QByteArray& value) = 0;
    /// Takes in what has arrived from other devices.
    virtual void synchronize() = 0;
    /// Shares the values through `folder` from now on: those of this device come along, and join what other
    /// devices have there.
    virtual void moveTo(const FileURL& folder) = 0;

Q_SIGNALS:
    /// Another device, or another process on this one, changed a value.
    void changedExternally();
};

} // namespace wendlore
