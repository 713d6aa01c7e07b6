#include "Shell/RenamePrompt.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "State/AppState.h"
#include "Support/Window.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

/// The prompt on screen for one item of a bucket.
class Prompt final
{
public:
    explicit Prompt(const QString& path)
        : state(services.services())
    {
        state.switchVault(bucket.root());
        prompt = new RenamePrompt(state, bucket.file(path), &window);
        window.show();
        prompt->open();
        QApplication::setActiveWindow(prompt);
    }

    [[nodiscard]] QLineEdit& field() const { return *prompt->findChild<QLineEdit*>(); }
    void click(const QString& text) const
    {
        for (auto* button : prompt->findChildren<QPushButton*>()) {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    Bucket bucket{{"Plan.md", "text"}, {"Bild.png", ""}};
    FakeServices services;
    AppState state;
    QWidget window;
    QPointer<RenamePrompt> prompt;
};

} // namespace

class RenamePromptTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void theExtensionIsNotOffered()
    {
        const Prompt prompt(u"Plan.md"_s);

        QCOMPARE(prompt.prompt->windowTitle(), u"Byt namn"_s);
        QCOMPARE(prompt.field().text(), u"Plan"_s);
        QCOMPARE(prompt.field().selectedText(), u"Plan"_s);
        QCOMPARE(prompt.field().placeholderText(), u"Nytt namn"_s);
    }

    void savingKeepsTheExtension()
    {
        const Prompt prompt(u"Plan.md"_s);

        prompt.field().setText(u"Mål"_s);
        prompt.click(u"Spara"_s);

        QCOMPARE(prompt.bucket.read(u"Mål.md"_s), QByteArray("text"));
        QVERIFY(!prompt.bucket.exists(u"Plan.md"_s));
        QTRY_VERIFY(!prompt.prompt);
    }

    void enterSaves()
    {
        const Prompt prompt(u"Bild.png"_s);

        QTest::keyClicks(&prompt.field(), u"Skiss"_s);
        QTest::keyClick(&prompt.field(), Qt::Key_Return);

        QVERIFY(prompt.bucket.exists(u"Skiss.png"_s));
    }

    void cancellingChangesNothing()
    {
        const Prompt prompt(u"Plan.md"_s);

        prompt.field().setText(u"Mål"_s);
        prompt.click(u"Avbryt"_s);

        QVERIFY(prompt.bucket.exists(u"Plan.md"_s));
        QTRY_VERIFY(!prompt.prompt);
    }
};

QTEST_MAIN(RenamePromptTests)
#include "RenamePromptTests.moc"
