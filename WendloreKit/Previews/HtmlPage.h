#pragma once

#include "Editor/QuietPage.h"
#include "Vault/FileURL.h"

#include <QWebEngineUrlRequestInterceptor>

namespace wendlore {

/// The page that shows one HTML file. Clicked links go to whoever listens; scripts can read no other file.
class HtmlPage final : public QuietPage
{
    Q_OBJECT

public:
    HtmlPage(const FileURL& file, QWebEngineProfile* profile, QObject* parent = nullptr);

Q_SIGNALS:
    /// A web or mail address was clicked.
    void addressClicked(const QUrl& address);
    /// A link to another file was clicked.
    void fileClicked(const wendlore::FileURL& file);

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;

private:
    /// Does what a click on `link` means; true when the page is to follow it.
    bool follow(const QUrl& link);

    FileURL m_file;
};

/// Refuses what the engine would read from the disk by itself.
class HtmlRequests final : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;
};

} // namespace wendlore
