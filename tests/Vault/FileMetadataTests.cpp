#include "Vault/FileMetadata.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"
#include "Fakes/FaultyCalls.h"
#include "Vault/AtomicFile.h"
#include "Vault/FileWrite.h"

#include <QTest>

#include <sys/xattr.h>
#include <unistd.h>

using namespace wendlore;
using namespace Qt::StringLiterals;

namespace {

const auto aclName = "system.posix_acl_access";

/// An access list that lets one more user read: version, then tag, permissions and id of each entry.
QByteArray accessList()
{
    struct Entry
    {
        quint16 tag, permissions;
        quint32 id;
    };
    const quint32 version = 2;
    const quint32 none = quint32(-1);
    const Entry entries[] = {
        {0x01, 6, none}, {0x02, 4, 1234}, {0x04, 4, none}, {0x10, 4, none}, {0x20, 0, none}};
    return QByteArray(reinterpret_cast<const char*>(&version), sizeof version) +
           QByteArray(reinterpret_cast<const char*>(entries), sizeof entries);
}

QByteArray attribute(const FileURL& file, const char* name)
{
    QByteArray value(1000, '\0');
    const ssize_t size = ::getxattr(file.bytes().constData(), name, value.data(), size_t(value.size()));
    return size < 0 ? "none"_ba : value.first(size);
}

bool setAttribute(const FileURL& file, const char* name, const QByteArray& value)
{
    return ::setxattr(file.bytes().constData(), name, value.constData(), size_t(value.size()), 0) == 0;
}

struct stat statusOf(const FileURL& file)
{
    struct stat status = {};
    if (::stat(file.bytes().constData(), &status) == -1)
        qFatal("no %s", file.bytes().constData());
    return status;
}

} // namespace

/// Saved files keep what belongs to them. The folder lies where the tests are built: the system's folder for
/// temporary files may be in memory, without attributes.
class FileMetadataTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theModeIsKept_data();
    void theModeIsKept();
    void extendedAttributesAreKept();
    void accessListsAreKept();
    void aListInheritedFromTheFolderIsNotAdded();
    void ownerAndGroupAreKept();
    void whatCannotBeCopiedIsKeptInPlace_data();
    void whatCannotBeCopiedIsKeptInPlace();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    FileURL m_note;
};

void FileMetadataTests::init()
{
    m_folder = std::make_unique<QTemporaryDir>(QDir::currentPath() + u"/metadata-XXXXXX"_s);
    m_note = FileURL::file(m_folder->filePath(u"Möte.md"_s));
    AtomicFile::setBackupDirectory(FileURL::directory(m_folder->filePath(u"state"_s)));
    QVERIFY(AtomicFile::write(m_note, "gammal").succeeded());
}

void FileMetadataTests::theModeIsKept_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0600, 0644, 0666, 0444, 0755, 02664})
        QTest::newRow(QByteArray::number(mode, 8).constData()) << mode;
}

void FileMetadataTests::theModeIsKept()
{
    QFETCH(int, mode);
    QCOMPARE(::chmod(m_note.bytes().constData(), mode_t(mode)), 0);

    QCOMPARE(AtomicFile::write(m_note, "ny").outcome, WriteOutcome::Replaced);

    QCOMPARE(statusOf(m_note).st_mode & 07777, mode_t(mode));
}

void FileMetadataTests::extendedAttributesAreKept()
{
    const QByteArray large(900, 'x');
    QVERIFY2(setAttribute(m_note, "user.märke", "röd"), "the build folder's file system has no attributes");
    QVERIFY(setAttribute(m_note, "user.large", large));
    QVERIFY(setAttribute(m_note, "user.empty", {}));

    QCOMPARE(AtomicFile::write(m_note, "ny").outcome, WriteOutcome::Replaced);

    QCOMPARE(attribute(m_note, "user.märke"), "röd");
    QCOMPARE(attribute(m_note, "user.large"), large);
    QCOMPARE(attribute(m_note, "user.empty"), "");
}

void FileMetadataTests::accessListsAreKept()
{
    QVERIFY(setAttribute(m_note, aclName, accessList()));
    const mode_t mode = statusOf(m_note).st_mode;

    QCOMPARE(AtomicFile::write(m_note, "ny").outcome, WriteOutcome::Replaced);

    QCOMPARE(attribute(m_note, aclName), accessList());
    QCOMPARE(statusOf(m_note).st_mode, mode);
}

void FileMetadataTests::aListInheritedFromTheFolderIsNotAdded()
{
    const FileURL folder = FileURL::directory(m_folder->path());
    QVERIFY(setAttribute(folder, "system.posix_acl_default", accessList()));

    QCOMPARE(AtomicFile::write(m_note, "ny").outcome, WriteOutcome::Replaced);

    QCOMPARE(attribute(m_note, aclName), "none");
}

void FileMetadataTests::ownerAndGroupAreKept()
{
    // Only the superuser may give files away; for others the file keeps the group it has.
    const uid_t owner = isSuperuser() ? ordinaryUser : ::geteuid();
    const gid_t group = isSuperuser() ? ordinaryUser : ::getegid();
    QCOMPARE(::chown(m_note.bytes().constData(), owner, group), 0);
    QCOMPARE(::chmod(m_note.bytes().constData(), 04640), 0);

    QCOMPARE(AtomicFile::write(m_note, "ny").outcome, WriteOutcome::Replaced);

    QCOMPARE(statusOf(m_note).st_uid, owner);
    QCOMPARE(statusOf(m_note).st_gid, group);
    QCOMPARE(statusOf(m_note).st_mode & 07777, mode_t(04640));
}

void FileMetadataTests::whatCannotBeCopiedIsKeptInPlace_data()
{
    QTest::addColumn<QByteArray>("refused");
    for (const char* call : {"fchmod", "fsetxattr", "fgetxattr", "flistxattr"})
        QTest::newRow(call) << QByteArray(call);
}

void FileMetadataTests::whatCannotBeCopiedIsKeptInPlace()
{
    QFETCH(QByteArray, refused);
    QVERIFY(setAttribute(m_note, "user.mark", "kvar"));
    const struct stat before = statusOf(m_note);
    FaultyCalls calls;
    calls.interfere = [refused](int, const QByteArray& call) { return call == refused ? EPERM : 0; };
    const auto state = FileURL::directory(m_folder->filePath(u"state"_s));

    QCOMPARE(FileWrite(calls, state, m_note, "ny").write().outcome, WriteOutcome::InPlace);

    QCOMPARE(statusOf(m_note).st_ino, before.st_ino);
    QCOMPARE(attribute(m_note, "user.mark"), "kvar");
    QFile file(m_note.path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "ny");
}

QTEST_APPLESS_MAIN(FileMetadataTests)
#include "FileMetadataTests.moc"
