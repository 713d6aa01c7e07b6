#include "Wendlores/OpenLocation.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class OpenLocationTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderBecomesABucketOnce()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        AppState state(services.services());

        openLocation(state, bucket.root());
        openLocation(state, bucket.root());

        QCOMPARE(state.vaultURL(), bucket.root());
        QCOMPARE(state.vaults().size(), std::size_t(1));
    }

    void aFileOpensInTheBucketThatHoldsIt()
    {
        const Bucket bucket({{"Arbete/A.md", ""}});
        const Bucket other({{"B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.addVault(bucket.root());
        state.addVault(other.root());

        openLocation(state, bucket.file(u"Arbete/A.md"_s));

        QCOMPARE(state.vaultURL(), bucket.root());
        QCOMPARE(state.selectedFile(), bucket.file(u"Arbete/A.md"_s));
        QCOMPARE(state.vaults().size(), std::size_t(2));
    }

    void aFileInNoBucketOpensWithItsFolder()
    {
        const Bucket bucket({{"Arbete/A.md", ""}});
        FakeServices services;
        AppState state(services.services());

        openLocation(state, bucket.file(u"Arbete/A.md"_s));

        QCOMPARE(state.vaultURL()->path(), bucket.folder(u"Arbete"_s).path());
        QCOMPARE(state.selectedFile(), bucket.file(u"Arbete/A.md"_s));
    }
};

QTEST_GUILESS_MAIN(OpenLocationTests)
#include "OpenLocationTests.moc"
