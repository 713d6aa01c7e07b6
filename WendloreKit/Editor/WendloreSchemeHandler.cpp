#include "Editor/WendloreSchemeHandler.h"

#include "Editor/SchemeReply.h"
#include "Editor/VaultAddress.h"
#include "State/ResourceBundle.h"
#include "Vault/DiskEntry.h"
#include "Vault/ReadFile.h"

#include <QPointer>
#include <QtConcurrent>
#include <QWebEngineUrlRequestJob>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The editor page's folder; nothing when the page was not built.
std::optional<FileURL> distDir()
{
    const FileURL page = resourceBundle().appending(u"dist/index.html"_s);
    return existsOnDisk(page) ? std::optional(page.deletingLastPathComponent()) : std::nullopt;
}

void answer(QWebEngineUrlRequestJob& job, const QString& extension, const QByteArray& bytes)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    // Older engines take no headers from here; they keep nothing of this scheme either, and treat its pages
    // as one origin, so that only the page's own files and images can be asked for.
    job.setAdditionalResponseHeaders({{"Access-Control-Allow-Origin", "*"}, {"Cache-Control", "no-cache"}});
#endif
    reply(job, mimeType(extension), bytes);
}

} // namespace

WendloreSchemeHandler::WendloreSchemeHandler(QObject* parent)
    : QWebEngineUrlSchemeHandler(parent)
{}

void WendloreSchemeHandler::requestStarted(QWebEngineUrlRequestJob* job)
{
    if (!job->requestUrl().isValid()) {
        job->fail(QWebEngineUrlRequestJob::UrlInvalid);
        return;
    }
    if (m_beginning && job->requestUrl().path() == "/begin.js"_L1) {
        answer(*job, u"js"_s, m_beginning());
        return;
    }
    const auto bucket = m_vaultProvider ? m_vaultProvider() : std::nullopt;
    const auto file = vaultFile(job->requestUrl(), bucket, distDir());
    if (!file) {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    // The engine deletes a request that the page gives up.
    QtConcurrent::run([file = *file] {
        return readFile(file);
    }).then(this, [job = QPointer(job), file = *file](const std::optional<QByteArray>& bytes) {
        if (!job)
            return;
        if (bytes)
            answer(*job, file.pathExtension(), *bytes);
        else
            job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    });
}

} // namespace wendlore
