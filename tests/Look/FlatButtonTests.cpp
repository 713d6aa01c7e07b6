#include "Look/FlatButton.h"

#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Support/Window.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// A window with a field and a button beside it, the field focused.
class Row final : public QWidget
{
public:
    Row()
        : field(new QLineEdit(this))
        , button(new IconButton(u"bold"_s, u"Fet"_s, u"Fet (⌘B)"_s, this))
    {
        auto* layout = new QHBoxLayout(this);
        layout->addWidget(field);
        layout->addWidget(button);
        showAt(*this, {300, 60});
        field->setFocus();
    }

    QLineEdit* field;
    IconButton* button;
};

} // namespace

class FlatButtonTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void aClickLeavesTheCaretWhereItWas()
    {
        Row row;
        const QSignalSpy clicked(row.button, &IconButton::clicked);

        QTest::mouseClick(row.button, Qt::LeftButton);

        QCOMPARE(clicked.count(), 1);
        QVERIFY(row.field->hasFocus());
    }

    void theKeyboardReachesAndPressesIt()
    {
        Row row;
        const QSignalSpy clicked(row.button, &IconButton::clicked);

        QTest::keyClick(row.field, Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);

        QVERIFY(row.button->hasFocus());
        QCOMPARE(clicked.count(), 1);
    }

    void focusShowsAsARingInTheAccentColor()
    {
        Row row;
        const QImage before = pictureOf(*row.button);

        QTest::keyClick(row.field, Qt::Key_Tab);
        const QImage focused = pictureOf(*row.button);

        const QColor accent = Colors::of(row.palette()).accent;
        QVERIFY(before.pixelColor(15, 1) != accent);
        QCOMPARE(focused.pixelColor(15, 1), accent);
    }

    void aCheckedButtonStandsOnAGround()
    {
        Row row;
        row.button->setCheckable(true);
        QCOMPARE(pictureOf(*row.button).pixelColor(4, 14), Colors::of(row.palette()).paper);

        row.button->setChecked(true);

        QCOMPARE(pictureOf(*row.button).pixelColor(4, 14), Colors::of(row.palette()).hover);
    }

    void theGroundFadesInUnderThePointerWhereMotionIsWanted()
    {
        useProductLook(ColorScheme::light, Motion::wanted);
        Row row;

        QTest::mouseMove(row.button, row.button->rect().center());

        QTRY_COMPARE(pictureOf(*row.button).pixelColor(4, 14), Colors::of(row.palette()).hover);
        useProductLook();
    }

    void everyButtonTellsItsNameAndHelp()
    {
        Row row;

        QCOMPARE(row.button->accessibleName(), u"Fet"_s);
        QCOMPARE(row.button->toolTip(), u"Fet (⌘B)"_s);
        QCOMPARE(row.button->size(), QSize(metrics::buttonWidth, metrics::buttonHeight));
    }

    void aLabelMakesRoomForItsSymbols()
    {
        LabelButton label(u"Brödtext"_s, Tone::muted);
        const int bare = label.sizeHint().width();

        label.setTrailingSymbol(u"chevron.down"_s);
        const int trailing = label.sizeHint().width();
        label.setLeadingSymbol(u"archivebox"_s, metrics::icon);

        QVERIFY(trailing >= bare + metrics::disclosure);
        QVERIFY(label.sizeHint().width() >= trailing + metrics::icon);
    }

    void aLabelThatHasItsWidthIsNotCut()
    {
        QStringList cut;
        for (const QString& text :
             {u"Länka…"_s, u"Brödtext"_s, u"Rubrik 1"_s, u"Klar"_s, u"Åäö"_s, u"ff"_s}) {
            LabelButton label(text, Tone::muted);
            label.setFont(sized(label.font(), metrics::textSize));
            const int room = label.sizeHint().width() - label.minimumSizeHint().width();
            if (label.fontMetrics().elidedText(text, Qt::ElideRight, room) != text)
                cut.append(text);
        }

        QCOMPARE(cut, QStringList());
    }

    void aLongLabelIsCutWithAnEllipsisRatherThanGrowing()
    {
        LabelButton label(u"En bucket med ett mycket långt namn som inte ryms"_s, Tone::strong);
        showAt(label, {120, 28});

        QCOMPARE(label.width(), 120);
        QVERIFY(label.minimumSizeHint().width() < 60);
    }
};

QTEST_MAIN(FlatButtonTests)
#include "FlatButtonTests.moc"
