#pragma once

#include "Editor/EditorWebView.h"
#include "Editor/ToolbarState.h"
#include "Typography/TypographyTheme.h"
#include "Vault/FileURL.h"

#include <QObject>
#include <QStringList>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

namespace wendlore {

class ScheduledTask;
class Scheduler;

/// The only channel to the editor page. Keeps what the page should show and delivers it whenever the page
/// announces that it is ready, so a page that crashed comes back with the user's text.
class WebEditorController final : public QObject
{
    Q_OBJECT

public:
    /// Receives the whole note after an edit.
    using Changed = std::function<void(const QString& markdown)>;
    using OpenLink = std::function<void(const QString& href, bool isWiki)>;
    /// Receives what the page asks for beyond editing: a name, and a body of any shape.
    using Request = std::function<void(const QString& name, const QJsonValue& body)>;
    using VaultProvider = std::function<std::optional<FileURL>()>;
    /// What a command carries along: nothing, a whole number or a text.
    using CommandValue = std::variant<std::monostate, int, QString>;

    WebEditorController(std::unique_ptr<EditorWebView> webView, Scheduler& scheduler,
                        QObject* parent = nullptr);
    ~WebEditorController() override;

    [[nodiscard]] EditorWebView& webView() const { return *m_webView; }
    [[nodiscard]] const ToolbarState& state() const { return m_state; }
    [[nodiscard]] bool isReady() const { return m_isReady; }
    /// The content last set by the host or reported by the page for the note that is shown now.
    [[nodiscard]] const std::optional<QString>& desiredContent() const { return m_desiredContent; }

    /// The open bucket's root, for the assets that notes refer to.
    void setVaultProvider(VaultProvider provider) { m_vaultProvider = std::move(provider); }
    [[nodiscard]] std::optional<FileURL> vaultRoot() const;
    /// Who receives the edits, and the clicked links, of the content that is set next; those of earlier
    /// contents still go to whoever was set then.
    void setOnChanged(Changed changed) { m_onChanged = std::move(changed); }
    void setOnOpenLink(OpenLink openLink) { m_onOpenLink = std::move(openLink); }
    void setOnRequest(Request request) { m_onRequest = std::move(request); }

    void setContent(const QString& text);
    void exec(const QString& command, const CommandValue& value = {});
    void setTheme(bool dark);
    /// Remembers the typography and shows it once the page is ready.
    void setTypography(const TypographyTheme& theme);
    void setZoom(double zoom);
    /// Puts the caret into the page, when it is ready.
    void focus();
    /// The same without moving what is shown, for a window that opens.
    void focusInView();
    /// Calls `done` once every edit that the page has reported so far has been delivered.
    void drain(std::function<void()> done);

    void loadEditor();

Q_SIGNALS:
    void stateChanged();
    /// The page announced that it can be driven; it has been given all it should show.
    void becameReady();
    /// The caret was put into the page, whose view is to get the keys.
    void focused();

private:
    /// One content that was put into the page, and who receives what is done to it.
    struct Shown final
    {
        EditorWebView::Generation generation;
        Changed changed;
        OpenLink openLink;
        /// The note as the page has last reported it, and how many edits of it have come since it was whole.
        QString text;
        int edits = 0;
        bool isSent = false;
    };

    void receive(const QString& name, const QJsonValue& body, EditorWebView::Generation generation);
    [[nodiscard]] EditorWebView::Beginning beginning();
    [[nodiscard]] QStringList lookScripts() const;
    void pageIsReady(EditorWebView::Generation generation);
    void pageChanged(const QString& text, EditorWebView::Generation generation, int edits = 0);
    void pageEdited(const QJsonObject& body, EditorWebView::Generation generation);
    void pageSelects(const ToolbarState& state);
    void pageOpensLink(const QJsonValue& body, EditorWebView::Generation generation);
    [[nodiscard]] std::optional<Shown> shown(EditorWebView::Generation generation) const;
    [[nodiscard]] QString contentScript();
    void sendContent();
    void reloadSoon();

    std::unique_ptr<EditorWebView> m_webView;
    Scheduler& m_scheduler;
    ToolbarState m_state;
    VaultProvider m_vaultProvider;
    Changed m_onChanged;
    OpenLink m_onOpenLink;
    Request m_onRequest;
    bool m_isReady = false;
    std::optional<QString> m_desiredContent;
    bool m_desiredDark = false;
    std::optional<TypographyTheme> m_desiredTypography;
    double m_desiredZoom = 1.0;
    EditorWebView::Generation m_generation = 0;
    /// What the page that is being loaded was told to look like and to show, should it get that far.
    QStringList m_begunLook;
    EditorWebView::Generation m_begunGeneration = 0;
    std::deque<Shown> m_shown;
    std::unique_ptr<ScheduledTask> m_reload;
};

} // namespace wendlore
