#include "Previews/QuickLookStyle.h"

#include "Look/Colors.h"

#include <QTest>

using namespace wendlore;

class QuickLookStyleTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageTakesTheColoursOfTheWindow()
    {
        const Colors& light = Colors::of(ColorScheme::light);
        const Colors& dark = Colors::of(ColorScheme::dark);

        QVERIFY(quickLookStyle(light).contains("--paper:" + light.paper.name().toLatin1()));
        QVERIFY(quickLookStyle(light).contains("color-scheme:light"));
        QVERIFY(quickLookStyle(dark).contains("--text:" + dark.text.name().toLatin1()));
        QVERIFY(quickLookStyle(dark).contains("color-scheme:dark"));
    }
};

QTEST_GUILESS_MAIN(QuickLookStyleTests)
#include "QuickLookStyleTests.moc"
