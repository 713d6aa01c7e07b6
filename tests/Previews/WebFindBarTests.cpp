#include "Previews/WebFindBar.h"

#include "Support/EngineTest.h"
#include "Support/Window.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace wendlore {

class WebFindBarTests final : public QObject
{
    Q_OBJECT

    QWebEngineView m_view;

    [[nodiscard]] bool says(const QString& text) const
    {
        const auto labels = m_view.findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&](const QLabel* label) { return label->text() == text; });
    }

private Q_SLOTS:
    void initTestCase()
    {
        useProductLook();
        showAt(m_view, {800, 600});
        m_view.setHtml(u"<p>Ett möte om budgeten</p><p>MÖTET är slut"_s);
        QVERIFY(shownText(m_view).contains(u"slut"_s));
    }

    void whatIsTypedIsFoundAndSteppedThrough()
    {
        WebFindBar bar(m_view);
        QVERIFY(bar.isHidden());
        QCOMPARE(FindBar::seenIn(m_view), &bar);
        bar.open();
        auto* field = bar.findChild<QLineEdit*>();

        field->setText(u"möte"_s);
        WAIT_VERIFY(says(u"1 av 2"_s));
        QTest::keyClick(field, Qt::Key_Return);
        WAIT_VERIFY(says(u"2 av 2"_s));
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        WAIT_VERIFY(says(u"1 av 2"_s));
        field->setText(u"saknas"_s);
        WAIT_VERIFY(says(u"Inga träffar"_s));
        const QSignalSpy closed(&bar, &FindBar::closed);
        QTest::keyClick(field, Qt::Key_Escape);

        QVERIFY(bar.isHidden());
        QCOMPARE(closed.size(), 1);
    }

    void itStandsInTheUpperRightCorner()
    {
        WebFindBar bar(m_view);
        bar.open();
        for (const int width : {900, 300}) {
            m_view.resize(width, 600);
            WAIT_VERIFY(bar.geometry().right() < width && bar.x() >= 0 &&
                        bar.geometry().center().x() >= width / 2 - 1);
        }
        QVERIFY(bar.y() < 100);
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(WebFindBarTests)
#include "WebFindBarTests.moc"
