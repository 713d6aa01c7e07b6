#include "Look/ButtonRow.h"

#include "Look/FlatButton.h"
#include "Support/Window.h"

#include <QAction>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A row of six buttons, a separator after the second.
class Row final
{
public:
    Row()
    {
        for (int i = 1; i <= 6; ++i) {
            const QString name = u"K%1"_s.arg(i);
            auto* button = new IconButton(u"bold"_s, name, {}, &row);
            row.add(button, new QAction(name, button));
            if (i == 2)
                row.addSeparator();
        }
        showAt(row, row.sizeHint());
    }

    [[nodiscard]] QStringList shown() const
    {
        QMap<int, QString> byPlace;
        for (const IconButton* button : row.findChildren<IconButton*>()) {
            if (button->isVisible())
                byPlace.insert(button->x(), button->accessibleName());
        }
        return byPlace.values();
    }
    [[nodiscard]] QStringList offered() const
    {
        QStringList texts;
        for (const QAction* action : buttonNamed<IconButton>(row, u"Fler kommandon"_s)->menu()->actions())
            texts.append(action->isSeparator() ? u"|"_s : action->text());
        return texts;
    }

    ButtonRow row;
};

} // namespace

class ButtonRowTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void withRoomEveryControlIsShown()
    {
        const Row row;

        QCOMPARE(row.shown(), QStringList({u"K1"_s, u"K2"_s, u"K3"_s, u"K4"_s, u"K5"_s, u"K6"_s}));
    }

    void withoutRoomTheLastOnesGoIntoTheMenu()
    {
        Row row;

        row.row.resize(row.row.width() - 1, row.row.height());
        QCOMPARE(row.shown(), QStringList({u"K1"_s, u"K2"_s, u"K3"_s, u"K4"_s, u"Fler kommandon"_s}));
        QCOMPARE(row.offered(), QStringList({u"K5"_s, u"K6"_s}));

        row.row.resize(row.row.minimumSizeHint());
        QCOMPARE(row.shown(), QStringList{u"Fler kommandon"_s});
        QCOMPARE(row.offered(), QStringList({u"K1"_s, u"K2"_s, u"|"_s, u"K3"_s, u"K4"_s, u"K5"_s, u"K6"_s}));
    }

    void withRoomAgainTheyComeBack()
    {
        Row row;
        row.row.resize(row.row.minimumSizeHint());

        row.row.resize(row.row.sizeHint());

        QCOMPARE(row.shown().size(), 6);
        QVERIFY(row.offered().isEmpty());
    }

    void nothingIsCutOff()
    {
        Row row;
        for (int width = row.row.sizeHint().width(); width >= row.row.minimumSizeHint().width(); --width) {
            row.row.resize(width, row.row.height());
            for (const IconButton* button : row.row.findChildren<IconButton*>())
                QVERIFY2(!button->isVisible() || button->geometry().right() < width,
                         qPrintable(u"%1 at %2"_s.arg(button->accessibleName()).arg(width)));
        }
    }
};

QTEST_MAIN(ButtonRowTests)
#include "ButtonRowTests.moc"
