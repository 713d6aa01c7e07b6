#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace wendlore {

/// What a page reports: the note with the change, or the note written anew in the page's own way.
enum class Reports { exact, rewritten };

/// Drives an editor page as a user would, with real clicks and keys, and asks the probe in it how long it
/// took. Every function stops the program with a message when the page does not answer.
class PageDriver final
{
public:
    /// Shows the page that lies in `pageFolder`; `probe` is the script that measures in it.
    PageDriver(const QString& pageFolder, const QString& probe, Reports reports);

    /// Loads the page anew, shows `note` in it and types `keys` keys in its middle, one every `pace` ms. Then
    /// scrolls through the note and types as much again.
    [[nodiscard]] QJsonObject measure(const QString& note, int keys, int pace);

private:
    [[nodiscard]] QJsonObject call(const QString& script);
    [[nodiscard]] QJsonObject nextAnswer();
    void load();
    void clickAt(const QJsonObject& point);
    void press(int key, const QString& text = {});
    [[nodiscard]] QJsonArray type(const QString& text, int pace);
    [[nodiscard]] QJsonArray typeInMiddle(const QString& text, int pace);

    QString m_check;
    QWebEngineProfile m_profile;
    QWebEngineView m_view;
    QString m_asked;
    QString m_answer;
};

} // namespace wendlore
