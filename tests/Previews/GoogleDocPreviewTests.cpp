#include "Previews/GoogleDocPreview.h"

#include "Fakes/Bucket.h"
#include "Fakes/FakeServices.h"
#include "Look/SymbolView.h"
#include "Previews/GoogleSignInCard.h"
#include "Previews/GoogleWebView.h"
#include "State/AppState.h"
#include "Support/EngineTest.h"
#include "Support/LoopbackSite.h"
#include "Support/Window.h"

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWebEnginePage>
#include <QWebEngineView>

namespace wendlore {

using namespace Qt::StringLiterals;

namespace {

/// Names the folder in which the engine keeps the sign-in.
constexpr auto keptFolder = "GOOGLE_TESTS_FOLDER";

/// Documents and sign-in on this machine: whoever has no cookie is sent to the sign-in, which gives one.
class Site final
{
public:
    explicit Site(QString accounts = u"localhost"_s)
        : accountsHost(std::move(accounts))
        , server([this](const LoopbackSite::Request& request) { return answer(request); })
    {}

    [[nodiscard]] GoogleAddresses addresses() const
    {
        return {QUrl(server.origin()), QUrl(server.origin(u"localhost"_s))};
    }

    QString accountsHost;
    LoopbackSite server;

private:
    [[nodiscard]] QByteArray answer(const LoopbackSite::Request& request) const
    {
        const QByteArray documents = server.origin().toLatin1();
        if (request.path.startsWith("/AccountChooser"))
            return LoopbackSite::redirect(documents + "/signed-in");
        if (request.path.startsWith("/signin"))
            return LoopbackSite::page("Logga in");
        if (request.path == "/signed-in")
            return LoopbackSite::redirect("/document/d/X/preview",
                                          "Set-Cookie: session=1; Max-Age=100000; Path=/\r\n");
        if (request.cookies.contains("session=1"))
            return LoopbackSite::page("<title>Dokumentet</title><p>Innehåll");
        return LoopbackSite::redirect(server.origin(accountsHost).toLatin1() + "/signin");
    }
};

/// A pointer file shown by the real engine.
class Preview final
{
public:
    explicit Preview(const Site& site, const char* pointer = R"({"doc_id": "X"})")
        : state(services.services())
        , file(bucket.file(u"GoogleDrive-anna@example.org/A.gdoc"_s))
    {
        bucket.write(u"GoogleDrive-anna@example.org/A.gdoc"_s, pointer);
        view = std::make_unique<GoogleDocPreview>(state, file, nullptr, site.addresses());
        showAt(*view, {900, 700});
        services.scheduler.finishBackgroundWork();
    }

    [[nodiscard]] QString title() const
    {
        return view->webView() ? view->webView()->webView().page()->title() : QString();
    }
    [[nodiscard]] GoogleSignInCard* card() const { return view->findChild<GoogleSignInCard*>(); }
    [[nodiscard]] SymbolView* symbol() const { return view->findChild<SymbolView*>(); }
    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const QLabel* label : view->findChildren<QLabel*>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts;
    }
    void press(const QString& text) const
    {
        for (auto* button : card()->findChildren<QPushButton*>()) {
            if (button->text() == text)
                button->click();
        }
    }

    Bucket bucket;
    FakeServices services;
    AppState state;
    FileURL file;
    std::unique_ptr<GoogleDocPreview> view;
};

} // namespace

class GoogleDocPreviewTests final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    /// Runs one of these tests as another start of the program would, with what earlier ones kept in
    /// `folder`.
    static bool passesInAnotherProcess(const char* test, const QString& folder)
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(keptFolder), folder);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(test)});
        if (process.waitForFinished(2 * patience) && process.exitCode() == 0)
            return true;
        qWarning().noquote() << process.errorString() << process.readAll();
        return false;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!qEnvironmentVariableIsSet(keptFolder))
            qputenv(keptFolder, m_folder.path().toUtf8());
        qputenv("XDG_DATA_HOME", qgetenv(keptFolder));
        useProductLook();
    }

    void aPointerThatCannotBeReadGivesTheMessage()
    {
        const Site site;
        const Preview preview(site, "hej");
        QVERIFY(preview.texts().contains(u"Kunde inte läsa pekarfilen"_s));
        QCOMPARE(preview.symbol()->name(), u"exclamationmark.triangle"_s);
        QCOMPARE(preview.symbol()->size(), QSize(32, 32));
        QVERIFY(!preview.view->webView());
        QCOMPARE(preview.services.coordinator.downloads, QList{preview.file});
    }

    void withoutASignInTheCardIsShown()
    {
        const Site site;
        const Preview preview(site);

        QTRY_VERIFY_WITH_TIMEOUT(preview.card(), patience);

        const QStringList texts = preview.texts();
        QCOMPARE(preview.symbol()->name(), u"person.crop.circle.badge.questionmark"_s);
        QCOMPARE(texts.value(0), u"Dokumentet ligger i anna@example.org"_s);
        QCOMPARE(texts.value(1), u"Dokumentet kräver Google-inloggning"_s);
        QCOMPARE(
            texts.value(2),
            u"Appens webbvy är inte inloggad på Google. Logga in här för att läsa dokumentet i Wendlores — "
            "eller öppna det i webbläsaren, där du redan är inloggad."_s);
        QCOMPARE(texts.value(3), u"Inloggningen sparas — nästa gång öppnas dokumentet direkt i appen."_s);
    }

    void aSubdomainOfTheSignInRaisesTheCardToo()
    {
        const Site site(u"login.localhost"_s);
        const Preview preview(site);
        QTRY_VERIFY_WITH_TIMEOUT(preview.card(), patience);
    }

    void theBrowserTakesOverWhenAsked()
    {
        const Site site;
        const Preview preview(site);
        QTRY_VERIFY_WITH_TIMEOUT(preview.card(), patience);

        preview.press(u"Öppna i webbläsaren"_s);

        QCOMPARE(preview.services.workspace.addresses,
                 QList{QUrl(site.server.origin() + u"/document/d/X/preview?authuser=anna@example.org"_s)});
        QVERIFY(preview.card());
    }

    void signingInShowsTheDocument()
    {
        const Site site;
        const Preview preview(site);
        QTRY_VERIFY_WITH_TIMEOUT(preview.card(), patience);

        preview.press(u"Logga in"_s);

        QTRY_COMPARE_WITH_TIMEOUT(preview.title(), u"Dokumentet"_s, patience);
        QVERIFY(std::ranges::any_of(site.server.requests, [](const auto& request) {
            return request.path.startsWith("/AccountChooser?Email=anna@example.org&continue=");
        }));
    }

    void whoHasSignedInSeesTheDocumentAtOnce()
    {
        const Site site;
        const Preview preview(site);
        QTRY_COMPARE_WITH_TIMEOUT(preview.title(), u"Dokumentet"_s, patience);
        QVERIFY(!preview.card());
    }

    void theSignInIsKeptForTheNextStart()
    {
        const QTemporaryDir folder;
        QVERIFY(passesInAnotherProcess("signingInShowsTheDocument", folder.path()));
        QVERIFY(passesInAnotherProcess("whoHasSignedInSeesTheDocumentAtOnce", folder.path()));
    }
};

} // namespace wendlore

WENDLORE_ENGINE_TEST_MAIN(GoogleDocPreviewTests)
#include "GoogleDocPreviewTests.moc"
