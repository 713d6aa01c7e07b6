#include "State/CloudLocations.h"

#include "Fakes/Bucket.h"
#include "Fakes/ChildProcess.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

QStringList names(const std::vector<CloudLocation>& locations)
{
    QStringList names;
    for (const CloudLocation& location : locations)
        names.append(location.name);
    return names;
}

} // namespace

class CloudLocationsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void providerAndAccountMakeTheLabel_data();
    void providerAndAccountMakeTheLabel();
    void unknownProviderHasNoLabel_data();
    void unknownProviderHasNoLabel();
    void everyKindOfFolderIsFoundInOrder();
    void boxComesBeforeProtonDrive();
    void accountsOfOneProviderAreOrderedByNumber();
    void staleCopiesAreSkipped();
    void dropboxThatIsAFileIsNotOffered();
    void folderThatCannotBeListedIsNotOffered();
    void filesAmongTheProvidersFoldersAreSkipped();
    void linkedFolderIsOffered();
    void homeWithoutCloudsOffersNothing();
    void locationHoldsPathAndRank();
};

void CloudLocationsTests::providerAndAccountMakeTheLabel_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rank");

    QTest::newRow("account") << u"GoogleDrive-anna.berg"_s << u"Google Drive · anna.berg"_s << 0;
    QTest::newRow("no account") << u"OneDrive-"_s << u"OneDrive"_s << 1;
    QTest::newRow("folder suffix") << u"ProtonDrive-me-folder"_s << u"Proton Drive · me"_s << 2;
    QTest::newRow("only the suffix") << u"Box--folder"_s << u"Box"_s << 2;
    QTest::newRow("suffix as account") << u"Box-folder"_s << u"Box · folder"_s << 2;
    QTest::newRow("suffix inside") << u"OneDrive-a-folder-b"_s << u"OneDrive · a-folder-b"_s << 1;
}

void CloudLocationsTests::providerAndAccountMakeTheLabel()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, name);
    QFETCH(const int, rank);

    QCOMPARE(CloudLocations::label(folder), (CloudLocations::Label{name, rank}));
}

void CloudLocationsTests::unknownProviderHasNoLabel_data()
{
    QTest::addColumn<QString>("folder");

    QTest::newRow("empty") << u""_s;
    QTest::newRow("another service") << u"Nextcloud-anna"_s;
    QTest::newRow("without the hyphen") << u"OneDrive"_s;
    QTest::newRow("another case") << u"onedrive-anna"_s;
    QTest::newRow("not at the start") << u"Min Box-anna"_s;
}

void CloudLocationsTests::unknownProviderHasNoLabel()
{
    QFETCH(const QString, folder);

    QVERIFY(!CloudLocations::label(folder));
}

void CloudLocationsTests::everyKindOfFolderIsFoundInOrder()
{
    const Bucket home({{"Library/Mobile Documents/com~apple~CloudDocs/", ""},
                       {"Dropbox/", ""},
                       {"Library/CloudStorage/Box-b/", ""},
                       {"Library/CloudStorage/GoogleDrive-a/", ""},
                       {"Library/CloudStorage/OneDrive-c/", ""},
                       {"Library/CloudStorage/Annat/", ""}});

    QCOMPARE(names(CloudLocations::available(home.root())),
             (QStringList{u"Google Drive · a"_s, u"OneDrive · c"_s, u"Box · b"_s, u"Dropbox"_s,
                          u"iCloud Drive"_s}));
}

void CloudLocationsTests::boxComesBeforeProtonDrive()
{
    const Bucket home({{"Library/CloudStorage/ProtonDrive-a/", ""}, {"Library/CloudStorage/Box-z/", ""}});

    QCOMPARE(names(CloudLocations::available(home.root())),
             (QStringList{u"Box · z"_s, u"Proton Drive · a"_s}));
}

void CloudLocationsTests::accountsOfOneProviderAreOrderedByNumber()
{
    const Bucket home({{"Library/CloudStorage/OneDrive-konto 10/", ""},
                       {"Library/CloudStorage/OneDrive-Konto 9/", ""},
                       {"Library/CloudStorage/OneDrive-/", ""}});

    QCOMPARE(names(CloudLocations::available(home.root())),
             (QStringList{u"OneDrive"_s, u"OneDrive · Konto 9"_s, u"OneDrive · konto 10"_s}));
}

void CloudLocationsTests::staleCopiesAreSkipped()
{
    const Bucket home({{"Library/CloudStorage/GoogleDrive-x (2024-03-01 10.12)/", ""},
                       {"Library/CloudStorage/GoogleDrive-x (2024)/", ""}});

    QCOMPARE(names(CloudLocations::available(home.root())), QStringList{u"Google Drive · x (2024)"_s});
}

void CloudLocationsTests::dropboxThatIsAFileIsNotOffered()
{
    const Bucket home({{"Dropbox", "text"}});

    QVERIFY(CloudLocations::available(home.root()).empty());
}

void CloudLocationsTests::folderThatCannotBeListedIsNotOffered()
{
    const Bucket home({{"Dropbox/", ""}, {"Library/CloudStorage/Box-a/", ""}});
    // The superuser may list everything, so an ordinary user looks.
    QCOMPARE(::chmod(home.root().bytes().constData(), 0755), 0);
    QCOMPARE(::chmod(home.folder(u"Dropbox"_s).bytes().constData(), 0), 0);

    const ChildResult child = ChildProcess::run([&home] {
        becomeOrdinaryUser();
        return names(CloudLocations::available(home.root())).join(u'|').toUtf8();
    });

    QCOMPARE(::chmod(home.folder(u"Dropbox"_s).bytes().constData(), 0700), 0);
    QVERIFY(child.hasExited);
    QCOMPARE(child.said, QByteArray("Box · a"));
}

void CloudLocationsTests::filesAmongTheProvidersFoldersAreSkipped()
{
    const Bucket home({{"Library/CloudStorage/OneDrive-a", "text"}});

    QVERIFY(CloudLocations::available(home.root()).empty());
}

void CloudLocationsTests::linkedFolderIsOffered()
{
    const Bucket home({{"Annan plats/", ""}});
    QVERIFY(QFile::link(home.folder(u"Annan plats"_s).path(), home.folder(u"Dropbox"_s).path()));

    QCOMPARE(names(CloudLocations::available(home.root())), QStringList{u"Dropbox"_s});
}

void CloudLocationsTests::homeWithoutCloudsOffersNothing()
{
    const Bucket home;

    QVERIFY(CloudLocations::available(home.root()).empty());
    QVERIFY(CloudLocations::available(home.folder(u"Saknas"_s)).empty());
}

void CloudLocationsTests::locationHoldsPathAndRank()
{
    const Bucket home({{"Dropbox/", ""}});
    const FileURL dropbox = home.folder(u"Dropbox"_s);

    QCOMPARE(CloudLocations::available(home.root()),
             (std::vector<CloudLocation>{{dropbox.path(), u"Dropbox"_s, dropbox, 3}}));
}

QTEST_GUILESS_MAIN(CloudLocationsTests)
#include "CloudLocationsTests.moc"
