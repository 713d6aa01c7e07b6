#pragma once

#include "Previews/GoogleAddresses.h"

#include <QWidget>

#include <memory>

class QWebEngineView;

namespace wendlore {

class ScheduledTask;
class Scheduler;

/// The web page of a Google document. Signing in is kept on disk, for all views of this kind and for the next
/// start.
class GoogleWebView final : public QWidget
{
    Q_OBJECT

public:
    /// How long a page may take before the attempt is given up.
    static constexpr std::chrono::seconds timeOut{60};

    GoogleWebView(Scheduler& scheduler, const GoogleAddresses& addresses, QWidget* parent = nullptr);
    ~GoogleWebView() override;

    /// Goes to `address`, unless that is where the view is.
    void goTo(const QUrl& address);
    [[nodiscard]] QWebEngineView& webView() const { return *m_view; }

Q_SIGNALS:
    /// The page has led to Google's sign-in.
    void signInWallReached();
    /// The user wants `address`, of the web or of mail, in a window of its own.
    void windowWanted(const QUrl& address);

private:
    Scheduler& m_scheduler;
    GoogleAddresses m_addresses;
    QWebEngineView* m_view;
    std::unique_ptr<ScheduledTask> m_timeout;
};

} // namespace wendlore
