#pragma once

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QWebEngineUrlSchemeHandler>

namespace wendlore {

class FileCoordinator;

/// Makes the web engine know the scheme of HTML files. To be called before the application object is made.
void registerHtmlScheme();

/// Serves one HTML file, as it was read before, and the files that it refers to, as long as they lie in one
/// folder. Those are read in the background.
class HtmlSchemeHandler final : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    HtmlSchemeHandler(FileCoordinator& coordinator, const FileURL& file, QByteArray html,
                      const FileURL& folder, QObject* parent = nullptr);

    void requestStarted(QWebEngineUrlRequestJob* job) override;

private:
    FileCoordinator& m_coordinator;
    FileURL m_file;
    QByteArray m_html;
    FileURL m_folder;
};

} // namespace wendlore
