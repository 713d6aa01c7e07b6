#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QObject>
#include <QString>

#include <optional>

namespace wendlore {

class AppState;
class WebEditorController;

/// A picture that the page wants to have in the bucket.
struct ImageImport final
{
    int id = 0;
    /// A name for a file, without any folder.
    QString name;
    QByteArray base64;
};

/// The picture that a message "importImage" carries; nothing for a message of another shape.
[[nodiscard]] std::optional<ImageImport> imageImportFrom(const QJsonValue& body);

/// Answers what the editor page asks for beyond editing: the names of all notes, for links that are being
/// typed, and a place in the bucket for pictures that were dropped or pasted. Slow work is done off the main
/// thread.
class PageRequests final : public QObject
{
    Q_OBJECT

public:
    PageRequests(AppState& appState, WebEditorController& controller, QObject* parent = nullptr);
    ~PageRequests() override;

private:
    void receive(const QString& name, const QJsonValue& body);
    void tellNoteNames();
    void import(ImageImport image);
    void answer(int id, const std::optional<QString>& path);

    AppState& m_appState;
    WebEditorController& m_controller;
    bool m_isCollecting = false;
};

} // namespace wendlore
