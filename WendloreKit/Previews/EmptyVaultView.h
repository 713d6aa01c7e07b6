#pragma once

#include <QWidget>

namespace wendlore {

class AppState;

/// What the window shows while no bucket is open: an invitation to choose one.
class EmptyVaultView final : public QWidget
{
    Q_OBJECT

public:
    explicit EmptyVaultView(AppState& state, QWidget* parent = nullptr);
};

} // namespace wendlore
