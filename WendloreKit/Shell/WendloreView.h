#pragma once

#include "Vault/RevealRequest.h"

#include <QSplitter>

#include <functional>
#include <memory>
#include <optional>

namespace wendlore {

class AppState;
class PreviewArea;
class SidebarView;
class UndoRegistrar;
struct Services;

/// One bucket's sidebar and, beside it, what is selected there: the whole workspace as a view for another
/// program's window. It has a state of its own and keeps its sidebar's width for each bucket.
class WendloreView final : public QSplitter
{
    Q_OBJECT

public:
    struct Options final
    {
        /// A file to show at once.
        std::optional<RevealRequest> reveal = std::nullopt;
        /// Whether the editor has its commands in a bar of its own.
        bool inlineFileToolbar = false;
        /// Told of the selected file, or that there is none: at first, and whenever it changes.
        std::function<void(const std::optional<FileURL>& file)> onSelectedFileChange = {};
        /// Where moves by dragging leave their way back; it outlives the view.
        UndoRegistrar* undo = nullptr;
    };

    /// The services outlive the view.
    WendloreView(const Services& services, const FileURL& bucketURL, Options options,
                 QWidget* parent = nullptr);
    ~WendloreView() override;

    [[nodiscard]] AppState& store() const { return *m_store; }
    [[nodiscard]] const FileURL& bucketURL() const { return m_bucketURL; }

    /// Shows another bucket.
    void setBucketURL(const FileURL& bucket);
    /// Shows a file, unless this very request was the last one.
    void setReveal(const std::optional<RevealRequest>& reveal);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeSidebar();
    void keepSidebarWidth();
    void tellSelection() const;

    std::unique_ptr<AppState> m_store;
    FileURL m_bucketURL;
    Options m_options;
    SidebarView* m_sidebar = nullptr;
    PreviewArea* m_preview = nullptr;
};

} // namespace wendlore
