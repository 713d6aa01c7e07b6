#include "Editor/EditorToolbar.h"

#include "Editor/WebEditorController.h"
#include "Look/FlatButton.h"
#include "Support/EditingWindow.h"
#include "Support/EngineTest.h"
#include "Support/Window.h"

#include <QMenu>
#include <QTest>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

/// What the toolbar's commands do to a note: the real page, engine, session and files.
class ToolbarTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void commandsReachTheNote_data();
    void commandsReachTheNote();
    void aBoldWordIsBold();
    void aPictureIsCopiedAndShown();

private:
    /// Opens a note of its own for each test, with the caret at its end.
    void open(const QByteArray& text);
    void choose(const QString& button, const QString& entry);
    [[nodiscard]] QByteArray written() const { return m_bucket->read(m_note); }
    void waitFor(const QByteArray& text) const { WAIT_COMPARE(written(), text); }

    std::unique_ptr<Bucket> m_bucket;
    std::unique_ptr<RealDesktop> m_desktop;
    std::unique_ptr<EditingWindow> m_window;
    std::unique_ptr<EditorToolbar> m_toolbar;
    QString m_note;
    int m_count = 0;
};

void ToolbarTests::initTestCase()
{
    useProductLook();
    m_bucket = std::make_unique<Bucket>();
    m_desktop = std::make_unique<RealDesktop>(Pauses::brief);
    m_window = std::make_unique<EditingWindow>(*m_desktop);
    m_window->state.addVault(m_bucket->root());
    m_toolbar = std::make_unique<EditorToolbar>(m_window->state, m_window->state.editorController());
}

void ToolbarTests::cleanupTestCase()
{
    m_toolbar.reset();
    m_window.reset();
}

void ToolbarTests::open(const QByteArray& text)
{
    m_note = u"N%1.md"_s.arg(++m_count);
    m_bucket->write(m_note, text);
    m_window->open(m_bucket->file(m_note));
    m_window->type({});
}

void ToolbarTests::choose(const QString& button, const QString& entry)
{
    QMenu* menu = buttonNamed<FlatButton>(*m_toolbar, button)->menu();
    Q_EMIT menu->aboutToShow();
    for (QAction* action : menu->actions()) {
        if (action->text() == entry) {
            action->trigger();
            return;
        }
    }
    QFAIL(qPrintable(u"no entry "_s + entry));
}

void ToolbarTests::commandsReachTheNote_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char16_t* button, const char16_t* entry, const char* after) {
        const QString title = QString::fromUtf16(entry);
        QTest::newRow(title.toUtf8().constData()) << QString::fromUtf16(button) << title << QByteArray(after);
    };

    row(u"Textstil: Brödtext", u"Rubrik 3", "### ord\n");
    row(u"Format", u"Citat", "> ord\n");
    row(u"Format", u"Kodblock", "```\nord\n```\n");
    row(u"Format", u"Avdelare", "ord\n\n---\n");
    row(u"Lista", u"Punktlista •", "- ord\n");
    row(u"Lista", u"Numrerad 1, 2, 3", "1. ord\n");
    row(u"Lista", u"Bokstäver A, B, C", "A. ord\n");
    row(u"Lista", u"Checklista", "- [ ] ord\n");
}

void ToolbarTests::commandsReachTheNote()
{
    QFETCH(const QString, button);
    QFETCH(const QString, entry);
    QFETCH(const QByteArray, after);
    open("ord\n");

    choose(button, entry);

    WAIT_COMPARE(written().trimmed(), after.trimmed());
}

void ToolbarTests::aBoldWordIsBold()
{
    open("");
    auto* bold = buttonNamed<IconButton>(*m_toolbar, u"Fet"_s);

    bold->click();
    WAIT_VERIFY(bold->isChecked());
    QTest::keyClicks(m_desktop->engine->widget()->focusProxy(), u"ord"_s);

    WAIT_VERIFY(written().trimmed() == "**ord**");
}

void ToolbarTests::aPictureIsCopiedAndShown()
{
    const Bucket pictures({{"Min bild.png", "bild"}});
    m_desktop->panels.answer = pictures.file(u"Min bild.png"_s);
    open("ord\n");

    choose(u"Infoga media"_s, u"Bild"_s);

    waitFor("ord![](assets/Min%20bild.png)\n");
    QCOMPARE(m_bucket->read(u"assets/Min bild.png"_s), "bild");
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(ToolbarTests)
#include "ToolbarTests.moc"
