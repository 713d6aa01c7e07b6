#include "Previews/FileViewer.h"

#include "Fakes/Bucket.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/LongestWork.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"
#include "Support/RealDesktop.h"
#include "Support/SampleFiles.h"
#include "Support/Viewing.h"
#include "Support/Window.h"

#include <QBuffer>
#include <QVBoxLayout>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// What the window may be kept from answering at most, in milliseconds.
constexpr double most = 50;

/// A photograph of twelve megapixels.
QByteArray photograph()
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    image.fill(QColor(90, 120, 60));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.save(&buffer, "jpg"))
        qFatal("cannot make a photograph");
    return bytes;
}

} // namespace

/// Files of every kind, large ones, are opened without keeping the window from answering.
class FileViewerTests final : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWebEngineView> m_engine;

private Q_SLOTS:
    void initTestCase()
    {
        useProductLook();
        // In the program the engine runs before any file is opened: it shows the notes.
        m_engine = std::make_unique<QWebEngineView>();
        m_engine->setHtml(u"<p>Hej"_s);
        m_engine->show();
        QCOMPARE(shownText(*m_engine), u"Hej"_s);
    }

    void cleanupTestCase() { m_engine.reset(); }

    void openingAFileKeepsTheWindowAnswering_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        const auto add = [](const QString& name, const QByteArray& bytes) {
            QTest::newRow(qPrintable(name)) << name << bytes;
        };
        add(u"sidor.pdf"_s, pdfOf(QStringList(500, u"Ett möte\nom budgeten"_s)));
        add(u"bild.jpg"_s, photograph());
        add(u"bild.heic"_s, heicPhotograph());
        add(u"stor.png"_s, blackPng(7000, 5000));
        add(u"rörlig.gif"_s, movingFile(u"a.gif"_s, 0));
        add(u"arkiv.tar"_s, tarOfMany(50'000));
        add(u"bok.epub"_s, bookOf(40, 500));
        add(u"typsnitt.ttf"_s, systemFont());
        add(u"ton.wav"_s, silence());
        add(u"ritning.svg"_s, drawing());
        add(u"sida.html"_s, "<!--" + QByteArray(4'000'000, 'x') + "--><p>Ett stycke.");
        add(u"logg.log"_s, QByteArray("2024-05-17 12:00:01 INFO server: svar på 12 ms\n").repeated(80'000));
        add(u"tabell.csv"_s, QByteArray("2024-05-17;Anna Berg;12,50;Porto\n").repeated(50'000));
        add(u"brev.eml"_s, "Subject: Hej\n\n" + QByteArray("En rad i ett brev.\n").repeated(80'000));
    }

    void openingAFileKeepsTheWindowAnswering()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        Bucket bucket;
        bucket.write(name, bytes);
        RealDesktop desktop;
        AppState state(desktop.services());
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        showAt(window, {900, 700});

        LongestWork work;
        QWidget* const viewer = makeFileViewer(state, bucket.file(name), &window);
        layout->addWidget(viewer);
        work.end();
        WAIT_VERIFY(showsItsFile(*viewer));

        QVERIFY2(work.milliseconds() < most, qPrintable(QString::number(work.milliseconds())));
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(FileViewerTests)
#include "FileViewerTests.moc"
