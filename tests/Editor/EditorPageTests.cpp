#include "Editor/EditorPage.h"

#include "Support/EngineTest.h"
#include "Support/PageFixture.h"

#include <QBuffer>
#include <QImage>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

class EditorPageTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageStaysWhereItIs_data();
    void thePageStaysWhereItIs();
};

void EditorPageTests::thePageStaysWhereItIs_data()
{
    QTest::addColumn<QString>("script");

    QTest::newRow("web") << u"location.href = 'https://example.org/'"_s;
    QTest::newRow("asset") << u"location.href = 'vault://app/assets/a.html'"_s;
    QTest::newRow("file") << u"location.href = 'file:///etc/hostname'"_s;
    QTest::newRow("window") << u"window.open('vault://app/index.html')"_s;
    QTest::newRow("download") << u"{ const a = document.createElement('a'); a.href = 'vault://app/index.js';"
                                 " a.download = 'x'; document.body.append(a); a.click(); a.remove(); }"_s;
}

void EditorPageTests::thePageStaysWhereItIs()
{
    QFETCH(const QString, script);
    PageFixture f;
    f.bucket.write(u"assets/a.html"_s, "hej");
    const QUrl shown = f.view.widget()->page()->url();
    QCOMPARE(shown.adjusted(QUrl::RemoveQuery), QUrl(u"vault://app/index.html"_s));

    f.view.evaluate(script);
    f.drain();

    QCOMPARE(f.value(u"location.href"_s).toString(), shown.toString());
    QCOMPARE(f.view.widget()->page()->url(), shown);
}

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(EditorPageTests)
#include "EditorPageTests.moc"
