#include "Wendlores/MenuCommands.h"

#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Sheet.h"
#include "Previews/ContentView.h"
#include "Previews/DetailView.h"
#include "Previews/FindBar.h"
#include "Previews/PDFKitView.h"
#include "Shell/FileTreeView.h"
#include "Shell/SearchField.h"
#include "State/AppState.h"
#include "Support/PdfFiles.h"
#include "Support/TreeDrag.h"
#include "Wendlores/MainWindow.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The main window's menus over a state without a bucket.
class Menus final
{
public:
    Menus()
        : state(services.services())
        , window(state)
    {}

    [[nodiscard]] QAction* entry(const QString& title) const
    {
        for (auto* action : window.menuBar()->findChildren<QAction*>()) {
            if (action->text() == title)
                return action;
        }
        qFatal("no entry %s", qPrintable(title));
    }

    /// Shows `bucket`, with the focus in its tree.
    FileTreeView& treeOf(const Bucket& bucket)
    {
        state.switchVault(bucket.root());
        window.show();
        QApplication::setActiveWindow(&window);
        auto& tree = *window.findChild<FileTreeView*>();
        tree.setFocus();
        return tree;
    }

    FakeServices services;
    AppState state;
    MainWindow window;
};

/// A row of test data for each entry of the menus: its title, and what is looked at.
void addRows(const char* column, std::initializer_list<std::pair<QString, QString>> rows)
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>(column);
    for (const auto& [title, value] : rows)
        QTest::newRow(qPrintable(title)) << title << value;
}

void move(FileTreeView& tree, const FileURL& item, const FileURL& folder)
{
    TreeDrag drag = TreeDrag::of(tree, item);
    QVERIFY(drag.enter());
    drag.hoverOver(folder);
    drag.drop();
}

} // namespace

class MenuCommandsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutABucketNothingCanBeMadeInIt()
    {
        const Menus menus;

        QVERIFY(menus.entry(u"Öppna bucket…"_s)->isEnabled());
        QVERIFY(!menus.entry(u"Ny not"_s)->isEnabled());
        QVERIFY(!menus.entry(u"Ny mapp"_s)->isEnabled());
    }

    void withoutAFileTheTextHasNoSize()
    {
        const Bucket bucket({{"A.md", ""}});
        Menus menus;
        const QStringList zoom{u"Förstora text"_s, u"Förminska text"_s, u"Återställ textstorlek"_s};
        menus.state.switchVault(bucket.root());
        for (const QString& title : zoom)
            QVERIFY2(!menus.entry(title)->isEnabled(), qPrintable(title));

        menus.state.setSelectedFile(bucket.file(u"A.md"_s));

        for (const QString& title : zoom)
            QVERIFY2(menus.entry(title)->isEnabled(), qPrintable(title));
        menus.entry(zoom[0])->trigger();
        menus.entry(zoom[0])->trigger();
        QCOMPARE(menus.state.editorZoom(), 1.2);
        menus.entry(zoom[2])->trigger();
        QCOMPARE(menus.state.editorZoom(), 1.0);
    }

    void newItemsAreMadeInTheBucket()
    {
        const Bucket bucket({{"A.md", ""}});
        Menus menus;
        menus.state.switchVault(bucket.root());

        menus.entry(u"Ny not"_s)->trigger();
        menus.entry(u"Ny mapp"_s)->trigger();

        QCOMPARE(bucket.names(), QStringList({u"A.md"_s, u"Ny mapp"_s, u"Ny not.md"_s}));
    }

    void theThemeThatIsChosenIsTicked()
    {
        Menus menus;
        QVERIFY(menus.entry(u"Automatiskt"_s)->isChecked());

        menus.entry(u"Mörkt"_s)->trigger();

        QCOMPARE(menus.state.theme(), AppTheme::dark);
        QVERIFY(menus.entry(u"Mörkt"_s)->isChecked());
        QVERIFY(!menus.entry(u"Automatiskt"_s)->isChecked());
    }

    void theShortcutsAreTheUsualOnes_data()
    {
        addRows("shortcut", {{u"Öppna bucket…"_s, u"Ctrl+Shift+O"_s},
                             {u"Ny not"_s, u"Ctrl+N"_s},
                             {u"Förstora text"_s, u"Ctrl++"_s},
                             {u"Förminska text"_s, u"Ctrl+-"_s},
                             {u"Återställ textstorlek"_s, u"Ctrl+0"_s},
                             {u"Stäng fönster"_s, u"Ctrl+W"_s},
                             {u"Avsluta"_s, u"Ctrl+Q"_s},
                             {u"Ångra"_s, u"Ctrl+Z"_s},
                             {u"Sök i anteckningen"_s, u"Ctrl+F"_s},
                             {u"Sök nästa"_s, u"F3"_s},
                             {u"Sök föregående"_s, u"Shift+F3"_s},
                             {u"Sök och ersätt"_s, u"Ctrl+H"_s},
                             {u"Sök i bucketen"_s, u"Ctrl+Shift+F"_s},
                             {u"Visa/Dölj källtext"_s, u"Ctrl+E"_s},
                             {u"Visa/Dölj antal ord"_s, u"Ctrl+Alt+W"_s},
                             {u"Markera allt"_s, u"Ctrl+A"_s},
                             {u"Importera typografi…"_s, u"Ctrl+Alt+T"_s}});
    }

    void theShortcutsAreTheUsualOnes()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, shortcut);
        const Menus menus;

        QCOMPARE(menus.entry(title)->shortcut().toString(QKeySequence::PortableText), shortcut);
    }

    void theBarHasTheUsualMenus()
    {
        const Menus menus;

        QStringList titles;
        for (const QAction* action : menus.window.menuBar()->actions())
            titles.append(action->text().remove(u'&'));

        QCOMPARE(titles, QStringList({u"Arkiv"_s, u"Redigera"_s, u"Visa"_s, u"Fönster"_s, u"Hjälp"_s}));
    }

    void theEntriesStandInTheirOrder_data()
    {
        addRows(
            "entries",
            {{u"Arkiv"_s, u"Öppna bucket… Ny not Ny mapp | Importera typografi… | Stäng fönster Avsluta"_s},
             {u"Visa"_s,
              u"Visa/Dölj sidofält Gå mellan sidofält och not | Förstora text Förminska text Återställ "
              u"textstorlek "
              "| Visa/Dölj källtext Visa/Dölj antal ord | Visa/Dölj flikrad Utseende | Helskärm"_s},
             {u"Utseende"_s, u"Automatiskt Ljust Mörkt"_s},
             {u"Redigera"_s,
              u"Ångra Gör om | Klipp ut Kopiera Klistra in | Markera allt "
              "| Sök i anteckningen Sök nästa Sök föregående Sök och ersätt Sök i bucketen"_s}});
    }

    void theEntriesStandInTheirOrder()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, entries);
        const Menus menus;

        QStringList titles;
        for (const auto* menu : menus.window.menuBar()->findChildren<QMenu*>()) {
            if (menu->title().remove(u'&') != title)
                continue;
            for (const QAction* action : menu->actions())
                titles.append(action->isSeparator() ? u"|"_s : action->text());
        }

        QCOMPARE(titles.join(u' '), entries);
    }

    void theHelpMenuTellsTheVersion()
    {
        const Menus menus;

        menus.entry(u"Om Wendlores"_s)->trigger();

        const auto* about = menus.window.findChild<Sheet*>();
        QVERIFY(about && about->windowTitle() == u"Om Wendlores"_s);
        QStringList texts;
        for (const auto* label : about->findChildren<QLabel*>())
            texts.append(label->text());
        QVERIFY2(texts.join(u'|').contains(u"" WENDLORE_VERSION ""_s), qPrintable(texts.join(u'|')));
    }

    void thereAreNoSettings()
    {
        const Menus menus;

        for (const auto* action : menus.window.findChildren<QAction*>())
            QVERIFY2(!action->text().contains(u"nställningar"_s), qPrintable(action->text()));
    }

    void theOpenMenuShowsWhatAFieldAllows()
    {
        Menus menus;
        menus.window.show();
        QApplication::setActiveWindow(&menus.window);
        QLineEdit field(&menus.window);
        field.show();
        field.setFocus();
        auto* edit = qobject_cast<QMenu*>(menus.entry(u"Kopiera"_s)->parent());
        QVERIFY(edit);

        Q_EMIT edit->aboutToShow();
        QVERIFY(!menus.entry(u"Kopiera"_s)->isEnabled());
        QVERIFY(menus.entry(u"Klistra in"_s)->isEnabled());
        field.setText(u"hej"_s);
        field.selectAll();
        Q_EMIT edit->aboutToShow();
        QVERIFY(menus.entry(u"Kopiera"_s)->isEnabled());
        QVERIFY(menus.entry(u"Klipp ut"_s)->isEnabled());

        field.deselect();
        Q_EMIT edit->aboutToShow();
        Q_EMIT edit->aboutToHide();
        QVERIFY(menus.entry(u"Kopiera"_s)->isEnabled()); // for its key
    }

    void undoInTheTreeNamesAndTakesBackTheMove()
    {
        const Bucket bucket({{"Arbete/Index.md", ""}, {"Plan.md", "plan"}});
        Menus menus;
        FileTreeView& tree = menus.treeOf(bucket);
        QAction* undo = menus.entry(u"Ångra"_s);
        QAction* redo = menus.entry(u"Gör om"_s);
        auto* edit = qobject_cast<QMenu*>(undo->parent());

        Q_EMIT edit->aboutToShow();
        QVERIFY(!undo->isEnabled());
        Q_EMIT edit->aboutToHide();
        move(tree, bucket.file(u"Plan.md"_s), bucket.folder(u"Arbete"_s));
        QVERIFY(bucket.exists(u"Arbete/Plan.md"_s));
        Q_EMIT edit->aboutToShow();
        QCOMPARE(undo->text(), u"Ångra Flytta"_s);
        QVERIFY(undo->isEnabled() && !redo->isEnabled());
        Q_EMIT edit->aboutToHide();
        QCOMPARE(undo->text(), u"Ångra"_s);

        QTest::keyClick(&tree, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(bucket.read(u"Plan.md"_s), "plan");
        Q_EMIT edit->aboutToShow();
        QCOMPARE(redo->text(), u"Gör om Flytta"_s);
        redo->trigger();
        QVERIFY(bucket.exists(u"Arbete/Plan.md"_s));
    }

    void aMenuSteeredByKeyboardMeansWhatHadTheFocusBefore()
    {
        const Bucket bucket({{"Arbete/Index.md", ""}, {"Plan.md", "plan"}});
        Menus menus;
        FileTreeView& tree = menus.treeOf(bucket);
        move(tree, bucket.file(u"Plan.md"_s), bucket.folder(u"Arbete"_s));
        QAction* undo = menus.entry(u"Ångra"_s);

        menus.window.menuBar()->setFocus(Qt::MenuBarFocusReason);
        Q_EMIT qobject_cast<QMenu*>(undo->parent())->aboutToShow();

        QCOMPARE(undo->text(), u"Ångra Flytta"_s);
        undo->trigger();
        QVERIFY(bucket.exists(u"Plan.md"_s));
    }

    void oneKeyGoesFromTheTreeToTheNoteAndBack()
    {
        const Bucket bucket({{"A.md", "a"}});
        Menus menus;
        FileTreeView& tree = menus.treeOf(bucket);
        menus.services.page->post(u"ready"_s);
        menus.state.setSelectedFile(bucket.file(u"A.md"_s));
        QVERIFY(tree.hasFocus());

        QTest::keyClick(&menus.window, Qt::Key_F6);
        QVERIFY(menus.window.content().detail().editor().hasFocus());
        QCOMPARE(menus.services.page->scripts.last(), u"window.VaultEditor.focus()"_s);

        QTest::keyClick(&menus.window, Qt::Key_F6);
        QVERIFY(tree.hasFocus());
    }

    void theBucketCanBeSearchedFromAnywhere()
    {
        const Bucket bucket({{"A.md", ""}});
        Menus menus;
        QVERIFY(!menus.entry(u"Sök i bucketen"_s)->isEnabled());
        menus.treeOf(bucket);
        menus.entry(u"Visa/Dölj sidofält"_s)->trigger();

        menus.entry(u"Sök i bucketen"_s)->trigger();
        QVERIFY(menus.window.content().widget(0)->isVisible());
        QVERIFY(menus.window.findChild<SearchField*>()->hasFocus());
        menus.window.setFocus();
        menus.entry(u"Sök i bucketen"_s)->trigger();

        QVERIFY(menus.window.findChild<SearchField*>()->hasFocus());
    }

    void theSidebarCanBeHidden()
    {
        Menus menus;
        menus.window.show();
        QWidget* sidebar = menus.window.content().widget(0);
        QVERIFY(sidebar->isVisible());

        menus.entry(u"Visa/Dölj sidofält"_s)->trigger();
        QVERIFY(!sidebar->isVisible());
        menus.entry(u"Visa/Dölj sidofält"_s)->trigger();

        QVERIFY(sidebar->isVisible());
    }

    void whatOnlyANoteHasIsDoneByThePage_data()
    {
        addRows("word", {{u"Sök i anteckningen"_s, u"find"_s},
                         {u"Sök nästa"_s, u"findNext"_s},
                         {u"Sök föregående"_s, u"findPrevious"_s},
                         {u"Sök och ersätt"_s, u"replace"_s},
                         {u"Visa/Dölj källtext"_s, u"source"_s},
                         {u"Visa/Dölj antal ord"_s, u"counts"_s}});
    }

    void whatOnlyANoteHasIsDoneByThePage()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, word);
        const Menus menus;
        menus.services.page->post(u"ready"_s);

        menus.entry(title)->trigger();

        QCOMPARE(menus.services.page->scripts.last(), u"window.VaultEditor.exec(\"%1\")"_s.arg(word));
    }

    void aDocumentIsCopiedSearchedAndMadeLarger()
    {
        const Bucket bucket;
        bucket.write(u"A.pdf"_s, pdfOf({u"Ett möte"_s}));
        Menus menus;
        menus.treeOf(bucket);
        menus.state.setSelectedFile(bucket.file(u"A.pdf"_s));
        menus.services.scheduler.finishBackgroundWork();
        auto* pages = menus.window.findChild<PDFKitView*>();
        QVERIFY(pages);
        auto* edit = qobject_cast<QMenu*>(menus.entry(u"Kopiera"_s)->parent());
        QAction* const find = menus.entry(u"Sök i anteckningen"_s);
        const double scale = pages->scale();
        const double textZoom = menus.state.editorZoom();

        menus.entry(u"Förstora text"_s)->trigger();
        QVERIFY(pages->scale() > scale);
        QCOMPARE(menus.state.editorZoom(), textZoom);
        find->trigger();
        QVERIFY(menus.window.findChild<FindBar*>()->isVisible());
        pages->setFocus();
        Q_EMIT edit->aboutToShow();
        QCOMPARE(find->text(), u"Sök i dokumentet"_s);
        QVERIFY(!menus.entry(u"Kopiera"_s)->isEnabled());
        menus.entry(u"Markera allt"_s)->trigger();
        menus.services.scheduler.finishBackgroundWork();
        Q_EMIT edit->aboutToShow();
        QVERIFY(menus.entry(u"Kopiera"_s)->isEnabled());
        QVERIFY(!menus.entry(u"Klipp ut"_s)->isEnabled());
        menus.entry(u"Kopiera"_s)->trigger();
        QCOMPARE(QApplication::clipboard()->text().trimmed(), u"Ett möte"_s);
    }

    void editingGoesToTheFieldThatHasTheFocus()
    {
        Menus menus;
        menus.window.show();
        QApplication::setActiveWindow(&menus.window);
        QLineEdit field(&menus.window);
        field.setText(u"hej"_s);
        field.show();
        field.setFocus();
        menus.services.page->post(u"ready"_s);

        menus.entry(u"Markera allt"_s)->trigger();
        QCOMPARE(field.selectedText(), u"hej"_s);

        menus.entry(u"Sök i anteckningen"_s)->trigger();
        QVERIFY(menus.services.page->scripts.contains(u"window.VaultEditor.exec(\"find\")"_s));
        field.clearFocus();
        menus.entry(u"Ångra"_s)->trigger();
        QVERIFY(menus.services.page->scripts.contains(u"window.VaultEditor.exec(\"undo\")"_s));
    }
};

QTEST_MAIN(MenuCommandsTests)
#include "MenuCommandsTests.moc"
