#include "Shell/FileTreeView.h"

#include "Look/Metrics.h"
#include "Support/TreeFixture.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileTreeViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aClickOpensAFile()
    {
        TreeFixture tree({{"A.md", ""}, {"B.md", ""}});

        tree.click(u"B.md"_s);

        QCOMPARE(tree.state.selectedFile(), tree.bucket.file(u"B.md"_s));
        QVERIFY(tree.view->selectionModel()->isSelected(tree.row(u"B.md"_s)));
    }

    void aClickOpensAFolderAndMakesItTheTargetOfNewNotes()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}});

        tree.click(u"Arbete"_s);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
        QCOMPARE(tree.state.activeDirectory(), tree.bucket.folder(u"Arbete"_s));
        QVERIFY(tree.view->isChosenFolder(tree.row(u"Arbete"_s)));

        tree.click(u"Arbete"_s);
        QVERIFY(!tree.isExpanded(u"Arbete"_s));
    }

    void aClickOnTheDisclosureOnlyOpensTheFolder()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}});

        tree.click(u"Arbete"_s, 2 * metrics::inset + metrics::disclosure / 2);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
        QVERIFY(!tree.state.selectedFolder());
    }

    void newNotesGoWhereTheUserWasLast()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Resor/Rom.md", ""}});
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
        TreeFixture tree({{"A.md", ""}, {"B.md", ""}});
        tree.view->setCurrentIndex(tree.row(u"A.md"_s));

        tree.press(Qt::Key_Down);
        QCOMPARE(tree.currentName(), u"B"_s);
        QVERIFY(!tree.state.selectedFile());

        tree.press(Qt::Key_Return);
        QCOMPARE(tree.state.selectedFile(), tree.bucket.file(u"B.md"_s));
    }

    void leftAndRightCloseAndOpenFolders()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}});
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
        TreeFixture tree({{"Arbete.md", ""}, {"Läslista.md", ""}, {"Recept.md", ""}});
        tree.view->setCurrentIndex(tree.row(u"Arbete.md"_s));

        QTest::keyClicks(tree.view.get(), u"re"_s);

        QCOMPARE(tree.currentName(), u"Recept"_s);
    }

    void aSelectionMadeElsewhereOpensTheFoldersAboveIt()
    {
        TreeFixture tree({{"A/B/C.md", ""}, {"Z.md", ""}});

        tree.state.setSelectedFile(tree.bucket.file(u"A/B/C.md"_s));

        QVERIFY(tree.isExpanded(u"A"_s) && tree.isExpanded(u"A/B"_s));
        QVERIFY(tree.view->selectionModel()->isSelected(tree.row(u"A/B/C.md"_s)));
        QVERIFY(tree.view->viewport()->rect().contains(tree.view->visualRect(tree.row(u"A/B/C.md"_s))));

        tree.state.setSelectedFile(std::nullopt);
        QVERIFY(!tree.view->selectionModel()->hasSelection());
        QVERIFY(tree.isExpanded(u"A/B"_s));
    }

    void atTheStartTheRowsComeOnceTheTreeIsRead()
    {
        FakeServices services;
        const Bucket bucket({{"A/1.md", ""}, {"B.md", ""}});
        {
            AppState last(services.services());
            last.addVault(bucket.root());
            last.setSelectedFile(bucket.file(u"A/1.md"_s));
        }
        AppState state(services.services());
        FileTreeView view(state);
        const auto& model = static_cast<FileTreeModel&>(*view.model());
        showAt(view, {240, 400});
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(!state.isFileTreeRead());

        services.scheduler.advance(std::chrono::milliseconds(0));
        services.scheduler.finishBackgroundWork();

        QCOMPARE(model.rowCount(), 2);
        QVERIFY(view.isExpanded(model.indexOf(bucket.folder(u"A"_s))));
        QVERIFY(view.selectionModel()->isSelected(model.indexOf(bucket.file(u"A/1.md"_s))));
    }

    void aRebuildKeepsWhatIsOpenChosenAndScrolledTo()
    {
        TreeFixture tree({{"A/1.md", ""}, {"B/2.md", ""}}, {240, 120});
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
        TreeFixture tree({{"A/1.md", ""}, {"Z.md", ""}});
        tree.view->setExpanded(tree.row(u"A"_s), true);

        QVERIFY(QDir().rename(tree.bucket.folder(u"A"_s).path(), tree.bucket.folder(u"B"_s).path()));
        tree.state.reloadTree();
        QVERIFY(!tree.isExpanded(u"B"_s));
        QVERIFY(QDir().rename(tree.bucket.folder(u"B"_s).path(), tree.bucket.folder(u"A"_s).path()));
        tree.state.reloadTree();

        QVERIFY(tree.isExpanded(u"A"_s));
    }

    void aRenamedFolderStaysOpenWithAllBelowIt()
    {
        TreeFixture tree({{"A/Inre/1.md", ""}});
        tree.view->setExpanded(tree.row(u"A"_s), true);
        tree.view->setExpanded(tree.row(u"A/Inre"_s), true);

        tree.state.renameFile(tree.bucket.folder(u"A"_s), u"B"_s);

        QVERIFY(tree.isExpanded(u"B"_s));
        QVERIFY(tree.isExpanded(u"B/Inre"_s));
    }

    void aSelectionFromTheStartIsScrolledToOnlyAsFarAsNeeded()
    {
        TreeFixture tree({});
        for (int i = 10; i < 60; ++i)
            tree.bucket.write(u"Not %1.md"_s.arg(i), "");
        tree.state.reloadTree();
        const auto scrolledFor = [&tree](const QString& note) {
            QWidget window;
            auto* view = new FileTreeView(tree.state, &window);
            tree.state.setSelectedFile(tree.bucket.file(u"Not 59.md"_s));
            tree.state.setSelectedFile(tree.bucket.file(note));
            (new QVBoxLayout(&window))->addWidget(view);
            window.layout()->setContentsMargins({});
            showAt(window, {240, 400});
            return view->verticalScrollBar()->value();
        };

        QCOMPARE(scrolledFor(u"Not 20.md"_s), 0);
        const int asFarAsNeeded = 41 * metrics::rowHeight - 400;
        QVERIFY(std::abs(scrolledFor(u"Not 50.md"_s) - asFarAsNeeded) <= 1);
    }

    void theFocusRingShowsOnlyToTheKeyboard()
    {
        TreeFixture tree({{"A.md", ""}, {"B.md", ""}});

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
        TreeFixture tree({{"A/1.md", ""}});

        tree.click(u"A"_s);

        QVERIFY(tree.view->disclosure(tree.row(u"A"_s)) < 1);
        QTRY_COMPARE(tree.view->disclosure(tree.row(u"A"_s)), 1.0);
        useProductLook();
    }

    void rowsAreAsHighAsTheLookWants()
    {
        TreeFixture tree({{"A.md", ""}});

        QCOMPARE(tree.view->visualRect(tree.row(u"A.md"_s)).height(), metrics::rowHeight);
    }

    void theMenuIsOfferedForTheRowUnderThePointerAndTheFocusedOne()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"B.md", ""}});
        QList<std::pair<QString, bool>> asked;
        connect(tree.view.get(), &FileTreeView::menuRequested, this,
                [&asked](const FileURL& item, bool isFolder) {
                    asked.append({item.lastPathComponent(), isFolder});
                });
        const QPoint place = tree.view->visualRect(tree.row(u"B.md"_s)).center();
        const auto askAt = [&tree](QContextMenuEvent::Reason reason, const QPoint& at) {
            QContextMenuEvent event(reason, at, tree.view->viewport()->mapToGlobal(at));
            QApplication::sendEvent(tree.view->viewport(), &event);
        };

        askAt(QContextMenuEvent::Mouse, place);
        askAt(QContextMenuEvent::Mouse, {20, 390});
        tree.view->setCurrentIndex(tree.row(u"Arbete"_s));
        askAt(QContextMenuEvent::Keyboard, {20, 390});

        QCOMPARE(asked, (QList<std::pair<QString, bool>>{{u"B.md"_s, false}, {u"Arbete"_s, true}}));
        QVERIFY(!tree.state.selectedFile());
    }

    void f2AsksForANewName()
    {
        TreeFixture tree({{"B.md", ""}});
        QSignalSpy asked(tree.view.get(), &FileTreeView::renameRequested);
        tree.view->setCurrentIndex(tree.row(u"B.md"_s));

        tree.press(Qt::Key_F2);

        QCOMPARE(asked.count(), 1);
        QCOMPARE(asked.at(0).at(0).value<FileURL>(), tree.bucket.file(u"B.md"_s));
    }
};

QTEST_MAIN(FileTreeViewTests)
#include "FileTreeViewTests.moc"
