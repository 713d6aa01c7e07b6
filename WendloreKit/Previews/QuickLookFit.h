#pragma once

#include <QSizeF>

#include <optional>

namespace wendlore {

/// What decides how a web page of a width of its own is scaled to the view that it stands in.
struct QuickLookFit final
{
    QSizeF container;
    QSizeF webView;
    double zoom = 1;
    /// The page's width at zoom 1; 0 while it is unknown.
    double originalPageWidth = 0;

    /// The page's width with what the web view shows now: at zoom 1 its width counts when none is known yet
    /// or when it is smaller than the known one.
    [[nodiscard]] double pageWidth() const;
    /// The zoom at which a page of `originalPageWidth` fills the container; nothing when it already does, or
    /// when a width is unknown.
    [[nodiscard]] std::optional<double> zoomToApply() const;
};

} // namespace wendlore
