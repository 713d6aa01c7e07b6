#pragma once

#include "Previews/PreviewWebView.h"

#include "Vault/FileURL.h"

#include <QByteArray>
#include <QPointer>

#include <chrono>
#include <memory>
#include <optional>

class QWebEngineProfile;

namespace wendlore {

class AppState;
class ScheduledTask;
class ViewerStack;

/// Shows an HTML file as a page, read-only. Links open where they belong: in the browser, in the program, or
/// within the page. A page that does not finish in time gives way to an offer to open it in the browser.
class HTMLViewer final : public QWidget
{
    Q_OBJECT

public:
    static constexpr std::chrono::seconds timeOut{8};

    HTMLViewer(AppState& state, const FileURL& file, QWidget* parent = nullptr);
    ~HTMLViewer() override;

    /// The view of the page; null while there is none.
    [[nodiscard]] QWebEngineView* webView() const { return m_view; }

private:
    void didRead(const std::optional<QByteArray>& html);
    void showPage(const QByteArray& html);
    void didFinish();
    void giveUp();

    AppState& m_state;
    FileURL m_file;
    ViewerStack* m_stack;
    std::unique_ptr<QWebEngineProfile> m_profile;
    QPointer<PreviewWebView> m_view;
    std::unique_ptr<ScheduledTask> m_reading;
    std::unique_ptr<ScheduledTask> m_timeout;
};

} // namespace wendlore
