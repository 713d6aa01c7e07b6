#include "Decoder/DecoderWire.h"

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace wendlore {

namespace {

constexpr int lookEvery = 50; // milliseconds

struct Sizes final
{
    qint64 values = 0;
    qint64 pixels = 0;
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

bool DecoderWire::send(const DecoderMessage& message, const IsOver& isOver)
{
    const Sizes sizes{message.values.size(), message.pixels.size()};
    return write(reinterpret_cast<const char*>(&sizes), sizeof(sizes), isOver) &&
           write(message.values.constData(), message.values.size(), isOver) &&
           write(message.pixels.constData(), message.pixels.size(), isOver);
}

std::optional<DecoderMessage> DecoderWire::receive(const IsOver& isOver)
{
    Sizes sizes;
    if (!read(reinterpret_cast<char*>(&sizes), sizeof(sizes), isOver) || sizes.values < 0 ||
        sizes.pixels < 0 || sizes.values > maximumValues || sizes.pixels > maximumPixels)
        return std::nullopt;
    DecoderMessage message{QByteArray(sizes.values, Qt::Uninitialized),
                           QByteArray(sizes.pixels, Qt::Uninitialized)};
    if (!read(message.values.data(), message.values.size(), isOver) ||
        !read(message.pixels.data(), message.pixels.size(), isOver))
        return std::nullopt;
    return message;
}

} // namespace wendlore
