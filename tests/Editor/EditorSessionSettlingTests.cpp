#include "Editor/EditorSession.h"

#include "Fakes/EditingFixture.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Waiting for the keys that the page has not told of yet.
class EditorSessionSettlingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settlingTakesInWhatThePageStillSays();
    void settlingEndsWhenThePageDoesNotAnswer();
    void everyoneWhoWaitsForTheLastKeysIsTold();
};

void EditorSessionSettlingTests::settlingTakesInWhatThePageStillSays()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.page->answersDrains = false;
    int done = 0;
    f.session->settle([&done] { ++done; });

    f.type(u"a1"_s);
    QCOMPARE(done, 0);
    f.page->drains.front()();

    QCOMPARE(done, 1);
    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
    f.wait(5s);
    QCOMPARE(done, 1);
}

void EditorSessionSettlingTests::settlingEndsWhenThePageDoesNotAnswer()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.page->answersDrains = false;
    f.type(u"a1"_s);
    int done = 0;
    f.session->settle([&done] { ++done; });

    f.wait(9s);
    QCOMPARE(done, 0);
    f.wait(1s);
    f.page->drains.front()();

    QCOMPARE(done, 1);
    QCOMPARE(f.bucket.read(u"A.md"_s), "a1");
}

void EditorSessionSettlingTests::everyoneWhoWaitsForTheLastKeysIsTold()
{
    EditingFixture f({{"A.md", "a"}});
    f.open(u"A.md"_s);
    f.page->answersDrains = false;
    QStringList told;
    f.session->settle([&told] { told.append(u"first"_s); });
    f.wait(5s);
    f.session->settle([&told] { told.append(u"second"_s); });

    f.wait(5s);
    QCOMPARE(told, QStringList{u"first"_s});
    f.page->drains.back()();
    QCOMPARE(told, (QStringList{u"first"_s, u"second"_s}));
    QCOMPARE(f.desktop.scheduler.pendingTasks(), 0);
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::EditorSessionSettlingTests)
#include "EditorSessionSettlingTests.moc"
