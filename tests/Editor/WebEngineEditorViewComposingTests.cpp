#include "Editor/WebEngineEditorView.h"

#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QInputMethodEvent>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

/// Letters that take several keys: dead keys such as ´ and ¨, and input methods that show what is being
/// composed.
class WebEngineEditorViewComposingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aComposedLetterIsWrittenOnce_data();
    void aComposedLetterIsWrittenOnce();
    void aComposedLetterIsUndone();
    void aCancelledCompositionLeavesTheNoteAsItWas();
};

namespace {

void compose(PageFixture& f, const QStringList& shown, const QString& letters)
{
    f.view.widget()->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(f.value(u"document.hasFocus()"_s).toBool(), patience);
    QWidget* const target = f.view.widget()->focusProxy();
    for (const QString& text : shown) {
        QInputMethodEvent event(text, {});
        QCoreApplication::sendEvent(target, &event);
        f.drain();
    }
    QInputMethodEvent event;
    event.setCommitString(letters);
    QCoreApplication::sendEvent(target, &event);
    f.drain();
}

} // namespace

void WebEngineEditorViewComposingTests::aComposedLetterIsWrittenOnce_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QString>("letters");
    QTest::addColumn<QString>("after");

    const QStringList steps{u"n"_s, u"に"_s, u"にh"_s, u"にほ"_s, u"にほん"_s, u"日本"_s};
    QTest::newRow("acute") << u"kaf\n"_s << QStringList{u"´"_s} << u"é"_s << u"kafé\n"_s;
    QTest::newRow("tilde in a list") << u"* Espa\n"_s << QStringList{u"~"_s} << u"ñ"_s << u"* Españ\n"_s;
    QTest::newRow("diaeresis in a heading") << u"## na\n"_s << QStringList{u"¨"_s} << u"ï"_s << u"## naï\n"_s;
    QTest::newRow("circumflex in bold")
        << u"a __for__\n"_s << QStringList{u"^"_s} << u"ê"_s << u"a __forê__\n"_s;
    QTest::newRow("several steps in an empty note") << u""_s << steps << u"日本"_s << u"日本"_s;
    QTest::newRow("several steps in a list") << u"* a\n* \n"_s << steps << u"日本"_s << u"* a\n* 日本\n"_s;
    QTest::newRow("several steps in a cell")
        << u"|a|b|\n|-|-|\n|c|d|\n"_s << steps << u"日本"_s << u"|a|b|\n|-|-|\n|c|d日本|\n"_s;
    QTest::newRow("several steps behind a link")
        << u"[a](b.md)\n"_s << steps << u"日本"_s << u"[a](b.md)日本\n"_s;
}

void WebEngineEditorViewComposingTests::aComposedLetterIsWrittenOnce()
{
    QFETCH(const QString, before);
    QFETCH(const QStringList, shown);
    QFETCH(const QString, letters);
    QFETCH(const QString, after);
    PageFixture f;
    f.setContent(before, 1);

    compose(f, shown, letters);

    QTRY_COMPARE_WITH_TIMEOUT(f.lastChange().first, after, patience);
}

void WebEngineEditorViewComposingTests::aComposedLetterIsUndone()
{
    PageFixture f;
    f.setContent(u"* kaf\n"_s, 1);
    compose(f, {u"´"_s}, u"é"_s);
    QTRY_COMPARE_WITH_TIMEOUT(f.lastChange().first, u"* kafé\n"_s, patience);

    f.view.evaluate(u"window.VaultEditor.exec('undo')"_s);

    QTRY_COMPARE_WITH_TIMEOUT(f.lastChange().first, u"* kaf\n"_s, patience);
}

void WebEngineEditorViewComposingTests::aCancelledCompositionLeavesTheNoteAsItWas()
{
    PageFixture f;
    f.setContent(u"* __a__\n"_s, 1);

    compose(f, {u"n"_s, u"に"_s}, {});
    f.type(u"x"_s);

    QTRY_COMPARE_WITH_TIMEOUT(f.lastChange().first, u"* __ax__\n"_s, patience);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(WebEngineEditorViewComposingTests)
#include "WebEngineEditorViewComposingTests.moc"
