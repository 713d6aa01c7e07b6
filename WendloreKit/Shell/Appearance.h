#pragma once

#include "Look/Colors.h"

#include <QObject>

namespace wendlore {

class AppState;
class Style;
class SystemAppearance;

/// Gives the program its font and the colours that the user chose, or those of the desktop, and follows both
/// when they change.
class Appearance final : public QObject
{
    Q_OBJECT

public:
    Appearance(AppState& state, SystemAppearance& system, Style& style, QObject* parent = nullptr);

    [[nodiscard]] ColorScheme colorScheme() const;

private:
    void apply();

    AppState& m_state;
    SystemAppearance& m_system;
    Style& m_style;
};

} // namespace wendlore
