#pragma once

#include <QWidget>

namespace wendlore {

class Workspace;

/// The sidebar's last lines: where to report errors and wishes, and the version and build.
class SidebarFooter final : public QWidget
{
    Q_OBJECT

public:
    explicit SidebarFooter(Workspace& workspace, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace wendlore
