#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace wendlore {

/// What the program and a decoder tell each other: a few values, and beside them the pixels of a picture.
struct DecoderMessage final
{
    QByteArray values;
    QByteArray pixels;
};

/// One end of the connection between the program and a decoder, which carries whole messages.
class DecoderWire final
{
public:
    /// Asked every now and then while the other end is waited for; true ends the waiting.
    using IsOver = std::function<bool()>;

    static constexpr qint64 maximumValues = 64 << 20;
    static constexpr qint64 maximumPixels = 700 << 20;

    /// Takes the stream socket over.
    explicit DecoderWire(int socket);
    ~DecoderWire();
    Q_DISABLE_COPY_MOVE(DecoderWire)

    /// False when the other end is gone or the waiting is over; the connection is of no use then.
    [[nodiscard]] bool send(const DecoderMessage& message, const IsOver& isOver = {});
    /// The next message; nothing in the same cases, and for one that is larger than messages are.
    [[nodiscard]] std::optional<DecoderMessage> receive(const IsOver& isOver = {});

private:
    [[nodiscard]] bool waitFor(short event, const IsOver& isOver) const;
    [[nodiscard]] bool write(const char* bytes, qsizetype size, const IsOver& isOver) const;
    [[nodiscard]] bool read(char* bytes, qsizetype size, const IsOver& isOver) const;

    int m_socket;
};

} // namespace wendlore
