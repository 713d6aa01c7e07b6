#include "Previews/HtmlSchemeHandler.h"

#include "Previews/HtmlAddress.h"
#include "Previews/ReadForViewing.h"

#include "Editor/SchemeReply.h"
#include "Editor/VaultAddress.h"

#include <QPointer>
#include <QtConcurrent>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

namespace wendlore {

namespace {

constexpr qint64 maximumPartSize = 256LL << 20;

} // namespace

void registerHtmlScheme()
{
    QWebEngineUrlScheme scheme(htmlScheme);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // Every page is an origin of its own, so that its scripts can read no file but their own. With access to
    // local files a link to one can be clicked; loading one is refused elsewhere.
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::NoAccessAllowed |
                    QWebEngineUrlScheme::LocalAccessAllowed);
    QWebEngineUrlScheme::registerScheme(scheme);
}

HtmlSchemeHandler::HtmlSchemeHandler(FileCoordinator& coordinator, const FileURL& file, QByteArray html,
                                     const FileURL& folder, QObject* parent)
    : QWebEngineUrlSchemeHandler(parent)
    , m_coordinator(coordinator)
    , m_file(file.standardized())
    , m_html(std::move(html))
    , m_folder(folder)
{}

void HtmlSchemeHandler::requestStarted(QWebEngineUrlRequestJob* job)
{
    const auto file = fileOfAddress(job->requestUrl());
    if (!file || !file->isBelow(m_folder)) {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    if (file->hasPathOf(m_file)) {
        reply(*job, "text/html; charset=utf-8", m_html);
        return;
    }
    // The engine deletes a request that the page gives up.
    QtConcurrent::run([&coordinator = m_coordinator, file = *file] {
        return readForViewing(coordinator, file, maximumPartSize);
    }).then(this, [job = QPointer(job), file = *file](const std::optional<QByteArray>& bytes) {
        if (!job)
            return;
        if (bytes)
            reply(*job, mimeType(file.pathExtension()), *bytes);
        else
            job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    });
}

} // namespace wendlore
