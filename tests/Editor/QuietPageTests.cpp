#include "Editor/QuietPage.h"

#include "Support/EngineTest.h"

#include <QSignalSpy>
#include <QWebEngineProfile>

namespace wendlore {

using namespace Qt::StringLiterals;

class QuietPageTests final : public QObject
{
    Q_OBJECT

    QWebEngineProfile m_profile;

private Q_SLOTS:
    void scriptsGetNothing_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("confirm") << u"String(confirm('x'))"_s << u"false"_s;
        QTest::newRow("prompt") << u"String(prompt('x', 'y'))"_s << u"null"_s;
        QTest::newRow("alert") << u"String(alert('x'))"_s << u"undefined"_s;
        QTest::newRow("window") << u"String(open('https://example.org/'))"_s << u"null"_s;
        QTest::newRow("storage") << u"try { String(localStorage) } catch { 'refused' }"_s << u"null"_s;
        QTest::newRow("drawing on the graphics card")
            << u"String(document.createElement('canvas').getContext('webgl'))"_s << u"null"_s;
    }

    void scriptsGetNothing()
    {
        QFETCH(QString, script);
        QuietPage page(&m_profile);
        QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
        page.setHtml(u"<p>Hej"_s, QUrl(u"https://example.org/"_s));
        QVERIFY(loaded.wait(patience));

        QString outcome;
        page.runJavaScript(script, [&outcome](const QVariant& value) { outcome = value.toString(); });

        QTRY_VERIFY_WITH_TIMEOUT(!outcome.isEmpty(), patience);
        QTEST(outcome, "outcome");
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuietPageTests)
#include "QuietPageTests.moc"
