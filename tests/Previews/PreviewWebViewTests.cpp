#include "Previews/PreviewWebView.h"

#include "Support/EngineTest.h"
#include "Support/Window.h"

#include <QMenu>
#include <QWebEnginePage>

using namespace Qt::StringLiterals;

namespace wendlore {

class PreviewWebViewTests final : public QObject
{
    Q_OBJECT

    PreviewWebView m_view;

    /// What the menu offers that opens at a place, "(-)" behind what is not possible.
    [[nodiscard]] QStringList menuAt(QPoint place)
    {
        const auto menu = [this] { return m_view.findChild<QMenu*>(); };
        QTest::mouseClick(m_view.focusProxy(), Qt::RightButton, {}, place);
        QStringList titles;
        if (!waitFor([&menu] { return menu() && menu()->isVisible(); }))
            return titles;
        for (const QAction* action : menu()->actions())
            titles.append(action->text() + (action->isEnabled() ? QString() : u" (-)"_s));
        delete menu();
        return titles;
    }

private Q_SLOTS:
    void initTestCase()
    {
        useProductLook();
        m_view.showPage(*new QWebEnginePage(&m_view));
        showAt(m_view, {400, 300});
        m_view.setHtml(u"<a href='https://exempel.se/a'>En länk"_s);
        QVERIFY(shownText(m_view).contains(u"länk"_s));
    }

    void itIsShownLargerAndSmaller()
    {
        m_view.zoomIn();
        QVERIFY(m_view.zoomFactor() > 1.05);
        m_view.resetZoom();
        QCOMPARE(m_view.zoomFactor(), 1.0);
        m_view.zoomOut();
        QVERIFY(m_view.zoomFactor() < 0.95);
        for (int press = 0; press < 60; ++press)
            m_view.zoomOut();
        QVERIFY(m_view.zoomFactor() >= 0.24);
        m_view.resetZoom();
    }

    void theMenuIsSwedishAndOffersWhatIsPossible()
    {
        QCOMPARE(menuAt({300, 200}), QStringList({u"Kopiera (-)"_s, u"Markera allt"_s}));
        QCOMPARE(menuAt({20, 16}).last(), u"Kopiera länk"_s);
        m_view.page()->triggerAction(QWebEnginePage::SelectAll);
        WAIT_VERIFY(m_view.hasSelection());
        QCOMPARE(menuAt({300, 200}).first(), u"Kopiera"_s);
    }

    void aLinkSaysWhereItLeads()
    {
        Q_EMIT m_view.page()->linkHovered(u"https://exempel.se/a"_s);
        QCOMPARE(m_view.toolTip(), u"https://exempel.se/a"_s);
        Q_EMIT m_view.page()->linkHovered(u"page://document/b/Ett%20möte.html"_s);
        QCOMPARE(m_view.toolTip(), u"/b/Ett möte.html"_s);
        Q_EMIT m_view.page()->linkHovered(QString());
        QCOMPARE(m_view.toolTip(), QString());
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(PreviewWebViewTests)
#include "PreviewWebViewTests.moc"
