#pragma once

#include <QColor>
#include <QPalette>

namespace wendlore {

enum class ColorScheme { light, dark };

/// Every colour of the program by name. A widget takes the colours of the window that it stands in:
/// `Colors::of(palette())`.
struct Colors final
{
    QColor paper;      ///< the note, the toolbar, menus and dialogs
    QColor side;       ///< the sidebar's ground
    QColor line;       ///< hairlines and quiet borders
    QColor strongLine; ///< borders of what can be typed into or ticked
    QColor text;
    QColor muted;        ///< icons and secondary text
    QColor faint;        ///< disclosure, disabled
    QColor faintText;    ///< small print
    QColor selected;     ///< ground of the selected row
    QColor selectedText; ///< icon and text on it
    QColor accent;
    QColor onAccent;
    QColor hover;   ///< ground of what the pointer is on, and of a pressed button
    QColor pressed; ///< ground of a button while it is held down
    QColor code;
    QColor highlight;
    QColor destructive;

    [[nodiscard]] static const Colors& of(ColorScheme scheme);
    /// The colours that a palette made by `palette` was made of.
    [[nodiscard]] static const Colors& of(const QPalette& palette);

    /// These colours in the toolkit's roles.
    [[nodiscard]] QPalette palette() const;
};

/// Where palettes hold the colour of secondary text and the ground of the sidebar.
inline constexpr QPalette::ColorRole mutedRole = QPalette::Dark;
inline constexpr QPalette::ColorRole sideRole = QPalette::Light;

/// Whether a palette shows light text on a dark ground.
[[nodiscard]] ColorScheme schemeOf(const QPalette& palette);

} // namespace wendlore
