#include "Editor/Spelling.h"

#include "State/ResourceBundle.h"
#include "Vault/DiskEntry.h"

#include <QMenu>
#include <QWebEngineContextMenuRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qsizetype mostSuggestions = 6;
constexpr auto folderVariable = "QTWEBENGINE_DICTIONARIES_PATH";

} // namespace

void offerDictionaries()
{
    const FileURL folder =
        resourceBundle().deletingLastPathComponent().appending(u"qtwebengine_dictionaries"_s, true);
    if (!qEnvironmentVariableIsSet(folderVariable) && diskEntry(folder) == DiskEntry::Folder)
        qputenv(folderVariable, folder.bytes());
}

void checkSpelling(QWebEngineProfile& profile)
{
    profile.setSpellCheckLanguages({u"sv-SE"_s, u"en-US"_s});
    profile.setSpellCheckEnabled(true);
}

void addSpellingSuggestions(QMenu& menu, QWebEnginePage& page, const QWebEngineContextMenuRequest* request)
{
    if (!request || request->misspelledWord().isEmpty())
        return;
    const QStringList suggestions = request->spellCheckerSuggestions().mid(0, mostSuggestions);
    if (suggestions.isEmpty())
        menu.addAction(u"Inga stavningsförslag"_s)->setEnabled(false);
    for (const QString& word : suggestions) {
        // An "&" in a menu marks a key.
        QString title = word;
        QAction* const entry = menu.addAction(title.replace(u'&', u"&&"_s));
        QObject::connect(entry, &QAction::triggered, &page,
                         [&page, word] { page.replaceMisspelledWord(word); });
    }
    menu.addSeparator();
}

} // namespace wendlore
