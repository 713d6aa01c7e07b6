#pragma once

#include "Editor/QuietPage.h"

namespace wendlore {

/// The page of the note editor: it stays where it is, and fetches nothing but its own files.
class EditorPage final : public QuietPage
{
    Q_OBJECT

public:
    explicit EditorPage(QWebEngineProfile* profile, QObject* parent = nullptr);

protected:
    bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
};

} // namespace wendlore
