#include "Editor/EditorRequests.h"

#include <QTest>

namespace wendlore {

using namespace Qt::StringLiterals;

class EditorRequestsTests final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageGoesNowhereElse_data();
    void thePageGoesNowhereElse();
    void framesShowVideosOnly_data();
    void framesShowVideosOnly();
    void onlyThePagesOwnThingsAreFetched_data();
    void onlyThePagesOwnThingsAreFetched();
    void aVideoFetchesWhatItNeeds_data();
    void aVideoFetchesWhatItNeeds();
};

void EditorRequestsTests::thePageGoesNowhereElse_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isAllowed");

    QTest::newRow("page") << u"vault://app/index.html"_s << true;
    QTest::newRow("page without a name") << u"vault://app/"_s << true;
    QTest::newRow("asset") << u"vault://app/assets/evil.html"_s << false;
    QTest::newRow("another host") << u"vault://evil/index.html"_s << false;
    QTest::newRow("web") << u"https://app/index.html"_s << false;
    QTest::newRow("file") << u"file:///etc/passwd"_s << false;
    QTest::newRow("data") << u"data:text/html,x"_s << false;
    QTest::newRow("blank") << u"about:blank"_s << false;
    QTest::newRow("script") << u"javascript:alert(1)"_s << false;
    QTest::newRow("engine") << u"chrome://gpu"_s << false;
}

void EditorRequestsTests::thePageGoesNowhereElse()
{
    QFETCH(const QString, address);

    QTEST(mayNavigateMainFrame(QUrl(address)), "isAllowed");
}

void EditorRequestsTests::framesShowVideosOnly_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isAllowed");

    QTest::newRow("video") << u"https://www.youtube-nocookie.com/embed/x"_s << true;
    QTest::newRow("unencrypted") << u"http://www.youtube-nocookie.com/embed/x"_s << false;
    QTest::newRow("another host") << u"https://www.youtube-nocookie.com.evil.org/"_s << false;
    QTest::newRow("asset") << u"vault://app/assets/evil.html"_s << false;
    QTest::newRow("page") << u"vault://app/index.html"_s << false;
    QTest::newRow("blank") << u"about:blank"_s << false;
    QTest::newRow("source") << u"about:srcdoc"_s << false;
}

void EditorRequestsTests::framesShowVideosOnly()
{
    QFETCH(const QString, address);

    QTEST(mayNavigateSubframe(QUrl(address)), "isAllowed");
}

void EditorRequestsTests::onlyThePagesOwnThingsAreFetched_data()
{
    using Info = QWebEngineUrlRequestInfo;
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("initiator");
    QTest::addColumn<QWebEngineUrlRequestInfo::ResourceType>("type");
    QTest::addColumn<bool>("isAllowed");

    const QString page = u"vault://app"_s;
    const QString asset = u"vault://app/assets/x"_s;
    QTest::newRow("page") << u"vault://app/index.html"_s << u""_s << Info::ResourceTypeMainFrame << true;
    QTest::newRow("asset as page") << asset << page << Info::ResourceTypeMainFrame << false;
    QTest::newRow("script") << u"vault://app/index.js"_s << page << Info::ResourceTypeScript << true;
    QTest::newRow("style") << u"vault://app/index.css"_s << page << Info::ResourceTypeStylesheet << true;
    QTest::newRow("font") << u"vault://app/a.woff2"_s << page << Info::ResourceTypeFontResource << true;
    QTest::newRow("picture of the page") << u"vault://app/a.svg"_s << page << Info::ResourceTypeImage << true;
    QTest::newRow("picture of the bucket") << asset << page << Info::ResourceTypeImage << true;
    QTest::newRow("asset as script") << asset << page << Info::ResourceTypeScript << false;
    QTest::newRow("asset as style") << asset << page << Info::ResourceTypeStylesheet << false;
    QTest::newRow("asset as font") << asset << page << Info::ResourceTypeFontResource << false;
    QTest::newRow("asset as frame") << asset << page << Info::ResourceTypeSubFrame << false;
    QTest::newRow("asset as object") << asset << page << Info::ResourceTypeObject << false;
    QTest::newRow("asset read by script") << asset << page << Info::ResourceTypeXhr << false;
    QTest::newRow("asset as worker") << asset << page << Info::ResourceTypeWorker << false;
    QTest::newRow("page read by script")
        << u"vault://app/index.html"_s << page << Info::ResourceTypeXhr << false;
    QTest::newRow("encoded slash") << u"vault://app/assets%2Fx"_s << page << Info::ResourceTypeScript
                                   << false;
    QTest::newRow("picture of the web")
        << u"https://example.org/a.png"_s << page << Info::ResourceTypeImage << false;
    QTest::newRow("ping") << u"https://example.org/"_s << page << Info::ResourceTypePing << false;
    QTest::newRow("policy report") << u"https://example.org/"_s << page << Info::ResourceTypeCspReport
                                   << false;
    QTest::newRow("file") << u"file:///etc/passwd"_s << page << Info::ResourceTypeImage << false;
}

void EditorRequestsTests::onlyThePagesOwnThingsAreFetched()
{
    QFETCH(const QString, address);
    QFETCH(const QString, initiator);
    QFETCH(const QWebEngineUrlRequestInfo::ResourceType, type);

    QTEST(mayRequest(QUrl(address), QUrl(initiator), type), "isAllowed");
}

void EditorRequestsTests::aVideoFetchesWhatItNeeds_data()
{
    using Info = QWebEngineUrlRequestInfo;
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("initiator");
    QTest::addColumn<QWebEngineUrlRequestInfo::ResourceType>("type");
    QTest::addColumn<bool>("isAllowed");

    const QString page = u"vault://app"_s;
    const QString video = u"https://www.youtube-nocookie.com"_s;
    QTest::newRow("video") << u"https://www.youtube-nocookie.com/embed/x"_s << page
                           << Info::ResourceTypeSubFrame << true;
    QTest::newRow("video's script") << u"https://www.youtube.com/player.js"_s << video
                                    << Info::ResourceTypeScript << true;
    QTest::newRow("video asks for an asset")
        << u"vault://app/assets/x"_s << video << Info::ResourceTypeImage << false;
    QTest::newRow("video leaves the encryption")
        << u"http://example.org/"_s << video << Info::ResourceTypeImage << false;
    QTest::newRow("video takes the page's place")
        << u"https://example.org/"_s << video << Info::ResourceTypeMainFrame << false;
}

void EditorRequestsTests::aVideoFetchesWhatItNeeds()
{
    onlyThePagesOwnThingsAreFetched();
}

} // namespace wendlore

QTEST_APPLESS_MAIN(wendlore::EditorRequestsTests)
#include "EditorRequestsTests.moc"
