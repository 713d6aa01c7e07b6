#include "State/OpenFileWindows.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class OpenFileWindowsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void atFirstNoFileHasAWindow()
    {
        const OpenFileWindows windows;

        QVERIFY(windows.open().empty());
        QVERIFY(!windows.isOpen(FileURL::file(u"/b/a.md"_s)));
    }

    void twoSpellingsOfOnePathAreOneFile()
    {
        OpenFileWindows windows;

        windows.insert(FileURL::file(u"/b/notes/../notes/./a.md"_s));
        windows.insert(FileURL::file(u"/b/notes/a.md"_s));

        QCOMPARE(windows.open(), std::set{FileURL::file(u"/b/notes/a.md"_s)});
        QVERIFY(windows.isOpen(FileURL::file(u"/b/notes/a.md"_s)));
        QVERIFY(windows.isOpen(FileURL::file(u"/b//notes/x/../a.md"_s)));
        QVERIFY(!windows.isOpen(FileURL::file(u"/b/notes/A.md"_s)));
    }

    void aPackageIsTheSameHoweverItWasGiven()
    {
        OpenFileWindows windows;

        windows.insert(FileURL::directory(u"/b/Brev.pages"_s));

        QVERIFY(windows.isOpen(FileURL::file(u"/b/Brev.pages"_s)));
        windows.remove(FileURL::file(u"/b/Brev.pages"_s));
        QVERIFY(windows.open().empty());
    }

    void onlyRealChangesAreTold()
    {
        OpenFileWindows windows;
        const QSignalSpy changes(&windows, &OpenFileWindows::openChanged);
        const FileURL file = FileURL::file(u"/b/a.md"_s);

        windows.insert(file);
        windows.insert(file);
        QCOMPARE(changes.size(), 1);
        windows.remove(file);
        windows.remove(file);

        QCOMPARE(changes.size(), 2);
    }
};

QTEST_GUILESS_MAIN(OpenFileWindowsTests)
#include "OpenFileWindowsTests.moc"
