#include "Editor/EditorPrompts.h"

#include "Editor/LinkDialog.h"
#include "Editor/VideoPrompt.h"
#include "Editor/WebEditorController.h"

#include "State/AppState.h"
#include "State/Panels.h"

#include <QWidget>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

/// Pictures that the page can show.
const QStringList imagePatterns{u"*.png"_s,  u"*.jpg"_s, u"*.jpeg"_s, u"*.gif"_s,
                                u"*.webp"_s, u"*.svg"_s, u"*.bmp"_s,  u"*.avif"_s};

} // namespace

EditorPrompts::EditorPrompts(AppState& state, WebEditorController& controller, QWidget* parent)
    : QObject(parent)
    , m_state(state)
    , m_controller(controller)
    , m_parent(parent)
{
    connect(&state, &AppState::selectedFileChanged, this, [this] {
        if (m_sheet)
            m_sheet->reject();
    });
}

void EditorPrompts::showImageImporter()
{
    const auto note = m_state.selectedFile();
    const auto picture = m_state.services().panels.chooseFile(u"Infoga"_s, u"Välj en bild"_s, imagePatterns,
                                                              Panels::Start::pictures);
    if (!picture || m_state.selectedFile() != note)
        return;
    if (const auto path = m_state.importAsset(*picture))
        m_controller.exec(u"image"_s, *path);
    m_controller.focus();
}

void EditorPrompts::showVideoPrompt()
{
    show(new VideoPrompt(m_controller, m_parent->window()));
}

void EditorPrompts::showLinkPrompt()
{
    show(new LinkDialog(m_controller, m_state.noteNames(), m_parent->window()));
}

void EditorPrompts::show(QDialog* sheet)
{
    if (m_sheet)
        m_sheet->reject();
    m_sheet = sheet;
    connect(sheet, &QDialog::finished, &m_controller, &WebEditorController::focus);
    sheet->open();
}

} // namespace wendlore
