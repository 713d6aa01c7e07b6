#pragma once

#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace wendlore {

/// A user's home, for a program that is started as this user.
class ProgramHome final
{
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString filePath(const QString& name) const { return m_folder.filePath(name); }
    /// The environment of a program that draws on `platform`.
    [[nodiscard]] QProcessEnvironment environment(const QString& platform) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME",
                                     "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(QString::fromLatin1(variable), m_folder.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
        environment.insert(QStringLiteral("QTWEBENGINE_DISABLE_SANDBOX"), QStringLiteral("1"));
        return environment;
    }

private:
    QTemporaryDir m_folder;
};

} // namespace wendlore
