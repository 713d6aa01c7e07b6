#pragma once

#include "Editor/EditorSession.h"
#include "Editor/EditorView.h"
#include "Fakes/Bucket.h"
#include "State/AppState.h"
#include "Support/RealDesktop.h"

#include <QVariant>

namespace wendlore {

/// A window with the note editor as the program has it: the real engine, page, session, settings and files.
/// Selecting a file opens it.
class EditingWindow final
{
public:
    /// Starts on what `desktop` remembers.
    explicit EditingWindow(RealDesktop& desktop);

    /// Selects the note and waits until the page shows it.
    void open(const FileURL& note);
    /// Presses the keys for `text` at the end of the note.
    void type(const QString& text);
    /// Waits until the page has told the host everything.
    void drain();
    void activate();
    /// Another window takes the focus.
    void deactivate();

    /// What `expression` is in the page.
    [[nodiscard]] QVariant value(const QString& expression);
    /// The note's text as the page shows it.
    [[nodiscard]] QString shownText() { return value(QStringLiteral("document.body.innerText")).toString(); }

    RealDesktop& desktop;
    AppState state;
    EditorView view;

private:
    QWidget m_other;
};

} // namespace wendlore
