#include "Shell/TreeMenus.h"

#include "State/AppState.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

MacMenuItem renameItem(const FileURL& item, const TreeMenuActions& actions)
{
    return {u"Byt namn"_s, u"pencil"_s, [item, rename = actions.startRename] { rename(item); }};
}

MacMenuItem deleteItem(const QString& title, AppState& state, const FileURL& item)
{
    return {title, u"trash"_s, [&state, item] { state.deleteFile(item); }, true};
}

} // namespace

std::vector<MacMenuItem> macFolderMenuItems(AppState& state, const FileURL& folder,
                                            const TreeMenuActions& actions)
{
    return {
        {u"Ny not här"_s, u"square.and.pencil"_s, [&state, folder] { state.newNote(folder); }},
        {u"Ny undermapp"_s, u"folder.badge.plus"_s, [&state, folder] { state.newFolder(folder); }},
        MacMenuItem::divider(),
        renameItem(folder, actions),
        deleteItem(u"Ta bort mapp"_s, state, folder),
    };
}

std::vector<MacMenuItem> macFileMenuItems(AppState& state, const FileURL& file,
                                          const TreeMenuActions& actions)
{
    std::vector<MacMenuItem> items;
    if (actions.openWindow) {
        items.push_back({u"Öppna i eget fönster"_s, u"macwindow.on.rectangle"_s,
                         [file, open = actions.openWindow] { open(file); }});
        items.push_back(MacMenuItem::divider());
    }
    items.push_back(renameItem(file, actions));
    items.push_back(deleteItem(u"Ta bort not"_s, state, file));
    return items;
}

} // namespace wendlore
