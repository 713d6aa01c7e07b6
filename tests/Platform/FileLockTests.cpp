#include "Platform/FileLock.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileLockTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyOneProcessIsInside();
    void endOfAProcessFreesItsLock();
    void missingFolderGivesNoLock();
};

void FileLockTests::onlyOneProcessIsInside()
{
    const Bucket place;
    const auto countUp = [&] {
        int collisions = 0;
        for (int time = 0; time < 300; ++time) {
            const FileLock lock(place.file(u"lock"_s));
            QFile inside(place.file(u"inside"_s).path());
            collisions += lock.isHeld() && inside.open(QIODevice::NewOnly) ? 0 : 1;
            inside.remove();
        }
        return QByteArray::number(collisions);
    };

    ChildProcess first(countUp);
    ChildProcess second(countUp);

    QCOMPARE(first.finish().said, QByteArray("0"));
    QCOMPARE(second.finish().said, QByteArray("0"));
}

void FileLockTests::endOfAProcessFreesItsLock()
{
    const Bucket place;
    const ChildResult child = ChildProcess::run([&] {
        const FileLock lock(place.file(u"lock"_s));
        ::_exit(lock.isHeld() ? 0 : 1);
        return QByteArray();
    });
    QVERIFY(child.hasExited);

    QVERIFY(FileLock(place.file(u"lock"_s)).isHeld());
}

void FileLockTests::missingFolderGivesNoLock()
{
    const Bucket place;

    QVERIFY(!FileLock(place.file(u"finns inte/lock"_s)).isHeld());
}

QTEST_GUILESS_MAIN(FileLockTests)
#include "FileLockTests.moc"
