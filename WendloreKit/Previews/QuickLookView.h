#pragma once

#include <QWidget>

#include <memory>

namespace wendlore {

class AppState;
class FileURL;
class QuickLookRepresentable;

/// Shows a file that has no viewer of its own, filling the space there is.
class QuickLookView final : public QWidget
{
    Q_OBJECT

public:
    QuickLookView(AppState& state, const FileURL& fileURL, QWidget* parent = nullptr);
    ~QuickLookView() override;

    [[nodiscard]] QuickLookRepresentable& representable() const { return *m_representable; }

private:
    std::unique_ptr<QuickLookRepresentable> m_representable;
};

} // namespace wendlore
