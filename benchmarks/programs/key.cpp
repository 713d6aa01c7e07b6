// What a key costs the program's own thread, from the page's message to the end of the session's work:
// bench-key [MEGABYTES]. Prints the median and the longest time of 400 keys in milliseconds, as JSON.

#include "Fakes/EditingFixture.h"
#include "Times.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

constexpr int keys = 400;

/// The message of a key in the middle of a note, as it comes through the channel.
QByteArray messageOf(int count, qsizetype length)
{
    const auto at = static_cast<qint64>(length / 2);
    const QJsonObject edit{{u"from"_s, at},
                           {u"to"_s, at},
                           {u"insert"_s, u"x"_s},
                           {u"count"_s, count},
                           {u"length"_s, static_cast<qint64>(length + 1)}};
    return QJsonDocument(edit).toJson(QJsonDocument::Compact);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const double megabytes = argc > 1 ? QByteArray(argv[1]).toDouble() : 1;
    const QByteArray line = "Ett stycke med några ord till, så att det blir en rad.\n\n";
    const QByteArray note = line.repeated(static_cast<int>(megabytes * 1e6) / line.size());
    EditingFixture fixture({{"Lång.md", note.constData()}});
    fixture.open(u"Lång.md"_s);

    std::vector<double> taken;
    qsizetype length = fixture.shown().size();
    for (int count = 1; count <= keys; ++count, ++length) {
        const QByteArray message = messageOf(count, length);
        QElapsedTimer timer;
        timer.start();
        fixture.page->post(u"edited"_s, QJsonDocument::fromJson(message).object());
        taken.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    if (fixture.shown().size() != length)
        qFatal("the keys did not arrive");
    print({{"key", taken}});
    return 0;
}
