#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace wendlore {

/// One change of a long note as the page reports it: `insert` in place of what stands from `from` to `to`, in
/// UTF-16 code units of the text before it.
struct TextEdit final
{
    qsizetype from = 0;
    qsizetype to = 0;
    QString insert;
    /// How many edits the page has reported since host and page last had the whole text in common, this one
    /// too.
    int count = 0;
    /// How long the text is afterwards.
    qsizetype length = 0;

    /// Nothing when a key is missing or of another type.
    [[nodiscard]] static std::optional<TextEdit> fromMessage(const QJsonObject& body);
    /// The text after the edit. Nothing when it cannot have been made in a text like this.
    [[nodiscard]] std::optional<QString> appliedTo(const QString& text) const;
};

} // namespace wendlore
