#include "Editor/Spelling.h"

#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QDir>
#include <QMenu>
#include <QWebEngineContextMenuRequest>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// What the menu holds for the word at the start of the note.
QStringList suggestions(PageFixture& f)
{
    const auto* request = f.view.widget()->lastContextMenuRequest();
    if (!request)
        return {};
    QMenu menu;
    addSpellingSuggestions(menu, *f.view.widget()->page(), request);
    QStringList titles;
    for (const QAction* entry : menu.actions())
        titles.append(entry->text());
    return titles;
}

/// Presses the right button on the first word.
void askForMenu(PageFixture& f)
{
    const QString corner =
        u"(() => { const box = document.querySelector('.ProseMirror p').getBoundingClientRect();"
        " return [box.left + 12, box.top + box.height / 2]; })()"_s;
    const QVariantList place = f.value(corner).toList();
    QWidget* const target = f.view.widget()->focusProxy();
    QTest::mouseClick(target, Qt::RightButton, {}, QPoint(place.at(0).toInt(), place.at(1).toInt()));
    f.drain();
}

} // namespace

/// The real engine with the dictionaries that the build has made.
class SpellingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDictionariesAreWhereTheEngineLooks();
    void wrongWordsGetSuggestions_data();
    void wrongWordsGetSuggestions();
    void rightWordsGetNone_data();
    void rightWordsGetNone();
    void aChosenSuggestionIsWrittenIntoTheNote();
};

void SpellingTests::theDictionariesAreWhereTheEngineLooks()
{
    const QDir folder(QCoreApplication::applicationDirPath() + u"/qtwebengine_dictionaries"_s);

    QCOMPARE(folder.entryList({u"*.bdic"_s}), (QStringList{u"en-US.bdic"_s, u"sv-SE.bdic"_s}));
}

void SpellingTests::wrongWordsGetSuggestions_data()
{
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<QString>("right");

    QTest::newRow("Swedish") << u"anteckninng"_s << u"anteckning"_s;
    QTest::newRow("English") << u"knowledgge"_s << u"knowledge"_s;
}

void SpellingTests::wrongWordsGetSuggestions()
{
    QFETCH(const QString, wrong);
    QFETCH(const QString, right);
    PageFixture f;
    f.setContent(u"\n"_s, 1);
    f.type(wrong + u" ord"_s);
    f.drain();

    // The engine checks in a process of its own, and says nothing when it has.
    QTRY_VERIFY_WITH_TIMEOUT((askForMenu(f), suggestions(f).contains(right)), patience);
    QVERIFY(suggestions(f).last().isEmpty());
}

void SpellingTests::rightWordsGetNone_data()
{
    QTest::addColumn<QString>("word");

    QTest::newRow("Swedish") << u"anteckning"_s;
    QTest::newRow("English") << u"knowledge"_s;
    QTest::newRow("Swedish letters") << u"överenskommelse"_s;
}

void SpellingTests::rightWordsGetNone()
{
    QFETCH(const QString, word);
    PageFixture f;
    f.setContent(u"\n"_s, 1);
    // Once the wrong word behind it is known to be wrong, the first one was checked too.
    f.type(word + u" ord"_s);
    f.drain();
    askForMenu(f);

    QTRY_VERIFY_WITH_TIMEOUT(f.view.widget()->lastContextMenuRequest() != nullptr, patience);
    QCOMPARE(suggestions(f), QStringList());
}

void SpellingTests::aChosenSuggestionIsWrittenIntoTheNote()
{
    PageFixture f;
    f.setContent(u"\n"_s, 1);
    f.type(u"anteckninng ord"_s);
    f.drain();
    QTRY_VERIFY_WITH_TIMEOUT((askForMenu(f), suggestions(f).contains(u"anteckning"_s)), patience);

    QMenu menu;
    addSpellingSuggestions(menu, *f.view.widget()->page(), f.view.widget()->lastContextMenuRequest());
    for (QAction* entry : menu.actions()) {
        if (entry->text() == u"anteckning"_s)
            entry->trigger();
    }

    QTRY_COMPARE_WITH_TIMEOUT(f.lastChange().first, u"anteckning ord\n"_s, patience);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(SpellingTests)
#include "SpellingTests.moc"
