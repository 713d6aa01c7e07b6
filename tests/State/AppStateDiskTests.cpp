#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/EditingFixture.h"
#include "Fakes/RecordingUndo.h"

#include <QDirIterator>
#include <QTest>

#include <sys/mount.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

int loggedLines = 0;

void countLogLine(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/)
{
    ++loggedLines;
}

/// A bucket on a disk of its own, which a child process mounts.
class Disk final
{
public:
    Disk() { m_folder.write(u"disk/"_s, {}); }

    [[nodiscard]] FileURL root() const { return m_folder.folder(u"disk"_s); }
    [[nodiscard]] FileURL at(const QString& path) const { return root().appending(path); }
    [[nodiscard]] FileURL picture() const { return m_folder.file(u"bild.png"_s); }
    /// Mounts it with two notes on it; false where the system does not allow that.
    [[nodiscard]] bool mount() const
    {
        m_folder.write(u"bild.png"_s, QByteArray(50'000, 'b'));
        if (!mountSmallFileSystem(root().bytes(), 1'000'000))
            return false;
        m_folder.write(u"disk/A.md"_s, "alfa");
        m_folder.write(u"disk/mapp/B.md"_s, "beta");
        return true;
    }
    [[nodiscard]] bool fill() const
    {
        QFile filler(at(u"fyllning"_s).path());
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return false;
        while (filler.write(QByteArray(4096, '.')) == 4096) {
        }
        return true;
    }
    [[nodiscard]] bool makeReadOnly() const
    {
        return ::mount("tmpfs", root().bytes().constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }
    /// What the files hold that hold anything, except what fills the disk.
    [[nodiscard]] QByteArray texts() const
    {
        QByteArrayList texts;
        QDirIterator files(root().path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.fileName().endsWith(u"fyllning") || !file.open(QIODevice::ReadOnly) || file.size() == 0)
                continue;
            texts.append(file.readAll().left(100));
        }
        std::ranges::sort(texts);
        return texts.join(' ');
    }

private:
    Bucket m_folder;
};

/// Everything that a user can ask of the bucket.
void tryEverything(AppState& state, const Disk& disk)
{
    RecordingUndo undo;
    state.newNote();
    state.createNote(u"Plan"_s, disk.root());
    state.newFolder(disk.root());
    static_cast<void>(state.importAsset(disk.picture()));
    state.renameFile(disk.at(u"A.md"_s), u"Ny.md"_s);
    state.moveFile(disk.at(u"mapp/B.md"_s), disk.root(), &undo);
    state.openLink(u"Saknas"_s, disk.at(u"A.md"_s), true);
    state.setSearchQuery(u"alfa"_s);
    state.performSearch();
    state.reloadTree();
}

QByteArray typedOn(const Disk& disk)
{
    EditingFixture fixture({});
    fixture.state->addVault(disk.root());
    fixture.session->open(disk.at(u"A.md"_s));
    fixture.desktop.scheduler.finishBackgroundWork();
    fixture.type(QString(20'000, u'x'));
    fixture.session->open(disk.at(u"mapp/B.md"_s));
    fixture.desktop.scheduler.finishBackgroundWork();
    fixture.wait(std::chrono::minutes(1));
    for (const QByteArray& text : fixture.recoveredTexts())
        if (text == QByteArray(20'000, 'x'))
            return "kept";
    return "lost";
}

} // namespace

/// Buckets on disks that take nothing.
class AppStateDiskTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDiskThatTakesNothingLosesNothing_data();
    void aDiskThatTakesNothingLosesNothing();
    void whatIsTypedIsKeptBesideADiskThatTakesNothing_data() { aDiskThatTakesNothingLosesNothing_data(); }
    void whatIsTypedIsKeptBesideADiskThatTakesNothing();
};

using Spoil = bool (Disk::*)() const;
Q_DECLARE_METATYPE(Spoil)

void AppStateDiskTests::aDiskThatTakesNothingLosesNothing_data()
{
    QTest::addColumn<Spoil>("spoil");
    QTest::newRow("full") << &Disk::fill;
    QTest::newRow("read-only") << &Disk::makeReadOnly;
}

void AppStateDiskTests::aDiskThatTakesNothingLosesNothing()
{
    QFETCH(const Spoil, spoil);
    const Disk disk;

    const ChildResult child = ChildProcess::run([&] {
        if (!disk.mount() || !(disk.*spoil)())
            return "no disk"_ba;
        FakeServices services;
        AppState state(services.services());
        state.addVault(disk.root());
        qInstallMessageHandler(countLogLine);
        tryEverything(state, disk);
        return disk.texts() + (loggedLines > 0 ? ", logged" : ", silent");
    });

    if (child.said == "no disk")
        QSKIP("this system allows the tests no disk of their own");
    QVERIFY(child.hasExited);
    QCOMPARE(child.said, "alfa beta, logged");
}

void AppStateDiskTests::whatIsTypedIsKeptBesideADiskThatTakesNothing()
{
    QFETCH(const Spoil, spoil);
    const Disk disk;

    const ChildResult child = ChildProcess::run([&] {
        if (!disk.mount() || !(disk.*spoil)())
            return "no disk"_ba;
        return typedOn(disk) + ", " + disk.texts();
    });

    if (child.said == "no disk")
        QSKIP("this system allows the tests no disk of their own");
    QVERIFY(child.hasExited);
    QCOMPARE(child.said, "kept, alfa beta");
}

QTEST_GUILESS_MAIN(AppStateDiskTests)
#include "AppStateDiskTests.moc"
