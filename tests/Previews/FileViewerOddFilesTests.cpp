#include "Previews/FileViewer.h"

#include "Fakes/Bucket.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/Viewing.h"
#include "Support/Window.h"

#include <QVBoxLayout>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Makes what stands at a path in place of a file.
using Make = std::function<void(const QByteArray& path)>;

void makePipe(const QByteArray& path)
{
    ::mkfifo(path.constData(), 0600);
}

void makeSocket(const QByteArray& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof(address.sun_path));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    ::close(socket);
}

void makeCircle(const QByteArray& path)
{
    const QByteArray other = path + ".andra";
    ::symlink(path.constData(), other.constData());
    ::symlink(other.constData(), path.constData());
}

void makeLinkToTerminal(const QByteArray& path)
{
    ::symlink("/dev/tty", path.constData());
}

void makeFolder(const QByteArray& path)
{
    ::mkdir(path.constData(), 0700);
}

void makeEmpty(const QByteArray& path)
{
    QFile(QFile::decodeName(path)).open(QIODevice::WriteOnly);
}

/// Whether the viewer says what there is to say: a card, or a message.
bool hasNotice(const QWidget& viewer)
{
    const auto notices = viewer.findChildren<NoticeView*>();
    return std::ranges::any_of(notices, [](const NoticeView* notice) { return notice->isVisible(); });
}

} // namespace

} // namespace wendlore

Q_DECLARE_METATYPE(wendlore::Make)

namespace wendlore {

/// What stands in a bucket and is no file, or none of its kind.
class FileViewerOddFilesTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void whatIsNoFileGivesAMessage_data()
    {
        QTest::addColumn<Make>("make");
        QTest::newRow("pipe") << Make(&makePipe);
        QTest::newRow("socket") << Make(&makeSocket);
        QTest::newRow("circle") << Make(&makeCircle);
        QTest::newRow("terminal") << Make(&makeLinkToTerminal);
        QTest::newRow("folder") << Make(&makeFolder);
        QTest::newRow("nothing") << Make([](const QByteArray&) {});
    }

    /// None of them keeps a thread for itself: there are more of them than threads.
    void whatIsNoFileGivesAMessage()
    {
        QFETCH(const Make, make);
        const Bucket bucket;
        RealDesktop desktop;
        AppState state(desktop.services());
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        showAt(window, {600, 400});

        for (const char* ending : {"pdf", "png", "html", "gdoc", "docx", "txt", "zip", "mp4", "ttf", "svg"}) {
            const auto file = bucket.file(u"udda."_s + QString::fromLatin1(ending));
            make(file.bytes());
            QWidget* const viewer = makeFileViewer(state, file, &window);
            layout->addWidget(viewer);
            WAIT_VERIFY(hasNotice(*viewer));
            delete viewer;
        }

        bool isFree = false;
        const auto work = desktop.scheduler.inBackground(
            [&isFree]() -> std::function<void()> { return [&isFree] { isFree = true; }; });
        WAIT_VERIFY(isFree);
        QVERIFY2(desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)), "something still waits");
    }

    void anEmptyFileIsNoFailure_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"a.pdf", "a.png", "a.gif", "a.heic", "a.gdoc", "a.docx", "a.xlsx", "a.zip",
                                 "a.epub", "a.mp4", "a.ttf", "a.bin"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void anEmptyFileIsNoFailure()
    {
        QFETCH(const QString, name);
        const Bucket bucket;
        makeEmpty(bucket.file(name).bytes());
        RealDesktop desktop;
        AppState state(desktop.services());
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        showAt(window, {600, 400});

        QWidget* const viewer = makeFileViewer(state, bucket.file(name), &window);
        layout->addWidget(viewer);

        WAIT_VERIFY(hasNotice(*viewer) || showsItsFile(*viewer));
        QVERIFY(desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)));
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(FileViewerOddFilesTests)
#include "FileViewerOddFilesTests.moc"
