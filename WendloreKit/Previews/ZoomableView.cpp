#include "Previews/ZoomableView.h"

namespace wendlore {

ZoomableView* ZoomableView::seenIn(const QWidget& window)
{
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (auto* view = dynamic_cast<ZoomableView*>(widget); view && widget->isVisible())
            return view;
    }
    return nullptr;
}

} // namespace wendlore
