#pragma once

#include <QString>
#include <QWebEngineUrlSchemeHandler>

namespace wendlore {

/// Serves the files of one folder under vault://app/, so that every measured page has the same kind of
/// origin.
class PageFolder final : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    explicit PageFolder(QString folder, QObject* parent = nullptr);

    /// Makes the scheme known; call it before the application object exists.
    static void registerScheme();

    void requestStarted(QWebEngineUrlRequestJob* job) override;

private:
    QString m_folder;
};

} // namespace wendlore
