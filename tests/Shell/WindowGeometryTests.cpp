#include "Shell/WindowGeometry.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QScreen>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;
using namespace wendlore;

class WindowGeometryTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowComesBackWhereItWas()
    {
        QWidget first;
        first.move(40, 50);
        first.resize(500, 300);
        first.show();
        const auto left = WindowGeometry::fromJson(WindowGeometry::of(first).toJson());
        QVERIFY(left.has_value());

        QWidget second;
        left->applyTo(second);
        second.show();

        QCOMPARE(second.pos(), first.pos());
        QCOMPARE(second.size(), QSize(500, 300));
    }

    void manyStartsDoNotMoveIt()
    {
        WindowGeometry geometry{QRect(0, 0, 500, 300)};
        for (int start = 0; start < 5; ++start) {
            QWidget window;
            geometry.applyTo(window);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            geometry = WindowGeometry::of(window);
        }

        QCOMPARE(geometry.normal, QRect(0, 0, 500, 300));
    }

    void aMaximizedWindowRemembersItsOrdinaryPlace()
    {
        QWidget first;
        WindowGeometry{QRect(40, 50, 500, 300), true}.applyTo(first);
        first.show();
        QVERIFY(first.isMaximized());

        const WindowGeometry left = WindowGeometry::of(first);

        QVERIFY(left.isMaximized);
        QCOMPARE(left.normal.size(), QSize(500, 300));
    }

    void aWindowOutsideEveryScreenOnlyGetsItsSize()
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QWidget window;

        WindowGeometry{QRect(screen.bottomRight() + QPoint(500, 500), QSize(400, 300))}.applyTo(window);

        QVERIFY(screen.contains(window.pos()));
        QCOMPARE(window.size(), QSize(400, 300));
    }

    void aWindowLargerThanTheScreenIsMadeToFit()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget window;

        WindowGeometry{QRect(screen.topLeft() + QPoint(30, 30), screen.size() + QSize(300, 5))}.applyTo(
            window);

        QCOMPARE(window.pos(), screen.topLeft());
        QVERIFY(window.width() < screen.width() && window.height() < screen.height());
    }

    void aFirstWindowLeavesRoomForItsFrame()
    {
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        const QWidget window;

        QCOMPARE(WindowGeometry::firstSize(window, {300, 200}), QSize(300, 200));
        const QSize first = WindowGeometry::firstSize(window, screen);
        QVERIFY(first.width() < screen.width() && first.height() < screen.height());
    }

    void anythingElseIsNoGeometry_data()
    {
        QTest::addColumn<QJsonObject>("json");
        QTest::newRow("nothing") << QJsonObject();
        QTest::newRow("no size") << QJsonObject{{u"x"_s, 1}, {u"y"_s, 2}};
        QTest::newRow("negative") << QJsonObject{{u"width"_s, -5}, {u"height"_s, 10}};
        QTest::newRow("text") << QJsonObject{{u"width"_s, u"wide"_s}, {u"height"_s, u"high"_s}};
    }

    void anythingElseIsNoGeometry()
    {
        QFETCH(const QJsonObject, json);

        QVERIFY(!WindowGeometry::fromJson(json));
    }
};

QTEST_MAIN(WindowGeometryTests)
#include "WindowGeometryTests.moc"
