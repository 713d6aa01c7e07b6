#pragma once

#include "Decoder/QuickLookPage.h"
#include "Previews/PreviewWebView.h"

#include <memory>

class QWebEngineProfile;

namespace wendlore {

/// Makes the addresses of preview pages known to the web engine. To be called before the application object
/// is made.
void registerQuickLookScheme();

/// Shows a preview that is a web page. The page runs no script, reaches nothing but what belongs to it, and
/// takes the colours of the window.
class QuickLookWebView final : public PreviewWebView
{
    Q_OBJECT

public:
    explicit QuickLookWebView(QuickLookPage page, QWidget* parent = nullptr);
    ~QuickLookWebView() override;

    /// The page's width at zoom 1; 0 when it flows.
    [[nodiscard]] int pageWidth() const { return m_pageWidth; }

Q_SIGNALS:
    /// The process that drew the page has died over it.
    void failed();

protected:
    void changeEvent(QEvent* event) override;

private:
    class Handler;
    class Page;

    void loadPage();

    int m_pageWidth;
    std::unique_ptr<QWebEngineProfile> m_profile;
    Handler* m_handler;
    QWebEnginePage* m_page;
};

} // namespace wendlore
