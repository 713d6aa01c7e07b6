// Writes pictures of the program's windows, menus and sheets to a folder, in the colours asked for. The scale
// is the toolkit's own (QT_SCALE_FACTOR).

#include "Editor/EditorToolbar.h"
#include "Editor/LinkDialog.h"
#include "Editor/WebEditorController.h"
#include "Editor/WebEngineEditorView.h"
#include "Fakes/Bucket.h"
#include "Look/FlatButton.h"
#include "Previews/FileViewer.h"
#include "Previews/GoogleDocPreview.h"
#include "Previews/GoogleSignInCard.h"
#include "Previews/GoogleWebView.h"
#include "Previews/QuickLookOffice.h"
#include "Screenshots/ViewedFiles.h"
#include "Shell/SearchField.h"
#include "Shell/SidebarView.h"
#include "Shell/WendloreFileWindowView.h"
#include "State/AppState.h"
#include "State/CloudKeyValueStore.h"
#include "Support/EngineTest.h"
#include "Support/LoopbackSite.h"
#include "Support/RealDesktop.h"
#include "Support/Viewing.h"
#include "Support/Window.h"
#include "Wendlores/MainWindow.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWebEngineView>

using namespace Qt::StringLiterals;
using namespace wendlore;

namespace {

constexpr QSize windowSize(1180, 790);

class Photographer final
{
public:
    Photographer(QString folder, QString suffix)
        : m_folder(std::move(folder))
        , m_suffix(std::move(suffix))
    {}

    void take(QWidget& widget, const QString& name) const
    {
        const QString path = u"%1/%2-%3.png"_s.arg(m_folder, name, m_suffix);
        if (!pictureOf(widget).save(path))
            qFatal("cannot write %s", qPrintable(path));
    }

private:
    QString m_folder;
    QString m_suffix;
};

/// Waits until the page has painted the note that was set last.
void waitForNote(AppState& state)
{
    auto& controller = state.editorController();
    if (!controller.isReady() && !QSignalSpy(&controller, &WebEditorController::becameReady).wait(20000))
        qFatal("the editor page did not come");
    auto* view = static_cast<WebEngineEditorView&>(controller.webView()).widget();
    bool isPainted = false;
    const auto ask = [&] {
        view->page()->runJavaScript(
            u"document.fonts.status === 'loaded' && document.querySelector('#editor').innerText.length > 20"_s,
            [&isPainted](const QVariant& answer) { isPainted = answer.toBool(); });
    };
    if (!QTest::qWaitFor(
            [&] {
                ask();
                return isPainted;
            },
            20000))
        qFatal("the note was not shown");
    QTest::qWait(300); // the engine paints after the page has settled, and tells nobody
}

void takeMenu(QMenu& menu, const Photographer& photographer, const QString& name)
{
    menu.popup({0, 0});
    photographer.take(menu, name);
    menu.hide();
}

/// Takes the sheet that is open, and closes it.
void takeSheet(const Photographer& photographer, const QString& name)
{
    auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!sheet)
        qFatal("no sheet for %s", qPrintable(name));
    photographer.take(*sheet, name);
    sheet->reject();
}

/// The menus of the editor's toolbar, and what their entries ask.
void photographCommands(MainWindow& window, const Photographer& photographer)
{
    const auto& toolbar = *window.findChild<EditorToolbar*>();
    for (const QString& name : {u"Format"_s, u"Lista"_s, u"Infoga media"_s, u"Tabell"_s}) {
        QMenu& menu = *buttonNamed<FlatButton>(toolbar, name)->menu();
        takeMenu(menu, photographer, u"commands-%1"_s.arg(name.toLower().replace(u' ', u'-')));
        for (QAction* entry : menu.actions()) {
            if (entry->text() == u"Länk…"_s || entry->text() == u"Video / embed"_s)
                entry->trigger();
        }
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            continue;
        photographer.take(*dialog, u"dialog-%1"_s.arg(dialog->windowTitle().section(u' ', -1)));
        if (auto* link = qobject_cast<LinkDialog*>(dialog)) {
            link->setMode(LinkDialog::Mode::url);
            photographer.take(*link, u"dialog-länk-url"_s);
        }
        dialog->reject();
    }
}

/// What the sidebar shows and asks.
void photographSidebar(MainWindow& window, AppState& state, const Photographer& photographer)
{
    auto& sidebar = *window.findChild<SidebarView*>();
    sidebar.toggleSearch();
    auto& field = *sidebar.findChild<SearchField*>();
    for (const auto& [query, name] :
         {std::pair(u"budget"_s, u"search"_s), std::pair(u"xyzzy"_s, u"search-nothing"_s)}) {
        field.setText(query);
        if (!QTest::qWaitFor([&state] { return !state.isSearching(); }, patience))
            qFatal("the search did not end");
        photographer.take(window, name);
    }
    sidebar.toggleSearch();

    sidebar.startRename(*state.selectedFile());
    takeSheet(photographer, u"sheet-rename"_s);
    const std::vector<SyncedVaultEntry> entries{{u"1"_s, u"Recept"_s}};
    state.services().cloud.setData(u"wendlore_synced_vaults"_s, toJson(entries));
    state.refreshPendingVaults();
    QMenu& buckets =
        *buttonNamed<FlatButton>(window, u"Bucket: %1"_s.arg(state.vaultURL()->lastPathComponent()))->menu();
    takeMenu(buckets, photographer, u"buckets"_s);
    const std::pair<QString, QString> sheets[] = {{u"Recept"_s, u"sheet-link-bucket"_s},
                                                  {u"Lägg till bucket…"_s, u"sheet-add-bucket"_s},
                                                  {u"Hantera buckets…"_s, u"sheet-manage-buckets"_s}};
    for (const auto& [title, name] : sheets) {
        for (QAction* entry : buckets.actions()) {
            if (entry->text() == title)
                entry->trigger();
        }
        takeSheet(photographer, name);
    }
}

/// A note in a window of its own, and what the main window shows meanwhile.
void photographOwnWindow(MainWindow& window, RealDesktop& desktop, const FileURL& note,
                         const Photographer& photographer)
{
    WendloreFileWindowView own(desktop.services(), note);
    showAt(own, own.size());
    waitForNote(*own.windowState());
    photographer.take(own, u"own-window"_s);
    photographer.take(window, u"elsewhere"_s);
}

/// What every kind of file looks like that is no note.
void photographViewers(const Photographer& photographer)
{
    const Bucket bucket;
    makeViewedFiles(bucket);
    RealDesktop desktop;
    AppState state(desktop.services());
    for (const QFileInfo& info :
         QDir(bucket.root().path()).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const auto file = FileURL::file(info.filePath());
        if (info.fileName() == u"källor"_s)
            continue;
        if (isOfficeDocument(file)) // so that it is shown as it will be
            static_cast<void>(convertDocument(file, QuickLookLimits()));
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        auto* viewer = makeFileViewer(state, file, &window);
        layout->addWidget(viewer);
        showAt(window, {820, 560});
        // A card and a message are there at once.
        static_cast<void>(QTest::qWaitFor([viewer] { return showsItsFile(*viewer); }, 3000));
        QTest::qWait(500); // pages are drawn, and tell nobody
        photographer.take(window, u"viewer-%1"_s.arg(info.fileName()));
    }
}

/// A Google document, and the sign-in on the way to it: whoever has no cookie is sent there. The site is this
/// machine.
void photographGoogle(const Photographer& photographer)
{
    const LoopbackSite* self = nullptr;
    const LoopbackSite site([&self](const LoopbackSite::Request& request) {
        if (request.path.startsWith("/AccountChooser"))
            return LoopbackSite::page("<title>Konton</title><h1>Välj ett konto</h1><p><a id=konto href='" +
                                      self->origin().toLatin1() + "/signed-in'>anna@exempel.se</a>");
        if (request.path == "/signed-in")
            return LoopbackSite::redirect("/document/d/X/preview", "Set-Cookie: session=1; Path=/\r\n");
        if (request.path.startsWith("/signin") || request.cookies.contains("session=1"))
            return LoopbackSite::page("<title>Dokumentet</title><h1>Protokoll</h1><p>Att minnas från mötet.");
        return LoopbackSite::redirect(self->origin(u"localhost"_s).toLatin1() + "/signin");
    });
    self = &site;
    const Bucket bucket;
    const QString name = u"GoogleDrive-anna@exempel.se/Protokoll.gdoc"_s;
    bucket.write(name, R"({"doc_id": "X"})");
    RealDesktop desktop;
    AppState state(desktop.services());
    GoogleDocPreview preview(state, bucket.file(name), nullptr,
                             {QUrl(site.origin()), QUrl(site.origin(u"localhost"_s))});
    showAt(preview, {820, 560});
    const auto takeWhen = [&](const auto& isThere, const QString& picture) {
        if (!QTest::qWaitFor(isThere, patience))
            qFatal("%s did not come", qPrintable(picture));
        QTest::qWait(500); // the engine paints, and tells nobody
        photographer.take(preview, picture);
    };
    const auto shows = [&preview](const QString& title) {
        return [&preview, title] {
            return preview.webView() && preview.webView()->webView().page()->title() == title;
        };
    };
    takeWhen([&preview] { return preview.findChild<GoogleSignInCard*>(); }, u"google-logga-in"_s);
    for (auto* button : preview.findChildren<QPushButton*>()) {
        if (button->text() == u"Logga in"_s)
            button->click();
    }
    takeWhen(shows(u"Konton"_s), u"google-konto"_s);
    preview.webView()->webView().page()->runJavaScript(u"konto.click()"_s);
    takeWhen(shows(u"Dokumentet"_s), u"google-dokument"_s);
}

void photograph(const FileURL& bucket, const Photographer& photographer)
{
    RealDesktop desktop;
    AppState state(desktop.services());
    MainWindow window(state);
    showAt(window, windowSize);
    photographer.take(window, u"empty"_s);

    state.addVault(bucket);
    state.setSelectedFolder(bucket.appending(u"Arbete"_s, true));
    state.setSelectedFile(bucket.appending(u"Arbete/Möte om budget.md"_s));
    waitForNote(state);
    photographer.take(window, u"main"_s);
    photographCommands(window, photographer);
    window.resize(window.minimumSizeHint().expandedTo({640, 500}));
    waitForNote(state); // in its new width
    photographer.take(window, u"narrow"_s);
    window.resize(windowSize);
    photographSidebar(window, state, photographer);
    photographOwnWindow(window, desktop, *state.selectedFile(), photographer);

    state.setSelectedFile(bucket.appending(u"Arbete/Budget 2025.csv"_s));
    photographer.take(window, u"card"_s);
    for (auto* menu : window.menuBar()->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (menu->title().isEmpty())
            continue; // where entries go that find no room
        takeMenu(*menu, photographer, u"menu-%1"_s.arg(menu->title().remove(u'&').toLower()));
    }
}

} // namespace

int main(int argc, char** argv)
{
    prepareEngine();
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5)
        qFatal("usage: screenshots BUCKET FOLDER light|dark SUFFIX");
    useProductLook(arguments.at(3) == u"dark"_s ? ColorScheme::dark : ColorScheme::light);
    const Photographer photographer(arguments.at(2), arguments.at(4));
    photographGoogle(photographer);
    photographViewers(photographer);
    photograph(FileURL::directory(QFileInfo(arguments.at(1)).canonicalFilePath()), photographer);
    return 0;
}
