#include "Shell/SidebarFooter.h"

#include "Fakes/FakeDesktop.h"
#include "Look/FlatButton.h"
#include "Support/Window.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class SidebarFooterTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void showsVersionAndBuild()
    {
        FakeWorkspace workspace;
        SidebarFooter footer(workspace);

        const QRegularExpression stamp(u"^\\d+\\.\\d+\\.\\d+ · \\d+$"_s);
        QStringList names;
        for (const auto* child : footer.findChildren<QWidget*>())
            names.append(child->accessibleName());

        QCOMPARE(names.filter(stamp).size(), 1);
        QVERIFY(names.contains(u"Rapportera fel & önskemål"_s));
        QCOMPARE(footer.findChild<LabelButton*>()->leadingSymbol(), u"exclamationmark.bubble"_s);
    }
};

QTEST_MAIN(SidebarFooterTests)
#include "SidebarFooterTests.moc"
