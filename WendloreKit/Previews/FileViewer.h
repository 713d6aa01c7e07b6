#pragma once

class QWidget;

namespace wendlore {

class AppState;
class FileURL;

/// Makes the view that shows `file`, and only that one: the viewer of its kind, or the generic one. Notes are
/// shown by the editor instead.
[[nodiscard]] QWidget* makeFileViewer(AppState& state, const FileURL& file, QWidget* parent);

} // namespace wendlore
