#include "Previews/OpenExternally.h"

#include "Previews/GoogleDocPointer.h"
#include "Previews/ReadForViewing.h"

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

void openExternally(const Services& services, const FileURL& file)
{
    if (FilePreviewKind::of(file) != FilePreviewKind::google) {
        services.workspace.open(file);
        return;
    }
    // Whoever asked may be gone before the pointer is read; the task keeps itself until then.
    auto task = std::make_shared<std::unique_ptr<ScheduledTask>>();
    *task = readInBackground(
        services, file, GoogleDocPointer::maximumSize,
        [file](const auto& bytes) {
            return bytes ? GoogleDocPointer::previewURL(file, *bytes) : std::nullopt;
        },
        [&workspace = services.workspace, file, task](const auto& document) {
            if (document)
                workspace.open(*document);
            else
                workspace.open(file);
        });
}

} // namespace wendlore
