#include "Previews/FileViewer.h"

#include "Fakes/Bucket.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"
#include "Support/RealDesktop.h"
#include "Support/SampleFiles.h"
#include "Support/Viewing.h"
#include "Support/Window.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace wendlore {

/// Files that other programs change while they are shown.
class FileViewerChangedFilesTests final : public QObject
{
    Q_OBJECT

    Bucket m_bucket;
    QWidget m_window;
    QVBoxLayout m_layout{&m_window};
    RealDesktop m_desktop;
    AppState m_state{m_desktop.services()};

    std::unique_ptr<QWidget> viewerOf(const QString& name)
    {
        std::unique_ptr<QWidget> viewer(makeFileViewer(m_state, m_bucket.file(name), &m_window));
        m_layout.addWidget(viewer.get());
        return viewer;
    }

    /// What a person may do with what is shown, for which the viewer may have to look at the file again.
    void use(QWidget& viewer)
    {
        m_window.resize(m_window.width() + 40, m_window.height());
        QWidget* const focus = viewer.focusProxy() ? viewer.focusProxy() : &viewer;
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageUp, Qt::Key_Home})
            QTest::keyClick(focus, key);
        QTest::keyClick(focus, Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(m_desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)));
        QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void initTestCase()
    {
        useProductLook();
        showAt(m_window, {600, 400});
    }

    void whatIsShownStaysUntilItIsChosenAgain_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("whole");
        const auto add = [](const QString& name, const QByteArray& bytes) {
            QTest::newRow(qPrintable(name)) << name << bytes;
        };
        add(u"a.pdf"_s, pdfOf(QStringList(30, u"Ett möte"_s)));
        add(u"a.jpg"_s, pictureFile(u"a.jpg"_s, {u"-size"_s, u"3500x2500"_s, u"xc:red"_s}));
        add(u"a.gif"_s, movingFile(u"a.gif"_s, 0));
        add(u"a.html"_s, QByteArray("<p>Ett stycke").repeated(5000));
        add(u"a.log"_s, QByteArray("INFO server: svar på 12 ms\n").repeated(5000));
        add(u"a.wav"_s, silence());
    }

    void whatIsShownStaysUntilItIsChosenAgain()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, whole);
        const std::vector<std::function<void()>> changes{
            [&] { m_bucket.write(name, {}); },                            // emptied, to be written anew
            [&] { m_bucket.write(name, whole.first(whole.size() / 2)); }, // half of it written
            [&] { m_bucket.remove(name); },
        };
        for (const auto& change : changes) {
            m_bucket.write(name, whole);
            const auto viewer = viewerOf(name);
            WAIT_VERIFY(showsItsFile(*viewer));
            change();
            use(*viewer);
            QVERIFY(showsItsFile(*viewer));
        }

        m_bucket.write(name, whole);
        const auto viewer = viewerOf(name);
        WAIT_VERIFY(showsItsFile(*viewer));
    }

    void aDocumentThatWasWrittenAnewIsShownAsItIsNow()
    {
        m_bucket.write(u"b.pdf"_s, pdfOf({u"Ett"_s}));
        const auto before = viewerOf(u"b.pdf"_s);
        WAIT_VERIFY(showsItsFile(*before));
        m_bucket.write(u"b.pdf"_s, pdfOf({u"Ett"_s, u"Två"_s}));

        const auto after = viewerOf(u"b.pdf"_s);
        WAIT_VERIFY(showsItsFile(*after));

        QCOMPARE(before->findChild<PDFKitView*>()->pageCount(), 1);
        QCOMPARE(after->findChild<PDFKitView*>()->pageCount(), 2);
    }

    void aLogThatHasGrownIsShownWithItsNewLines()
    {
        m_bucket.write(u"b.log"_s, "första\n");
        const auto before = viewerOf(u"b.log"_s);
        WAIT_VERIFY(showsItsFile(*before));
        m_bucket.write(u"b.log"_s, "första\nandra\n");

        const auto after = viewerOf(u"b.log"_s);
        WAIT_VERIFY(showsItsFile(*after));

        QVERIFY(shownText(*after->findChild<QWebEngineView*>()).contains(u"andra"_s));
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(FileViewerChangedFilesTests)
#include "FileViewerChangedFilesTests.moc"
