#include "Previews/ImageViewer.h"

#include "Previews/DecoderProcess.h"
#include "Previews/ImageAnimation.h"
#include "Previews/ImageDecoding.h"
#include "Previews/ReadForViewing.h"
#include "Previews/ViewerStack.h"
#include "Previews/ZoomableImage.h"

#include "State/AppState.h"

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr qint64 maximumFileSize = 512LL << 20;
constexpr int messageSymbol = 32;

} // namespace

struct ImageViewer::Loaded final
{
    ImagePyramid image;
    /// The file's bytes, when the image moves.
    QByteArray moving;
    /// Has the whole of what is only a sketch yet.
    std::shared_ptr<ImageDecoder> decoder;
};

ImageViewer::Loaded ImageViewer::load(const std::optional<QByteArray>& bytes, const QuickLookLimits& limits)
{
    if (!bytes)
        return {};
    const auto decoder = std::make_shared<ImageDecoder>(*bytes);
    const ImageSketch sketch = decoder->sketch(limits.withTime(maximumDecodingTime()));
    if (!sketch.image.isNull())
        return {ImagePyramid(sketch.image, sketch.size), {}, decoder};
    const DecodedImage decoded = decoder->decode(limits.withTime(maximumDecodingTime()));
    return {ImagePyramid(decoded.image), decoded.moves ? *bytes : QByteArray(), nullptr};
}

ImageViewer::ImageViewer(AppState& state, const FileURL& file, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_file(file)
    , m_stack(new ViewerStack(this))
{
    m_loading = readInBackground(
        state.services(), file, maximumFileSize,
        [limits = m_limits](const auto& bytes) { return load(bytes, limits); },
        [this](const Loaded& loaded) { didLoad(loaded); });
}

ImageViewer::~ImageViewer()
{
    // What goes on in the background would only keep others from their turn.
    m_limits.stop();
}

void ImageViewer::didLoad(const Loaded& loaded)
{
    m_loading.reset();
    if (loaded.image.isEmpty()) {
        m_stack->showMessage(u"Kunde inte ladda bilden"_s, messageSymbol);
        return;
    }
    auto* view = new ZoomableImage(loaded.image);
    view->setAccessibleName(m_file.lastPathComponent());
    m_stack->showContent(view);
    if (loaded.decoder)
        finish(loaded.decoder, *view);
    if (loaded.moving.isEmpty())
        return;
    m_animation = new ImageAnimation(m_state.services().scheduler, loaded.moving, view);
    connect(m_animation, &ImageAnimation::frameChanged, view, &ZoomableImage::setPicture);
    m_animation->setPaused(!isVisible());
}

void ImageViewer::finish(const std::shared_ptr<ImageDecoder>& decoder, ZoomableImage& view)
{
    m_loading = m_state.services().scheduler.inBackground([this, decoder, &view, limits = m_limits] {
        const DecodedImage decoded = decoder->decode(limits.withTime(maximumDecodingTime()));
        return [this, &view, image = ImagePyramid(decoded.image)] {
            m_loading.reset();
            if (image.isEmpty())
                m_stack->showMessage(u"Kunde inte ladda bilden"_s, messageSymbol);
            else
                view.setPicture(image);
        };
    });
}

void ImageViewer::showEvent(QShowEvent*)
{
    if (m_animation)
        m_animation->setPaused(false);
}

void ImageViewer::hideEvent(QHideEvent*)
{
    if (m_animation)
        m_animation->setPaused(true);
}

} // namespace wendlore
