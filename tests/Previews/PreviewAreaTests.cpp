#include "Previews/PreviewArea.h"

#include "Editor/ConflictNotice.h"
#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/EmptyVaultView.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

using Shown = PreviewArea::Shown;

namespace {

/// The area over a bucket with files of several kinds.
class Area final
{
public:
    explicit Area(PreviewArea::Host host = PreviewArea::Host::mainWindow)
        : state(services.services())
        , view(state, host)
    {}

    void select(const QString& path) { state.setSelectedFile(bucket.file(path)); }
    void editWhileAnotherProgramDoes()
    {
        services.page->post(u"ready"_s);
        select(u"Not.md"_s);
        services.scheduler.finishBackgroundWork();
        services.page->post(u"changed"_s, u"vårt"_s);
        bucket.write(u"Not.md"_s, "deras");
    }

    Bucket bucket{{"Not.md", "Hej"},    {"A.pdf", ""},     {"B.pdf", ""},
                  {"Mapp/C.md", "Tre"}, {"arkiv.zip", ""}, {"Paket.pages/Index.zip", ""}};
    FakeServices services;
    AppState state;
    PreviewArea view;
};

} // namespace

class PreviewAreaTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withoutABucketTheMainWindowAsksForOne()
    {
        Area area;

        QCOMPARE(area.view.shown(), Shown::emptyVault);
        QVERIFY(qobject_cast<EmptyVaultView*>(area.view.currentWidget()));
        area.state.switchVault(area.bucket.root());
        QCOMPARE(area.view.shown(), Shown::placeholder);
    }

    void anEmbeddedAreaNeverAsksForABucket()
    {
        Area area(PreviewArea::Host::embedded);

        QCOMPARE(area.view.shown(), Shown::placeholder);
        auto* label = qobject_cast<QLabel*>(area.view.currentWidget());
        QVERIFY(label);
        QCOMPARE(label->text(), u"Välj en not"_s);
    }

    void theNameDecidesWhatShowsAFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Shown>("shown");
        for (const QString& name : {u"a.md"_s, u"a.MD"_s, u"a.markdown"_s, u"a.txt"_s, u"a.Text"_s})
            QTest::newRow(qPrintable(name)) << name << Shown::editor;
        for (const QString& name : {u"a.png"_s, u"a.JPG"_s, u"a.pdf"_s, u"a.PDF"_s, u"a.html"_s, u"a.HTM"_s,
                                    u"a.gdoc"_s, u"a.docx"_s, u"a.zip"_s, u"utan"_s})
            QTest::newRow(qPrintable(name)) << name << Shown::viewer;
    }
    void theNameDecidesWhatShowsAFile()
    {
        QFETCH(QString, path);
        QFETCH(Shown, shown);
        Area area;
        area.state.switchVault(area.bucket.root());
        area.bucket.write(path, "x");

        area.select(path);

        QCOMPARE(area.view.shown(), shown);
    }

    void aFolderShowsNothingButAPackageIsAFile()
    {
        Area area;
        area.state.switchVault(area.bucket.root());

        area.state.setSelectedFile(area.bucket.folder(u"Mapp"_s));
        QCOMPARE(area.view.shown(), Shown::placeholder);
        area.state.setSelectedFile(area.bucket.folder(u"Paket.pages"_s));
        QCOMPARE(area.view.shown(), Shown::viewer);
    }

    void everyFileHasAViewerOfItsOwn()
    {
        Area area;
        area.state.switchVault(area.bucket.root());
        area.select(u"A.pdf"_s);
        const QPointer<QWidget> first = area.view.currentWidget();

        area.select(u"B.pdf"_s);

        QVERIFY(area.view.currentWidget() != first);
        QTRY_VERIFY(!first);
    }

    void aViewerGoesWhenANoteIsSelected()
    {
        Area area;
        area.state.switchVault(area.bucket.root());
        area.select(u"arkiv.zip"_s);
        const QPointer<QWidget> viewer = area.view.currentWidget();

        area.select(u"Not.md"_s);

        QCOMPARE(area.view.currentWidget(), &area.view.editor());
        QTRY_VERIFY(!viewer);
    }

    void changesInTheTreeLeaveTheViewerAlone()
    {
        Area area;
        area.state.switchVault(area.bucket.root());
        area.select(u"A.pdf"_s);
        const QWidget* viewer = area.view.currentWidget();
        const QSignalSpy changes(&area.view, &PreviewArea::shownChanged);

        area.bucket.write(u"Ny.md"_s, "");
        area.state.reloadTree();

        QCOMPARE(area.view.currentWidget(), viewer);
        QCOMPARE(changes.count(), 0);
    }

    void aConflictFoundOnLeavingTheNoteIsToldAboveTheNextFile()
    {
        Area area;
        area.state.switchVault(area.bucket.root());
        area.editWhileAnotherProgramDoes();

        area.select(u"A.pdf"_s);

        const auto* notice = area.view.findChild<ConflictNotice*>();
        QVERIFY(!notice->isHidden());
        QVERIFY(!area.view.currentWidget()->isAncestorOf(notice));
    }

    void aConflictFoundAsTheViewGoesLosesNothing()
    {
        auto area = std::make_unique<Area>();
        area->state.switchVault(area->bucket.root());
        area->editWhileAnotherProgramDoes();
        const Bucket kept = std::move(area->bucket);

        area.reset();

        QCOMPARE(kept.read(u"Not.md"_s), "vårt");
        QCOMPARE(kept.names().filter(u"konflikt"_s).size(), 1);
    }
};

QTEST_MAIN(PreviewAreaTests)
#include "PreviewAreaTests.moc"
