#include "Vault/FolderVisit.h"

#include "Fakes/Bucket.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FolderVisitTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hiddenItemsAndThePartsOfPackagesAreVisitedToo()
    {
        const Bucket bucket({{"A.md", ""},
                             {".dold/B.md", ""},
                             {".punkt", ""},
                             {"Brev.pages/Index/Dokument.iwa", ""},
                             {"Mapp/Tom/", ""}});

        // A.md, .dold with B.md, .punkt, the package with a folder and a file, and Mapp with Tom.
        QCOMPARE(visitEverything(bucket.root()), std::size_t(9));
    }

    void linksAreNotFollowed()
    {
        const Bucket outside({{"A.md", ""}, {"B.md", ""}});
        const Bucket bucket({{"C.md", ""}});
        QVERIFY(QFile::link(outside.root().path(), bucket.file(u"länk"_s).path()));
        QVERIFY(QFile::link(bucket.root().path(), bucket.file(u"rundgång"_s).path()));

        QCOMPARE(visitEverything(bucket.root()), std::size_t(3));
    }

    void aFolderThatIsGoneHasNothing()
    {
        const Bucket bucket;

        QCOMPARE(visitEverything(bucket.folder(u"Borta"_s)), std::size_t(0));
    }
};

QTEST_MAIN(FolderVisitTests)
#include "FolderVisitTests.moc"
