// Reads one file that nobody has to trust, in a process of its own: what goes wrong here, or takes too long,
// harms nothing else. The program starts it with the connection as standard input and the file beside it,
// asks, and ends it.

#include "Decoder/DecoderAnswers.h"
#include "Decoder/DecoderConfinement.h"
#include "Decoder/DecoderProcessLimits.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

using namespace wendlore;

int main(int argc, char** argv)
{
    confineDecoder();
    const QCoreApplication application(argc, argv);
    QFile file;
    if (!file.open(decoder::fileDescriptor, QIODevice::ReadOnly))
        return 1;
    const uchar* bytes = file.map(0, file.size());
    DecoderAnswers answers(bytes ? QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), file.size())
                                 : QByteArray());
    DecoderWire wire(STDIN_FILENO);
    while (const auto question = wire.receive()) {
        // Should the program be gone that would end it.
        ::alarm(decoder::mostSeconds);
        const bool isSent = wire.send(answers.to(question->values));
        ::alarm(0);
        if (!isSent)
            break;
    }
    return 0;
}
