#pragma once

#include "Decoder/DecoderWire.h"
#include "Decoder/QuickLookLimits.h"

#include "Vault/FileSystemCalls.h"

#include <QImage>

#include <memory>
#include <optional>

namespace wendlore {

/// A process that reads one file for this program: a file that is damaged on purpose can only harm that
/// process, whose memory, time and rights are limited. Blocks: for the background, and one caller at a time.
class DecoderProcess final
{
public:
    /// `file` is what it reads, from its beginning. Takes over a process that waits for one, if there is any,
    /// and starts the one that waits next when there is something to see of this file.
    explicit DecoderProcess(int file);
    /// Ends the process, whatever it is doing.
    ~DecoderProcess();
    Q_DISABLE_COPY_MOVE(DecoderProcess)

    /// The answer; nothing when the process died over it or the limits are reached. It answers no more then.
    [[nodiscard]] std::optional<QByteArray> ask(const QByteArray& question, const QuickLookLimits& limits);
    /// The picture that it answered last, which is `size` large: where the process has put it, so that the
    /// next picture of this process takes its place, but for as long as there are copies. Null when it cannot
    /// be one.
    [[nodiscard]] QImage picture(QSize size, bool hasAlpha) const;

    /// The number of the process; -1 when it could not be started.
    [[nodiscard]] pid_t id() const { return m_process; }

private:
    /// Enough to see something: a document is opened and drawn, an image sketched and decoded.
    static constexpr int firstAnswers = 2;

    std::unique_ptr<DecoderWire> m_wire;
    Descriptor m_memory;
    pid_t m_process = -1;
    int m_answers = 0;
};

/// `bytes` as a file that only this program and what it starts can see.
[[nodiscard]] Descriptor memoryFile(const QByteArray& bytes);

/// How long one answer may take.
[[nodiscard]] std::chrono::milliseconds maximumDecodingTime();

} // namespace wendlore
