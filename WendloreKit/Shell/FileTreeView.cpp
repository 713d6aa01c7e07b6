#include "Shell/FileTreeView.h"

#include "Shell/FileTreeDelegate.h"
#include "Shell/FileTreeModel.h"

#include "Editor/Scheduler.h"
#include "Look/Metrics.h"
#include "State/AppState.h"
#include "Vault/Relocation.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace wendlore {

FileTreeView::FileTreeView(AppState& state, QWidget* parent)
    : QTreeView(parent)
    , m_state(state)
    , m_model(new FileTreeModel(state, this))
    , m_delegate(new FileTreeDelegate(this))
{
    // Before there are rows: Qt 6.8 keeps the height that it took the rows to have when they were not alike.
    setUniformRowHeights(true);
    setHeaderHidden(true);
    setModel(m_model);
    setItemDelegate(m_delegate);
    setAccessibleName(u"Filer"_s);
    setFrameShape(QFrame::NoFrame);
    setIndentation(0);
    setRootIsDecorated(false);
    setExpandsOnDoubleClick(false);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDropIndicatorShown(false);
    viewport()->setAutoFillBackground(false);

    m_turn.setEasingCurve(QEasingCurve::OutQuad);
    connect(&m_turn, &QVariantAnimation::valueChanged, this, [this] { update(m_turning); });
    connect(this, &QAbstractItemView::clicked, this, &FileTreeView::clickAt);
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        m_expandedFolders.insert(*m_model->urlAt(index));
        turnDisclosure(index);
    });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
        m_expandedFolders.remove(*m_model->urlAt(index));
        turnDisclosure(index);
    });
    connectState();
    revealSelection();
}

FileTreeView::~FileTreeView() = default;

void FileTreeView::connectState()
{
    connect(&m_state, &AppState::selectedFileChanged, this, &FileTreeView::revealSelection);
    connect(&m_state, &AppState::fileTreeChanged, this, &FileTreeView::showSelectionAgain);
    connect(&m_state, &AppState::selectedFolderChanged, viewport(), qOverload<>(&QWidget::update));
    connect(&m_state, &AppState::didMove, this, [this](const FileURL& from, const FileURL& to) {
        for (const FileURL& folder : QSet(m_expandedFolders))
            m_expandedFolders.insert(relocated(folder, from, to));
    });
}

double FileTreeView::disclosure(const QModelIndex& index) const
{
    if (m_turn.state() == QAbstractAnimation::Running && m_turning == index)
        return m_turn.currentValue().toDouble();
    return isExpanded(index) ? 1 : 0;
}

bool FileTreeView::isChosenFolder(const QModelIndex& index) const
{
    return m_state.selectedFolder() && m_model->urlAt(index) == m_state.selectedFolder();
}

void FileTreeView::reset()
{
    QTreeView::reset();
    restoreExpansion({}, 0, m_model->rowCount() - 1);
}

void FileTreeView::rowsInserted(const QModelIndex& parent, int first, int last)
{
    QTreeView::rowsInserted(parent, first, last);
    restoreExpansion(parent, first, last);
}

void FileTreeView::restoreExpansion(const QModelIndex& parent, int first, int last)
{
    for (int row = first; row <= last && !m_expandedFolders.isEmpty(); ++row) {
        const QModelIndex index = m_model->index(row, 0, parent);
        if (!m_model->isFolder(index) || !m_expandedFolders.contains(*m_model->urlAt(index)))
            continue;
        setExpanded(index, true);
        restoreExpansion(index, 0, m_model->rowCount(index) - 1);
    }
}

void FileTreeView::clickAt(const QModelIndex& index)
{
    if (m_model->isFolder(index) && m_delegate->disclosureArea(index, visualRect(index)).contains(m_pressed))
        setExpanded(index, !isExpanded(index));
    else
        choose(index);
}

void FileTreeView::choose(const QModelIndex& index)
{
    const auto url = m_model->urlAt(index);
    if (!url)
        return;
    if (!m_model->isFolder(index)) {
        chooseFile(*url);
        return;
    }
    setExpanded(index, !isExpanded(index));
    m_state.setSelectedFolder(url);
}

/// New notes go where the user was last: a folder that was chosen elsewhere is let go.
void FileTreeView::chooseFile(const FileURL& file)
{
    const auto& folder = m_state.selectedFolder();
    if (folder && !folder->hasPathOf(file.deletingLastPathComponent()))
        m_state.setSelectedFolder(std::nullopt);
    m_state.setSelectedFile(file);
}

void FileTreeView::turnDisclosure(const QModelIndex& index)
{
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    m_turn.stop();
    if (duration == 0 || !isVisible())
        return;
    m_turning = index;
    m_turn.setDuration(duration);
    m_turn.setStartValue(isExpanded(index) ? 0.0 : 1.0);
    m_turn.setEndValue(isExpanded(index) ? 1.0 : 0.0);
    m_turn.start();
}

/// Opens every folder above the selected file and brings its row into view.
void FileTreeView::revealSelection()
{
    const auto& file = m_state.selectedFile();
    const QModelIndex row = file ? m_model->indexOf(*file) : QModelIndex();
    if (!row.isValid()) {
        selectionModel()->clearSelection();
        return;
    }
    for (QModelIndex folder = row.parent(); folder.isValid(); folder = folder.parent())
        setExpanded(folder, true);
    selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect);
    if (isVisible())
        scrollTo(row);
}

/// After a rebuild the selected file may have a row that was not there before.
void FileTreeView::showSelectionAgain()
{
    if (!selectionModel()->hasSelection())
        revealSelection();
}

void FileTreeView::setSteering(Steering steering)
{
    m_isSteeredByKeyboard = steering == Steering::keyboard;
    viewport()->update();
}

void FileTreeView::keyPressEvent(QKeyEvent* event)
{
    setSteering(Steering::keyboard);
    const auto item = m_model->urlAt(currentIndex());
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        choose(currentIndex());
    else if (event->key() == Qt::Key_F2 && item)
        Q_EMIT renameRequested(*item);
    else
        QTreeView::keyPressEvent(event);
}

void FileTreeView::mousePressEvent(QMouseEvent* event)
{
    setSteering(Steering::pointer);
    m_pressed = event->position().toPoint();
    m_dragSource = event->button() == Qt::LeftButton ? indexAt(m_pressed) : QModelIndex();
    QTreeView::mousePressEvent(event);
}

void FileTreeView::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        setSteering(Steering::keyboard);
    QTreeView::focusInEvent(event);
    if (!currentIndex().isValid() && m_model->rowCount() > 0)
        setCurrentIndex(m_model->index(0, 0));
}

void FileTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = isByKeyboard ? currentIndex() : indexAt(event->pos());
    const auto item = m_model->urlAt(index);
    if (!item)
        return;
    const QPoint place =
        isByKeyboard ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos();
    Q_EMIT menuRequested(*item, m_model->isFolder(index), place);
}

/// Only now is it known how many rows there is room for.
void FileTreeView::showEvent(QShowEvent* event)
{
    QTreeView::showEvent(event);
    scrollTo(currentIndex());
}

void FileTreeView::changeEvent(QEvent* event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

} // namespace wendlore
