#pragma once

#include "Editor/EditorWebView.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <map>
#include <memory>

class QWebEngineProfile;
class QWebEngineView;

namespace wendlore {

class EditorPage;

/// Makes the web engine know the "vault" scheme. To be called before the application object is made.
void registerEditorScheme();

/// The editor page in a web engine of its own: nothing is kept on disk, nothing is fetched but from the vault
/// scheme, and the page can leave for nowhere.
class WebEngineEditorView final : public QObject, public EditorWebView
{
    Q_OBJECT

public:
    WebEngineEditorView();
    ~WebEngineEditorView() override;

    /// The widget that shows the page. Whoever shows it may take it as a child; gone when that parent is.
    [[nodiscard]] QWebEngineView* widget() const;
    /// The process that shows the page, or 0 while there is none.
    [[nodiscard]] qint64 processId() const;
    void setEvents(Events events) override;
    void load(const QString& address) override;
    void evaluate(const QString& script) override;
    void evaluate(const QString& script, Generation generation) override;
    void drain(std::function<void()> done) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Bridge;

    void makeProfile();
    void makePage();
    [[nodiscard]] QByteArray beginning() const;
    int fence();
    void showContextMenu(const QPoint& position);
    void pasteText();
    void receive(const QString& name, const QJsonValue& body, Generation generation);
    void loadFinished(bool succeeded);
    void answerDrains();

    Events m_events;
    std::unique_ptr<QWebEngineProfile> m_profile;
    QPointer<QWebEngineView> m_view;
    QPointer<EditorPage> m_page;
    QTimer m_loadTimeOut;
    bool m_isLoaded = false;
    bool m_isLoading = false;
    bool m_isShowing = false;
    bool m_isInputAhead = false;
    int m_loads = 0;
    int m_lastFence = 0;
    int m_lastDrain = 0;
    std::map<int, std::function<void()>> m_drains;
};

} // namespace wendlore
