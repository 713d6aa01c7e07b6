#include "Editor/WebEditorController.h"
#include "Support/EditingWindow.h"
#include "Support/EngineTest.h"

#include <QDirIterator>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// Somebody who writes in some notes while everything else happens to them, at random and never waiting for
/// the program to be done. Every word is written once, so that it can be told where it went.
class Writer final
{
public:
    explicit Writer(quint32 seed)
        : m_random(seed)
        , m_bucket({{"Mapp/", ""}})
        , m_window(m_desktop)
    {
        for (int note = 0; note < notes; ++note)
            m_bucket.write(u"N%1.md"_s.arg(note), "# " + mark(note).toUtf8() + "\n\n- punkt\n\nSlut.\n");
        m_window.state.addVault(m_bucket.root());
        select();
    }

    void doSomething()
    {
        switch (below(16)) {
        case 0:
        case 1:
        case 2:
            select();
            break;
        case 3:
            leaveAndComeBack();
            break;
        case 4:
        case 5:
            appendFromOutside();
            break;
        case 6:
            rename();
            break;
        case 7:
            move();
            break;
        case 8:
            m_window.view.session().flush();
            break;
        case 9:
            killThePage();
            break;
        default:
            write();
        }
        for (quint32 turns = below(30); turns > 0; --turns)
            QCoreApplication::processEvents();
    }

    void finish()
    {
        bool isSettled = false;
        m_window.view.session().settle([&isSettled] { isSettled = true; });
        QTRY_VERIFY_WITH_TIMEOUT(isSettled, patience);
    }

    /// What is wrong with the bucket now; nothing when every word is in a file of the note it was written in,
    /// and in no other note.
    [[nodiscard]] QString fault() const
    {
        QMap<QString, QString> texts;
        for (const QString& path : files())
            texts[path] = QString::fromUtf8(read(path));
        for (const auto& [word, note] : m_words.asKeyValueRange()) {
            bool isThere = false;
            for (const auto& [path, text] : texts.asKeyValueRange()) {
                if (!text.contains(word))
                    continue;
                isThere = isThere || text.contains(mark(note));
                if (!text.contains(mark(note)))
                    return u"%1 of note %2 is in %3"_s.arg(word).arg(note).arg(path);
            }
            if (!isThere)
                return u"%1 of note %2 is nowhere"_s.arg(word).arg(note);
        }
        return {};
    }
    [[nodiscard]] qsizetype wordCount() const { return m_words.size(); }

private:
    static constexpr int notes = 3;
    [[nodiscard]] static QString mark(int note) { return u"Anteckning %1:"_s.arg(note); }
    [[nodiscard]] quint32 below(quint32 limit) { return m_random.bounded(limit); }
    [[nodiscard]] QString newWord(int note)
    {
        const QString word = u"ord%1x"_s.arg(m_words.size());
        m_words[word] = note;
        return word;
    }

    [[nodiscard]] QStringList files() const
    {
        QStringList paths;
        for (QDirIterator walk(m_bucket.root().path(), {u"*.md"_s}, QDir::Files,
                               QDirIterator::Subdirectories);
             walk.hasNext();)
            paths.append(walk.next());
        return paths;
    }
    [[nodiscard]] static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] FileURL fileOf(int note) const
    {
        for (const QString& path : files()) {
            if (!path.contains(u"konflikt"_s) && read(path).contains(mark(note).toUtf8()))
                return FileURL::file(path);
        }
        qFatal("a note is gone");
    }

    void select()
    {
        m_note = static_cast<int>(below(notes));
        const FileURL file = fileOf(m_note);
        if (m_window.state.selectedFile() == file)
            return;
        m_loaded.clear();
        m_isLoading = true;
        m_window.state.setSelectedFile(file);
    }

    /// Writes a word where the note ends; its last keys may still be under way.
    void write()
    {
        if (std::exchange(m_isLoading, false))
            QTRY_VERIFY_WITH_TIMEOUT(!m_loaded.empty(), patience);
        m_window.type(u" "_s + newWord(m_note));
    }

    void leaveAndComeBack()
    {
        m_window.deactivate();
        m_window.activate();
    }

    void appendFromOutside()
    {
        const int note = static_cast<int>(below(notes));
        const QString path = fileOf(note).path();
        const QByteArray text = read(path) + "\n" + newWord(note).toUtf8() + "\n";
        QSaveFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
        QVERIFY(file.commit());
    }

    void rename() { m_window.view.session().setTitle(u"N%1 %2"_s.arg(m_note).arg(++m_names)); }

    void move()
    {
        const bool isInside = fileOf(m_note).path().contains(u"/Mapp/"_s);
        m_window.state.moveFile(fileOf(m_note), isInside ? m_bucket.root() : m_bucket.folder(u"Mapp"_s));
    }

    void killThePage()
    {
        m_window.drain(); // what has not been told by then dies with the page
        const auto process = static_cast<pid_t>(m_desktop.engine->processId());
        if (process == 0)
            return;
        QCOMPARE(::kill(process, SIGKILL), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window.state.editorController().isReady(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_window.state.editorController().isReady(), patience);
    }

    QRandomGenerator m_random;
    Bucket m_bucket;
    RealDesktop m_desktop;
    EditingWindow m_window;
    QSignalSpy m_loaded{&m_window.view.session(), &EditorSession::loaded};
    QMap<QString, int> m_words;
    int m_note = 0;
    int m_names = 0;
    bool m_isLoading = false;
};

} // namespace

/// The real engine, page, session and files under a person who does not wait.
class EditingRandomTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyWordStaysInItsNote_data();
    void everyWordStaysInItsNote();
};

void EditingRandomTests::everyWordStaysInItsNote_data()
{
    QTest::addColumn<quint32>("seed");

    const quint32 rounds = qEnvironmentVariableIsSet("LONG") ? 100 : 3;
    for (quint32 seed = 1; seed <= rounds; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void EditingRandomTests::everyWordStaysInItsNote()
{
    QFETCH(const quint32, seed);
    Writer writer(seed);

    for (int step = 0; step < 30; ++step) {
        writer.doSomething();
        if (QTest::currentTestFailed())
            return;
    }
    writer.finish();

    QVERIFY(writer.wordCount() > 5);
    QCOMPARE(writer.fault(), QString());
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(EditingRandomTests)
#include "EditingRandomTests.moc"
