#pragma once

#include <QByteArray>

#include <array>
#include <functional>
#include <optional>

namespace wendlore {

/// One end of the connection between the program and a decoder, which carries whole messages.
class DecoderWire final
{
public:
    /// Asked every now and then while the other end is waited for; true ends the waiting.
    using IsOver = std::function<bool()>;
    /// Descriptors of the file that is read, and of the memory for the pixels of pictures.
    using Files = std::array<int, 2>;

    static constexpr qint64 maximumSize = 128 << 20;

    /// Takes the stream socket over.
    explicit DecoderWire(int socket);
    ~DecoderWire();
    Q_DISABLE_COPY_MOVE(DecoderWire)

    /// False when the other end is gone or the waiting is over; the connection is of no use then.
    [[nodiscard]] bool send(const QByteArray& message, const IsOver& isOver = {});
    /// The next message; nothing in the same cases, and for one that is larger than messages are.
    [[nodiscard]] std::optional<QByteArray> receive(const IsOver& isOver = {});

    /// Gives the other end descriptors of its own of the same open files; before any message.
    [[nodiscard]] bool sendFiles(const Files& files);
    /// Waits for them; they belong to whoever asks.
    [[nodiscard]] std::optional<Files> receiveFiles();

private:
    [[nodiscard]] bool waitFor(short event, const IsOver& isOver) const;
    [[nodiscard]] bool write(const char* bytes, qsizetype size, const IsOver& isOver) const;
    [[nodiscard]] bool read(char* bytes, qsizetype size, const IsOver& isOver) const;

    int m_socket;
};

} // namespace wendlore
