#include "Fakes/EditingFixture.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

/// A note that is opened from the search.
class EditorSessionSearchTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSearchHitIsShownWhereItHoldsTheText();
    void aHitInTheShownNoteIsShownAtOnce();
    void aHitInAnotherNoteIsForgotten();
};

void EditorSessionSearchTests::aSearchHitIsShownWhereItHoldsTheText()
{
    EditingFixture f({{"A.md", "ett möte"}});
    f.state->setSearchQuery(u" möte "_s);
    f.state->openSearchHit(f.bucket.file(u"A.md"_s));

    f.open(u"A.md"_s);

    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.exec(\"showMatch\", \"möte\")"_s);
    QVERIFY(f.page->scripts.contains(u"window.VaultEditor.setContent(\"ett möte\")"_s));
}

void EditorSessionSearchTests::aHitInTheShownNoteIsShownAtOnce()
{
    EditingFixture f({{"A.md", "ett möte"}});
    f.open(u"A.md"_s);
    f.state->setSearchQuery(u"ett"_s);

    f.state->openSearchHit(f.bucket.file(u"A.md"_s));

    QCOMPARE(f.page->scripts.last(), u"window.VaultEditor.exec(\"showMatch\", \"ett\")"_s);
}

void EditorSessionSearchTests::aHitInAnotherNoteIsForgotten()
{
    EditingFixture f({{"A.md", "a"}, {"B.md", "b"}});
    f.state->setSearchQuery(u"a"_s);
    f.state->openSearchHit(f.bucket.file(u"A.md"_s));

    f.open(u"B.md"_s);
    f.open(u"A.md"_s);

    QVERIFY(f.page->scripts.filter(u"showMatch"_s).isEmpty());
}

} // namespace wendlore

QTEST_GUILESS_MAIN(wendlore::EditorSessionSearchTests)
#include "EditorSessionSearchTests.moc"
