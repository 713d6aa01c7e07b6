#include "Previews/QuickLookWebView.h"

#include "Fakes/Bucket.h"
#include "Previews/QuickLookMedia.h"
#include "Support/DamagedFiles.h"
#include "Support/EngineTest.h"
#include "Support/SampleFiles.h"
#include "Support/Window.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace wendlore {

/// The files that the web engine itself reads, damaged again and again.
class QuickLookWebViewDamageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { useProductLook(); }

    void damagedFilesDoNoHarm_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("drawing") << u"a.svg"_s << drawing();
        QTest::newRow("font") << u"a.ttf"_s << systemFont();
        QTest::newRow("sound") << u"a.wav"_s << silence();
    }

    void damagedFilesDoNoHarm()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        const Bucket bucket;
        QRandomGenerator random(11);
        for (int left = qEnvironmentVariableIsSet("LONG") ? 300 : 4; left > 0; --left) {
            // What is not even whole is shown as text; here it reaches the engine all the same.
            bucket.write(name, bytes);
            const auto page = mediaPage(bucket.file(name));
            QVERIFY(page);
            bucket.write(name, damagedCopy(bytes, random));
            QuickLookWebView view(*page);
            const QSignalSpy loaded(view.page(), &QWebEnginePage::loadFinished);
            const QSignalSpy failed(&view, &QuickLookWebView::failed);
            showAt(view, {300, 200});
            WAIT_VERIFY(!loaded.isEmpty() || !failed.isEmpty());
        }

        QuickLookPage page;
        page.body = "<p>Hel";
        QuickLookWebView view(std::move(page));
        showAt(view, {300, 200});
        QCOMPARE(shownText(view), u"Hel"_s);
        QCOMPARE(bucket.names(), QStringList{name});
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(QuickLookWebViewDamageTests)
#include "QuickLookWebViewDamageTests.moc"
