#include "Editor/EditorSession.h"

#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Fakes/PageModel.h"
#include "State/AppState.h"

#include <QSet>
#include <QTest>

#include <random>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int notes = 3;
constexpr int operations = 150;

/// The random acts of a user, another device, the page's process and time, on three notes. Every word is made
/// once and begins with its note's letter, so that it can be looked for afterwards.
class World final
{
public:
    explicit World(unsigned seed)
        : m_random(seed)
        , m_bucket({{"a.md", "a0"}, {"b.md", "b0"}, {"c.md", "c0"}})
        , m_files{m_bucket.file(u"a.md"_s), m_bucket.file(u"b.md"_s), m_bucket.file(u"c.md"_s)}
    {
        Services services = m_desktop.services();
        services.makeEditorWebView = [this] {
            auto page = std::make_unique<PageModel>();
            m_page = page.get();
            return page;
        };
        m_state = std::make_unique<AppState>(services);
        m_state->addVault(m_bucket.root());
        m_session = std::make_unique<EditorSession>(*m_state, m_state->editorController(), [] {
            return QDateTime(QDate(2025, 3, 14), QTime(9, 32));
        });
        for (int note = 0; note < notes; ++note)
            m_words[note].insert(word(note));
    }

    void live()
    {
        for (int step = 0; step < operations; ++step)
            act();
        settle();
    }

    /// What is wrong in the end; empty when every word is where it belongs.
    [[nodiscard]] QString complaint() const
    {
        QMap<int, QSet<QString>> found;
        for (const QString& name : m_bucket.names()) {
            const QString text = QString::fromUtf8(m_bucket.read(name));
            const int note = noteOf(text);
            if (!name.contains(u" (konflikt "_s) && name != m_files[note].lastPathComponent())
                return u"a file that nobody made: "_s + name;
            for (const QString& each : text.split(u' ')) {
                if (noteOf(each) != note)
                    return name + u" holds another note's words: "_s + text;
                found[note].insert(each);
            }
        }
        for (int note = 0; note < notes; ++note) {
            const QSet<QString> lost = m_words[note] - found[note];
            if (!lost.isEmpty())
                return u"lost: "_s + QStringList(lost.begin(), lost.end()).join(u' ');
        }
        const auto current = m_session->fileURL();
        if (current && m_page->content() != QString::fromUtf8(m_bucket.read(current->lastPathComponent())))
            return u"the page shows what is not on disk: "_s + m_page->content().value_or(u"nothing"_s);
        if (QDir(m_desktop.recovered.directory().path()).exists())
            return u"a text was dropped"_s;
        return {};
    }
    [[nodiscard]] QString story() const { return m_story.join(u'\n'); }

private:
    [[nodiscard]] int upTo(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    [[nodiscard]] QString word(int note) { return QChar(u'a' + note) + QString::number(m_nextWord[note]++); }
    [[nodiscard]] static int noteOf(const QString& text)
    {
        return text.isEmpty() ? -1 : text[0].unicode() - u'a';
    }
    void tell(const QString& what) { m_story.append(what); }
    [[nodiscard]] QString pageText() const { return m_page->content().value_or(u"nothing"_s); }

    void act()
    {
        switch (upTo(18)) {
        case 0:
        case 1:
        case 2:
        case 3:
            return type();
        case 4:
        case 5:
        case 6:
            tell(u"to the page"_s);
            m_page->deliverToPage();
            return;
        case 7:
        case 8:
        case 9:
            tell(u"to the host"_s);
            m_page->deliverToHost();
            return;
        case 10:
            return open();
        case 11:
            return rename();
        case 12:
            return changeFromOutside();
        case 13:
            tell(u"activate"_s);
            return m_session->setScenePhase(ScenePhase::Active);
        case 14:
            tell(u"deactivate"_s);
            return m_session->setScenePhase(ScenePhase::Inactive);
        case 15:
            return upTo(4) == 0 ? crash() : wait();
        case 16:
            return wait();
        default:
            return read();
        }
    }

    void type()
    {
        if (!m_page->content() || m_page->content()->isEmpty())
            return;
        const QString typed = word(noteOf(*m_page->content()));
        QStringList text = m_page->content()->split(u' ');
        text.insert(1 + upTo(static_cast<int>(text.size())), typed);
        m_words[noteOf(typed)].insert(typed);
        m_page->edit(text.join(u' '));
        tell(u"type: "_s + pageText());
    }
    void open()
    {
        const int note = upTo(notes + 1);
        if (note == notes) {
            tell(u"close"_s);
            return m_session->close();
        }
        tell(u"open "_s + m_files[note].lastPathComponent());
        m_session->open(m_files[note]);
    }
    void rename()
    {
        const int note = upTo(notes);
        const QString name = u"n%1"_s.arg(m_nextName++);
        tell(u"rename %1 to %2"_s.arg(m_files[note].lastPathComponent(), name));
        if (m_session->fileURL() == m_files[note] && upTo(2) == 0)
            m_session->setTitle(name);
        else
            m_state->renameFile(m_files[note], name);
        m_files[note] = m_bucket.file(name + u".md"_s);
    }
    /// Another device adds a word, or writes the note anew, which is its own to answer for.
    void changeFromOutside()
    {
        const int note = upTo(notes);
        const QString name = m_files[note].lastPathComponent();
        const QString disk = QString::fromUtf8(m_bucket.read(name));
        const QString added = word(note);
        const bool isNew = upTo(3) == 0;
        if (isNew) {
            for (const QString& replaced : disk.split(u' '))
                m_words[note].remove(replaced);
        }
        m_words[note].insert(added);
        m_bucket.write(name, (isNew ? added : disk + u' ' + added).toUtf8());
        tell(u"outside, %1: %2"_s.arg(name, QString::fromUtf8(m_bucket.read(name))));
    }
    void crash()
    {
        const bool losesMessages = upTo(2) == 0;
        tell(losesMessages ? u"crash, messages lost"_s : u"crash"_s);
        // Words that the host never heard of died with the page.
        const QSet<QString> heard = wordsIn(m_page->reported());
        for (const QString& each : wordsIn(m_page->crash(losesMessages)) - heard)
            m_words[noteOf(each)].remove(each);
    }
    [[nodiscard]] static QSet<QString> wordsIn(const QStringList& texts)
    {
        const QStringList words = texts.join(u' ').split(u' ', Qt::SkipEmptyParts);
        return {words.begin(), words.end()};
    }
    void wait()
    {
        const auto time = std::chrono::milliseconds(upTo(1500));
        tell(u"wait %1"_s.arg(time.count()));
        m_desktop.scheduler.advance(time);
    }
    /// A read in the background ends, and something may happen while it is under way.
    void read()
    {
        tell(u"read"_s);
        if (upTo(2) == 0)
            m_desktop.coordinator.afterNextRead = [this] { m_page->deliverToHost(); };
        m_desktop.scheduler.finishNextBackgroundWork();
        m_desktop.coordinator.afterNextRead = nullptr;
    }
    void settle()
    {
        tell(u"settle"_s);
        for (int round = 0; round < 20; ++round) {
            while (m_page->deliverToPage() || m_page->deliverToHost()) {
            }
            m_desktop.scheduler.finishBackgroundWork();
            m_desktop.scheduler.advance(2s);
        }
        m_session->setScenePhase(ScenePhase::Active);
        while (m_page->deliverToPage() || m_page->deliverToHost()) {
        }
    }

    std::mt19937 m_random;
    Bucket m_bucket;
    FakeServices m_desktop;
    std::array<FileURL, notes> m_files;
    std::array<QSet<QString>, notes> m_words;
    std::array<int, notes> m_nextWord{};
    int m_nextName = 0;
    PageModel* m_page = nullptr;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<EditorSession> m_session;
    QStringList m_story;
};

} // namespace

/// Whatever the user, other devices, the page's process and the disk do, in whatever order and however late:
/// every word ends up in its own note or in a conflict copy of it, and nowhere else.
class EditorSessionPropertyTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void noWordIsEverLostOrMisplaced();
};

void EditorSessionPropertyTests::initTestCase()
{
    // Thousands of small synced writes: in memory, where there is such a place.
    if (QFileInfo(u"/dev/shm"_s).isWritable())
        qputenv("TMPDIR", "/dev/shm");
    QLoggingCategory::setFilterRules(u"wendlore.files=false"_s);
}

void EditorSessionPropertyTests::noWordIsEverLostOrMisplaced()
{
    const unsigned first = qEnvironmentVariableIntValue("WENDLORE_SEED");
    const unsigned some = qEnvironmentVariableIsSet("LONG") ? 20'000 : 3000;
    const unsigned count = qEnvironmentVariableIsSet("WENDLORE_SEED") ? 1 : some;
    for (unsigned seed = first; seed < first + count; ++seed) {
        World world(seed);
        world.live();
        const QString complaint = world.complaint();
        if (!complaint.isEmpty())
            QFAIL(qPrintable(u"seed %1: %2\n%3"_s.arg(seed).arg(complaint, world.story())));
    }
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::EditorSessionPropertyTests)
#include "EditorSessionPropertyTests.moc"
