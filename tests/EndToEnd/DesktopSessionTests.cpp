#include "Fakes/Bucket.h"
#include "State/OpenFileWindows.h"
#include "Support/EngineTest.h"
#include "Support/PrivateBus.h"
#include "Support/ProgramHome.h"
#include "Support/Programs.h"
#include "Support/VirtualDisplay.h"
#include "Support/Window.h"
#include "Support/WindowMap.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// The program as `cmake --install` lays it down.
class Installation final
{
public:
    Installation()
    {
        const QString build = QDir::cleanPath(qEnvironmentVariable("WENDLORE_BIN_DIR") + u"/.."_s);
        runProgram(u"cmake"_s, {u"--install"_s, build, u"--prefix"_s, m_prefix.path(), u"--component"_s,
                                u"Unspecified"_s});
    }

    [[nodiscard]] QString program() const { return m_prefix.filePath(u"bin/wendlores"_s); }
    [[nodiscard]] QByteArray dictionary(const QString& language) const
    {
        return m_prefix.filePath(u"share/wendlores/qtwebengine_dictionaries/%1.bdic"_s.arg(language))
            .toUtf8();
    }

private:
    QTemporaryDir m_prefix;
};

/// Whether any process has the file mapped into its memory.
bool isMapped(const QByteArray& file)
{
    for (const QString& process : QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs)) {
        QFile maps(u"/proc/%1/maps"_s.arg(process));
        if (maps.open(QIODevice::ReadOnly) && maps.readAll().contains(file))
            return true;
    }
    return false;
}

/// A person at a screen, a keyboard and a pointer, with the program, a session bus and a bucket.
class Person final
{
public:
    Person(const Installation& installation, const Bucket& bucket)
        : m_installation(installation)
        , m_bucket(bucket)
    {}

    void start(const QStringList& arguments)
    {
        QProcessEnvironment environment = m_home.environment(u"xcb"_s);
        environment.insert(u"DISPLAY"_s, display.name());
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus.address());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(m_installation.program(), arguments);
    }
    /// Opens the bucket and goes to the main window; false when none comes.
    [[nodiscard]] bool begin()
    {
        start({m_bucket.root().path()});
        const QStringList shown = windows(m_bucket.root().lastPathComponent(), 1);
        if (shown.size() != 1)
            return false;
        main = shown.front();
        display.focus(main);
        return true;
    }
    /// Waits until `count` windows of that title are shown; gives them.
    [[nodiscard]] QStringList windows(const QString& title, qsizetype count) const
    {
        QStringList found;
        static_cast<void>(QTest::qWaitFor(
            [&] { return (found = display.windows(title + u" — Wendlores"_s)).size() == count; }, patience));
        return found;
    }
    /// Presses a key until the note on disk changes: nothing outside tells when the page takes keys.
    [[nodiscard]] bool goOnTyping(const QString& note) const
    {
        return repeat([&] { display.type(u"x"_s); }, changeOf(note));
    }
    /// Makes the caret's line bold, by the toolbar.
    [[nodiscard]] bool makeLineBold(const QString& note) const
    {
        const QPoint bold = map(note).control(u"Fet"_s);
        return repeat(
            [&] {
                display.press(u"shift+Home"_s);
                display.click(bold);
            },
            [&] { return m_bucket.read(note).contains("**"); });
    }
    /// Links to the first note that `query` finds, in a line of its own.
    [[nodiscard]] bool linkTo(const QString& query) const
    {
        display.press(u"End"_s);
        display.press(u"Return"_s);
        const QPoint format = map(u"Ny not.md"_s).control(u"Format"_s);
        return repeat(
                   [&] {
                       display.press(u"Escape"_s);
                       display.click(format);
                       display.press(u"Up"_s); // the last entry
                       display.press(u"Return"_s);
                   },
                   [&] { return isShown(u"Infoga länk"_s); }) &&
               answer(u"Infoga länk"_s, query);
    }
    /// Opens the shown file in a window of its own, by the toolbar, and goes there.
    [[nodiscard]] bool openOwnWindow(const QString& file) const
    {
        display.click(map(file).control(u"Eget fönster"_s));
        QStringList both = windows(m_bucket.file(file).nameWithoutExtension(), 2);
        if (both.size() != 2)
            return false;
        both.removeAll(main);
        display.focus(both.front());
        return true;
    }
    /// Takes a file that has a window of its own back into the main window, and goes into its text.
    [[nodiscard]] bool fetchBack(const QString& file) const
    {
        OpenFileWindows::shared().insert(m_bucket.file(file)); // for the map
        const QPoint button = map(file).buttonWithText(u"Hämta hit"_s);
        OpenFileWindows::shared().remove(m_bucket.file(file));
        display.focus(main);
        display.click(button);
        if (windows(m_bucket.file(file).nameWithoutExtension(), 1) != QStringList(main))
            return false;
        display.click(map(file).note());
        return true;
    }
    /// Searches for `text` and opens what is found first, which is to be `note`.
    [[nodiscard]] bool search(const QString& text, const QString& note) const
    {
        display.click(map(u"Ny not.md"_s).control(u"Sök"_s));
        display.type(text);
        const bool isFound = repeat([&] { display.press(u"Return"_s); }, [&] { return isShown(note); });
        display.press(u"Escape"_s);
        return isFound;
    }
    /// Renames a file from its menu in the tree.
    [[nodiscard]] bool rename(const FileURL& file, const QString& name) const
    {
        const QPoint row = map(file.lastPathComponent()).row(file);
        return repeat(
                   [&] {
                       display.press(u"Escape"_s);
                       display.click(row, VirtualDisplay::Button::right);
                       for (const QString& key : {u"Down"_s, u"Down"_s, u"Return"_s}) // the second entry
                           display.press(key);
                   },
                   [&] { return isShown(u"Byt namn"_s); }) &&
               answer(u"Byt namn"_s, name);
    }
    /// Drags a file of the bucket's own onto a folder; false when it does not arrive.
    [[nodiscard]] bool drag(const FileURL& file, const FileURL& folder) const
    {
        const QString name = file.lastPathComponent();
        const WindowMap places = map(name);
        return repeat([&] { display.drag(places.row(file), places.row(folder)); },
                      [&] { return m_bucket.exists(folder.lastPathComponent() + u'/' + name); });
    }
    void undoFromTheMenu() const
    {
        display.press(u"alt+r"_s);
        display.press(u"Return"_s); // the first entry
    }
    [[nodiscard]] bool quit()
    {
        display.press(u"ctrl+q"_s);
        return program.waitForFinished(patience) && program.exitStatus() == QProcess::NormalExit &&
               program.exitCode() == 0;
    }

    VirtualDisplay display;
    QProcess program;
    QString main;

private:
    [[nodiscard]] WindowMap map(const QString& file) const
    {
        return WindowMap(m_bucket.root(), m_bucket.file(file), display.placeOf(main));
    }
    [[nodiscard]] std::function<bool()> changeOf(const QString& note) const
    {
        return [this, note, before = m_bucket.read(note)] { return m_bucket.read(note) != before; };
    }
    /// Does something that may come too early, until it shows.
    [[nodiscard]] static bool repeat(const std::function<void()>& act, const std::function<bool()>& shows)
    {
        constexpr int tries = 10;
        constexpr int wait = 4000;
        for (int i = 0; i < tries; ++i) {
            act();
            if (QTest::qWaitFor(shows, wait))
                return true;
        }
        return false;
    }
    /// Answers the sheet of that title, and goes back to the main window.
    [[nodiscard]] bool answer(const QString& sheet, const QString& text) const
    {
        const QStringList shown = windows(sheet, 1);
        if (shown.size() != 1)
            return false;
        display.focus(shown.front());
        const bool isClosed = repeat(
            [&] {
                display.press(u"ctrl+a"_s);
                display.type(text);
                display.press(u"Return"_s);
            },
            [&] { return !isShown(sheet); });
        display.focus(main);
        return isClosed;
    }
    [[nodiscard]] bool isShown(const QString& title) const
    {
        return !display.windows(title + u" — Wendlores"_s).isEmpty();
    }

    const Installation& m_installation;
    const Bucket& m_bucket;
    ProgramHome m_home;
    PrivateBus m_bus;
};

} // namespace

class DesktopSessionTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        useProductLook();
        m_installation = std::make_unique<Installation>();
    }
    void theMainJobIsDoneByKeyboardAndPointer();
    void startsDoNotMoveTheWindow();

private:
    std::unique_ptr<Installation> m_installation;
};

/// A note is written, formatted, linked, edited in a window of its own and taken back; another is found,
/// renamed, moved and moved back; and the next start shows everything where it was.
void DesktopSessionTests::theMainJobIsDoneByKeyboardAndPointer()
{
    const Bucket bucket({{"Annan.md", "det enda ordet\n"}, {"Mapp/I mappen.md", "\n"}});
    const QString note = u"Ny not.md"_s;
    const FileURL found = bucket.file(u"Annan.md"_s);
    Person person(*m_installation, bucket);
    QVERIFY(person.begin());

    person.display.press(u"ctrl+n"_s);
    QTRY_VERIFY_WITH_TIMEOUT(bucket.exists(note), patience);
    QVERIFY(person.goOnTyping(note));
    person.display.type(u" hej"_s);
    for (const QString& language : {u"sv-SE"_s, u"en-US"_s}) // what is typed is checked
        QTRY_VERIFY_WITH_TIMEOUT(isMapped(m_installation->dictionary(language)), patience);
    QVERIFY(person.makeLineBold(note));
    QVERIFY(person.linkTo(u"ANN"_s));
    QTRY_VERIFY_WITH_TIMEOUT(bucket.read(note).trimmed().endsWith("\n\n[[Annan]]"), patience);

    QVERIFY(person.openOwnWindow(note));
    QVERIFY(person.goOnTyping(note));
    QVERIFY(person.fetchBack(note));
    QVERIFY(person.goOnTyping(note));

    QVERIFY(person.search(u"enda ordet"_s, u"Annan"_s));
    QVERIFY(person.rename(found, u"Plan"_s));
    QTRY_COMPARE_WITH_TIMEOUT(bucket.names(), QStringList({u"Mapp"_s, note, u"Plan.md"_s}), patience);
    QVERIFY(person.drag(bucket.file(u"Plan.md"_s), bucket.folder(u"Mapp"_s)));
    QCOMPARE(bucket.read(u"Mapp/Plan.md"_s), "det enda ordet\n");
    person.undoFromTheMenu();
    QTRY_VERIFY_WITH_TIMEOUT(bucket.exists(u"Plan.md"_s), patience);

    QVERIFY(person.openOwnWindow(u"Plan.md"_s));
    const QByteArray written = bucket.read(note);
    QVERIFY(person.quit());
    person.start({});
    QCOMPARE(person.windows(u"Plan"_s, 2).size(), 2);
    QCOMPARE(bucket.read(note), written);
    QCOMPARE(bucket.names(), QStringList({u"Mapp"_s, note, u"Plan.md"_s}));
    QCOMPARE(bucket.names(u"Mapp"_s), QStringList(u"I mappen.md"_s));
    QVERIFY(person.quit());
}

void DesktopSessionTests::startsDoNotMoveTheWindow()
{
    const Bucket bucket({{"A.md", "a\n"}});
    Person person(*m_installation, bucket);
    QRect first;
    for (int start = 0; start < 3; ++start) {
        QVERIFY(person.begin());
        const QRect place = person.display.placeOf(person.main);
        QVERIFY(place.isValid());
        if (start == 0)
            first = place;
        QCOMPARE(place, first);
        QVERIFY(person.quit());
    }
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(DesktopSessionTests)
#include "DesktopSessionTests.moc"
