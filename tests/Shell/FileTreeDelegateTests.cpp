#include "Shell/FileTreeDelegate.h"

#include "Shell/FileTreeModel.h"
#include "Shell/FileTreeView.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class FileTreeDelegateTests final : public QObject
{
    Q_OBJECT

private:
    /// The first column of `row` that something is drawn in, -1 when the row is empty.
    static int firstInk(const QImage& picture, const QRect& row)
    {
        const QColor ground = picture.pixelColor(row.left() + 1, row.top() + 1);
        for (int x = row.left() + 1; x < row.right(); ++x) {
            for (int y = row.top() + 4; y < row.bottom() - 4; ++y) {
                if (picture.pixelColor(x, y) != ground)
                    return x;
            }
        }
        return -1;
    }

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void symbolsStandInTheirColumns()
    {
        Bucket bucket({{"Arbete/Index.md", ""}, {"Arbete/Bilagor/a.md", ""}, {"Idé.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeView view(state);
        showAt(view, {240, 200});
        const auto* model = static_cast<FileTreeModel*>(view.model());
        const QModelIndex folder = model->index(0, 0);
        view.setExpanded(folder, true);
        const QImage picture = pictureOf(view);
        const auto inkOf = [&](const QModelIndex& index) {
            return firstInk(picture, view.visualRect(index));
        };

        const int disclosure = 2 * metrics::inset;
        const int symbol = disclosure + metrics::disclosure + metrics::gap;
        const int nested = disclosure + metrics::indent;
        const auto isWithin = [](int ink, int start) { return ink >= start && ink <= start + 5; };
        QVERIFY(isWithin(inkOf(folder), disclosure));
        QVERIFY(isWithin(inkOf(model->index(1, 0)), symbol));
        QVERIFY(isWithin(inkOf(model->index(1, 0, folder)), nested));
        QVERIFY(isWithin(inkOf(model->index(0, 0, folder)), nested + disclosure - symbol));
    }

    void theSelectedRowStandsOnARoundedGround()
    {
        Bucket bucket({{"A.md", ""}, {"B.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        state.setSelectedFile(bucket.file(u"A.md"_s));
        FileTreeView view(state);
        showAt(view, {240, 200});

        const QImage picture = pictureOf(view);
        const QRect row = view.visualRect(view.model()->index(0, 0));
        const QColor selected = Colors::of(ColorScheme::light).selected;

        QCOMPARE(picture.pixelColor(200, row.center().y()), selected);
        QVERIFY(picture.pixelColor(metrics::inset - 1, row.center().y()) != selected);
        QVERIFY(picture.pixelColor(metrics::inset, row.top()) != selected);
    }

    void aLongNameIsCut()
    {
        Bucket bucket({{"Ett mycket långt namn som aldrig kan rymmas i ett så smalt sidofält.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeView view(state);
        showAt(view, {180, 100});

        const QImage picture = pictureOf(view);
        const QRect row = view.visualRect(view.model()->index(0, 0));

        QCOMPARE(
            firstInk(picture, QRect(180 - 2 * metrics::inset + 1, row.top(), metrics::inset, row.height())),
            -1);
    }

    void theFolderThatTakesNewNotesShowsItselfOpen()
    {
        Bucket bucket({{"Arbete/Index.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeView view(state);
        showAt(view, {240, 100});
        const auto holdsSymbol = [&view](const QString& name) {
            const QColor muted = Colors::of(ColorScheme::light).muted;
            const QImage symbol = symbolPixmap(name, muted, metrics::icon, 1).toImage();
            const QRect row = view.visualRect(view.model()->index(0, 0));
            const QPoint place(2 * metrics::inset + metrics::disclosure + metrics::gap,
                               row.top() + (row.height() - metrics::icon) / 2);
            QImage drawn(symbol.size(), QImage::Format_RGB32);
            drawn.fill(view.palette().color(QPalette::Window));
            QPainter(&drawn).drawImage(0, 0, symbol);
            return pictureOf(view).copy(QRect(place, symbol.size())).convertToFormat(drawn.format()) == drawn;
        };
        QVERIFY(holdsSymbol(u"folder"_s));

        state.setSelectedFolder(bucket.folder(u"Arbete"_s));
        QVERIFY(holdsSymbol(u"folder.fill"_s));
    }

    void theDisclosureOfADeeperFolderLiesDeeper()
    {
        Bucket bucket({{"A/B/C/D.md", ""}});
        FakeServices services;
        AppState state(services.services());
        state.switchVault(bucket.root());
        FileTreeView view(state);
        const FileTreeDelegate delegate(&view);
        const QModelIndex outer = view.model()->index(0, 0, view.model()->index(0, 0));
        const QModelIndex inner = view.model()->index(0, 0, outer);
        const QRect row(0, 0, 240, metrics::rowHeight);

        QCOMPARE(delegate.disclosureArea(inner, row).left() - delegate.disclosureArea(outer, row).left(),
                 metrics::indent);
    }
};

QTEST_MAIN(FileTreeDelegateTests)
#include "FileTreeDelegateTests.moc"
