#include "Previews/FileViewer.h"

#include "Fakes/Bucket.h"
#include "Look/NoticeView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/PdfFiles.h"
#include "Support/Pictures.h"
#include "Support/RealDesktop.h"
#include "Support/SampleFiles.h"
#include "Support/Viewing.h"
#include "Support/Window.h"
#include "Vault/FileSystemCalls.h"

#include <QVBoxLayout>

#include <fcntl.h>
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

/// Writes a file whose name need not be text.
void write(const FileURL& file, const QByteArray& bytes)
{
    const Descriptor opened(FileSystemCalls::real(),
                            ::open(file.bytes().constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    QVERIFY2(::write(opened.get(), bytes.constData(), size_t(bytes.size())) == bytes.size(), file.bytes());
}

/// A window that shows files.
struct Showing final
{
    Showing() { showAt(window, {600, 400}); }
    [[nodiscard]] QWidget* viewerOf(const FileURL& file)
    {
        QWidget* const viewer = makeFileViewer(state, file, &window);
        layout.addWidget(viewer);
        return viewer;
    }

    RealDesktop desktop;
    AppState state{desktop.services()};
    QWidget window;
    QVBoxLayout layout{&window};
};

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
        Showing showing;

        for (const char* ending : {"pdf", "png", "html", "gdoc", "docx", "txt", "zip", "mp4", "ttf", "svg"}) {
            const auto file = bucket.file(u"udda."_s + QString::fromLatin1(ending));
            make(file.bytes());
            QWidget* const viewer = showing.viewerOf(file);
            WAIT_VERIFY(hasNotice(*viewer));
            delete viewer;
        }

        bool isFree = false;
        const auto work = showing.desktop.scheduler.inBackground(
            [&isFree]() -> std::function<void()> { return [&isFree] { isFree = true; }; });
        WAIT_VERIFY(isFree);
        QVERIFY2(showing.desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)),
                 "something still waits");
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
        Showing showing;

        QWidget* const viewer = showing.viewerOf(bucket.file(name));

        WAIT_VERIFY(hasNotice(*viewer) || showsItsFile(*viewer));
        QVERIFY(showing.desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)));
    }

    void whatNamesHoldDoesNotMatter_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("a line break") << QByteArray("rad\nbrytning");
        QTest::newRow("no text") << QByteArray("\xe5\xe4\xf6"); // Latin-1
        QTest::newRow("signs of addresses") << QByteArray("50% av #1? <b>&amp;\"'");
        QTest::newRow("signs of formats") << QByteArray("%1 %s \\");
    }

    void whatNamesHoldDoesNotMatter()
    {
        QFETCH(const QByteArray, name);
        const Bucket bucket;
        Showing showing;
        const QList<std::pair<QByteArray, QByteArray>> files{
            {".pdf", pdfOf({u"Ett"_s})}, {".png", twoHalves(u"a.png"_s)},
            {".html", "<p>hej"},         {".txt", "hej"},
            {".svg", drawing()},         {".wav", silence()}};

        for (const auto& [ending, bytes] : files) {
            const auto file = FileURL::fromBytes(bucket.root().bytes() + '/' + name + ending, false);
            write(file, bytes);
            QWidget* const viewer = showing.viewerOf(file);
            WAIT_VERIFY(showsItsFile(*viewer));
            delete viewer;
        }
    }

    void aFileIsNotAlwaysWhatItsNameSays_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("a picture called a document") << u"a.pdf"_s << twoHalves(u"a.png"_s) << false;
        QTest::newRow("text called a picture") << u"a.png"_s << QByteArray("hej") << false;
        QTest::newRow("a picture of another format") << u"a.png"_s << twoHalves(u"a.jpg"_s) << true;
        QTest::newRow("a document called an archive") << u"a.zip"_s << pdfOf({u"Ett"_s}) << false;
        QTest::newRow("an archive called text") << u"a.txt"_s << packed({{u"a"_s, "b"}}, u"zip"_s) << false;
        QTest::newRow("text called a font") << u"a.ttf"_s << QByteArray("hej") << false;
    }

    void aFileIsNotAlwaysWhatItsNameSays()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        QFETCH(const bool, isShown);
        const Bucket bucket;
        bucket.write(name, bytes);
        Showing showing;

        QWidget* const viewer = showing.viewerOf(bucket.file(name));

        if (isShown)
            WAIT_VERIFY(showsItsFile(*viewer));
        else
            WAIT_VERIFY(hasNotice(*viewer));
        QVERIFY(showing.desktop.scheduler.waitForWork(std::chrono::milliseconds(patience)));
        QCOMPARE(showsItsFile(*viewer), isShown);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(FileViewerOddFilesTests)
#include "FileViewerOddFilesTests.moc"
