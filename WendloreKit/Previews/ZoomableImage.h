#pragma once

#include "Previews/ImageMagnification.h"
#include "Previews/ImagePyramid.h"
#include "Previews/ZoomableView.h"

#include <QAbstractScrollArea>

class QGestureEvent;
class QNativeGestureEvent;

namespace wendlore {

/// Shows an image: whole at first, then as the user zooms (pinch, Ctrl and wheel, keys, double click) and
/// pans (wheel, drag, arrow keys). An image that is smaller than the view stands at its top left corner.
class ZoomableImage final : public QAbstractScrollArea, public ZoomableView
{
    Q_OBJECT

public:
    explicit ZoomableImage(ImagePyramid image, QWidget* parent = nullptr);

    /// Goes on with another picture of the same size, at the same place.
    void setPicture(ImagePyramid image);

    [[nodiscard]] double magnification() const { return m_magnification; }
    /// The point of the drawn image that lies at the view's top left corner.
    [[nodiscard]] QPointF scrollPosition() const;
    /// Draws the image at `scale`, with the same point of it below `anchor`, a point of the view.
    void setMagnification(double scale, QPointF anchor);
    /// Shows the whole image, and keeps it whole when the view is resized, until the user zooms.
    void magnifyToFit();

    void zoomIn() override;
    void zoomOut() override;
    void resetZoom() override { magnifyToFit(); }
    void copy() const;

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void apply(const Magnification& magnification);
    void zoomBy(double factor, QPointF anchor);
    /// Carries out a zoom key; false for any other key.
    bool zoomByKey(const QKeyEvent& event, bool isForReal);
    bool nativeGesture(const QNativeGestureEvent& event);
    bool gesture(QGestureEvent& event);
    [[nodiscard]] QPointF middle() const;
    void updateCursor();

    ImagePyramid m_image;
    double m_magnification = 1.0;
    bool m_isFitted = true;
    std::optional<QPointF> m_dragged;
};

} // namespace wendlore
