#include "Decoder/DecoderWire.h"

#include <QtConcurrent>
#include <QTest>

#include <sys/socket.h>

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
        const QByteArray pixels(5'000'000, 'p'); // more than a socket holds
        const auto sent = QtConcurrent::run([&] {
            return pair.here->send({"first", pixels}) && pair.here->send({"second", {}});
        });

        const auto first = pair.there->receive();
        const auto second = pair.there->receive();

        QVERIFY(sent.result());
        QVERIFY(first && second);
        QCOMPARE(first->values, QByteArray("first"));
        QCOMPARE(first->pixels, pixels);
        QCOMPARE(second->values, QByteArray("second"));
        QVERIFY(second->pixels.isEmpty());
    }

    void anEndThatIsGoneIsNoticed()
    {
        Pair pair;
        pair.there.reset();
        QVERIFY(!pair.here->receive());
        QVERIFY(!pair.here->send({QByteArray(5'000'000, 'x'), {}}));
    }

    void waitingEndsWhenItIsOver()
    {
        Pair pair;
        int asked = 0;
        const auto isOver = [&asked] { return ++asked > 2; };
        QVERIFY(!pair.here->receive(isOver));
        QCOMPARE(asked, 3);
        asked = 0;
        QVERIFY(!pair.here->send({QByteArray(5'000'000, 'x'), {}}, isOver));
    }

    void aMessageLargerThanMessagesAreIsRefused()
    {
        for (const qint64 size : {DecoderWire::maximumValues + 1, qint64(-1)}) {
            Pair pair;
            const qint64 sizes[] = {size, 0};
            QCOMPARE(::send(pair.other, sizes, sizeof(sizes), 0), ssize_t(sizeof(sizes)));
            QVERIFY(!pair.here->receive());
        }
    }
};

QTEST_GUILESS_MAIN(DecoderWireTests)
#include "DecoderWireTests.moc"
