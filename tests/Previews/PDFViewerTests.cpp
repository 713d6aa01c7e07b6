#include "Previews/PDFViewer.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/SymbolView.h"
#include "Previews/PdfFindBar.h"
#include "Previews/PDFKitView.h"
#include "Previews/PdfPasswordForm.h"
#include "State/AppState.h"
#include "Support/PdfFiles.h"
#include "Support/Programs.h"
#include "Support/Window.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

class Viewed final
{
public:
    explicit Viewed(const QByteArray& bytes = pdfOf({u"Ett möte"_s, u"Två"_s, u"Tredje mötet"_s}))
        : state(services.services())
    {
        bucket.write(u"A.pdf"_s, bytes);
        show(u"A.pdf"_s);
    }

    void show(const QString& name)
    {
        view = std::make_unique<PDFViewer>(state, bucket.file(name));
        showAt(*view, {800, 600});
        finish();
    }
    void finish() { services.scheduler.finishBackgroundWork(); }
    /// The place in the view of a link of the first page that begins `top` points from the top left.
    [[nodiscard]] QPoint placeOfLink(int top) const
    {
        const double scale = view->pages()->scale();
        return (QPointF(PdfLayout::margin, PdfLayout::margin) + QPointF(150, top + 25) * scale).toPoint();
    }
    void clickLink(int top)
    {
        QTest::mouseClick(view->pages()->viewport(), Qt::LeftButton, {}, placeOfLink(top));
        finish();
    }
    [[nodiscard]] bool says(const QString& text) const
    {
        for (const QLabel* label : view->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == text)
                return true;
        }
        return false;
    }
    /// The dark points in the picture of the first page.
    [[nodiscard]] int ink() const
    {
        const QImage picture = pictureOf(*view);
        int dark = 0;
        for (int y = 20; y < 200; ++y) {
            for (int x = 20; x < 500; ++x)
                dark += picture.pixelColor(x, y).lightness() < 90;
        }
        return dark;
    }

    Bucket bucket;
    FakeServices services;
    AppState state;
    std::unique_ptr<PDFViewer> view;
};

} // namespace

class PDFViewerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void thePagesAreShownAsWideAsTheView()
    {
        Viewed viewed;
        QVERIFY(viewed.view->pages());
        QCOMPARE(viewed.services.coordinator.downloads, QList{viewed.bucket.file(u"A.pdf"_s)});
        QCOMPARE(viewed.view->pages()->pageCount(), 3);
        QVERIFY(viewed.says(u"Sida 1 av 3"_s));
        QVERIFY(viewed.ink() > 100);
        QCOMPARE(viewed.view->pages()->horizontalScrollBar()->maximum(), 0);
        const double before = viewed.view->pages()->scale();

        viewed.view->resize(1200, 600);

        QTRY_VERIFY(viewed.view->pages()->scale() > before * 1.3);
        QCOMPARE(viewed.view->pages()->horizontalScrollBar()->maximum(), 0);
    }

    void keysGoThroughThePages()
    {
        Viewed viewed;
        PDFKitView& pages = *viewed.view->pages();
        const auto place = [&pages] { return pages.verticalScrollBar()->value(); };

        QTest::keyClick(&pages, Qt::Key_Space);
        QCOMPARE(place(), pages.verticalScrollBar()->pageStep());
        QTest::keyClick(&pages, Qt::Key_Space, Qt::ShiftModifier);
        QCOMPARE(place(), 0);
        QTest::keyClick(&pages, Qt::Key_PageDown);
        QCOMPARE(place(), pages.verticalScrollBar()->pageStep());
        QTest::keyClick(&pages, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(place(), pages.verticalScrollBar()->maximum());
        QTest::keyClick(&pages, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(place(), 0);
    }

    void aDrawingIsShownPixelForPixel()
    {
        const QByteArray bytes = pdfOf({u"Ett möte"_s});
        Viewed viewed(bytes);
        PDFKitView& pages = *viewed.view->pages();
        PdfDocument document;
        QCOMPARE(document.open(bytes, {}), PdfState::ready);
        const QSize size = (document.pageSizes().first() * pages.scale()).toSize();

        const QRect upperPart(20, 20, 700, 300);
        const QImage seen = pictureOf(*pages.viewport()).convertToFormat(QImage::Format_RGB32);

        const QImage page = document.render(0, size, {QPoint(), size});
        const int margin = int(PdfLayout::margin);
        QCOMPARE(seen.copy(upperPart.translated(margin, margin)), page.copy(upperPart));
    }

    void aWidePageFarBehindHasItsPlaceToo()
    {
        Viewed viewed(pdfOfSizes(QList<QSize>(200, {300, 400}) + QList<QSize>{{900, 400}}));
        PDFKitView& pages = *viewed.view->pages();
        QCOMPARE(pages.pageCount(), 201);
        QCOMPARE(pages.horizontalScrollBar()->maximum(), 0);
        const double scaleOfTheWidest = (pages.viewport()->width() - 2 * PdfLayout::margin) / 900;
        QVERIFY(std::abs(pages.scale() - scaleOfTheWidest) < 0.01);
    }

    void scrollingTellsThePage()
    {
        Viewed viewed;
        viewed.view->pages()->showPage(1);
        viewed.finish();
        QVERIFY(viewed.says(u"Sida 2 av 3"_s));
        QTest::keyClick(viewed.view->pages(), Qt::Key_End);
        QVERIFY(viewed.says(u"Sida 3 av 3"_s));
    }

    void zoomingKeepsThePlaceAndStopsFollowingTheWidth()
    {
        Viewed viewed;
        PDFKitView& pages = *viewed.view->pages();
        pages.showPage(1);
        const double fitted = pages.scale();

        QTest::keyClick(&pages, Qt::Key_Plus, Qt::ControlModifier);

        QVERIFY(pages.scale() > fitted);
        QCOMPARE(pages.currentPage(), 1);
        const double zoomed = pages.scale();
        viewed.view->resize(1000, 600);
        QTRY_COMPARE(pages.width(), 1000);
        QCOMPARE(pages.scale(), zoomed);
        QTest::keyClick(&pages, Qt::Key_0, Qt::ControlModifier);
        QVERIFY(pages.scale() != zoomed);
    }

    void aVeryLargeZoomStaysWithinMemory()
    {
        Viewed viewed;
        for (int press = 0; press < 40; ++press)
            viewed.view->pages()->zoomIn();
        viewed.finish();
        QCOMPARE(viewed.view->pages()->scale(), PDFKitView::maximumScale);
        QVERIFY(!pictureOf(*viewed.view).isNull());
    }

    void whatCannotBeOpenedGivesTheMessage()
    {
        Viewed viewed("hej");
        QVERIFY(viewed.says(u"Kunde inte ladda PDF:en"_s));
        QCOMPARE(viewed.view->findChild<SymbolView*>()->name(), u"exclamationmark.triangle"_s);
        viewed.show(u"Borta.pdf"_s);
        QVERIFY(viewed.says(u"Kunde inte ladda PDF:en"_s));
    }

    void aFileThatCannotBeReadAsBytesIsOpenedWhereItLies()
    {
        Viewed viewed;
        viewed.services.coordinator.unreadable.append(viewed.bucket.file(u"A.pdf"_s));
        viewed.show(u"A.pdf"_s);
        QVERIFY(viewed.view->pages());
        QCOMPARE(viewed.view->pages()->pageCount(), 3);
    }

    void aLockedFileAsksForItsPassword()
    {
        Viewed viewed;
        runProgram(u"qpdf"_s, {u"--encrypt"_s, u"sesam"_s, u"x"_s, u"256"_s, u"--"_s,
                               viewed.bucket.file(u"A.pdf"_s).path(), viewed.bucket.file(u"B.pdf"_s).path()});
        viewed.show(u"B.pdf"_s);
        QVERIFY(viewed.says(u"PDF:en är låst med ett lösenord"_s));
        QVERIFY(!viewed.view->pages());
        auto* field = viewed.view->findChild<QLineEdit*>();

        field->setText(u"fel"_s);
        QTest::keyClick(field, Qt::Key_Return);
        viewed.finish();
        QVERIFY(viewed.says(u"Fel lösenord"_s));
        field->setText(u"sesam"_s);
        viewed.view->findChild<PdfPasswordForm*>()->findChild<QPushButton*>()->click();
        viewed.finish();

        QVERIFY(viewed.view->pages());
    }

    void theSearchFindsAndStepsThroughMatches()
    {
        Viewed viewed;
        QTest::keyClick(viewed.view.get(), Qt::Key_F, Qt::ControlModifier);
        auto* bar = viewed.view->findChild<PdfFindBar*>();
        QVERIFY(bar->isVisible());
        auto* field = bar->findChild<QLineEdit*>();

        field->setText(u"MÖTE"_s);
        viewed.finish();
        QVERIFY(viewed.says(u"1 av 2"_s));
        QTest::keyClick(field, Qt::Key_Return);
        QVERIFY(viewed.says(u"2 av 2"_s));
        QCOMPARE(viewed.view->pages()->currentPage(), 2);
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        QVERIFY(viewed.says(u"1 av 2"_s));
        field->setText(u"saknas"_s);
        viewed.finish();
        QVERIFY(viewed.says(u"Inga träffar"_s));
        QTest::keyClick(field, Qt::Key_Escape);

        QVERIFY(!bar->isVisible());
    }

    void textIsSelectedByDraggingAndCopied()
    {
        Viewed viewed;
        QWidget* paper = viewed.view->pages()->viewport();

        QTest::mousePress(paper, Qt::LeftButton, {}, {30, 90});
        QTest::mouseMove(paper, {600, 90});
        viewed.finish();
        QTest::mouseRelease(paper, Qt::LeftButton, {}, {600, 90});
        QTest::keyClick(viewed.view->pages(), Qt::Key_C, Qt::ControlModifier);

        QVERIFY2(QApplication::clipboard()->text().contains(u"tt möt"_s),
                 qPrintable(viewed.view->pages()->selectedText()));
    }

    void everythingIsSelectedByKey()
    {
        Viewed viewed;
        QTest::keyClick(viewed.view->pages(), Qt::Key_A, Qt::ControlModifier);
        viewed.finish();
        QVERIFY(viewed.view->pages()->selectedText().contains(u"Två"_s));
        QVERIFY(viewed.view->pages()->selectedText().contains(u"Tredje möte"_s));
    }

    void aLinkWithinTheDocumentLeadsToItsPlace()
    {
        Viewed viewed(pdfWithLinks("https://exempel.se/"));
        PDFKitView& pages = *viewed.view->pages();

        viewed.clickLink(292);

        QCOMPARE(pages.currentPage(), 1);
        QVERIFY(viewed.services.workspace.addresses.isEmpty());
    }

    void aLinkOutOfTheDocumentIsOpenedWhereItBelongs_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QUrl>("opened");
        QTest::addColumn<bool>("opensFile");
        QTest::newRow("the web") << QByteArray("https://exempel.se/a?b=c")
                                 << QUrl(u"https://exempel.se/a?b=c"_s) << false;
        QTest::newRow("mail") << QByteArray("mailto:anna@exempel.se") << QUrl(u"mailto:anna@exempel.se"_s)
                              << false;
        QTest::newRow("a file beside") << QByteArray("B.md") << QUrl() << true;
        QTest::newRow("a program") << QByteArray("ssh:exempel.se") << QUrl() << false;
        QTest::newRow("script") << QByteArray("javascript:alert\\(1\\)") << QUrl() << false;
    }

    void aLinkOutOfTheDocumentIsOpenedWhereItBelongs()
    {
        QFETCH(QByteArray, address);
        QFETCH(QUrl, opened);
        QFETCH(bool, opensFile);
        Viewed viewed(pdfWithLinks(address));
        viewed.bucket.write(u"B.md"_s, "hej");
        viewed.state.addVault(viewed.bucket.root());

        viewed.clickLink(92);
        QCoreApplication::processEvents();

        QCOMPARE(viewed.services.workspace.addresses, opened.isEmpty() ? QList<QUrl>() : QList{opened});
        QCOMPARE(viewed.state.selectedFile() == viewed.bucket.file(u"B.md"_s), opensFile);
    }

    void thePointerShowsALink()
    {
        Viewed viewed(pdfWithLinks("https://exempel.se/"));
        QWidget* paper = viewed.view->pages()->viewport();
        QTest::mouseMove(paper, viewed.placeOfLink(92));
        QTRY_COMPARE(paper->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(paper->toolTip(), u"https://exempel.se/"_s);
        QTest::mouseMove(paper, {5, 5});
        QTRY_COMPARE(paper->cursor().shape(), Qt::IBeamCursor);
    }

    void thePagesOfAViewerThatIsGoneAreDropped()
    {
        Viewed viewed;
        viewed.view = std::make_unique<PDFViewer>(viewed.state, viewed.bucket.file(u"A.pdf"_s));
        viewed.view.reset();
        viewed.finish();
        QCOMPARE(viewed.services.scheduler.pendingBackgroundWork(), 0);
    }
};

QTEST_MAIN(PDFViewerTests)
#include "PDFViewerTests.moc"
