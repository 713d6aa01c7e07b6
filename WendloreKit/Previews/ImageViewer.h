#pragma once

#include "Decoder/QuickLookLimits.h"

#include "Vault/FileURL.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace wendlore {

class AppState;
class ImageAnimation;
class ImageDecoder;
class ScheduledTask;
class ViewerStack;
class ZoomableImage;

/// Shows an image file. Read and decoded in the background; of a large photograph a sketch is shown first. An
/// image that cannot be shown gives a message.
class ImageViewer final : public QWidget
{
    Q_OBJECT

public:
    ImageViewer(AppState& state, const FileURL& file, QWidget* parent = nullptr);
    ~ImageViewer() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Loaded;

    [[nodiscard]] static Loaded load(const std::optional<QByteArray>& bytes, const QuickLookLimits& limits);
    void didLoad(const Loaded& loaded);
    /// Replaces the sketch in `view` by the image.
    void finish(const std::shared_ptr<ImageDecoder>& decoder, ZoomableImage& view);

    AppState& m_state;
    FileURL m_file;
    ViewerStack* m_stack;
    ImageAnimation* m_animation = nullptr;
    QuickLookLimits m_limits;
    std::unique_ptr<ScheduledTask> m_loading;
};

} // namespace wendlore
