#pragma once

#include <QWebEnginePage>

namespace wendlore {

/// A web page that opens no windows, asks the user for nothing, is granted nothing, and keeps nothing. Where
/// it may go is for those who derive from it to say.
class QuietPage : public QWebEnginePage
{
    Q_OBJECT

public:
    explicit QuietPage(QWebEngineProfile* profile, QObject* parent = nullptr);

protected:
    QWebEnginePage* createWindow(WebWindowType type) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                            const QStringList& acceptedMimeTypes) override;
    void javaScriptAlert(const QUrl& origin, const QString& message) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& suggestion,
                          QString* result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                  const QString& source) override;

private:
    void restrict();
};

} // namespace wendlore
