#include "Previews/TitleField.h"

#include "Look/Metrics.h"
#include "Support/Window.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The last column of `area` in which something dark is drawn.
int lastInk(QWidget& widget, const QRect& area)
{
    const QImage picture = pictureOf(widget);
    for (int x = area.right(); x >= area.left(); --x) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            if (picture.pixelColor(x, y).lightness() < 128)
                return x;
        }
    }
    return -1;
}

} // namespace

class TitleFieldTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void enterTakesTheNewTitleOver()
    {
        TitleField field;
        field.setTitle(u"Gammal"_s);
        const QSignalSpy renamed(&field, &TitleField::renamed);

        field.selectAll();
        QTest::keyClicks(&field, u"Ny"_s);
        QTest::keyClick(&field, Qt::Key_Return);

        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.first().first().toString(), u"Ny"_s);
    }

    void escapeBringsTheOldTitleBack()
    {
        TitleField field;
        field.setTitle(u"Gammal"_s);
        const QSignalSpy renamed(&field, &TitleField::renamed);

        field.selectAll();
        QTest::keyClicks(&field, u"Ny"_s);
        QTest::keyClick(&field, Qt::Key_Escape);

        QCOMPARE(field.text(), u"Gammal"_s);
        QCOMPARE(renamed.count(), 0);
    }

    void anUnchangedTitleRenamesNothing()
    {
        TitleField field;
        field.setTitle(u"Gammal"_s);
        const QSignalSpy renamed(&field, &TitleField::renamed);

        QTest::keyClick(&field, Qt::Key_Return);

        QCOMPARE(renamed.count(), 0);
    }

    void itIsAsWideAsItsTitle()
    {
        TitleField field;
        field.setTitle(u"Kort"_s);
        const int narrow = field.sizeHint().width();

        field.setTitle(u"En betydligt längre titel"_s);

        QVERIFY(field.sizeHint().width() > narrow);
    }

    void aTitleWithoutRoomEndsInAnEllipsisUntilItIsEdited()
    {
        TitleField field;
        field.setTitle(u"HHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHH"_s);
        showAt(field, {120, metrics::buttonHeight});
        const QRect upper(0, 0, 120, metrics::buttonHeight / 2);
        const QRect lower(0, metrics::buttonHeight / 2, 120, metrics::buttonHeight / 2);

        field.setFocus();
        QCOMPARE(lastInk(field, upper), lastInk(field, lower));
        field.clearFocus();

        QVERIFY(lastInk(field, upper) < lastInk(field, lower)); // dots stand on the line
        QVERIFY(lastInk(field, lower) < 120 - metrics::inset);
    }
};

QTEST_MAIN(TitleFieldTests)
#include "TitleFieldTests.moc"
