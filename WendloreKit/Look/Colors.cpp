#include "Look/Colors.h"

namespace wendlore {

namespace {

const Colors lightColors{
    .paper = QColor(0xffffff),
    .side = QColor(0xf4f4f2),
    .line = QColor(0xe6e5e1),
    .strongLine = QColor(0xa9a8a4),
    .text = QColor(0x1f2328),
    .muted = QColor(0x6c6f76),
    .faint = QColor(0x8a8c92),
    .faintText = QColor(0x6c6f76),
    .selected = QColor(0xe3e8f4),
    .selectedText = QColor(0x1d3f91),
    .accent = QColor(0x3d64c9),
    .onAccent = QColor(0xffffff),
    .hover = QColor(0xebeae6),
    .pressed = QColor(0xe0dfda),
    .code = QColor(0xf5f5f3),
    .highlight = QColor(0xfff1a8),
    .destructive = QColor(0xc0362c),
};

const Colors darkColors{
    .paper = QColor(0x1d1e20),
    .side = QColor(0x26272a),
    .line = QColor(0x35363a),
    .strongLine = QColor(0x6d6e73),
    .text = QColor(0xe6e5e2),
    .muted = QColor(0xa1a2a6),
    .faint = QColor(0x76777c),
    .faintText = QColor(0x8e8f95),
    .selected = QColor(0x31405f),
    .selectedText = QColor(0xcfdcff),
    .accent = QColor(0x8aa9f5),
    .onAccent = QColor(0x1d1e20),
    .hover = QColor(0x303135),
    .pressed = QColor(0x3a3b40),
    .code = QColor(0x28292c),
    .highlight = QColor(0x5c5218),
    .destructive = QColor(0xff7b70),
};

} // namespace

const Colors& Colors::of(ColorScheme scheme)
{
    return scheme == ColorScheme::dark ? darkColors : lightColors;
}

const Colors& Colors::of(const QPalette& palette)
{
    return of(schemeOf(palette));
}

QPalette Colors::palette() const
{
    QPalette palette;
    palette.setColor(QPalette::Window, paper);
    palette.setColor(QPalette::Base, paper);
    palette.setColor(QPalette::AlternateBase, code);
    palette.setColor(QPalette::Button, paper);
    palette.setColor(QPalette::ToolTipBase, paper);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::BrightText, onAccent);
    palette.setColor(QPalette::PlaceholderText, faintText);
    palette.setColor(QPalette::Highlight, selected);
    palette.setColor(QPalette::HighlightedText, selectedText);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::LinkVisited, accent);
    palette.setColor(sideRole, side);
    palette.setColor(QPalette::Midlight, hover);
    palette.setColor(QPalette::Mid, line);
    palette.setColor(mutedRole, muted);
    palette.setColor(QPalette::Shadow, line);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

ColorScheme schemeOf(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightnessF() > palette.color(QPalette::Window).lightnessF()
               ? ColorScheme::dark
               : ColorScheme::light;
}

} // namespace wendlore
