#include "Previews/DetailToolbar.h"

#include "Previews/OpenExternally.h"
#include "Previews/TitleField.h"

#include "Editor/EditorToolbar.h"
#include "Look/Colors.h"
#include "Look/FlatButton.h"
#include "Look/Metrics.h"
#include "Look/Separator.h"
#include "State/AppState.h"
#include "State/OpenFileWindows.h"
#include "Vault/FilePreviewKind.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace wendlore {

DetailToolbar::DetailToolbar(AppState& state, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_title(new TitleField(this))
    , m_editor(new EditorToolbar(state, state.editorController(), this))
{
    setFixedHeight(metrics::toolbarHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(metrics::toolbarMargin, 0, metrics::toolbarMargin, 0);
    row->setSpacing(metrics::toolbarSpacing);
    addHistoryButtons(*row);
    row->addWidget(m_title);
    row->addStretch(1);
    row->addWidget(m_editor);
    addWindowButton(*row);
    addOpenButton(*row);
    connect(m_title, &TitleField::renamed, this, &DetailToolbar::renamed);
    connect(&state, &AppState::historyChanged, this, &DetailToolbar::showHistory);
    connect(&state, &AppState::selectedFileChanged, this, &DetailToolbar::showFileButtons);
    showHistory();
    showFileButtons();
}

void DetailToolbar::addHistoryButtons(QHBoxLayout& row)
{
    m_back = new IconButton(u"chevron.left"_s, u"Bakåt"_s, u"Bakåt (⌘[)"_s, this);
    m_forward = new IconButton(u"chevron.right"_s, u"Framåt"_s, u"Framåt (⌘])"_s, this);
    m_back->setTone(Tone::strong);
    m_forward->setTone(Tone::strong);
    // A button's own shortcut would wait for the button to be seen pressed. The brackets are hard to reach on
    // many keyboards; the arrows are what web browsers have.
    for (const auto key : {Qt::CTRL | Qt::Key_BracketLeft, Qt::ALT | Qt::Key_Left})
        new QShortcut(key, m_back, m_back, &IconButton::click);
    for (const auto key : {Qt::CTRL | Qt::Key_BracketRight, Qt::ALT | Qt::Key_Right})
        new QShortcut(key, m_forward, m_forward, &IconButton::click);
    connect(m_back, &IconButton::clicked, &m_state, &AppState::goBack);
    connect(m_forward, &IconButton::clicked, &m_state, &AppState::goForward);
    row.addWidget(m_back);
    row.addWidget(m_forward);
}

void DetailToolbar::addWindowButton(QHBoxLayout& row)
{
    m_ownWindow = new IconButton(u"macwindow.on.rectangle"_s, u"Eget fönster"_s,
                                 u"Öppna filen i ett eget fönster (⌘⌥N)"_s, this);
    m_separator = new Separator(this);
    row.addWidget(m_separator);
    new QShortcut(Qt::CTRL | Qt::ALT | Qt::Key_N, m_ownWindow, m_ownWindow, &IconButton::click);
    connect(m_ownWindow, &IconButton::clicked, &m_state, [this] {
        if (const auto& file = m_state.selectedFile())
            OpenFileWindows::shared().requestWindow(*file);
    });
    row.addWidget(m_ownWindow);
}

void DetailToolbar::addOpenButton(QHBoxLayout& row)
{
    m_open = new IconButton(u"arrow.up.forward.app"_s, u"Öppna"_s, {}, this);
    connect(m_open, &IconButton::clicked, &m_state, [this] {
        if (const auto& file = m_state.selectedFile())
            openExternally(m_state.services(), *file);
    });
    row.addWidget(m_open);
}

void DetailToolbar::setTitle(const QString& title, Title kind)
{
    m_title->setTitle(title);
    m_title->setReadOnly(kind == Title::fixed);
    m_title->setFocusPolicy(kind == Title::fixed ? Qt::NoFocus : Qt::StrongFocus);
    m_title->setVisible(!title.isEmpty());
}

void DetailToolbar::showEditorCommands(bool areShown)
{
    m_editor->setVisible(areShown);
    m_separator->setVisible(areShown);
}

void DetailToolbar::showHistory()
{
    m_back->setEnabled(m_state.history().canGoBack());
    m_forward->setEnabled(m_state.history().canGoForward());
}

void DetailToolbar::showFileButtons()
{
    const auto& file = m_state.selectedFile();
    m_ownWindow->setVisible(file && isViewableFile(*file));
    m_open->setVisible(file && opensInExternalApp(*file));
    if (m_open->isHidden())
        return;
    m_open->setToolTip(FilePreviewKind::of(*file) == FilePreviewKind::google
                           ? u"Öppna dokumentet i webbläsaren"_s
                           : u"Öppna i systemets standardapp"_s);
}

void DetailToolbar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Colors& colors = Colors::of(palette());
    painter.fillRect(rect(), colors.paper);
    painter.fillRect(0, height() - 1, width(), 1, colors.line);
}

} // namespace wendlore
