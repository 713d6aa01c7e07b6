#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class DecoderAnswersTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTaskHasItsAnswer()
    {
        DecoderAnswers answers(pdfOf({u"Ett möte"_s, u"Två"_s}));
        PdfState state = PdfState::damaged;
        QList<QSizeF> pages;
        QVERIFY(readAnswer(answers.to(decoderValues(DecoderTask::openPdf, QString())).values, state, pages));
        QCOMPARE(state, PdfState::ready);
        QCOMPARE(pages.size(), 2);
        const QRect part(0, 0, 60, 80);
        QCOMPARE(pictureOf(answers.to(decoderValues(DecoderTask::drawPage, 0, part.size(), part))).size(),
                 part.size());
        PdfText text;
        QVERIFY(readAnswer(answers.to(decoderValues(DecoderTask::textOfPage, 1)).values, text));
        QVERIFY(text.text.contains(u"Två"_s));
        QList<PdfMatch> places;
        QVERIFY(readAnswer(answers.to(decoderValues(DecoderTask::findText, 0, u"möte"_s)).values, places));
        QCOMPARE(places.size(), 1);
        QString selected;
        QVERIFY(readAnswer(
            answers.to(decoderValues(DecoderTask::textBetween, PdfPoint{0, {0, 0}}, PdfPoint{1, {500, 800}}))
                .values,
            selected, places));
        QVERIFY(selected.contains(u"Ett möte"_s) && selected.contains(u"Två"_s));
        QList<PdfLink> links;
        QVERIFY(readAnswer(answers.to(decoderValues(DecoderTask::linksOfPage, 0)).values, links));
        QVERIFY(links.isEmpty());
    }

    void aPictureLiesInTheMemoryForIt()
    {
        QByteArray memory(96 * 64 * 4, 'x');
        const auto decoded = [&memory](const QByteArray& file) {
            DecoderAnswers answers(file, {reinterpret_cast<uchar*>(memory.data()), size_t(memory.size())});
            QSize size;
            bool hasAlpha = true;
            bool moves = true;
            const DecoderMessage answer = answers.to(decoderValues(DecoderTask::decodePicture));
            return readAnswer(answer.values, size, hasAlpha, moves) && !hasAlpha && !moves ? size
                                                                                           : QSize(1, 1);
        };

        QCOMPARE(decoded(twoHalves(u"a.gif"_s)), QSize(96, 64));
        QCOMPARE(memory.first(4), QByteArray("\x00\x00\xff\xff", 4));
        QCOMPARE(memory.last(4), QByteArray("\xff\x00\x00\xff", 4));
        QVERIFY(decoded(pdfOf({u"Ett"_s})).isEmpty());
    }

    void theFramesOfAMovingPictureFollowEachOther()
    {
        DecoderAnswers answers(movingFile(u"a.gif"_s, 0));
        for (const QColor color : {QColor(Qt::red), QColor(Qt::blue), QColor(Qt::red)}) {
            const DecoderMessage answer = answers.to(decoderValues(DecoderTask::nextFrame));
            QCOMPARE(pictureOf(answer).pixelColor(8, 8), color);
        }
        DecoderAnswers others("hej");
        QVERIFY(others.to(decoderValues(DecoderTask::nextFrame)).values.isEmpty());
    }

    void whatIsNoQuestionHasNone()
    {
        DecoderAnswers answers(pdfOf({u"Ett"_s}));
        QVERIFY(answers.to(QByteArray("\xff")).values.isEmpty());
        QVERIFY(pictureOf(answers.to(decoderValues(DecoderTask::drawPage, 0))).isNull()); // not opened
    }

    void aDamagedAnswerGivesNothing()
    {
        QVERIFY(pictureOf({}).isNull());
        QVERIFY(pictureOf({decoderValues(QSize(10, 10), false), QByteArray(399, 'x')}).isNull());
        QVERIFY(pictureOf({decoderValues(QSize(-1, -10), false), QByteArray(40, 'x')}).isNull());
        QList<PdfMatch> places;
        QVERIFY(!readAnswer(QByteArray::fromHex("7fffffff"), places));
    }
};

QTEST_MAIN(DecoderAnswersTests)
#include "DecoderAnswersTests.moc"
