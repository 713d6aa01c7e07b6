#pragma once

#include <QString>
#include <QTextDocument>

namespace wendlore {

/// What to set as a tool tip so that it shows `text` letter by letter, also a name that looks like markup.
[[nodiscard]] inline QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace wendlore
