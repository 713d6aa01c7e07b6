#include "Editor/VideoPrompt.h"

#include "Editor/WebEditorController.h"

#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

struct Fixture final
{
    Fixture()
    {
        services.page->post(u"ready"_s);
        services.page->scripts.clear();
        showAt(*prompt, prompt->sizeHint());
    }

    [[nodiscard]] QLineEdit& field() const { return *prompt->findChild<QLineEdit*>(); }
    void press(const QString& text) const
    {
        for (auto* button : prompt->findChildren<QPushButton*>()) {
            if (button->text() == text)
                button->click();
        }
    }

    FakeServices services;
    AppState state{services.services()};
    QPointer<VideoPrompt> prompt = new VideoPrompt(state.editorController());
};

} // namespace

class VideoPromptTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theAddressIsSentWithoutBlanksAround()
    {
        Fixture f;
        QTest::keyClicks(&f.field(), u" \thttps://youtu.be/abc \t"_s);
        f.press(u"Infoga"_s);

        QCOMPARE(f.services.page->scripts,
                 QStringList{u"window.VaultEditor.exec(\"youtube\", \"https:\\/\\/youtu.be\\/abc\")"_s});
        QVERIFY(!f.prompt->isVisible());
    }

    void onlySpacesSendNothingAndClearTheField()
    {
        Fixture f;
        QTest::keyClicks(&f.field(), u"   "_s);

        f.press(u"Infoga"_s);

        QVERIFY(f.services.page->scripts.isEmpty());
        QVERIFY(f.field().text().isEmpty());
    }

    void cancellingSendsNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("escape") << true;
    }

    void cancellingSendsNothing()
    {
        QFETCH(const bool, byKey);
        Fixture f;
        QTest::keyClicks(&f.field(), u"https://youtu.be/abc"_s);

        if (byKey)
            QTest::keyClick(f.prompt, Qt::Key_Escape);
        else
            f.press(u"Avbryt"_s);

        QVERIFY(f.services.page->scripts.isEmpty());
        QVERIFY(!f.prompt->isVisible());
    }

    void enterInserts()
    {
        Fixture f;
        QTest::keyClicks(&f.field(), u"x"_s);

        QTest::keyClick(&f.field(), Qt::Key_Return);

        QCOMPARE(f.services.page->scripts, QStringList{u"window.VaultEditor.exec(\"youtube\", \"x\")"_s});
    }

    void itSaysWhatItWants()
    {
        Fixture f;

        QCOMPARE(f.prompt->windowTitle(), u"Infoga video"_s);
        QCOMPARE(f.field().placeholderText(), u"YouTube-URL"_s);
        QVERIFY(f.field().hasFocus());
    }
};

QTEST_MAIN(VideoPromptTests)
#include "VideoPromptTests.moc"
