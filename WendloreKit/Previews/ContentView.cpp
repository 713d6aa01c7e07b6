#include "Previews/ContentView.h"

#include "Previews/DetailView.h"

#include "Look/Metrics.h"

namespace wendlore {

ContentView::ContentView(AppState& state, QWidget* sidebar, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent)
    , m_detail(new DetailView(state, this))
{
    sidebar->setMinimumWidth(metrics::sidebarMinimum);
    sidebar->setMaximumWidth(metrics::sidebarMaximum);
    insertWidget(0, sidebar);
    setChildrenCollapsible(false);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    setSizes({metrics::sidebarIdeal, 1000});
}

} // namespace wendlore
