#pragma once

#include "Shell/MacMenuItem.h"

#include "Vault/FileURL.h"

namespace wendlore {

class AppState;

/// What the tree's menus do that is no operation of the state.
struct TreeMenuActions final
{
    std::function<void(const FileURL& item)> startRename;
    std::function<void(const FileURL& file)> openWindow;
};

[[nodiscard]] std::vector<MacMenuItem> macFolderMenuItems(AppState& state, const FileURL& folder,
                                                          const TreeMenuActions& actions);
[[nodiscard]] std::vector<MacMenuItem> macFileMenuItems(AppState& state, const FileURL& file,
                                                        const TreeMenuActions& actions);

} // namespace wendlore
