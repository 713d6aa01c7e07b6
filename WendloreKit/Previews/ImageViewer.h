#pragma once

#include "Previews/QuickLookLimits.h"

#include "Vault/FileURL.h"

#include <QWidget>

#include <memory>

namespace wendlore {

class AppState;
class ImageAnimation;
class ScheduledTask;
class ViewerStack;

/// Shows an image file. Read and decoded in the background; an image that cannot be shown gives a message.
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

    void didLoad(const Loaded& loaded);

    AppState& m_state;
    FileURL m_file;
    ViewerStack* m_stack;
    ImageAnimation* m_animation = nullptr;
    QuickLookLimits m_limits;
    std::unique_ptr<ScheduledTask> m_loading;
};

} // namespace wendlore
