#include "PageFolder.h"

#include <QFile>
#include <QMimeDatabase>
#include <QUrl>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

namespace wendlore {

using namespace Qt::StringLiterals;

PageFolder::PageFolder(QString folder, QObject* parent)
    : QWebEngineUrlSchemeHandler(parent)
    , m_folder(std::move(folder))
{}

void PageFolder::registerScheme()
{
    QWebEngineUrlScheme scheme("vault");
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

void PageFolder::requestStarted(QWebEngineUrlRequestJob* job)
{
    const QString path = m_folder + job->requestUrl().path();
    auto* file = new QFile(path, job);
    if (!file->open(QIODevice::ReadOnly)) {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    job->reply(QMimeDatabase().mimeTypeForFile(path).name().toUtf8(), file);
}

} // namespace wendlore
