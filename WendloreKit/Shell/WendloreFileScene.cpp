#include "Shell/WendloreFileScene.h"

#include "Shell/WendloreFileWindowView.h"
#include "Shell/Windows.h"

#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "State/UserDefaults.h"
#include "Vault/DiskEntry.h"
#include "Vault/FilePreviewKind.h"
#include "Vault/Relocation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString windowsKey = u"wendloreOpenFileWindows"_s;
constexpr auto fileField = "file"_L1;
constexpr auto geometryField = "geometry"_L1;

/// A file that is there no more is none.
std::optional<FileURL> storedFile(const QJsonValue& field)
{
    const auto path = QByteArray::fromPercentEncoding(field.toString().toLatin1());
    const FileURL file = FileURL::fromBytes(path, false);
    if (!path.startsWith('/') || !existsOnDisk(file))
        return std::nullopt;
    return file;
}

} // namespace

WendloreFileScene::WendloreFileScene(AppState& mainState, SettleMain settleMain, QObject* parent)
    : QObject(parent)
    , m_mainState(mainState)
    , m_settleMain(std::move(settleMain))
{
    const OpenFileWindows& registry = OpenFileWindows::shared();
    connect(&registry, &OpenFileWindows::windowRequested, this, &WendloreFileScene::open);
    connect(&registry, &OpenFileWindows::dismissalRequested, this, &WendloreFileScene::dismiss);
    connect(&mainState, &AppState::typographyThemeChanged, this, &WendloreFileScene::passTypographyOn);
    relay(mainState);
}

WendloreFileScene::~WendloreFileScene()
{
    for (WendloreFileWindowView* window : std::exchange(m_windows, {}))
        delete window;
}

void WendloreFileScene::open(const FileURL& file)
{
    if (WendloreFileWindowView* window = windowOf(file)) {
        bringForward(*window);
        return;
    }
    if (!isViewableFile(file) || !m_awaited.insert(file.standardized()).second)
        return;
    m_settleMain(file, [scene = QPointer(this), file] {
        if (scene && scene->m_awaited.erase(file.standardized()) > 0)
            scene->show(file, std::nullopt);
    });
}

void WendloreFileScene::dismiss(const FileURL& file)
{
    if (WendloreFileWindowView* window = windowOf(file))
        window->close();
}

void WendloreFileScene::restore()
{
    const auto stored = m_mainState.services().defaults.data(windowsKey).value_or(QByteArray());
    for (const QJsonValue& entry : QJsonDocument::fromJson(stored).array()) {
        const std::optional<FileURL> file = storedFile(entry[fileField]);
        if (file && windowOf(*file))
            continue;
        show(file, WindowGeometry::fromJson(entry[geometryField].toObject()));
    }
}

void WendloreFileScene::closeForQuitting()
{
    keepWindows();
    m_leaving = {m_windows.begin(), m_windows.end()};
    for (WendloreFileWindowView* window : std::vector(m_windows))
        window->close();
}

void WendloreFileScene::show(const std::optional<FileURL>& file,
                             const std::optional<WindowGeometry>& geometry)
{
    auto* window = new WendloreFileWindowView(m_mainState.services(), file);
    if (geometry)
        geometry->applyTo(*window);
    m_windows.push_back(window);
    connect(window, &WendloreFileWindowView::disappeared, this, [this, window] { forget(window); });
    connect(window, &WendloreFileWindowView::fileRequested, this, &WendloreFileScene::fileRequested);
    connect(window, &WendloreFileWindowView::fileURLChanged, this, [this] {
        keepWindows();
        Q_EMIT windowsChanged();
    });
    if (AppState* state = window->windowState()) {
        relay(*state);
        // What a bucket starts with is what the main window shows, also after a window has kept its own file.
        connect(state, &AppState::selectedFileChanged, &m_mainState, &AppState::persistSelection);
    }
    Q_EMIT windowMade(*window);
    bringForward(*window);
    keepWindows();
    Q_EMIT windowsChanged();
}

void WendloreFileScene::forget(WendloreFileWindowView* window)
{
    std::erase(m_windows, window);
    if (m_leaving.erase(window) == 0)
        keepWindows();
    Q_EMIT windowsChanged();
}

void WendloreFileScene::keepWindows() const
{
    QJsonArray windows;
    for (const WendloreFileWindowView* window : m_windows) {
        if (!window->fileURL())
            continue;
        const QByteArray path = window->fileURL()->bytes().toPercentEncoding("/");
        windows.append(QJsonObject{{fileField, QString::fromLatin1(path)},
                                   {geometryField, WindowGeometry::of(*window).toJson()}});
    }
    m_mainState.services().defaults.setData(windowsKey,
                                            QJsonDocument(windows).toJson(QJsonDocument::Compact));
}

WendloreFileWindowView* WendloreFileScene::windowOf(const FileURL& file) const
{
    const FileURL wanted = file.standardized();
    const auto found = std::ranges::find_if(m_windows, [&wanted](const WendloreFileWindowView* window) {
        return window->fileURL() && window->fileURL()->standardized().hasPathOf(wanted);
    });
    return found == m_windows.end() ? nullptr : *found;
}

void WendloreFileScene::relay(AppState& state)
{
    connect(&state, &AppState::aboutToMove, this, [this, &state](const FileURL& item) {
        tellOthers(state, [&item](AppState& other) { Q_EMIT other.aboutToMove(item); });
    });
    connect(&state, &AppState::didMove, this, [this, &state](const FileURL& from, const FileURL& to) {
        tellOthers(state, [this, &from, &to](AppState& other) {
            Q_EMIT other.didMove(from, to);
            const auto selected = other.selectedFile();
            if (selected && relocated(*selected, from, to) != *selected)
                other.setSelectedFile(relocated(*selected, from, to));
            if (&other == &m_mainState) // the only one whose tree is shown
                other.reloadTreeAfterMove(from, to);
        });
    });
    connect(&state, &AppState::didDelete, this, [this, &state](const FileURL& item) {
        tellOthers(state, [&item](AppState& other) { Q_EMIT other.didDelete(item); });
    });
}

void WendloreFileScene::passTypographyOn()
{
    for (const WendloreFileWindowView* window : m_windows) {
        if (AppState* state = window->windowState())
            state->applyTypographyTheme(m_mainState.typographyTheme());
    }
}

void WendloreFileScene::tellOthers(const AppState& origin, const std::function<void(AppState&)>& tell)
{
    if (std::exchange(m_isRelaying, true))
        return;
    std::vector<AppState*> states{&m_mainState};
    for (const WendloreFileWindowView* window : m_windows) {
        if (window->windowState())
            states.push_back(window->windowState());
    }
    for (AppState* state : states) {
        if (state != &origin)
            tell(*state);
    }
    m_isRelaying = false;
}

} // namespace wendlore
