#include "Shell/SearchField.h"

#include "Look/FlatButton.h"
#include "Support/Window.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SearchFieldTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theClearButtonIsThereWhileThereIsText()
    {
        SearchField field;
        showAt(field, {200, 30});
        auto* clear = buttonNamed<IconButton>(field, u"Rensa sökningen"_s);
        QCOMPARE(clear->symbol(), u"xmark.circle.fill"_s);
        QVERIFY(!clear->isVisible());

        field.setText(u"anna"_s);
        QVERIFY(clear->isVisible());
        QTest::mouseClick(clear, Qt::LeftButton);

        QVERIFY(field.text().isEmpty());
        QVERIFY(!clear->isVisible());
    }

    void itShowsAMagnifyingGlassBeforeTheText()
    {
        SearchField field;
        showAt(field, {200, 30});
        const QImage empty = pictureOf(field).copy(0, 4, 24, 22);

        QVERIFY(std::any_of(empty.constBits(), empty.constBits() + empty.sizeInBytes(),
                            [](uchar byte) { return byte < 160; }));
        QVERIFY(field.textMargins().left() >= 16);
    }

    void escapeAndDownLeaveTheField()
    {
        SearchField field;
        const QSignalSpy ends(&field, &SearchField::endRequested);
        const QSignalSpy downs(&field, &SearchField::resultsRequested);

        QTest::keyClick(&field, Qt::Key_Escape);
        QTest::keyClick(&field, Qt::Key_Down);
        QTest::keyClicks(&field, u"ab"_s);

        QCOMPARE(ends.count(), 1);
        QCOMPARE(downs.count(), 1);
        QCOMPARE(field.text(), u"ab"_s);
    }
};

QTEST_MAIN(SearchFieldTests)
#include "SearchFieldTests.moc"
