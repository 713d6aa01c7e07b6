#include "Shell/WendloreFileWindowView.h"

#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Colors.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Support/Window.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

class WendloreFileWindowViewTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(ColorScheme::dark); }

    void withoutAFileItSaysSoAndRegistersNothing()
    {
        FakeServices services;
        WendloreFileWindowView window(services.services(), std::nullopt);

        showAt(window, {500, 400});

        QCOMPARE(window.findChild<QLabel*>()->text(), u"Filen kunde inte öppnas"_s);
        QCOMPARE(window.windowTitle().remove(u"[*]"_s), QString());
        QCOMPARE(window.windowFilePath(), u"/"_s);
        QVERIFY(OpenFileWindows::shared().open().empty());
    }

    void itsTitleIsTheFilesNameWithoutExtension()
    {
        const Bucket bucket({{"Möte.md", ""}});
        FakeServices services;
        const WendloreFileWindowView window(services.services(), bucket.file(u"Möte.md"_s));

        QCOMPARE(window.windowTitle(), u"Möte"_s);
        QCOMPARE(window.windowFilePath(), bucket.file(u"Möte.md"_s).path());
        QCOMPARE(window.size(), QSize(900, 700));
        QCOMPARE(window.minimumSize(), QSize(480, 320));
    }

    void itStaysLightInADarkProgram()
    {
        const Bucket bucket({{"A.md", ""}});
        FakeServices services;
        WendloreFileWindowView window(services.services(), bucket.file(u"A.md"_s));
        showAt(window, {500, 400});

        QApplication::setPalette(Colors::of(ColorScheme::dark).palette());

        QCOMPARE(schemeOf(QApplication::palette()), ColorScheme::dark);
        QCOMPARE(schemeOf(window.palette()), ColorScheme::light);
        QCOMPARE(schemeOf(window.editor()->palette()), ColorScheme::light);
    }

    void itIsRegisteredWhileItIsThere()
    {
        const Bucket bucket({{"A.md", ""}});
        const FileURL file = bucket.file(u"A.md"_s);
        FakeServices services;
        {
            WendloreFileWindowView window(services.services(), file);
            QVERIFY(!OpenFileWindows::shared().isOpen(file));
            showAt(window, {500, 400});
            QVERIFY(OpenFileWindows::shared().isOpen(file));
        }

        QVERIFY(OpenFileWindows::shared().open().empty());
    }

    void itsStateRecordsAndKeepsTheSelection()
    {
        const Bucket bucket({{"A.md", ""}, {"B.md", ""}});
        FakeServices services;
        {
            AppState state(services.services());
            state.addVault(bucket.root());
            state.setSelectedFile(bucket.file(u"B.md"_s));
        }
        WendloreFileWindowView window(services.services(), bucket.file(u"A.md"_s));

        showAt(window, {500, 400});

        AppState& state = *window.windowState();
        QCOMPARE(state.selectedFile(), bucket.file(u"A.md"_s));
        QVERIFY(state.history().canGoBack());
        QCOMPARE(state.loadUIStates().value(bucket.root().path()).selectedFilePath,
                 bucket.file(u"A.md"_s).path());
    }
};

QTEST_MAIN(WendloreFileWindowViewTests)
#include "WendloreFileWindowViewTests.moc"
