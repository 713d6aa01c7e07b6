#include "Previews/FileViewer.h"

#include "Fakes/Bucket.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/LongestWork.h"
#include "Support/PdfFiles.h"
#include "Support/Programs.h"
#include "Support/RealDesktop.h"
#include "Support/Viewing.h"
#include "Support/Window.h"

#include <QVBoxLayout>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// What the window may be kept from answering at most, in milliseconds.
constexpr double most = 50;

QByteArray picture(const Bucket& bucket, const QString& name, const QString& size)
{
    runProgram(u"convert"_s, {u"-size"_s, size, u"gradient:red-blue"_s, bucket.file(name).path()});
    return bucket.read(name);
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
        QTRY_COMPARE_WITH_TIMEOUT(shownText(*m_engine), u"Hej"_s, patience);
    }

    void cleanupTestCase() { m_engine.reset(); }

    void openingAFileKeepsTheWindowAnswering_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        const Bucket bucket;
        const auto add = [](const QString& name, const QByteArray& bytes) {
            QTest::newRow(qPrintable(name)) << name << bytes;
        };
        add(u"sidor.pdf"_s, pdfOf(QStringList(100, u"Ett möte\nom budgeten"_s)));
        add(u"bild.jpg"_s, picture(bucket, u"bild.jpg"_s, u"4000x3000"_s));
        add(u"bild.heic"_s, picture(bucket, u"bild.heic"_s, u"800x600"_s));
        add(u"sida.html"_s, QByteArray("<p>Ett stycke med <b>fet</b> text.</p>\n").repeated(80'000));
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
        QTRY_VERIFY_WITH_TIMEOUT(showsItsFile(*viewer), patience);

        QVERIFY2(work.milliseconds() < most, qPrintable(QString::number(work.milliseconds())));
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(FileViewerTests)
#include "FileViewerTests.moc"
