#include "Look/SegmentedPicker.h"

#include "Support/Window.h"

#include <QAccessible>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SegmentedPickerTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void init()
    {
        m_picker = std::make_unique<SegmentedPicker>(u"Typ"_s);
        m_picker->add(u"Not"_s);
        m_picker->add(u"URL"_s);
        showAt(*m_picker, m_picker->sizeHint());
    }

    void theFirstAlternativeIsChosenAtFirst() { QCOMPARE(m_picker->chosen(), 0); }

    void aClickChooses()
    {
        const QSignalSpy changed(m_picker.get(), &SegmentedPicker::chosenChanged);

        QTest::mouseClick(segments().at(1), Qt::LeftButton, {}, segments().at(1)->rect().bottomRight());

        QCOMPARE(m_picker->chosen(), 1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().first().toInt(), 1);
    }

    void arrowKeysChoose()
    {
        segments().at(0)->setFocus();

        QTest::keyClick(segments().at(0), Qt::Key_Right);

        QCOMPARE(m_picker->chosen(), 1);
        QVERIFY(segments().at(1)->hasFocus());
    }

    void tabGoesToTheChosenOne()
    {
        QCOMPARE(tabStops(), QList<QRadioButton*>{segments().at(0)});

        m_picker->choose(1);

        QCOMPARE(tabStops(), QList<QRadioButton*>{segments().at(1)});
    }

    void screenReadersHearAlternatives()
    {
        QAccessibleInterface* first = QAccessible::queryAccessibleInterface(segments().at(0));

        QCOMPARE(first->role(), QAccessible::RadioButton);
        QCOMPARE(first->text(QAccessible::Name), u"Not"_s);
        QVERIFY(first->state().checked);
    }

    void theChosenOneStandsOut()
    {
        const QImage before = pictureOf(*segments().at(1));

        m_picker->choose(1);

        QVERIFY(pictureOf(*segments().at(1)) != before);
    }

private:
    [[nodiscard]] QList<QRadioButton*> segments() const { return m_picker->findChildren<QRadioButton*>(); }
    [[nodiscard]] QList<QRadioButton*> tabStops() const
    {
        QList<QRadioButton*> stops = segments();
        stops.removeIf([](const QRadioButton* one) { return (one->focusPolicy() & Qt::TabFocus) == 0; });
        return stops;
    }

    std::unique_ptr<SegmentedPicker> m_picker;
};

QTEST_MAIN(SegmentedPickerTests)
#include "SegmentedPickerTests.moc"
