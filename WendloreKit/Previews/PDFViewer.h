#pragma once

#include "Previews/PdfDocument.h"

#include <QWidget>

#include <memory>

namespace wendlore {

class AppState;
class PDFKitView;
class PdfFindBar;
class PdfPasswordForm;
class ScheduledTask;
class ViewerStack;

/// Shows a PDF file: its pages, the search in them, and where the file is locked the question for the
/// password. One that cannot be opened gives a message.
class PDFViewer final : public QWidget
{
    Q_OBJECT

public:
    PDFViewer(AppState& state, const FileURL& file, QWidget* parent = nullptr);
    ~PDFViewer() override;

    /// The pages; null while there are none.
    [[nodiscard]] PDFKitView* pages() const { return m_pages; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Opened;

    void open(const QString& password);
    void didOpen(const Opened& opened);
    void showPages(const QList<QSizeF>& pages);
    void askForPassword();
    void follow(const QUrl& link);

    AppState& m_state;
    FileURL m_file;
    ViewerStack* m_stack;
    std::shared_ptr<PdfDocument> m_document;
    PdfPasswordForm* m_form = nullptr;
    PDFKitView* m_pages = nullptr;
    PdfFindBar* m_findBar = nullptr;
    std::unique_ptr<ScheduledTask> m_opening;
};

} // namespace wendlore
