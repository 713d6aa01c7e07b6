#pragma once

#include <QWidget>

class QLabel;

namespace wendlore {

class PDFKitView;

/// A small bar that floats at the bottom of a PDF view: the page, the zoom, and the search.
class PdfPageBar final : public QWidget
{
    Q_OBJECT

public:
    explicit PdfPageBar(PDFKitView& view);

Q_SIGNALS:
    void searchWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showPlace();
    void standAtTheBottom();

    PDFKitView& m_view;
    QLabel* m_page;
    QLabel* m_zoom;
};

} // namespace wendlore
