#include "Previews/DetailView.h"

#include "Editor/EditorView.h"
#include "Editor/WebEditorController.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Previews/EmptyVaultView.h"
#include "Previews/FileCard.h"
#include "Previews/TitleField.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The detail area on screen over a bucket with files of several kinds.
class Detail final
{
public:
    enum class Opened { bucket, nothing };

    explicit Detail(Opened opened = Opened::bucket)
        : state(services.services())
    {
        if (opened == Opened::bucket)
            state.switchVault(bucket.root());
        view = std::make_unique<DetailView>(state);
        services.page->post(u"ready"_s);
        showAt(*view, {900, 600});
        QApplication::setActiveWindow(view.get());
    }

    void select(const QString& path)
    {
        state.setSelectedFile(bucket.file(path));
        services.scheduler.finishBackgroundWork();
    }
    [[nodiscard]] bool shows(const QString& text) const
    {
        for (const auto* label : view->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains(text))
                return true;
        }
        return false;
    }
    [[nodiscard]] TitleField& title() const { return *view->findChild<TitleField*>(); }

    Bucket bucket{{"Not.md", "Hej"}, {"Annan.markdown", "Två"}, {"Bild.PNG", "1234"}, {"arkiv.zip", ""}};
    FakeServices services;
    AppState state;
    std::unique_ptr<DetailView> view;
};

} // namespace

class DetailViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withoutABucketOneIsAskedFor()
    {
        Detail detail(Detail::Opened::nothing);
        QVERIFY(detail.shows(u"Ingen bucket öppen"_s));
        QVERIFY(detail.shows(u"Välj en mapp som din bucket för att börja."_s));

        detail.services.panels.answer = detail.bucket.root();
        QTest::mouseClick(detail.view->findChild<EmptyVaultView*>()->findChild<QPushButton*>(),
                          Qt::LeftButton);

        QCOMPARE(detail.state.vaultURL(), detail.bucket.root());
        QVERIFY(detail.shows(u"Välj en not"_s));
    }

    void aNoteOpensInTheEditor()
    {
        Detail detail;

        detail.select(u"Not.md"_s);

        QVERIFY(detail.view->editor().isVisible());
        QCOMPARE(detail.state.editorController().desiredContent(), u"Hej"_s);
        QCOMPARE(detail.title().text(), u"Not"_s);
        QVERIFY(childNamed(*detail.view, u"Fet"_s)->isVisible());
    }

    void anyOtherFileIsACard()
    {
        Detail detail;

        detail.select(u"arkiv.zip"_s);

        QVERIFY(detail.shows(u"arkiv.zip"_s));
        QVERIFY(detail.shows(u"ZIP-fil · 0 byte"_s));
        QVERIFY(!detail.view->editor().isVisible());
        QVERIFY(!childNamed(*detail.view, u"Fet"_s)->isVisible());
        QTest::mouseClick(detail.view->findChild<FileCard*>()->findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(detail.services.workspace.files, QList{detail.bucket.file(u"arkiv.zip"_s)});
    }

    void theOpenButtonIsThereForFilesThatOtherProgramsShow()
    {
        Detail detail;
        const auto isOffered = [&detail] { return childNamed(*detail.view, u"Öppna"_s)->isVisible(); };

        detail.select(u"Bild.PNG"_s);
        QVERIFY(isOffered());
        QCOMPARE(childNamed(*detail.view, u"Öppna"_s)->toolTip(), u"Öppna i systemets standardapp"_s);
        detail.select(u"arkiv.zip"_s);
        QVERIFY(!isOffered());
        detail.select(u"Not.md"_s);
        QVERIFY(!isOffered());
    }

    void anEditThatArrivesAfterAnImageWasSelectedIsSavedToItsNote()
    {
        Detail detail;
        detail.select(u"Not.md"_s);
        const auto shown = detail.services.page->generation;

        detail.select(u"Bild.PNG"_s);
        detail.services.page->postLate(u"changed"_s, u"Hej du"_s, shown);
        detail.services.scheduler.advance(std::chrono::seconds(2));

        QCOMPARE(detail.bucket.read(u"Not.md"_s), QByteArray("Hej du"));
        QCOMPARE(detail.bucket.read(u"Bild.PNG"_s), QByteArray("1234"));
    }

    void backAndForwardFollowTheHistory()
    {
        Detail detail;
        detail.select(u"Not.md"_s);
        QWidget* back = childNamed(*detail.view, u"Bakåt"_s);
        QWidget* forward = childNamed(*detail.view, u"Framåt"_s);
        QVERIFY(!back->isEnabled() && !forward->isEnabled());

        detail.select(u"Annan.markdown"_s);
        QVERIFY(back->isEnabled() && !forward->isEnabled());
        QTest::mouseClick(back, Qt::LeftButton);
        QCOMPARE(detail.state.selectedFile(), detail.bucket.file(u"Not.md"_s));
        QTest::keyClick(detail.view.get(), Qt::Key_BracketRight, Qt::ControlModifier);

        QCOMPARE(detail.state.selectedFile(), detail.bucket.file(u"Annan.markdown"_s));
    }

    void writingAnotherTitleRenamesTheNote()
    {
        Detail detail;
        detail.select(u"Not.md"_s);

        detail.title().selectAll();
        QTest::keyClicks(&detail.title(), u"Plan"_s);
        QTest::keyClick(&detail.title(), Qt::Key_Return);

        QVERIFY(detail.bucket.exists(u"Plan.md"_s));
        QVERIFY(!detail.bucket.exists(u"Not.md"_s));
        QCOMPARE(detail.title().text(), u"Plan"_s);
    }

    void aTitleThatIsTakenGoesBack()
    {
        Detail detail;
        detail.bucket.write(u"Upptagen.md"_s, "x");
        detail.select(u"Not.md"_s);

        detail.title().selectAll();
        QTest::keyClicks(&detail.title(), u"Upptagen"_s);
        QTest::keyClick(&detail.title(), Qt::Key_Return);

        QCOMPARE(detail.title().text(), u"Not"_s);
        QCOMPARE(detail.bucket.read(u"Upptagen.md"_s), QByteArray("x"));
    }
};

QTEST_MAIN(DetailViewTests)
#include "DetailViewTests.moc"
