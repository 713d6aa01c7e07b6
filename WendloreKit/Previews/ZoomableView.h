#pragma once

#include <QWidget>

namespace wendlore {

/// A view of a file that can be shown larger and smaller.
class ZoomableView
{
public:
    virtual ~ZoomableView() = default;

    virtual void zoomIn() = 0;
    virtual void zoomOut() = 0;
    /// Goes back to the size that the file has at first.
    virtual void resetZoom() = 0;

    /// The one that is seen in a window; null when there is none.
    [[nodiscard]] static ZoomableView* seenIn(const QWidget& window);
};

} // namespace wendlore
