#include "Previews/TitleField.h"

#include "Support/Window.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

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
};

QTEST_MAIN(TitleFieldTests)
#include "TitleFieldTests.moc"
