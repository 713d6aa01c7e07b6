#pragma once

#include "Previews/ZoomableView.h"

#include <QWebEngineView>

namespace wendlore {

/// A view of a page that is read: it can be searched and shown larger, its text can be copied, and it says
/// where its links lead.
class PreviewWebView : public QWebEngineView, public ZoomableView
{
    Q_OBJECT

public:
    explicit PreviewWebView(QWidget* parent = nullptr);

    /// Shows a page in place of the engine's own.
    void showPage(QWebEnginePage& page);

    void zoomIn() override;
    void zoomOut() override;
    void resetZoom() override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace wendlore
