#include "Shell/WendloreFileWindowView.h"

#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/Colors.h"
#include "Look/Sheet.h"
#include "Previews/TitleField.h"
#include "Shell/WindowGeometry.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Support/Window.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

void rename(TitleField& title, const QString& name)
{
    title.setFocus();
    title.selectAll();
    QTest::keyClicks(&title, name);
    QTest::keyClick(&title, Qt::Key_Return);
}

} // namespace

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
        QCOMPARE(window.size(), WindowGeometry::firstSize(window, {900, 700}));
        QCOMPARE(window.minimumSize(), QSize(480, 320));
    }

    void aNoteIsRenamedInItsTitle()
    {
        const Bucket bucket({{"Plan.md", "plan\n"}});
        FakeServices services;
        WendloreFileWindowView window(services.services(), bucket.file(u"Plan.md"_s));
        showAt(window, {600, 400});
        auto* title = window.findChild<TitleField*>();
        QCOMPARE(title->text(), u"Plan"_s);

        rename(*title, u"Mål"_s);

        QCOMPARE(bucket.names(), QStringList(u"Mål.md"_s));
        QCOMPARE(bucket.read(u"Mål.md"_s), "plan\n");
        QCOMPARE(window.fileURL(), bucket.file(u"Mål.md"_s));
        QCOMPARE(window.windowTitle(), u"Mål"_s);
        QVERIFY(OpenFileWindows::shared().isOpen(bucket.file(u"Mål.md"_s)));
    }

    void aNameThatIsTakenRenamesNothing()
    {
        const Bucket bucket({{"Plan.md", "plan\n"}, {"Mål.md", "annat\n"}});
        FakeServices services;
        WendloreFileWindowView window(services.services(), bucket.file(u"Plan.md"_s));
        showAt(window, {600, 400});
        auto* title = window.findChild<TitleField*>();

        rename(*title, u"Mål"_s);

        QCOMPARE(title->text(), u"Plan"_s);
        QCOMPARE(bucket.names(), QStringList({u"Mål.md"_s, u"Plan.md"_s}));
        QCOMPARE(bucket.read(u"Mål.md"_s), "annat\n");
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
        QMenu menu(&window);
        Sheet sheet(u"Byt namn"_s, &window);
        Sheet elsewhere(u"Byt namn"_s, nullptr);
        for (QWidget* widget :
             {static_cast<QWidget*>(&menu), static_cast<QWidget*>(&sheet), static_cast<QWidget*>(&elsewhere)})
            widget->ensurePolished();
        QCOMPARE(schemeOf(menu.palette()), ColorScheme::light);
        QCOMPARE(schemeOf(sheet.palette()), ColorScheme::light);
        QCOMPARE(schemeOf(elsewhere.palette()), ColorScheme::dark);
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
