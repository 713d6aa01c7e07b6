// Reads one file that nobody has to trust, in a process of its own: what goes wrong here, or takes too long,
// harms nothing else. The program starts it with the connection as standard input, hands it the file, asks,
// and ends it.

#include "Decoder/DecoderAnswers.h"
#include "Decoder/DecoderConfinement.h"
#include "Decoder/DecoderProcessLimits.h"
#include "Decoder/DecoderWire.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

using namespace wendlore;

namespace {

/// The memory behind a file that is open already; empty when it is not.
std::span<uchar> memoryOf(QFile& file, int descriptor)
{
    if (!file.open(descriptor, QIODevice::ReadWrite))
        return {};
    uchar* const bytes = file.map(0, file.size());
    return {bytes, bytes ? size_t(file.size()) : 0};
}

} // namespace

int main(int argc, char** argv)
{
    confineDecoder();
    const QCoreApplication application(argc, argv);
    DecoderWire wire(STDIN_FILENO);
    const auto files = wire.receiveFiles();
    if (!files)
        return 0;
    QFile memory;
    DecoderAnswers answers(files->front(), memoryOf(memory, files->back()));
    while (const auto question = wire.receive()) {
        // Should the program be gone that would end it.
        ::alarm(decoder::mostSeconds);
        const bool isSent = wire.send(answers.to(*question));
        ::alarm(0);
        if (!isSent)
            break;
    }
    return 0;
}
