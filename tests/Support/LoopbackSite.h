#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

namespace wendlore {

/// A web server on this machine, for tests of what the engine fetches. It answers each request as the test
/// says, or leaves it waiting.
class LoopbackSite final : public QTcpServer
{
    Q_OBJECT

public:
    struct Request final
    {
        QByteArray path;
        QByteArray host;
        QByteArray cookies;
    };
    /// Gives the whole answer to a request, head and body; empty to leave it waiting.
    using Answer = std::function<QByteArray(const Request&)>;

    explicit LoopbackSite(Answer answer);

    /// "http://HOST:PORT"; any name of the loopback interface may stand for the host.
    [[nodiscard]] QString origin(const QString& host = QStringLiteral("127.0.0.1")) const;
    /// Answers the requests that are waiting with a missing page.
    void letGo();

    [[nodiscard]] static QByteArray page(const QByteArray& html, const QByteArray& headers = {});
    [[nodiscard]] static QByteArray redirect(const QByteArray& address, const QByteArray& headers = {});

    QList<Request> requests;

private:
    void receive(QTcpSocket* socket);

    Answer m_answer;
    QList<QPointer<QTcpSocket>> m_waiting;
};

} // namespace wendlore
