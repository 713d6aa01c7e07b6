#include "Previews/QuickLookView.h"

#include "Previews/QuickLookPreview.h"
#include "Previews/QuickLookRepresentable.h"

#include <QVBoxLayout>

namespace wendlore {

QuickLookView::QuickLookView(AppState& state, const FileURL& fileURL, QWidget* parent)
    : QWidget(parent)
    , m_representable(std::make_unique<QuickLookRepresentable>(state, fileURL, *this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_representable->preview());
    setFocusProxy(m_representable->preview());
}

QuickLookView::~QuickLookView() = default;

} // namespace wendlore
