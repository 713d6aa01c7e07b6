#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <utility>

namespace wendlore {

/// What a text preview marks in files of one language.
struct QuickLookLanguage final
{
    QSet<QString> words;
    QList<QString> lineComments;
    QList<std::pair<QString, QString>> blockComments;
    QString quotes;
    bool hasNumbers = true;
    bool isCaseSensitive = true;
    /// Words and strings before a colon or an equals sign are names.
    bool keys = false;
    bool tags = false;

    /// The language of files with that extension; one that marks nothing for an extension that says nothing.
    [[nodiscard]] static const QuickLookLanguage& of(const QString& extension);
};

} // namespace wendlore
