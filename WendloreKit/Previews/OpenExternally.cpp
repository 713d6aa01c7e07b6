#include "Previews/OpenExternally.h"

#include "Previews/GoogleDocPointer.h"

#include "State/Workspace.h"
#include "Vault/FilePreviewKind.h"

#include <algorithm>

namespace wendlore {

bool opensInExternalApp(const FileURL& file)
{
    switch (FilePreviewKind::of(file)) {
    case FilePreviewKind::pdf:
    case FilePreviewKind::image:
    case FilePreviewKind::html:
    case FilePreviewKind::google:
        return true;
    case FilePreviewKind::editor:
        return false;
    case FilePreviewKind::other:
        break;
    }
    const std::string extension = file.pathExtension().toLower().toStdString();
    return std::ranges::find(documentExtensions, extension) != documentExtensions.end();
}

void openExternally(Workspace& workspace, const FileURL& file)
{
    const bool isPointer = FilePreviewKind::of(file) == FilePreviewKind::google;
    if (const auto document = isPointer ? GoogleDocPointer::previewURL(file) : std::nullopt)
        workspace.open(*document);
    else
        workspace.open(file);
}

} // namespace wendlore
