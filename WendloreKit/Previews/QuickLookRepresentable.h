#pragma once

#include "Vault/FileURL.h"

#include <QObject>
#include <QPointer>
#include <QWebEngineView>

#include <memory>
#include <vector>

class QWidget;

namespace wendlore {

class AppState;
class QuickLookPreview;
class ScheduledTask;

/// Where previews go that are no longer shown. They have let go of their files by then, but the platform may
/// still be at work on them, so they live as long as the process.
struct QuickLookGraveyard final
{
    static std::vector<QuickLookPreview*> parked;
};

/// The coordinator between a preview and the view that it stands in: it looks for a web page of a width of
/// its own in the preview, and scales that page to the view whenever one of their frames changes.
class QuickLookRepresentable final : public QObject
{
    Q_OBJECT

public:
    static constexpr int maximumPollAttempts = 60;

    QuickLookRepresentable(AppState& state, const FileURL& fileURL, QWidget& container);
    /// Closes the preview and parks it.
    ~QuickLookRepresentable() override;

    /// Shows another file; starts over.
    void update(const FileURL& fileURL);

    [[nodiscard]] QuickLookPreview* preview() const { return m_preview; }
    [[nodiscard]] QWebEngineView* webView() const { return m_webView; }
    [[nodiscard]] int pollAttempts() const { return m_pollAttempts; }
    /// Watches the preview and everything in it for changes of their frames.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void start();
    void pollForWebView();
    void layoutChanged();
    void applyFit();

    AppState& m_state;
    FileURL m_fileURL;
    QPointer<QuickLookPreview> m_preview;
    QPointer<QWebEngineView> m_webView;
    std::unique_ptr<ScheduledTask> m_nextPoll;
    double m_originalPageWidth = 0;
    int m_pollAttempts = 0;
    bool m_applying = false;
};

} // namespace wendlore
