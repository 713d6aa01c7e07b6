#pragma once

#include <QJsonObject>

namespace wendlore {

/// The formatting at the caret, as the editor page reports it.
struct ToolbarState final
{
    bool bold = false;
    bool italic = false;
    bool highlight = false;
    bool bulletList = false;
    bool orderedList = false;
    bool inTable = false;
    int heading = 0; ///< 0 is body text, 1 to 5 a heading level

    /// Reads a "selection" message; keys that are missing or of another type give false, respectively 0.
    [[nodiscard]] static ToolbarState fromMessage(const QJsonObject& message);

    friend bool operator==(const ToolbarState&, const ToolbarState&) = default;
};

} // namespace wendlore
