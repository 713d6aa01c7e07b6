#pragma once

#include <QByteArray>
#include <QImage>

#include <memory>
#include <optional>

class QBuffer;
class QImageReader;

namespace wendlore {

/// The pictures of a moving image, decoded one after the other, over and over as often as the file says.
class MovingPicture final
{
public:
    struct Frame final
    {
        QImage picture; ///< ready to be drawn
        int milliseconds = 0;
    };

    explicit MovingPicture(QByteArray bytes);
    ~MovingPicture();
    Q_DISABLE_COPY_MOVE(MovingPicture)

    /// Whether `bytes` hold an image that moves.
    [[nodiscard]] static bool isIn(const QByteArray& bytes);

    /// The next picture; nothing when all have been shown as often as the file says, or at damage.
    [[nodiscard]] std::optional<Frame> next();

private:
    void startOver();

    QByteArray m_bytes;
    std::unique_ptr<QBuffer> m_buffer;
    std::unique_ptr<QImageReader> m_reader;
    int m_framesOfRound = 0;
    int m_roundsLeft = 0; ///< below 0: without end
};

} // namespace wendlore
