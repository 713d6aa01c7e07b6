#include "Editor/SchemeReply.h"

#include <QBuffer>
#include <QWebEngineUrlRequestJob>

namespace wendlore {

void reply(QWebEngineUrlRequestJob& job, const QByteArray& type, const QByteArray& bytes)
{
    // The engine reads the body on a thread of its own for as long as the request lives.
    auto* body = new QBuffer;
    QObject::connect(&job, &QObject::destroyed, body, &QObject::deleteLater);
    body->setData(bytes);
    job.reply(type, body);
}

} // namespace wendlore
