#pragma once

class QByteArray;
class QWebEngineUrlRequestJob;

namespace wendlore {

/// Answers a request of a page with `bytes` of the content type `type`.
void reply(QWebEngineUrlRequestJob& job, const QByteArray& type, const QByteArray& bytes);

} // namespace wendlore
