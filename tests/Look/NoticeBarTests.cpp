#include "Look/NoticeBar.h"

#include "Support/Window.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace wendlore;

class NoticeBarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itIsThereOnceThereIsSomethingToSay()
    {
        QWidget window;
        NoticeBar bar(u"exclamationmark.triangle"_s, &window);
        showAt(window, {500, 200});
        QVERIFY(bar.isHidden());

        bar.tell(u"Titel"_s, u"<b>Text</b> som den är"_s);

        QVERIFY(bar.isVisible());
        QStringList shown;
        for (const QLabel* label : bar.findChildren<QLabel*>()) {
            QCOMPARE(label->textFormat(), Qt::PlainText);
            shown.append(label->text());
        }
        QCOMPARE(shown, QStringList({u"Titel"_s, u"<b>Text</b> som den är"_s}));
        QCOMPARE(bar.accessibleName(), u"Titel"_s);
    }

    void itsButtonsAreReachedByTabAndByAClick()
    {
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* text = new QLineEdit(&window);
        auto* bar = new NoticeBar(u"exclamationmark.triangle"_s, &window);
        layout->addWidget(text);
        layout->addWidget(bar);
        showAt(window, {500, 200});
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        text->setFocus();
        QPushButton* button = bar->addButton(u"OK"_s);
        bar->tell(u"Titel"_s, u"Text"_s);
        QTRY_VERIFY(button->isVisible());
        int presses = 0;
        connect(button, &QPushButton::clicked, this, [&presses] { ++presses; });

        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(text->hasFocus());
        QTest::keyClick(text, Qt::Key_Tab);
        QVERIFY(button->hasFocus());
        QTest::keyClick(button, Qt::Key_Space);

        QCOMPARE(presses, 2);
    }

    void theAnswersToAnotherQuestionGo()
    {
        NoticeBar bar(u"exclamationmark.triangle"_s);
        const QPointer<QPushButton> old = bar.addButton(u"Ja"_s);
        connect(old, &QPushButton::clicked, &bar, &NoticeBar::removeButtons);
        showAt(bar, {500, 60});

        old->click();
        bar.addButton(u"Nej"_s);

        QVERIFY(!old || old->isHidden());
        QTRY_VERIFY(!old);
        QCOMPARE(bar.findChildren<QPushButton*>().size(), 1);
    }
};

QTEST_MAIN(NoticeBarTests)
#include "NoticeBarTests.moc"
