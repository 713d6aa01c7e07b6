#include "State/AppState.h"

#include "State/UserDefaults.h"

#include "Editor/Scheduler.h"
#include "Editor/WebEditorController.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString themeKey = u"theme"_s;
const QString editorZoomKey = u"wendloreEditorZoom"_s;

double withinZoomRange(double zoom)
{
    if (!(zoom > AppState::minimumZoom))
        return AppState::minimumZoom;
    return std::min(zoom, AppState::maximumZoom);
}

} // namespace

AppState::AppState(const Services& services, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_tree(services.scheduler, [this] { noteChange(&AppState::fileTreeChanged); })
    , m_editorController(
          std::make_unique<WebEditorController>(services.makeEditorWebView(), services.scheduler))
    , m_theme(appTheme(services.defaults.string(themeKey).value_or(QString())))
{
    restoreTypography();
    restoreZoom();
    restoreVaults();
    setupKVSync();
    m_editorController->setVaultProvider(
        [state = QPointer(this)] { return state ? state->m_vaultURL : std::nullopt; });
}

AppState::~AppState() = default;

void AppState::setSelectedFile(const std::optional<FileURL>& file)
{
    Operation operation(*this);
    const std::optional<FileURL> previous = m_selectedFile;
    store(m_selectedFile, file, &AppState::selectedFileChanged);
    recordHistory(previous);
    persistSelection();
}

void AppState::setSelectedFolder(const std::optional<FileURL>& folder)
{
    Operation operation(*this);
    store(m_selectedFolder, folder, &AppState::selectedFolderChanged);
    persistSelection();
}

void AppState::setPendingFocusFile(const std::optional<FileURL>& file)
{
    store(m_pendingFocusFile, file, &AppState::pendingFocusFileChanged);
}

void AppState::setTheme(AppTheme theme)
{
    m_services.defaults.setString(themeKey, rawValue(theme));
    store(m_theme, theme, &AppState::themeChanged);
}

void AppState::restoreZoom()
{
    const double stored = m_services.defaults.number(editorZoomKey);
    m_editorZoom = stored == 0 ? 1.0 : withinZoomRange(stored);
    m_editorController->setZoom(m_editorZoom);
}

void AppState::setEditorZoom(double zoom)
{
    Operation operation(*this);
    store(m_editorZoom, withinZoomRange(std::round(zoom * 10) / 10), &AppState::editorZoomChanged);
    m_services.defaults.setNumber(editorZoomKey, m_editorZoom);
    m_editorController->setZoom(m_editorZoom);
}

void AppState::zoomIn()
{
    setEditorZoom(m_editorZoom + zoomStep);
}

void AppState::zoomOut()
{
    setEditorZoom(m_editorZoom - zoomStep);
}

void AppState::resetZoom()
{
    setEditorZoom(1.0);
}

AppState::Operation::Operation(AppState& state)
    : m_state(state)
{
    ++m_state.m_operations;
}

AppState::Operation::~Operation()
{
    if (--m_state.m_operations > 0)
        return;
    const std::vector<Signal> changes = std::exchange(m_state.m_changes, {});
    for (const Signal change : changes)
        Q_EMIT(m_state.*change)();
}

void AppState::noteChange(Signal changed)
{
    Operation operation(*this);
    if (std::ranges::find(m_changes, changed) == m_changes.end())
        m_changes.push_back(changed);
}

} // namespace wendlore
