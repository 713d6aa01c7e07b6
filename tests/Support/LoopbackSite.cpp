#include "Support/LoopbackSite.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

QByteArray headerOf(const QByteArray& head, const QByteArray& name)
{
    for (const QByteArray& line : head.split('\n')) {
        if (line.toLower().startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

} // namespace

LoopbackSite::LoopbackSite(Answer answer)
    : m_answer(std::move(answer))
{
    if (!listen(QHostAddress::LocalHost))
        qFatal("cannot listen on the loopback interface");
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = nextPendingConnection())
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { receive(socket); });
    });
}

QString LoopbackSite::origin(const QString& host) const
{
    return u"http://%1:%2"_s.arg(host).arg(serverPort());
}

void LoopbackSite::receive(QTcpSocket* socket)
{
    const QByteArray head = socket->peek(1 << 16);
    if (!head.contains("\r\n\r\n"))
        return;
    socket->readAll();
    const QList<QByteArray> words = head.left(head.indexOf('\n')).split(' ');
    requests.append({words.value(1), headerOf(head, "host"), headerOf(head, "cookie")});
    const QByteArray answer = m_answer(requests.last());
    if (answer.isEmpty()) {
        m_waiting.append(socket);
        return;
    }
    socket->write(answer);
    socket->disconnectFromHost();
}

void LoopbackSite::letGo()
{
    for (const auto& socket : std::exchange(m_waiting, {})) {
        if (socket) {
            socket->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            socket->disconnectFromHost();
        }
    }
}

QByteArray LoopbackSite::page(const QByteArray& html, const QByteArray& headers)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nConnection: close\r\n" + headers +
           "Content-Length: " + QByteArray::number(html.size()) + "\r\n\r\n" + html;
}

QByteArray LoopbackSite::redirect(const QByteArray& address, const QByteArray& headers)
{
    return "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\n" + headers +
           "Location: " + address + "\r\n\r\n";
}

} // namespace wendlore
