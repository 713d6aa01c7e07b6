#pragma once

#include "State/Workspace.h"

#include <QDBusConnection>

namespace wendlore {

/// The desktop that the program runs on.
class DesktopWorkspace final : public Workspace
{
public:
    /// Asks for the computer's name on `bus`.
    explicit DesktopWorkspace(QDBusConnection bus = QDBusConnection::systemBus());

    void open(const QUrl& address) override;
    void open(const FileURL& file) override;
    /// The name that its owner gave the computer, else its name in the network.
    [[nodiscard]] QString computerName() const override;

private:
    QDBusConnection m_bus;
};

} // namespace wendlore
