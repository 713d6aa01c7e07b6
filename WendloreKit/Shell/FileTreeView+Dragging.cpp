#include "Shell/FileTreeView.h"

#include "Shell/FileTreeModel.h"

#include "Editor/Scheduler.h"
#include "Look/Colors.h"
#include "Look/Drawing.h"
#include "Look/Fonts.h"
#include "Look/Metrics.h"
#include "Look/Symbols.h"
#include "State/AppState.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

using namespace std::chrono_literals;

namespace wendlore {

namespace {

constexpr auto springDelay = 700ms;
constexpr int previewWidth = 240;

/// What the pointer carries: the row's symbol and name.
QPixmap dragPreview(const QModelIndex& index, const QWidget& view)
{
    const Colors& colors = Colors::of(view.palette());
    const QFont font = sized(view.font(), metrics::textSize);
    const int textStart = metrics::inset + metrics::icon + metrics::gap;
    const QString name = QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight,
                                                       previewWidth - textStart - metrics::inset);
    const int width = textStart + QFontMetrics(font).horizontalAdvance(name) + metrics::inset;
    const qreal ratio = view.devicePixelRatioF();
    QPixmap preview((QSizeF(width, metrics::rowHeight) * ratio).toSize());
    preview.setDevicePixelRatio(ratio);
    preview.fill(Qt::transparent);

    QPainter painter(&preview);
    fillRounded(painter, QRectF(0, 0, width, metrics::rowHeight), colors.selected, metrics::radius);
    drawSymbol(painter, QRect(metrics::inset, 0, metrics::icon, metrics::rowHeight),
               index.data(FileTreeModel::SymbolRole).toString(), colors.selectedText, metrics::icon);
    painter.setFont(font);
    painter.setPen(colors.selectedText);
    painter.drawText(QRect(textStart, 0, width - textStart, metrics::rowHeight),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
    return preview;
}

} // namespace

bool FileTreeView::isDropTarget(const QModelIndex& index) const
{
    return m_droppingInto && m_model->urlAt(index) == m_droppingInto;
}

std::unique_ptr<QMimeData> FileTreeView::dragData(const QModelIndex& index) const
{
    auto carried = std::make_unique<QMimeData>();
    if (const auto url = m_model->urlAt(index))
        carried->setUrls({QUrl::fromLocalFile(url->path())});
    return carried;
}

void FileTreeView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragSource.isValid() || !event->buttons().testFlag(Qt::LeftButton)) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    const QPoint way = event->position().toPoint() - m_pressed;
    if (way.manhattanLength() >= QApplication::startDragDistance())
        startItemDrag(m_dragSource);
}

void FileTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    m_dragSource = QModelIndex();
    QTreeView::mouseReleaseEvent(event);
}

void FileTreeView::startItemDrag(const QModelIndex& index)
{
    m_dragSource = QModelIndex();
    auto* drag = new QDrag(this);
    drag->setPixmap(dragPreview(index, *this));
    drag->setHotSpot({metrics::inset, metrics::rowHeight / 2});
    drag->setMimeData(dragData(index).release());
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    setState(NoState); // the drag took the release of the button
}

std::optional<FileURL> FileTreeView::folderAt(const QPoint& position) const
{
    const QModelIndex index = indexAt(position);
    return m_model->urlAt(m_model->isFolder(index) ? index : index.parent());
}

FolderDropDelegate FileTreeView::folderDropDelegate(const FileURL& folder)
{
    return {folder,
            m_droppingInto,
            m_state,
            m_undo,
            [this](const FileURL& entered) { scheduleSpringOpen(entered); },
            [this] { m_springWork.reset(); }};
}

RootDropDelegate FileTreeView::rootDropDelegate()
{
    return {m_droppingIntoRoot, m_state, m_undo};
}

void FileTreeView::scheduleSpringOpen(const FileURL& folder)
{
    m_springWork = m_state.services().scheduler.after(springDelay, [this, folder] {
        m_springWork.reset();
        setExpanded(m_model->indexOf(folder), true);
    });
}

void FileTreeView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!rootDropDelegate().validateDrop(*event->mimeData())) {
        event->ignore();
        return;
    }
    QTreeView::dragEnterEvent(event);
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void FileTreeView::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeView::dragMoveEvent(event); // scrolls at the edges
    aimAt(event->position().toPoint());
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void FileTreeView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QTreeView::dragLeaveEvent(event);
    endAim();
}

void FileTreeView::dropEvent(QDropEvent* event)
{
    const auto folder = folderAt(event->position().toPoint());
    endAim();
    stopAutoScroll();
    setState(NoState);
    const QMimeData& dropped = *event->mimeData();
    const bool isTaken =
        folder ? folderDropDelegate(*folder).performDrop(dropped) : rootDropDelegate().performDrop(dropped);
    event->setDropAction(isTaken ? Qt::MoveAction : Qt::IgnoreAction);
    event->setAccepted(isTaken);
}

void FileTreeView::aimAt(const QPoint& position)
{
    const auto folder = folderAt(position);
    if (folder ? folder == m_droppingInto : m_droppingIntoRoot)
        return;
    endAim();
    if (folder)
        folderDropDelegate(*folder).dropEntered();
    else
        rootDropDelegate().dropEntered();
    viewport()->update();
}

void FileTreeView::endAim()
{
    if (m_droppingInto) {
        const FileURL left = *m_droppingInto;
        folderDropDelegate(left).dropExited();
    }
    rootDropDelegate().dropExited();
    viewport()->update();
}

void FileTreeView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (!m_droppingIntoRoot)
        return;
    QPainter painter(viewport());
    drawFocusRing(painter, QRectF(viewport()->rect()).adjusted(metrics::inset, 0, -metrics::inset, 0),
                  Colors::of(palette()).accent);
}

} // namespace wendlore
