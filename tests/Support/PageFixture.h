#pragma once

#include "Editor/WebEngineEditorView.h"
#include "Fakes/Bucket.h"

#include <QJsonValue>
#include <QVariant>

#include <optional>
#include <utility>

namespace wendlore {

/// One message of the page.
struct PageMessage final
{
    QString name;
    QJsonValue body;
    EditorWebView::Generation generation;
};

/// The real page in the real engine, without a session: a test puts notes into it and sees what it says.
class PageFixture final
{
public:
    explicit PageFixture(EditorWebView::Beginning beginning = {});

    void load();
    void setContent(const QString& text, EditorWebView::Generation generation);
    /// Waits until the page has said all that it had to say so far.
    void drain();
    /// Presses the keys for `text`.
    void type(const QString& text);
    /// What `expression` is in the page.
    [[nodiscard]] QVariant value(const QString& expression);
    /// What became of asking the page for an image: its width, or -1.
    [[nodiscard]] int widthOfImage(const QString& address);

    [[nodiscard]] bool has(const QString& name) const;
    /// The note as the page reported it last, and the generation that the report carried.
    [[nodiscard]] std::pair<QString, EditorWebView::Generation> lastChange() const;

    Bucket bucket;
    /// The open bucket, as the engine is told.
    std::optional<FileURL> vaultRoot = bucket.root();
    /// What a page that is loaded begins with.
    EditorWebView::Beginning beginning;
    WebEngineEditorView view;
    QList<PageMessage> messages;
    int deaths = 0;
    int failures = 0;
};

} // namespace wendlore
