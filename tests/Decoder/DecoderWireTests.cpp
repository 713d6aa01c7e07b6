#include "Decoder/DecoderWire.h"

#include <QtConcurrent>
#include <QTest>

#include <sys/socket.h>
#include <unistd.h>

using namespace wendlore;

namespace {

/// Two ends that are connected.
class Pair final
{
public:
    Pair() { connect(); }

    std::optional<DecoderWire> here;
    std::optional<DecoderWire> there;
    int other = -1; ///< the socket of `there`

private:
    void connect()
    {
        int ends[2] = {-1, -1};
        if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == -1)
            qFatal("no sockets");
        here.emplace(ends[0]);
        there.emplace(ends[1]);
        other = ends[1];
    }
};

} // namespace

class DecoderWireTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesArriveWhole()
    {
        Pair pair;
        const QByteArray large(5'000'000, 'p'); // more than a socket holds
        const auto sent =
            QtConcurrent::run([&] { return pair.here->send("first") && pair.here->send(large); });

        QCOMPARE(pair.there->receive(), QByteArray("first"));
        QCOMPARE(pair.there->receive(), large);
        QVERIFY(sent.result());
    }

    void openFilesAreHandedOver()
    {
        Pair pair;
        int ends[2] = {-1, -1};
        QCOMPARE(::pipe(ends), 0);
        QVERIFY(pair.here->sendFiles({ends[0], ends[1]}));

        const auto files = pair.there->receiveFiles();

        QVERIFY(files && files->front() != ends[0] && files->back() != ends[1]);
        QCOMPARE(::write(files->back(), "x", 1), ssize_t(1));
        char read = 0;
        QCOMPARE(::read(ends[0], &read, 1), ssize_t(1));
        QCOMPARE(read, 'x');
        for (const int file : {ends[0], ends[1], files->front(), files->back()})
            ::close(file);
    }

    void whoGetsNoFilesIsTold()
    {
        Pair pair;
        QVERIFY(pair.here->send("message"));
        QVERIFY(!pair.there->receiveFiles());
        Pair alone;
        alone.here.reset();
        QVERIFY(!alone.there->receiveFiles());
    }

    void anEndThatIsGoneIsNoticed()
    {
        Pair pair;
        pair.there.reset();
        QVERIFY(!pair.here->receive());
        QVERIFY(!pair.here->send(QByteArray(5'000'000, 'x')));
    }

    void waitingEndsWhenItIsOver()
    {
        Pair pair;
        int asked = 0;
        const auto isOver = [&asked] { return ++asked > 2; };
        QVERIFY(!pair.here->receive(isOver));
        QCOMPARE(asked, 3);
        asked = 0;
        QVERIFY(!pair.here->send(QByteArray(5'000'000, 'x'), isOver));
    }

    void aMessageLargerThanMessagesAreIsRefused()
    {
        for (const qint64 size : {DecoderWire::maximumSize + 1, qint64(-1)}) {
            Pair pair;
            QCOMPARE(::send(pair.other, &size, sizeof(size), 0), ssize_t(sizeof(size)));
            QVERIFY(!pair.here->receive());
        }
    }
};

QTEST_GUILESS_MAIN(DecoderWireTests)
#include "DecoderWireTests.moc"
