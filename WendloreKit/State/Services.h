#pragma once

#include "Editor/EditorWebView.h"

#include <functional>
#include <memory>

namespace wendlore {

class CloudKeyValueStore;
class FileCoordinator;
class FolderBookmarks;
class Panels;
class RecoveredTexts;
class Scheduler;
class Trash;
class UserDefaults;
class Workspace;

/// What the desktop gives to one `AppState`. The services outlive every state that is made with them.
struct Services final
{
    UserDefaults& defaults;
    CloudKeyValueStore& cloud;
    FolderBookmarks& bookmarks;
    FileCoordinator& coordinator;
    Workspace& workspace;
    Panels& panels;
    Scheduler& scheduler;
    RecoveredTexts& recovered;
    Trash& trash;
    /// Makes the web view of one editing surface.
    std::function<std::unique_ptr<EditorWebView>()> makeEditorWebView;
};

} // namespace wendlore
