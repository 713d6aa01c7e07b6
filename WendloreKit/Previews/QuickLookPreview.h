#pragma once

#include "Decoder/QuickLookLimits.h"
#include "Previews/QuickLookLoading.h"

#include <QWidget>

#include <memory>

namespace wendlore {

class AppState;
class ScheduledTask;

/// Shows one file of any kind: its card at once, and its preview in place of the card when that is ready. The
/// work goes on in the background and ends when the item is closed or replaced.
class QuickLookPreview final : public QWidget
{
    Q_OBJECT

public:
    explicit QuickLookPreview(AppState& state, QWidget* parent = nullptr);
    ~QuickLookPreview() override;

    void setItem(const FileURL& file);
    /// Ends the work, and lets go of everything that showed the file.
    void close();
    [[nodiscard]] bool hasItem() const { return m_content != nullptr; }

Q_SIGNALS:
    /// The preview took the card's place.
    void contentShown();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Makes of a document of an office program what only that can make of it.
    void convert(const FileURL& file);
    void show(const FileURL& file, QuickLookContent content);
    void replaceContent(QWidget* content);

    AppState* m_state;
    QuickLookLimits m_limits;
    std::unique_ptr<ScheduledTask> m_loading;
    QWidget* m_content = nullptr;
};

} // namespace wendlore
