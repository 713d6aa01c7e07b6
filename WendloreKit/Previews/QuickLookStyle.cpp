#include "Previews/QuickLookStyle.h"

#include "Look/Colors.h"

namespace wendlore {

namespace {

const QByteArray rules = R"CSS(
* { box-sizing: border-box }
html { background: var(--paper); color: var(--text); font: 13px/1.5 Inter, system-ui, sans-serif }
body { margin: 0; padding: 16px 24px; overflow-wrap: anywhere }
::selection { background: var(--selected) }
::-webkit-scrollbar { width: 12px; height: 12px }
::-webkit-scrollbar-thumb { background: var(--strong-line); border: 3px solid var(--paper); border-radius: 6px }
::-webkit-scrollbar-corner { background: var(--paper) }
a { color: var(--accent) }
.notice { margin: -16px -24px 16px; padding: 8px 24px; background: var(--side); color: var(--muted);
  border-bottom: 1px solid var(--line); font-size: 12px }
.muted { color: var(--muted) }
pre { margin: 0; font: 12.5px/1.55 'JetBrains Mono', 'DejaVu Sans Mono', monospace; white-space: pre-wrap;
  tab-size: 4 }
pre > div, article > section { content-visibility: auto; contain-intrinsic-size: 1px 1900px }
pre i { font-style: normal }
pre .c { color: var(--muted) } pre .s { color: var(--string) } pre .n { color: var(--number) }
pre .k { color: var(--accent) } pre .p { color: var(--name) }
table { border-collapse: collapse; font-size: 12.5px }
td, th { padding: 5px 10px; border: 1px solid var(--line); text-align: left; vertical-align: top;
  max-width: 420px; white-space: pre-wrap }
th { position: sticky; top: 0; background: var(--side); font-weight: 600 }
thead, thead th { z-index: 1 }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap }
.listing { width: 100% } .listing td, .listing th { border-width: 0 0 1px; white-space: nowrap }
.listing td:first-child { white-space: pre-wrap; max-width: none; width: 100% }
.listing .folder { color: var(--muted) }
h1 { font-size: 24px; line-height: 1.25; margin: 0 0 12px } h2 { font-size: 18px; margin: 28px 0 8px }
h3, h4, h5, h6 { font-size: 14px; margin: 20px 0 6px }
article { max-width: 46em; margin: 0 auto; font-size: 15px; line-height: 1.6 }
.headers { width: 100% }
.letter { white-space: pre-wrap; tab-size: 4 }
article img { max-width: 100%; height: auto }
/* Drawn for white paper, what can be seen through would not show in the dark. */
article img, .centered img { background: #fff }
.cover { display: block; max-height: 420px; margin: 0 auto 24px; border: 1px solid var(--line) }
nav { border-bottom: 1px solid var(--line); margin-bottom: 24px; padding-bottom: 16px } nav ol { padding-left: 24px }
blockquote { margin: 0 0 0 8px; padding-left: 16px; border-left: 3px solid var(--line) }
.headers { border-bottom: 1px solid var(--line); margin-bottom: 16px; padding-bottom: 12px }
.headers td { border: 0; padding: 2px 12px 2px 0 } .headers td:first-child { color: var(--muted) }
.centered { display: flex; align-items: center; justify-content: center; min-height: calc(100vh - 32px) }
.centered > * { max-width: 100%; max-height: calc(100vh - 32px) } .centered audio { width: min(520px, 100%) }
.specimen { font-family: specimen; overflow-wrap: normal } .specimen p { margin: 0 0 14px; line-height: 1.25 }
.sheet { margin-bottom: 32px }
)CSS";

QByteArray variable(const char* name, const QColor& color)
{
    return QByteArray("--") + name + ':' + color.name().toLatin1() + ';';
}

} // namespace

QByteArray quickLookStyle(const Colors& colors)
{
    const bool isDark = colors.paper.lightness() < colors.text.lightness();
    return ":root{" + variable("paper", colors.paper) + variable("side", colors.side) +
           variable("line", colors.line) + variable("strong-line", colors.strongLine) +
           variable("text", colors.text) + variable("muted", colors.muted) +
           variable("accent", colors.accent) + variable("selected", colors.selected) +
           variable("string", isDark ? QColor(0x8f, 0xc9, 0x8a) : QColor(0x2c, 0x78, 0x3c)) +
           variable("number", isDark ? QColor(0xd8, 0xa6, 0x6e) : QColor(0x9a, 0x55, 0x0e)) +
           variable("name", isDark ? QColor(0xb9, 0xa4, 0xe6) : QColor(0x6b, 0x46, 0xa8)) +
           "color-scheme:" + (isDark ? "dark" : "light") + '}' + rules;
}

} // namespace wendlore
