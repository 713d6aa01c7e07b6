#include "Shell/FileTreeView.h"

#include "Fakes/RecordingUndo.h"
#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "Support/TreeDrag.h"
#include "Support/TreeFixture.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

class FileTreeViewDraggingTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aDragCarriesTheItemsLocation()
    {
        TreeFixture tree({{"Mapp/Å b.md", ""}});
        tree.view->setExpanded(tree.row(u"Mapp"_s), true);

        const auto data = tree.view->dragData(tree.row(u"Mapp/Å b.md"_s));

        QCOMPARE(data->urls(), QList{QUrl::fromLocalFile(tree.bucket.file(u"Mapp/Å b.md"_s).path())});
    }

    void aDropOnAFolderMovesThereAndLeavesAWayBack()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Plan.md", "plan"}});
        RecordingUndo undo;
        tree.view->setUndoRegistrar(&undo);
        TreeDrag drag = TreeDrag::of(*tree.view, tree.bucket.file(u"Plan.md"_s));

        QVERIFY(drag.enter());
        drag.hoverOver(tree.bucket.file(u"Arbete"_s));
        QVERIFY(tree.view->isDropTarget(tree.row(u"Arbete"_s)));
        drag.drop();

        QCOMPARE(tree.bucket.read(u"Arbete/Plan.md"_s), QByteArray("plan"));
        QVERIFY(!tree.view->isDropTarget(tree.row(u"Arbete"_s)));
        QCOMPARE(undo.names, QStringList{u"Flytta"_s});
        undo.runLast();
        QVERIFY(tree.bucket.exists(u"Plan.md"_s));
    }

    void aDropBelowTheRowsMovesToTheBucket()
    {
        TreeFixture tree({{"Arbete/Index.md", "i"}});
        tree.view->setExpanded(tree.row(u"Arbete"_s), true);
        TreeDrag drag = TreeDrag::of(*tree.view, tree.bucket.file(u"Arbete/Index.md"_s));

        QVERIFY(drag.enter());
        drag.hoverAt({100, 350});
        const QImage picture = pictureOf(*tree.view->viewport());
        QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() - 1),
                 Colors::of(ColorScheme::light).accent);
        drag.drop();

        QCOMPARE(tree.bucket.read(u"Index.md"_s), QByteArray("i"));
    }

    void aRowOfAFileStandsForTheFolderThatHoldsIt()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Plan.md", ""}, {"Rot.md", ""}});
        tree.view->setExpanded(tree.row(u"Arbete"_s), true);
        TreeDrag drag = TreeDrag::of(*tree.view, tree.bucket.file(u"Plan.md"_s));
        QVERIFY(drag.enter());

        drag.hoverOver(tree.bucket.file(u"Arbete/Index.md"_s));
        QVERIFY(tree.view->isDropTarget(tree.row(u"Arbete"_s)));
        drag.hoverOver(tree.bucket.file(u"Rot.md"_s));
        QVERIFY(!tree.view->isDropTarget(tree.row(u"Arbete"_s)));
        drag.drop();

        QVERIFY(tree.bucket.exists(u"Plan.md"_s));
    }

    void aFileFromOutsideComesIn()
    {
        const Bucket outside({{"Bild.png", "123"}});
        TreeFixture tree({{"Arbete/Index.md", ""}});
        auto data = std::make_unique<QMimeData>();
        data->setUrls({QUrl::fromLocalFile(outside.file(u"Bild.png"_s).path())});
        TreeDrag drag(*tree.view, std::move(data));

        QVERIFY(drag.enter());
        drag.hoverOver(tree.bucket.file(u"Arbete"_s));
        drag.drop();

        QCOMPARE(tree.bucket.read(u"Arbete/Bild.png"_s), QByteArray("123"));
        QVERIFY(tree.row(u"Arbete/Bild.png"_s).isValid());
    }

    void whatIsNoFileIsRefused()
    {
        TreeFixture tree({{"A.md", ""}});
        auto data = std::make_unique<QMimeData>();
        data->setText(u"bara text"_s);

        QVERIFY(!TreeDrag(*tree.view, std::move(data)).enter());
    }

    void restingOnAClosedFolderOpensIt()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Plan.md", ""}});
        TreeDrag drag = TreeDrag::of(*tree.view, tree.bucket.file(u"Plan.md"_s));
        QVERIFY(drag.enter());

        drag.hoverOver(tree.bucket.file(u"Arbete"_s));
        tree.services.scheduler.advance(699ms);
        QVERIFY(!tree.isExpanded(u"Arbete"_s));
        drag.hoverOver(tree.bucket.file(u"Arbete"_s));
        tree.services.scheduler.advance(1ms);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
    }

    void leavingTheFolderEarlierDoesNot()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Resor/Rom.md", ""}, {"Plan.md", ""}});
        TreeDrag drag = TreeDrag::of(*tree.view, tree.bucket.file(u"Plan.md"_s));
        QVERIFY(drag.enter());

        drag.hoverOver(tree.bucket.file(u"Arbete"_s));
        tree.services.scheduler.advance(600ms);
        drag.hoverOver(tree.bucket.file(u"Resor"_s));
        tree.services.scheduler.advance(600ms);
        drag.leave();
        tree.services.scheduler.advance(2s);

        QVERIFY(!tree.isExpanded(u"Arbete"_s) && !tree.isExpanded(u"Resor"_s));
        QVERIFY(!tree.view->isDropTarget(tree.row(u"Resor"_s)));
    }
};

QTEST_MAIN(FileTreeViewDraggingTests)
#include "FileTreeViewDraggingTests.moc"
