#include "Decoder/DecoderAnswers.h"

#include "Decoder/DecoderTask.h"
#include "Decoder/Picture.h"
#include "Decoder/QuickLookPage.h"
#include "Previews/DecoderProcess.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"
#include "Support/SampleFiles.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// What is answered about one file, and the memory where pictures are put.
class Asked final
{
public:
    explicit Asked(const QByteArray& file, qsizetype memorySize = qsizetype(96) * 64 * bytesPerPixel)
        : memory(memorySize, 'x')
        , m_file(memoryFile(file))
        , m_answers(m_file.get(), {reinterpret_cast<uchar*>(memory.data()), size_t(memorySize)})
    {}

    /// The answer to a task with these values.
    template <typename... Values>
    [[nodiscard]] QByteArray answer(DecoderTask task, const Values&... values)
    {
        return m_answers.to(decoderValues(task, values...));
    }
    [[nodiscard]] QByteArray answerToBytes(const QByteArray& question) { return m_answers.to(question); }

    QByteArray memory;

private:
    Descriptor m_file;
    DecoderAnswers m_answers;
};

/// The size of the picture that an answer tells of.
QSize sizeIn(const QByteArray& answer)
{
    QSize size;
    return readAnswer(answer, size) ? size : QSize(-1, -1);
}

const QByteArray redPixel("\x00\x00\xff\xff", 4);
const QByteArray bluePixel("\xff\x00\x00\xff", 4);

} // namespace

class DecoderAnswersTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTaskHasItsAnswer()
    {
        Asked asked(pdfOf({u"Ett möte"_s, u"Två"_s}));
        PdfState state = PdfState::damaged;
        int count = 0;
        QList<QSizeF> pages;
        QVERIFY(readAnswer(asked.answer(DecoderTask::openPdf, QString()), state, count, pages));
        QCOMPARE(state, PdfState::ready);
        QCOMPARE(count, 2);
        QCOMPARE(pages.size(), 2);
        QVERIFY(readAnswer(asked.answer(DecoderTask::sizesOfPages, 1), pages));
        QCOMPARE(pages.size(), 1);
        const QRect part(0, 0, 60, 80);
        QCOMPARE(sizeIn(asked.answer(DecoderTask::drawPage, 0, part.size(), part)), part.size());
        QCOMPARE(asked.memory.first(4), QByteArray("\xff\xff\xff\xff", 4));
        PdfText text;
        QVERIFY(readAnswer(asked.answer(DecoderTask::textOfPage, 1), text));
        QVERIFY(text.text.contains(u"Två"_s));
        QList<PdfMatch> places;
        QVERIFY(readAnswer(asked.answer(DecoderTask::findText, 0, u"möte"_s), places));
        QCOMPARE(places.size(), 1);
        QString selected;
        QVERIFY(
            readAnswer(asked.answer(DecoderTask::textBetween, PdfPoint{0, {0, 0}}, PdfPoint{1, {500, 800}}),
                       selected, places));
        QVERIFY(selected.contains(u"Ett möte"_s) && selected.contains(u"Två"_s));
        QList<PdfLink> links;
        QVERIFY(readAnswer(asked.answer(DecoderTask::linksOfPage, 0), links));
        QVERIFY(links.isEmpty());
    }

    void aPictureLiesInTheMemoryForIt()
    {
        Asked asked(twoHalves(u"a.gif"_s));
        QSize size;
        bool hasAlpha = true;
        bool moves = true;

        QVERIFY(readAnswer(asked.answer(DecoderTask::decodePicture), size, hasAlpha, moves));

        QCOMPARE(size, QSize(96, 64));
        QVERIFY(!hasAlpha && !moves);
        QCOMPARE(asked.memory.first(4), redPixel);
        QCOMPARE(asked.memory.last(4), bluePixel);
        QVERIFY(sizeIn(Asked(pdfOf({u"Ett"_s})).answer(DecoderTask::decodePicture)).isEmpty());
    }

    void theFramesOfAMovingPictureFollowEachOther()
    {
        Asked asked(movingFile(u"a.gif"_s, 0));
        for (const QByteArray& pixel : {redPixel, bluePixel, redPixel}) {
            QCOMPARE(sizeIn(asked.answer(DecoderTask::nextFrame)), QSize(16, 16));
            QCOMPARE(asked.memory.first(4), pixel);
        }
        QVERIFY(Asked("hej").answer(DecoderTask::nextFrame).isEmpty());
    }

    void aPreviewIsAPageWithWhatItShows()
    {
        Asked asked(bookOf(1, 1));
        QuickLookPage page;

        QVERIFY(readAnswer(asked.answer(DecoderTask::previewFile, u"a.epub"_s, qint64(10'000)), page));

        QVERIFY(page.body.contains("<h1>Kapitel 1</h1>"));
        QCOMPARE(page.resources.value(u"OPS/omslag.png"_s).mimeType, QByteArray("image/png"));
        QVERIFY(asked.answer(DecoderTask::previewFile, u"a.epub"_s, qint64(0)).isEmpty());
    }

    void aDocumentGivesThePagesThatItBringsAlong()
    {
        Asked asked(packed({{u"QuickLook/Preview.pdf"_s, "sidor"}, {u"preview.jpg"_s, "bild"}}, u"zip"_s));
        QByteArray pages;
        QuickLookPage picture;

        QVERIFY(readAnswer(asked.answer(DecoderTask::pagesOfDocument, u"a.key"_s, qint64(10'000)), pages));
        QVERIFY(readAnswer(asked.answer(DecoderTask::previewDocument, u"a.key"_s, qint64(10'000)), picture));

        QCOMPARE(pages, QByteArray("sidor"));
        QCOMPARE(picture.resources.value(u"bild"_s).bytes, QByteArray("bild"));
    }

    void whatIsLargerThanTheMemoryIsNoAnswer()
    {
        Asked asked(pdfOf({u"Ett"_s}), 60 * 80 * bytesPerPixel - 1);
        QVERIFY(!asked.answer(DecoderTask::openPdf, QString()).isEmpty());
        const QRect part(0, 0, 60, 80);
        QVERIFY(asked.answer(DecoderTask::drawPage, 0, part.size(), part).isEmpty());
    }

    void whatIsNoQuestionHasNone()
    {
        Asked asked(pdfOf({u"Ett"_s}));
        QVERIFY(asked.answerToBytes("\xff").isEmpty());
        QVERIFY(asked.answer(DecoderTask::drawPage, 0).isEmpty()); // not opened
    }

    void aDamagedAnswerGivesNothing()
    {
        QList<PdfMatch> places;
        QVERIFY(!readAnswer(QByteArray::fromHex("7fffffff"), places));
    }
};

QTEST_MAIN(DecoderAnswersTests)
#include "DecoderAnswersTests.moc"
