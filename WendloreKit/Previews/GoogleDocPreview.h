#pragma once

#include "Previews/GoogleAddresses.h"

#include "Vault/FileURL.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace wendlore {

class AppState;
class GoogleWebView;
class ScheduledTask;
class ViewerStack;

/// Shows the document that a pointer file stands for. Where Google asks for a sign-in, the user is asked
/// first whether to do that here.
class GoogleDocPreview final : public QWidget
{
    Q_OBJECT

public:
    GoogleDocPreview(AppState& state, const FileURL& file, QWidget* parent = nullptr,
                     const GoogleAddresses& addresses = GoogleAddresses::configured());
    ~GoogleDocPreview() override;

    /// The web page; null while something else is shown.
    [[nodiscard]] GoogleWebView* webView() const;

private:
    void didRead(const std::optional<QUrl>& previewURL);
    void showWebView();
    void showSignInCard();

    AppState& m_state;
    FileURL m_file;
    GoogleAddresses m_addresses;
    ViewerStack* m_stack;
    std::unique_ptr<ScheduledTask> m_reading;
    QUrl m_previewURL;
    bool m_signInWall = false;
    bool m_allowSignIn = false;
};

} // namespace wendlore
