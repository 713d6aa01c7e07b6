#pragma once

#include "Decoder/DecoderWire.h"
#include "Previews/QuickLookLimits.h"

#include "Vault/FileSystemCalls.h"

#include <memory>
#include <optional>

namespace wendlore {

/// A process that reads one file for this program: a file that is damaged on purpose can only harm that
/// process, whose memory and time are limited. Blocks: for the background, and one caller at a time.
class DecoderProcess final
{
public:
    /// `file` is what it reads, from its beginning, and `pixels` the memory for a picture, if it is asked for
    /// one.
    explicit DecoderProcess(int file, int pixels = -1);
    /// Ends the process, whatever it is doing.
    ~DecoderProcess();
    Q_DISABLE_COPY_MOVE(DecoderProcess)

    /// The answer; nothing when the process died over it or the limits are reached. It answers no more then.
    [[nodiscard]] std::optional<DecoderMessage> ask(const QByteArray& question,
                                                    const QuickLookLimits& limits);

private:
    std::optional<DecoderWire> m_wire;
    pid_t m_process = -1;
};

/// `bytes` as a file that only this program and what it starts can see.
[[nodiscard]] Descriptor memoryFile(const QByteArray& bytes);
/// A file of `size` bytes that takes memory as it is filled, and which nobody can make shorter.
[[nodiscard]] Descriptor memoryOfSize(qint64 size);

/// How long one answer may take.
[[nodiscard]] std::chrono::milliseconds maximumDecodingTime();

} // namespace wendlore
