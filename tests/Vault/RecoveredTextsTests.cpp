#include "Vault/RecoveredTexts.h"

#include "Fakes/Bucket.h"

#include <QTest>

#include <sys/stat.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

const auto noteName = u"Möte.md"_s;

QDateTime morning()
{
    return QDateTime(QDate(2025, 3, 14), QTime(9, 32, 5));
}

} // namespace

class RecoveredTextsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTextIsKeptUnderItsNoteAndTime();
    void theFolderIsMadeForItsOwnerOnly();
    void severalTextsInOneSecondAreAllKept();
    void theNewestTextIsNotKeptTwice();
    void notesOfOneNameAreToldApart();
    void anEmptyTextIsNotKept();
    void longNamesAndNamesWithoutExtensionFit();
    void oldTextsGo();
    void theOldestTextsGoWhenThereAreTooManyBytes();
    void theTextJustKeptStaysHoweverLarge();
    void otherFilesInTheFolderStay();
    void aFolderThatCannotBeMadeGivesNothing();
    void itemsAreTakenWhole();
    void takenFoldersGoWithTime();
    void anItemThatCannotBeTakenStays();

private:
    [[nodiscard]] RecoveredTexts recovered() const
    {
        return RecoveredTexts(m_bucket->folder(u"state/recovered"_s), [this] { return m_now; });
    }
    [[nodiscard]] FileURL note() const { return m_bucket->file(noteName); }
    [[nodiscard]] QStringList kept() const { return m_bucket->names(u"state/recovered"_s); }

    std::unique_ptr<Bucket> m_bucket;
    QDateTime m_now;
};

void RecoveredTextsTests::init()
{
    m_bucket = std::make_unique<Bucket>();
    m_now = morning();
}

void RecoveredTextsTests::aTextIsKeptUnderItsNoteAndTime()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Möte\\.md.*Möte 2025.*could not be saved"_s));

    const FileURL entry = recovered().keep(note(), "text\xff", u"could not be saved"_s);

    QVERIFY(entry.lastPathComponent().startsWith(u"Möte 2025-03-14 093205 "_s));
    QCOMPARE(entry.pathExtension(), u"md"_s);
    QCOMPARE(kept(), QStringList(entry.lastPathComponent()));
    QCOMPARE(m_bucket->read(u"state/recovered/"_s + entry.lastPathComponent()), "text\xff");
}

void RecoveredTextsTests::theFolderIsMadeForItsOwnerOnly()
{
    recovered().keep(note(), "hemligt", {});

    struct stat status = {};
    QCOMPARE(::stat(m_bucket->file(u"state/recovered"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, mode_t(0700));
}

void RecoveredTextsTests::severalTextsInOneSecondAreAllKept()
{
    const FileURL first = recovered().keep(note(), "ett", {});
    const FileURL second = recovered().keep(note(), "två", {});
    const FileURL third = recovered().keep(note(), "ett", {});

    QCOMPARE(kept().size(), 3);
    QVERIFY(second.nameWithoutExtension().endsWith(u" 2"_s));
    QVERIFY(third.nameWithoutExtension().endsWith(u" 3"_s));
    QVERIFY(!first.nameWithoutExtension().endsWith(u" 1"_s));
}

void RecoveredTextsTests::theNewestTextIsNotKeptTwice()
{
    const FileURL first = recovered().keep(note(), "samma", {});
    m_now = m_now.addSecs(60);

    QCOMPARE(recovered().keep(note(), "samma", {}), first);

    QCOMPARE(kept().size(), 1);
}

void RecoveredTextsTests::notesOfOneNameAreToldApart()
{
    const FileURL first = recovered().keep(m_bucket->file(u"A/Plan.md"_s), "samma", {});
    const FileURL second = recovered().keep(m_bucket->file(u"B/Plan.md"_s), "samma", {});

    QVERIFY(first != second);
    QCOMPARE(kept().size(), 2);
}

void RecoveredTextsTests::anEmptyTextIsNotKept()
{
    QVERIFY(recovered().keep(note(), {}, {}).isEmpty());

    QVERIFY(!m_bucket->exists(u"state"_s));
}

void RecoveredTextsTests::longNamesAndNamesWithoutExtensionFit()
{
    const QString longest = QString(125, u'ö') + u".md"_s;
    const QString longExtension = u"a."_s + QString(250, u'x');

    for (const QString& name : {longest, longExtension, u"README"_s, u".profile"_s}) {
        const FileURL file = m_bucket->file(name);
        const FileURL entry = recovered().keep(file, "text", {});
        QCOMPARE(m_bucket->read(u"state/recovered/"_s + entry.lastPathComponent()), "text");
        QCOMPARE(recovered().keep(file, "text", {}), entry);
    }
}

void RecoveredTextsTests::oldTextsGo()
{
    recovered().keep(note(), "gammal", {});
    m_now = morning().addDays(RecoveredTexts::maximumAgeDays).addSecs(-1);
    recovered().keep(note(), "yngre", {});
    QCOMPARE(kept().size(), 2);

    m_now = morning().addDays(RecoveredTexts::maximumAgeDays).addSecs(1);
    recovered().keep(note(), "ny", {});

    QCOMPARE(kept().size(), 2);
    QVERIFY(kept().filter(u"2025-03-14"_s).isEmpty());
}

void RecoveredTextsTests::theOldestTextsGoWhenThereAreTooManyBytes()
{
    const int textSize = int(RecoveredTexts::maximumBytes / 4);
    QStringList names;
    for (int text = 0; text < 6; ++text) {
        m_now = m_now.addSecs(1);
        names.append(
            recovered().keep(note(), QByteArray(textSize, char('a' + text)), {}).lastPathComponent());
    }

    QCOMPARE(kept(), names.last(4));
}

void RecoveredTextsTests::theTextJustKeptStaysHoweverLarge()
{
    recovered().keep(note(), "liten", {});
    m_now = m_now.addSecs(1);

    const FileURL entry = recovered().keep(note(), QByteArray(RecoveredTexts::maximumBytes + 1, 'x'), {});

    QCOMPARE(kept(), QStringList(entry.lastPathComponent()));
}

void RecoveredTextsTests::otherFilesInTheFolderStay()
{
    m_bucket->write(u"state/recovered/min egen.md"_s, "kvar");
    recovered().keep(note(), "text", {});
    m_now = m_now.addYears(1);
    recovered().keep(note(), "ny", {});

    QCOMPARE(kept().size(), 2);
    QCOMPARE(m_bucket->read(u"state/recovered/min egen.md"_s), "kvar");
}

void RecoveredTextsTests::aFolderThatCannotBeMadeGivesNothing()
{
    m_bucket->write(u"state"_s, "en fil");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot keep .*Möte"_s));

    QVERIFY(recovered().keep(note(), "text", {}).isEmpty());
}

void RecoveredTextsTests::itemsAreTakenWhole()
{
    m_bucket->write(u"Projekt/Del/A.md"_s, "text");
    m_bucket->write(u"Plan.md"_s, "plan");

    const FileURL folder = recovered().take(m_bucket->folder(u"Projekt"_s), u"no trash"_s);
    const FileURL file = recovered().take(m_bucket->file(u"Plan.md"_s), u"no trash"_s);

    QCOMPARE(m_bucket->names(), QStringList(u"state"_s));
    QVERIFY(folder.lastPathComponent().startsWith(u"Projekt 2025-03-14 093205 "_s));
    QVERIFY(file.lastPathComponent().startsWith(u"Plan 2025-03-14 093205 "_s));
    const QString inFolder = u"state/recovered/"_s + folder.lastPathComponent();
    QCOMPARE(m_bucket->read(inFolder + u"/Del/A.md"_s), "text");
    QCOMPARE(m_bucket->read(u"state/recovered/"_s + file.lastPathComponent()), "plan");
}

void RecoveredTextsTests::takenFoldersGoWithTime()
{
    m_bucket->write(u"Projekt/Del/A.md"_s, "text");
    recovered().take(m_bucket->folder(u"Projekt"_s), {});
    m_now = m_now.addDays(RecoveredTexts::maximumAgeDays + 1);

    const FileURL entry = recovered().keep(note(), "ny", {});

    QCOMPARE(kept(), QStringList(entry.lastPathComponent()));
}

void RecoveredTextsTests::anItemThatCannotBeTakenStays()
{
    m_bucket->write(u"state"_s, "en fil");
    m_bucket->write(u"Plan.md"_s, "plan");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot keep .*Plan"_s));

    QVERIFY(recovered().take(m_bucket->file(u"Plan.md"_s), {}).isEmpty());

    QCOMPARE(m_bucket->read(u"Plan.md"_s), "plan");
}

QTEST_APPLESS_MAIN(RecoveredTextsTests)
#include "RecoveredTextsTests.moc"
