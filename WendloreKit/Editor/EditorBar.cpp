#include "Editor/EditorBar.h"

#include "Editor/EditorToolbar.h"

#include "Look/Colors.h"
#include "Look/Metrics.h"
#include "State/AppState.h"

#include <QHBoxLayout>
#include <QPainter>

namespace wendlore {

EditorBar::EditorBar(AppState& state, QWidget* parent)
    : QWidget(parent)
{
    setFixedHeight(metrics::toolbarHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(metrics::toolbarMargin, 0, metrics::toolbarMargin, 0);
    row->addStretch();
    row->addWidget(new EditorToolbar(state, state.editorController(), this));
    row->addStretch();
}

void EditorBar::setTitle(QWidget& title)
{
    auto& row = static_cast<QHBoxLayout&>(*layout());
    row.insertWidget(0, &title);
    delete row.takeAt(row.count() - 1);
}

void EditorBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Colors& colors = Colors::of(palette());
    painter.fillRect(rect(), colors.paper);
    painter.fillRect(0, height() - 1, width(), 1, colors.line);
}

} // namespace wendlore
