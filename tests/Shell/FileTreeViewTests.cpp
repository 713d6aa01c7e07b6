#include "Shell/FileTreeView.h"

#include "Shell/FileTreeModel.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Metrics.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A tree on screen over a real bucket.
class Tree final
{
public:
    explicit Tree(std::initializer_list<std::pair<const char*, const char*>> files, QSize size = {240, 400})
        : bucket(files)
        , state(services.services())
    {
        state.switchVault(bucket.root());
        view = std::make_unique<FileTreeView>(state);
        showAt(*view, size);
        QApplication::setActiveWindow(view.get());
        view->setFocus();
    }

    [[nodiscard]] QModelIndex row(const QString& path) const
    {
        return static_cast<FileTreeModel*>(view->model())->indexOf(bucket.file(path));
    }
    [[nodiscard]] bool isExpanded(const QString& path) const { return view->isExpanded(row(path)); }
    [[nodiscard]] QString currentName() const { return view->currentIndex().data().toString(); }

    void click(const QString& path, int x = 100) const
    {
        const QRect area = view->visualRect(row(path));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, {x, area.center().y()});
    }
    void press(Qt::Key key) const { QTest::keyClick(view.get(), key); }

    Bucket bucket;
    FakeServices services;
    AppState state;
    std::unique_ptr<FileTreeView> view;
};

} // namespace

class FileTreeViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aClickOpensAFile()
    {
        Tree tree({{"A.md", ""}, {"B.md", ""}});

        tree.click(u"B.md"_s);

        QCOMPARE(tree.state.selectedFile(), tree.bucket.file(u"B.md"_s));
        QVERIFY(tree.view->selectionModel()->isSelected(tree.row(u"B.md"_s)));
    }

    void aClickOpensAFolderAndMakesItTheTargetOfNewNotes()
    {
        Tree tree({{"Arbete/Index.md", ""}});

        tree.click(u"Arbete"_s);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
        QCOMPARE(tree.state.activeDirectory(), tree.bucket.folder(u"Arbete"_s));
        QVERIFY(tree.view->isChosenFolder(tree.row(u"Arbete"_s)));

        tree.click(u"Arbete"_s);
        QVERIFY(!tree.isExpanded(u"Arbete"_s));
    }

    void aClickOnTheDisclosureOnlyOpensTheFolder()
    {
        Tree tree({{"Arbete/Index.md", ""}});

        tree.click(u"Arbete"_s, 2 * metrics::inset + metrics::disclosure / 2);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
        QVERIFY(!tree.state.selectedFolder());
    }

    void newNotesGoWhereTheUserWasLast()
    {
        Tree tree({{"Arbete/Index.md", ""}, {"Resor/Rom.md", ""}});
        tree.click(u"Resor"_s);
        tree.click(u"Arbete"_s);

        tree.click(u"Resor/Rom.md"_s);
        QCOMPARE(tree.state.activeDirectory()->path(), tree.bucket.folder(u"Resor"_s).path());

        tree.click(u"Arbete"_s);
        tree.click(u"Arbete"_s);
        tree.click(u"Arbete/Index.md"_s);
        QCOMPARE(tree.state.activeDirectory()->path(), tree.bucket.folder(u"Arbete"_s).path());
    }

    void arrowsMoveTheFocusAndEnterOpens()
    {
        Tree tree({{"A.md", ""}, {"B.md", ""}});
        tree.view->setCurrentIndex(tree.row(u"A.md"_s));

        tree.press(Qt::Key_Down);
        QCOMPARE(tree.currentName(), u"B"_s);
        QVERIFY(!tree.state.selectedFile());

        tree.press(Qt::Key_Return);
        QCOMPARE(tree.state.selectedFile(), tree.bucket.file(u"B.md"_s));
    }

    void leftAndRightCloseAndOpenFolders()
    {
        Tree tree({{"Arbete/Index.md", ""}});
        tree.view->setCurrentIndex(tree.row(u"Arbete"_s));

        tree.press(Qt::Key_Right);
        QVERIFY(tree.isExpanded(u"Arbete"_s));
        tree.press(Qt::Key_Right);
        QCOMPARE(tree.currentName(), u"Index"_s);
        tree.press(Qt::Key_Left);
        tree.press(Qt::Key_Left);
        QVERIFY(!tree.isExpanded(u"Arbete"_s));
    }

    void typingANameFindsItsRow()
    {
        Tree tree({{"Arbete.md", ""}, {"Läslista.md", ""}, {"Recept.md", ""}});
        tree.view->setCurrentIndex(tree.row(u"Arbete.md"_s));

        QTest::keyClicks(tree.view.get(), u"re"_s);

        QCOMPARE(tree.currentName(), u"Recept"_s);
    }

    void aSelectionMadeElsewhereOpensTheFoldersAboveIt()
    {
        Tree tree({{"A/B/C.md", ""}, {"Z.md", ""}});

        tree.state.setSelectedFile(tree.bucket.file(u"A/B/C.md"_s));

        QVERIFY(tree.isExpanded(u"A"_s) && tree.isExpanded(u"A/B"_s));
        QVERIFY(tree.view->selectionModel()->isSelected(tree.row(u"A/B/C.md"_s)));
        QVERIFY(tree.view->viewport()->rect().contains(tree.view->visualRect(tree.row(u"A/B/C.md"_s))));

        tree.state.setSelectedFile(std::nullopt);
        QVERIFY(!tree.view->selectionModel()->hasSelection());
        QVERIFY(tree.isExpanded(u"A/B"_s));
    }

    void aRebuildKeepsWhatIsOpenChosenAndScrolledTo()
    {
        Tree tree({{"A/1.md", ""}, {"B/2.md", ""}}, {240, 120});
        for (int i = 0; i < 50; ++i)
            tree.bucket.write(u"Not %1.md"_s.arg(i), "");
        tree.state.reloadTree();
        tree.view->setExpanded(tree.row(u"A"_s), true);
        tree.state.setSelectedFile(tree.bucket.file(u"Not 40.md"_s));
        QScrollBar* bar = tree.view->verticalScrollBar();
        bar->setValue(600);

        tree.bucket.write(u"A/0.md"_s, "");
        tree.bucket.remove(u"Not 49.md"_s);
        tree.state.reloadTree();

        QVERIFY(tree.isExpanded(u"A"_s));
        QVERIFY(!tree.isExpanded(u"B"_s));
        QVERIFY(tree.view->selectionModel()->isSelected(tree.row(u"Not 40.md"_s)));
        QVERIFY(std::abs(bar->value() - 600) <= metrics::rowHeight);
    }

    void aFolderThatComesBackIsOpenAgain()
    {
        Tree tree({{"A/1.md", ""}, {"Z.md", ""}});
        tree.view->setExpanded(tree.row(u"A"_s), true);

        QVERIFY(QDir().rename(tree.bucket.folder(u"A"_s).path(), tree.bucket.folder(u"B"_s).path()));
        tree.state.reloadTree();
        QVERIFY(!tree.isExpanded(u"B"_s));
        QVERIFY(QDir().rename(tree.bucket.folder(u"B"_s).path(), tree.bucket.folder(u"A"_s).path()));
        tree.state.reloadTree();

        QVERIFY(tree.isExpanded(u"A"_s));
    }

    void aRenamedFolderStaysOpen()
    {
        Tree tree({{"A/1.md", ""}});
        tree.view->setExpanded(tree.row(u"A"_s), true);

        tree.state.renameFile(tree.bucket.folder(u"A"_s), u"B"_s);

        QVERIFY(tree.isExpanded(u"B"_s));
    }

    void theFocusRingShowsOnlyToTheKeyboard()
    {
        Tree tree({{"A.md", ""}, {"B.md", ""}});

        tree.click(u"A.md"_s);
        QVERIFY(!tree.view->isSteeredByKeyboard());
        tree.press(Qt::Key_Down);
        QVERIFY(tree.view->isSteeredByKeyboard());

        const QRect row = tree.view->visualRect(tree.row(u"B.md"_s));
        QCOMPARE(pictureOf(*tree.view).pixelColor(120, row.top() + 1), Colors::of(ColorScheme::light).accent);
    }

    void aDisclosureTurnsWhereMotionIsWanted()
    {
        useProductLook(ColorScheme::light, Motion::wanted);
        Tree tree({{"A/1.md", ""}});

        tree.click(u"A"_s);

        QVERIFY(tree.view->disclosure(tree.row(u"A"_s)) < 1);
        QTRY_COMPARE(tree.view->disclosure(tree.row(u"A"_s)), 1.0);
        useProductLook();
    }

    void rowsAreAsHighAsTheLookWants()
    {
        Tree tree({{"A.md", ""}});

        QCOMPARE(tree.view->visualRect(tree.row(u"A.md"_s)).height(), metrics::rowHeight);
    }
};

QTEST_MAIN(FileTreeViewTests)
#include "FileTreeViewTests.moc"
