#include "Platform/FreedesktopTrash.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

class FreedesktopTrashTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFileGoesIntoTheTrashWithItsPathAndTime();
    void aFolderGoesWithAllBelow();
    void itemsOfOneNameAreNumbered();
    void theLongestNamesFit();
    void anOrphanInTheTrashIsNotReplaced();
    void aDanglingLinkGoesAsALink();
    void aMissingItemLeavesNothingInTheTrash();
    void anUnusableTrashLeavesTheItem();
    void anotherDiskHasATrashOfItsOwn();
    void aDiskThatCannotHaveATrashUsesTheUsersOwn();
    void theTrashLiesWhereTheDesktopLooks();

private:
    [[nodiscard]] FreedesktopTrash trash() const
    {
        return FreedesktopTrash(m_bucket->folder(u"data/Trash"_s),
                                [] { return QDateTime(QDate(2025, 3, 14), QTime(9, 32, 5)); });
    }
    [[nodiscard]] QStringList trashed() const { return m_bucket->names(u"data/Trash/files"_s); }
    [[nodiscard]] QStringList descriptions() const { return m_bucket->names(u"data/Trash/info"_s); }

    std::unique_ptr<Bucket> m_bucket;
};

void FreedesktopTrashTests::init()
{
    m_bucket = std::make_unique<Bucket>();
}

void FreedesktopTrashTests::aFileGoesIntoTheTrashWithItsPathAndTime()
{
    m_bucket->write(u"anteckningar/Möte 1.md"_s, "text");

    QVERIFY(trash().put(m_bucket->file(u"anteckningar/Möte 1.md"_s)));

    QVERIFY(!m_bucket->exists(u"anteckningar/Möte 1.md"_s));
    QCOMPARE(m_bucket->read(u"data/Trash/files/Möte 1.md"_s), "text");
    QCOMPARE(m_bucket->read(u"data/Trash/info/Möte 1.md.trashinfo"_s),
             "[Trash Info]\nPath=" + m_bucket->root().bytes() +
                 "/anteckningar/M%C3%B6te%201.md\nDeletionDate=2025-03-14T09:32:05\n");
    struct stat status = {};
    QCOMPARE(::stat(m_bucket->file(u"data/Trash"_s).bytes().constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777, mode_t(0700));
}

void FreedesktopTrashTests::aFolderGoesWithAllBelow()
{
    m_bucket->write(u"Arkiv/Gammalt/A.md"_s, "text");

    QVERIFY(trash().put(m_bucket->folder(u"Arkiv"_s)));

    QCOMPARE(m_bucket->read(u"data/Trash/files/Arkiv/Gammalt/A.md"_s), "text");
    QCOMPARE(m_bucket->names(), QStringList(u"data"_s));
}

void FreedesktopTrashTests::itemsOfOneNameAreNumbered()
{
    for (const QByteArray& text : {"ett"_ba, "två"_ba, "tre"_ba}) {
        m_bucket->write(u"A.md"_s, text);
        QVERIFY(trash().put(m_bucket->file(u"A.md"_s)));
    }

    QCOMPARE(trashed(), QStringList({u"A 2.md"_s, u"A 3.md"_s, u"A.md"_s}));
    QCOMPARE(m_bucket->read(u"data/Trash/files/A 3.md"_s), "tre");
    QCOMPARE(descriptions().size(), 3);
}

void FreedesktopTrashTests::theLongestNamesFit()
{
    const QString longest = QString(126, u'ö') + u".md"_s;
    const QString longExtension = u"a."_s + QString(253, u'x');
    for (const QString& name : {longest, longExtension, QString(127, u'å')}) {
        for (int round = 0; round < 2; ++round) {
            m_bucket->write(name, "text");
            QVERIFY(trash().put(m_bucket->file(name)));
        }
    }

    QCOMPARE(trashed().size(), 6);
    for (const QString& name : trashed())
        QVERIFY2(!name.contains(QChar::ReplacementCharacter), qPrintable(name));
    QCOMPARE(descriptions().size(), 6);
}

void FreedesktopTrashTests::anOrphanInTheTrashIsNotReplaced()
{
    m_bucket->write(u"data/Trash/files/A.md"_s, "föräldralös");
    m_bucket->write(u"A.md"_s, "text");

    QVERIFY(trash().put(m_bucket->file(u"A.md"_s)));

    QCOMPARE(m_bucket->read(u"data/Trash/files/A.md"_s), "föräldralös");
    QCOMPARE(m_bucket->read(u"data/Trash/files/A 2.md"_s), "text");
    QCOMPARE(descriptions(), QStringList(u"A 2.md.trashinfo"_s));
}

void FreedesktopTrashTests::aDanglingLinkGoesAsALink()
{
    QCOMPARE(::symlink("saknas", m_bucket->file(u"länk"_s).bytes().constData()), 0);

    QVERIFY(trash().put(m_bucket->file(u"länk"_s)));

    QVERIFY(QFileInfo(m_bucket->file(u"data/Trash/files/länk"_s).path()).isSymLink());
}

void FreedesktopTrashTests::aMissingItemLeavesNothingInTheTrash()
{
    QVERIFY(!trash().put(m_bucket->file(u"saknas.md"_s)));

    QCOMPARE(descriptions(), QStringList());
}

void FreedesktopTrashTests::anUnusableTrashLeavesTheItem()
{
    m_bucket->write(u"data"_s, "en fil");
    m_bucket->write(u"A.md"_s, "text");

    QVERIFY(!trash().put(m_bucket->file(u"A.md"_s)));

    QCOMPARE(m_bucket->read(u"A.md"_s), "text");
}

void FreedesktopTrashTests::anotherDiskHasATrashOfItsOwn()
{
    m_bucket->write(u"disk/"_s, {});

    const ChildResult child = ChildProcess::run([&] {
        if (!mountSmallFileSystem(m_bucket->folder(u"disk"_s).bytes(), 1'000'000))
            return "no disk"_ba;
        m_bucket->write(u"disk/mapp/A b.md"_s, "text");
        if (!trash().put(m_bucket->file(u"disk/mapp/A b.md"_s)))
            return "not put"_ba;
        const QString own = u"disk/.Trash-%1/"_s.arg(::geteuid());
        return m_bucket->read(own + u"files/A b.md"_s) + '\n' +
               m_bucket->read(own + u"info/A b.md.trashinfo"_s);
    });

    if (child.said == "no disk")
        QSKIP("this system allows the tests no disk of their own");
    QCOMPARE(child.said, "text\n[Trash Info]\nPath=mapp/A%20b.md\nDeletionDate=2025-03-14T09:32:05\n");
}

void FreedesktopTrashTests::aDiskThatCannotHaveATrashUsesTheUsersOwn()
{
    m_bucket->write(u"disk/"_s, {});

    const ChildResult child = ChildProcess::run([&] {
        if (!mountSmallFileSystem(m_bucket->folder(u"disk"_s).bytes(), 1'000'000))
            return "no disk"_ba;
        m_bucket->write(u"disk/A.md"_s, "text");
        m_bucket->write(u"disk/.Trash-%1"_s.arg(::geteuid()), "en fil");
        if (!trash().put(m_bucket->file(u"disk/A.md"_s)))
            return "not put"_ba;
        const bool isGone = !m_bucket->exists(u"disk/A.md"_s);
        return m_bucket->read(u"data/Trash/files/A.md"_s) + (isGone ? " gone" : " there");
    });

    if (child.said == "no disk")
        QSKIP("this system allows the tests no disk of their own");
    QCOMPARE(child.said, "text gone");
}

void FreedesktopTrashTests::theTrashLiesWhereTheDesktopLooks()
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", "/hem/anna/data");
    const FileURL trash = FreedesktopTrash::userTrash();
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);

    QCOMPARE(trash.path(), u"/hem/anna/data/Trash"_s);
}

QTEST_GUILESS_MAIN(FreedesktopTrashTests)
#include "FreedesktopTrashTests.moc"
