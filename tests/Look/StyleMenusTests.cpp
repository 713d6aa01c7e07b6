#include "Look/StyleMenus.h"

#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "Support/Window.h"

#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class StyleMenusTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void menuEntriesAreRowsAndDividersAreThin()
    {
        QMenu menu;
        QAction* entry = menu.addAction(u"Ny not"_s);
        QAction* divider = menu.addSeparator();
        QAction* shortcut = menu.addAction(u"Avsluta"_s);
        shortcut->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
        menu.ensurePolished();

        QCOMPARE(menu.actionGeometry(entry).height(), metrics::rowHeight);
        QVERIFY(menu.actionGeometry(divider).height() < metrics::rowHeight / 2);
        QVERIFY(menu.sizeHint().width() > menu.fontMetrics().horizontalAdvance(u"Avsluta Ctrl+Q"_s));
    }

    void theChosenMenuEntryIsMarked()
    {
        QMenu menu;
        menu.addAction(u"Ny not"_s);
        QAction* second = menu.addAction(u"Avsluta"_s);
        menu.popup({0, 0});
        menu.setActiveAction(second);
        QVERIFY(QTest::qWaitForWindowExposed(&menu));

        const QRect row = menu.actionGeometry(second);
        QCOMPARE(pictureOf(menu).pixelColor(row.right() - 6, row.center().y()),
                 Colors::of(ColorScheme::light).selected);
    }
};

QTEST_MAIN(StyleMenusTests)
#include "StyleMenusTests.moc"
