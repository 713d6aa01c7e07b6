#include "Previews/DecoderProcess.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/PdfParts.h"
#include "Support/PdfFiles.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

class DecoderProcessTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itAnswersAboutItsFile()
    {
        DecoderProcess process(memoryFile(pdfOf({u"Ett"_s, u"Två"_s})).get());

        const auto answer = process.ask(question, QuickLookLimits(1min));

        QVERIFY(answer);
        PdfState state = PdfState::damaged;
        QList<QSizeF> pages;
        QVERIFY(readAnswer(*answer, state, pages));
        QCOMPARE(state, PdfState::ready);
        QCOMPARE(pages.size(), 2);
    }

    void itEndsWhenNobodyAsksAnyMore()
    {
        std::optional<DecoderProcess> process(std::in_place, memoryFile("hej").get());
        QVERIFY(process->ask(question, QuickLookLimits(1min)));
        const pid_t id = process->id();
        QCOMPARE(::kill(id, 0), 0);

        process.reset();

        QTRY_COMPARE(::kill(id, 0), -1);
    }

    void itHasGivenUpItsRights()
    {
        DecoderProcess process(memoryFile("hej").get());
        QVERIFY(process.ask(question, QuickLookLimits(1min)));

        const QByteArray rights = statusOf(process.id());

        QVERIFY2(rights.contains("NoNewPrivs:\t1\n") && rights.contains("Seccomp:\t2\n"), rights);
    }

    void oneIsKeptWaitingForTheNextFile()
    {
        DecoderProcess first(memoryFile("hej").get());
        for (int answers = 0; answers < 2; ++answers)
            QVERIFY(first.ask(question, QuickLookLimits(1min)));
        QTRY_COMPARE(waiting(first.id()).size(), 1);
        const pid_t kept = waiting(first.id()).first();

        DecoderProcess second(memoryFile("hej").get());

        QCOMPARE(second.id(), kept);
        QVERIFY(second.ask(question, QuickLookLimits(1min)));
    }

    void oneThatDiedWhileItWaitedIsNotTaken()
    {
        DecoderProcess first(memoryFile("hej").get());
        for (int answers = 0; answers < 2; ++answers)
            QVERIFY(first.ask(question, QuickLookLimits(1min)));
        QTRY_COMPARE(waiting(first.id()).size(), 1);
        const pid_t kept = waiting(first.id()).first();
        QCOMPARE(::kill(kept, SIGKILL), 0);
        QTRY_VERIFY(statusOf(kept).contains("State:\tZ"));

        DecoderProcess second(memoryFile("hej").get());

        QVERIFY(second.ask(question, QuickLookLimits(1min)));
    }

    void thereIsNoAnswerWhenTheTimeIsOver()
    {
        DecoderProcess process(memoryFile("hej").get());
        const QuickLookLimits stopped;
        stopped.stop();
        QVERIFY(!process.ask(question, stopped));
        DecoderProcess other(memoryFile("hej").get());
        QVERIFY(!other.ask(question, QuickLookLimits(0ms)));
    }

    void aFileThatCannotBeReadGivesNoAnswer()
    {
        DecoderProcess process(-1);
        QVERIFY(!process.ask(question, QuickLookLimits(1min)));
    }

private:
    const QByteArray question = decoderValues(DecoderTask::openPdf, QString());

    static QByteArray statusOf(pid_t process)
    {
        QFile status(u"/proc/%1/status"_s.arg(process));
        return status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
    }

    /// The processes that this one has started, whichever of its threads did, but for `taken`.
    static QList<pid_t> waiting(pid_t taken)
    {
        QList<pid_t> processes;
        for (const QString& thread :
             QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile children(u"/proc/self/task/%1/children"_s.arg(thread));
            if (!children.open(QIODevice::ReadOnly))
                continue;
            for (const QByteArray& id : children.readAll().simplified().split(' ')) {
                if (!id.isEmpty() && id.toInt() != taken)
                    processes.append(id.toInt());
            }
        }
        return processes;
    }
};

QTEST_MAIN(DecoderProcessTests)
#include "DecoderProcessTests.moc"
