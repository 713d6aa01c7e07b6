#include "Previews/DecoderProcess.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/PdfParts.h"
#include "Support/PdfFiles.h"

#include <QFile>
#include <QTest>

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

        const auto answer =
            process.ask(decoderValues(DecoderTask::openPdf, QString()), QuickLookLimits(1min));

        QVERIFY(answer);
        PdfState state = PdfState::damaged;
        QList<QSizeF> pages;
        QVERIFY(readAnswer(answer->values, state, pages));
        QCOMPARE(state, PdfState::ready);
        QCOMPARE(pages.size(), 2);
    }

    void itEndsWhenNobodyAsksAnyMore()
    {
        std::optional<DecoderProcess> process(std::in_place, memoryFile("hej").get());
        QVERIFY(process->ask(decoderValues(DecoderTask::openPdf, QString()), QuickLookLimits(1min)));
        const QByteArray children = childrenOfThis();
        QVERIFY(!children.isEmpty());
        process.reset();
        QTRY_VERIFY(childrenOfThis().isEmpty());
    }

    void itGivesUpItsRightsBeforeItReads()
    {
        DecoderProcess process(memoryFile("hej").get());
        QVERIFY(process.ask(decoderValues(DecoderTask::openPdf, QString()), QuickLookLimits(1min)));

        QFile status(u"/proc/%1/status"_s.arg(QString::fromLatin1(childrenOfThis())));
        QVERIFY(status.open(QIODevice::ReadOnly));
        const QByteArray rights = status.readAll();

        QVERIFY2(rights.contains("NoNewPrivs:\t1\n") && rights.contains("Seccomp:\t2\n"), rights);
    }

    void thereIsNoAnswerWhenTheTimeIsOver()
    {
        DecoderProcess process(memoryFile("hej").get());
        const QuickLookLimits stopped;
        stopped.stop();
        QVERIFY(!process.ask(decoderValues(DecoderTask::openPdf, QString()), stopped));
        DecoderProcess other(memoryFile("hej").get());
        QVERIFY(!other.ask(decoderValues(DecoderTask::openPdf, QString()), QuickLookLimits(0ms)));
    }

    void aFileThatCannotBeReadGivesNoAnswer()
    {
        DecoderProcess process(-1);
        QVERIFY(!process.ask(decoderValues(DecoderTask::openPdf, QString()), QuickLookLimits(1min)));
    }

private:
    static QByteArray childrenOfThis()
    {
        QFile children(u"/proc/thread-self/children"_s);
        return children.open(QIODevice::ReadOnly) ? children.readAll().trimmed() : QByteArray("unknown");
    }
};

QTEST_MAIN(DecoderProcessTests)
#include "DecoderProcessTests.moc"
