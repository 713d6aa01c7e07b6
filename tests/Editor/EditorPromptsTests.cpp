#include "Editor/EditorPrompts.h"

#include "Editor/WebEditorController.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QDialog>
#include <QListView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A note that is being edited in a window.
struct Fixture final
{
    Fixture()
    {
        state.addVault(bucket.root());
        state.setSelectedFile(bucket.file(u"A.md"_s));
        desktop.page->post(u"ready"_s);
        desktop.page->scripts.clear();
        showAt(window, {500, 400});
    }

    [[nodiscard]] QDialog* sheet() const
    {
        for (QDialog* dialog : window.findChildren<QDialog*>()) {
            if (dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    [[nodiscard]] QStringList commands() const
    {
        return desktop.page->scripts.filter(u"window.VaultEditor.exec("_s);
    }

    Bucket bucket{{"A.md", "a"}, {"B.md", "b"}};
    Bucket pictures{{"Min bild.png", "bild"}};
    FakeServices desktop;
    AppState state{desktop.services()};
    QWidget window;
    EditorPrompts prompts{state, state.editorController(), &window};
};

} // namespace

class EditorPromptsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aChosenPictureIsCopiedAndShown();
    void aCancelledChoiceDoesNothing();
    void aPictureThatCannotBeCopiedInsertsNothing();
    void onlyPicturesAreOffered();
    void aPictureGoesIntoNoOtherNote();
    void theLinkDialogOffersTheNotesOfTheBucket();
    void anotherNoteClosesTheDialog();
    void aClosedDialogGivesTheKeysBackToThePage();
    void thereIsOneDialogAtATime();
};

void EditorPromptsTests::aChosenPictureIsCopiedAndShown()
{
    Fixture f;
    f.desktop.panels.answer = f.pictures.file(u"Min bild.png"_s);

    f.prompts.showImageImporter();

    QCOMPARE(f.commands(), QStringList{u"window.VaultEditor.exec(\"image\", \"assets\\/Min%20bild.png\")"_s});
    QCOMPARE(f.bucket.read(u"assets/Min bild.png"_s), "bild");
    QCOMPARE(f.pictures.read(u"Min bild.png"_s), "bild");
}

void EditorPromptsTests::aCancelledChoiceDoesNothing()
{
    Fixture f;

    f.prompts.showImageImporter();

    QVERIFY(f.commands().isEmpty());
    QCOMPARE(f.bucket.names(), QStringList({u"A.md"_s, u"B.md"_s}));
}

void EditorPromptsTests::aPictureThatCannotBeCopiedInsertsNothing()
{
    Fixture f;
    f.desktop.panels.answer = f.pictures.file(u"Fattas.png"_s);

    f.prompts.showImageImporter();

    QVERIFY(f.commands().isEmpty());
    QVERIFY(!f.sheet());
}

void EditorPromptsTests::onlyPicturesAreOffered()
{
    Fixture f;

    f.prompts.showImageImporter();

    QCOMPARE(f.desktop.panels.shown.size(), 1);
    const QString asked = f.desktop.panels.shown.constFirst();
    QVERIFY2(asked.contains(u"*.png"_s) && asked.contains(u"*.jpeg"_s), qPrintable(asked));
    QVERIFY2(!asked.contains(u"*.md"_s), qPrintable(asked));
    QVERIFY(f.desktop.panels.isAtPictures);
}

void EditorPromptsTests::aPictureGoesIntoNoOtherNote()
{
    Fixture f;
    f.desktop.panels.answer = f.pictures.file(u"Min bild.png"_s);
    f.desktop.panels.whileShown = [&f] { f.state.setSelectedFile(f.bucket.file(u"B.md"_s)); };

    f.prompts.showImageImporter();

    QVERIFY(f.commands().isEmpty());
    QCOMPARE(f.bucket.names(), QStringList({u"A.md"_s, u"B.md"_s}));
}

void EditorPromptsTests::theLinkDialogOffersTheNotesOfTheBucket()
{
    Fixture f;

    f.prompts.showLinkPrompt();

    QVERIFY(f.sheet());
    QCOMPARE(f.sheet()->findChild<QListView*>()->model()->rowCount(), 2);
}

void EditorPromptsTests::anotherNoteClosesTheDialog()
{
    Fixture f;
    f.prompts.showVideoPrompt();
    QVERIFY(f.sheet());

    f.state.setSelectedFile(f.bucket.file(u"B.md"_s));

    QVERIFY(!f.sheet());
}

void EditorPromptsTests::aClosedDialogGivesTheKeysBackToThePage()
{
    Fixture f;
    f.prompts.showLinkPrompt();

    f.sheet()->reject();

    QCOMPARE(f.desktop.page->scripts, QStringList{u"window.VaultEditor.focus()"_s});
}

void EditorPromptsTests::thereIsOneDialogAtATime()
{
    Fixture f;
    f.prompts.showVideoPrompt();
    f.prompts.showLinkPrompt();

    QCOMPARE(f.sheet()->windowTitle(), u"Infoga länk"_s);
    f.sheet()->reject();
    QVERIFY(!f.sheet());
}

QTEST_MAIN(EditorPromptsTests)
#include "EditorPromptsTests.moc"
