#include "Shell/FileTreeView.h"

#include "Fakes/RecordingUndo.h"
#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "Support/TreeFixture.h"

#include <QDropEvent>
#include <QMimeData>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace wendlore;

namespace {

/// A drag that hovers over a tree, as the window system would deliver it.
class Drag final
{
public:
    explicit Drag(TreeFixture& tree, std::unique_ptr<QMimeData> data)
        : m_tree(tree)
        , m_data(std::move(data))
    {}

    static Drag of(TreeFixture& tree, const QString& path)
    {
        return Drag(tree, tree.view->dragData(tree.row(path)));
    }

    [[nodiscard]] bool enter()
    {
        QDragEnterEvent event({1, 1}, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.view->viewport(), &event);
        return event.isAccepted();
    }
    void hoverOver(const QString& path) { hoverAt(m_tree.view->visualRect(m_tree.row(path)).center()); }
    void hoverAt(const QPoint& place)
    {
        m_place = place;
        QDragMoveEvent event(place, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.view->viewport(), &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(event.dropAction(), Qt::MoveAction);
    }
    void leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(m_tree.view->viewport(), &event);
    }
    void drop()
    {
        QDropEvent event(m_place, actions, m_data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_tree.view->viewport(), &event);
        QCoreApplication::processEvents();
    }

private:
    static constexpr auto actions = Qt::MoveAction | Qt::CopyAction;

    TreeFixture& m_tree;
    std::unique_ptr<QMimeData> m_data;
    QPoint m_place;
};

} // namespace

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
        Drag drag = Drag::of(tree, u"Plan.md"_s);

        QVERIFY(drag.enter());
        drag.hoverOver(u"Arbete"_s);
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
        Drag drag = Drag::of(tree, u"Arbete/Index.md"_s);

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
        Drag drag = Drag::of(tree, u"Plan.md"_s);
        QVERIFY(drag.enter());

        drag.hoverOver(u"Arbete/Index.md"_s);
        QVERIFY(tree.view->isDropTarget(tree.row(u"Arbete"_s)));
        drag.hoverOver(u"Rot.md"_s);
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
        Drag drag(tree, std::move(data));

        QVERIFY(drag.enter());
        drag.hoverOver(u"Arbete"_s);
        drag.drop();

        QCOMPARE(tree.bucket.read(u"Arbete/Bild.png"_s), QByteArray("123"));
        QVERIFY(tree.row(u"Arbete/Bild.png"_s).isValid());
    }

    void whatIsNoFileIsRefused()
    {
        TreeFixture tree({{"A.md", ""}});
        auto data = std::make_unique<QMimeData>();
        data->setText(u"bara text"_s);

        QVERIFY(!Drag(tree, std::move(data)).enter());
    }

    void restingOnAClosedFolderOpensIt()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Plan.md", ""}});
        Drag drag = Drag::of(tree, u"Plan.md"_s);
        QVERIFY(drag.enter());

        drag.hoverOver(u"Arbete"_s);
        tree.services.scheduler.advance(699ms);
        QVERIFY(!tree.isExpanded(u"Arbete"_s));
        drag.hoverOver(u"Arbete"_s);
        tree.services.scheduler.advance(1ms);

        QVERIFY(tree.isExpanded(u"Arbete"_s));
    }

    void leavingTheFolderEarlierDoesNot()
    {
        TreeFixture tree({{"Arbete/Index.md", ""}, {"Resor/Rom.md", ""}, {"Plan.md", ""}});
        Drag drag = Drag::of(tree, u"Plan.md"_s);
        QVERIFY(drag.enter());

        drag.hoverOver(u"Arbete"_s);
        tree.services.scheduler.advance(600ms);
        drag.hoverOver(u"Resor"_s);
        tree.services.scheduler.advance(600ms);
        drag.leave();
        tree.services.scheduler.advance(2s);

        QVERIFY(!tree.isExpanded(u"Arbete"_s) && !tree.isExpanded(u"Resor"_s));
        QVERIFY(!tree.view->isDropTarget(tree.row(u"Resor"_s)));
    }
};

QTEST_MAIN(FileTreeViewDraggingTests)
#include "FileTreeViewDraggingTests.moc"
