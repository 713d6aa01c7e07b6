#include "Look/NoticeView.h"

#include "Support/Window.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class NoticeViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void itsPartsStandCentredBelowEachOther()
    {
        NoticeView notice(u"folder"_s, 48);
        notice.setTitle(u"Ingen bucket öppen"_s);
        notice.setMessage(u"Välj en mapp."_s);
        QPushButton* button = notice.addButton(u"Öppna bucket…"_s);
        showAt(notice, {600, 500});

        const QList<QLabel*> labels = notice.findChildren<QLabel*>();
        QCOMPARE(labels.size(), 2);
        int bottom = 0;
        for (const QWidget* part : {static_cast<QWidget*>(labels[0]), static_cast<QWidget*>(labels[1]),
                                    static_cast<QWidget*>(button)}) {
            QVERIFY(part->geometry().top() > bottom);
            QVERIFY(std::abs(part->geometry().center().x() - 300) <= 1);
            bottom = part->geometry().bottom();
        }
    }

    void aLongMessageHasRoomForAllOfItsLines()
    {
        NoticeView notice(u"folder"_s, 48);
        notice.setTitle(u"Öppen i eget fönster"_s);
        notice.setMessage(
            u"En fil redigeras i ett eget fönster. En fil kan bara ändras på ett ställe i taget."_s);
        showAt(notice, {900, 500});

        const QLabel& message = *notice.findChildren<QLabel*>().last();
        QVERIFY(message.heightForWidth(message.width()) > message.fontMetrics().height());
        QVERIFY(message.height() >= message.heightForWidth(message.width()));
    }

    void theMessageFollowsTheColorsAround()
    {
        NoticeView notice(u"folder"_s, 48);
        notice.setMessage(u"Välj en mapp."_s);
        showAt(notice, {600, 500});
        const auto* message = notice.findChildren<QLabel*>().last();
        QCOMPARE(message->palette().color(message->foregroundRole()), Colors::of(ColorScheme::light).muted);

        useProductLook(ColorScheme::dark);

        QTRY_COMPARE(message->palette().color(message->foregroundRole()),
                     Colors::of(ColorScheme::dark).muted);
        useProductLook();
    }
};

QTEST_MAIN(NoticeViewTests)
#include "NoticeViewTests.moc"
