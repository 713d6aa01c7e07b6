#include "Decoder/DecoderWire.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr int lookEvery = 50; // milliseconds

/// A message that carries two descriptors beside one byte.
class FilesMessage final
{
public:
    FilesMessage()
    {
        m_message.msg_iov = &m_part;
        m_message.msg_iovlen = 1;
        m_message.msg_control = m_space;
        m_message.msg_controllen = sizeof(m_space);
    }
    Q_DISABLE_COPY_MOVE(FilesMessage)

    [[nodiscard]] msghdr* header() { return &m_message; }
    void setFiles(const DecoderWire::Files& files)
    {
        cmsghdr* const control = CMSG_FIRSTHDR(&m_message);
        control->cmsg_level = SOL_SOCKET;
        control->cmsg_type = SCM_RIGHTS;
        control->cmsg_len = CMSG_LEN(sizeof(files));
        std::memcpy(CMSG_DATA(control), files.data(), sizeof(files));
    }
    [[nodiscard]] std::optional<DecoderWire::Files> files()
    {
        const cmsghdr* const control = CMSG_FIRSTHDR(&m_message);
        DecoderWire::Files files;
        if (!control || control->cmsg_type != SCM_RIGHTS || control->cmsg_len != CMSG_LEN(sizeof(files)))
            return std::nullopt;
        std::memcpy(files.data(), CMSG_DATA(control), sizeof(files));
        return files;
    }

private:
    char m_byte = 0;
    iovec m_part{&m_byte, 1};
    alignas(cmsghdr) char m_space[CMSG_SPACE(sizeof(DecoderWire::Files))] = {};
    msghdr m_message = {};
};

bool isWorthTryingAgain()
{
    return errno == EINTR || errno == EAGAIN;
}

} // namespace

DecoderWire::DecoderWire(int socket)
    : m_socket(socket)
{}

DecoderWire::~DecoderWire()
{
    ::close(m_socket);
}

bool DecoderWire::waitFor(short event, const IsOver& isOver) const
{
    for (;;) {
        if (isOver && isOver())
            return false;
        pollfd entry{m_socket, event, 0};
        const int ready = ::poll(&entry, 1, isOver ? lookEvery : -1);
        if (ready > 0)
            return true;
        if (ready < 0 && !isWorthTryingAgain())
            return false;
    }
}

bool DecoderWire::write(const char* bytes, qsizetype size, const IsOver& isOver) const
{
    while (size > 0) {
        if (!waitFor(POLLOUT, isOver))
            return false;
        const ssize_t count = ::send(m_socket, bytes, size_t(size), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && !isWorthTryingAgain())
            return false;
        bytes += std::max<ssize_t>(count, 0);
        size -= std::max<ssize_t>(count, 0);
    }
    return true;
}

bool DecoderWire::read(char* bytes, qsizetype size, const IsOver& isOver) const
{
    while (size > 0) {
        if (!waitFor(POLLIN, isOver))
            return false;
        const ssize_t count = ::recv(m_socket, bytes, size_t(size), MSG_DONTWAIT);
        if (count == 0 || (count < 0 && !isWorthTryingAgain()))
            return false;
        bytes += std::max<ssize_t>(count, 0);
        size -= std::max<ssize_t>(count, 0);
    }
    return true;
}

bool DecoderWire::send(const QByteArray& message, const IsOver& isOver)
{
    const qint64 size = message.size();
    return write(reinterpret_cast<const char*>(&size), sizeof(size), isOver) &&
           write(message.constData(), message.size(), isOver);
}

std::optional<QByteArray> DecoderWire::receive(const IsOver& isOver)
{
    qint64 size = 0;
    if (!read(reinterpret_cast<char*>(&size), sizeof(size), isOver) || size < 0 || size > maximumSize)
        return std::nullopt;
    QByteArray message(size, Qt::Uninitialized);
    return read(message.data(), size, isOver) ? std::optional(message) : std::nullopt;
}

bool DecoderWire::sendFiles(const Files& files)
{
    FilesMessage message;
    message.setFiles(files);
    return ::sendmsg(m_socket, message.header(), MSG_NOSIGNAL) == 1;
}

std::optional<DecoderWire::Files> DecoderWire::receiveFiles()
{
    FilesMessage message;
    return ::recvmsg(m_socket, message.header(), MSG_CMSG_CLOEXEC) == 1 ? message.files() : std::nullopt;
}

} // namespace wendlore
