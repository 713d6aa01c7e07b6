#include "Previews/QuickLookFit.h"

#include <cmath>

namespace wendlore {

namespace {

constexpr double unscaledTolerance = 0.02;
constexpr double frameTolerance = 0.5;
constexpr double zoomTolerance = 0.002;

bool isClose(const QSizeF& left, const QSizeF& right)
{
    return std::abs(left.width() - right.width()) <= frameTolerance &&
           std::abs(left.height() - right.height()) <= frameTolerance;
}

} // namespace

double QuickLookFit::pageWidth() const
{
    const bool isUnscaled = std::abs(zoom - 1) < unscaledTolerance && webView.width() > 1;
    const bool isNews = originalPageWidth <= 0 || webView.width() < originalPageWidth;
    return isUnscaled && isNews ? webView.width() : originalPageWidth;
}

std::optional<double> QuickLookFit::zoomToApply() const
{
    if (originalPageWidth <= 1 || container.width() <= 1)
        return std::nullopt;
    const double target = container.width() / originalPageWidth;
    if (isClose(webView, container) && std::abs(zoom - target) <= zoomTolerance)
        return std::nullopt;
    return target;
}

} // namespace wendlore
