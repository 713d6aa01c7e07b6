#include "Wendlores/MainWindow.h"

#include "Fakes/Bucket.h"
#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"
#include "Shell/SearchField.h"
#include "Shell/SidebarView.h"
#include "State/AppState.h"
#include "Support/Accessibility.h"
#include "Support/EngineTest.h"
#include "Support/RealDesktop.h"
#include "Support/TreeDrag.h"
#include "Support/Window.h"

#include <QListView>
#include <QMenu>
#include <QPushButton>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// The program's window over a bucket, on the real disk, clock and engine.
class Session final
{
public:
    explicit Session(const Bucket& opened)
        : bucket(opened)
    {
        state.addVault(bucket.root());
        showAt(window, {1000, 700});
        QApplication::setActiveWindow(&window);
    }

    [[nodiscard]] SidebarView& sidebar() const { return *window.findChild<SidebarView*>(); }
    [[nodiscard]] FileTreeView& tree() const { return sidebar().tree(); }
    [[nodiscard]] QModelIndex row(const FileURL& url) const
    {
        return static_cast<FileTreeModel*>(tree().model())->indexOf(url);
    }
    [[nodiscard]] QPoint placeOf(const FileURL& url) const { return tree().visualRect(row(url)).center(); }

    /// Opens the menu of an item and chooses the entry `title`.
    [[nodiscard]] bool chooseFromMenu(const FileURL& url, const QString& title) const
    {
        const QPoint place = placeOf(url);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree().viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree().viewport(), &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return false;
        for (QAction* entry : menu->actions()) {
            if (entry->text() == title) {
                // By its key: menus of Qt 6.8 close at a click that no pointer has made.
                menu->setActiveAction(entry);
                QTest::keyClick(menu, Qt::Key_Return);
                return true;
            }
        }
        return false;
    }
    const Bucket& bucket;
    RealDesktop desktop;
    AppState state{desktop.services()};
    MainWindow window{state};
};

} // namespace

class SidebarWindowTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }
    void aNoteIsFoundByItsTextAndOpened();
    void aNoteIsRenamedFromItsMenu();
    void aFolderGetsANoteAndGoesToTheTrash();
    void aNoteIsDraggedIntoAClosedFolderThatOpens();
    void everyControlHasANameWithTheRealPage();
};

void SidebarWindowTests::aNoteIsFoundByItsTextAndOpened()
{
    const Bucket bucket({{"Mapp/Djup/Möte.md", "vi ringer\n  Anna i morgon\n"}, {"Annat.md", "inget"}});
    Session session(bucket);

    QTest::mouseClick(childNamed(session.sidebar(), u"Sök"_s), Qt::LeftButton);
    auto* field = session.sidebar().findChild<SearchField*>();
    QTRY_VERIFY_WITH_TIMEOUT(field->hasFocus(), patience);
    QTest::keyClicks(field, u"anna"_s);
    auto* results = session.sidebar().findChild<QListView*>();
    // "Annat" holds the text in its name.
    QTRY_COMPARE_WITH_TIMEOUT(results->model()->rowCount(), 2, patience);
    QTest::keyClicks(field, u" i"_s);
    QTRY_COMPARE_WITH_TIMEOUT(results->model()->rowCount(), 1, patience);
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {},
                      results->visualRect(results->model()->index(0, 0)).center());

    QCOMPARE(session.state.selectedFile(), bucket.file(u"Mapp/Djup/Möte.md"_s));
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(session.tree().isExpanded(session.row(bucket.folder(u"Mapp/Djup"_s))));
    QVERIFY(session.state.searchResults().empty());
}

void SidebarWindowTests::aNoteIsRenamedFromItsMenu()
{
    const Bucket bucket({{"Plan.md", "plan\n"}});
    Session session(bucket);
    session.state.setSelectedFile(bucket.file(u"Plan.md"_s));

    QVERIFY(session.chooseFromMenu(bucket.file(u"Plan.md"_s), u"Byt namn"_s));
    QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QLineEdit*>(QApplication::focusWidget()), patience);
    QTest::keyClicks(QApplication::focusWidget(), u"Mal"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    QCOMPARE(bucket.read(u"Mal.md"_s), QByteArray("plan\n"));
    QVERIFY(!bucket.exists(u"Plan.md"_s));
    QCOMPARE(session.state.selectedFile(), bucket.file(u"Mal.md"_s));
}

void SidebarWindowTests::aFolderGetsANoteAndGoesToTheTrash()
{
    const Bucket bucket({{"Mapp/A.md", ""}});
    Session session(bucket);

    QVERIFY(session.chooseFromMenu(bucket.folder(u"Mapp"_s), u"Ny not här"_s));
    QTRY_VERIFY_WITH_TIMEOUT(bucket.exists(u"Mapp/Ny not.md"_s), patience);
    QVERIFY(session.chooseFromMenu(bucket.folder(u"Mapp"_s), u"Ta bort mapp"_s));

    QTRY_VERIFY_WITH_TIMEOUT(!bucket.exists(u"Mapp"_s), patience);
    QVERIFY(QFile::exists(session.desktop.trash.folder.appending(u"Mapp/A.md"_s).path()));
    QCOMPARE(session.tree().model()->rowCount(), 0);
}

void SidebarWindowTests::aNoteIsDraggedIntoAClosedFolderThatOpens()
{
    const Bucket bucket({{"Arbete/Djup/Index.md", ""}, {"Plan.md", "plan"}});
    Session session(bucket);
    TreeDrag drag = TreeDrag::of(session.tree(), bucket.file(u"Plan.md"_s));

    QVERIFY(drag.enter());
    drag.hoverOver(bucket.folder(u"Arbete"_s));
    QTRY_VERIFY_WITH_TIMEOUT(session.tree().isExpanded(session.row(bucket.folder(u"Arbete"_s))), patience);
    drag.hoverOver(bucket.folder(u"Arbete/Djup"_s));
    drag.drop();

    QTRY_COMPARE_WITH_TIMEOUT(bucket.read(u"Arbete/Djup/Plan.md"_s), QByteArray("plan"), patience);
    QVERIFY(!bucket.exists(u"Plan.md"_s));

    session.tree().setFocus();
    QTest::keySequence(&session.tree(), QKeySequence::Undo);
    QCOMPARE(bucket.read(u"Plan.md"_s), QByteArray("plan"));
    QTest::keySequence(&session.tree(), QKeySequence::Redo);
    QVERIFY(bucket.exists(u"Arbete/Djup/Plan.md"_s));
}

void SidebarWindowTests::everyControlHasANameWithTheRealPage()
{
    const Bucket bucket({{"A.md", "text\n"}});
    Session session(bucket);
    session.state.setSelectedFile(bucket.file(u"A.md"_s));

    QCOMPARE(namelessControls(session.window), QStringList());
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(SidebarWindowTests)
#include "SidebarWindowTests.moc"
