#include "Previews/FileViewer.h"

#include "Previews/GoogleDocPreview.h"
#include "Previews/HTMLViewer.h"
#include "Previews/ImageViewer.h"
#include "Previews/PDFViewer.h"
#include "Previews/QuickLookView.h"

#include "Vault/FilePreviewKind.h"

namespace wendlore {

QWidget* makeFileViewer(AppState& state, const FileURL& file, QWidget* parent)
{
    switch (FilePreviewKind::of(file)) {
    case FilePreviewKind::image:
        return new ImageViewer(state, file, parent);
    case FilePreviewKind::pdf:
        return new PDFViewer(state, file, parent);
    case FilePreviewKind::html:
        return new HTMLViewer(state, file, parent);
    case FilePreviewKind::google:
        return new GoogleDocPreview(state, file, parent);
    case FilePreviewKind::editor:
    case FilePreviewKind::other:
        break;
    }
    return new QuickLookView(state, file, parent);
}

} // namespace wendlore
