#include "Decoder/QuickLookLanguage.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

QSet<QString> words(const QString& list)
{
    const QStringList split = list.split(u' ');
    return {split.begin(), split.end()};
}

/// Braces and semicolons: most of the languages that programs are written in.
QuickLookLanguage braces()
{
    QuickLookLanguage language;
    language.words =
        words(u"abstract as async auto await bool boolean break byte case catch char class const constexpr "
              "continue default defer delete do double else enum export extends extern false final finally "
              "float fn for foreach from func function go goto if impl implements import in inline int "
              "interface internal is let long match mod mut namespace new nil null nullptr operator override "
              "package private protected pub public readonly ref return self short signed sizeof static "
              "string struct super switch template this throw throws trait true try type typedef typename "
              "undefined union unsigned use using val var virtual void volatile when where while yield "
              "#include #define #if #ifdef #ifndef #endif #else #pragma @Override"_s);
    language.lineComments = {u"//"_s};
    language.blockComments = {{u"/*"_s, u"*/"_s}};
    language.quotes = u"\"'`"_s;
    return language;
}

QuickLookLanguage scripts()
{
    QuickLookLanguage language;
    language.words = words(
        u"and as assert async await begin break case class continue def del do done elif else elsif end "
        "esac except exit export False fi finally for from function global if import in is lambda local "
        "module next nil None nonlocal not or pass print puts raise require rescue return self source "
        "then True try unless until use while with yield my sub foreach library"_s);
    language.lineComments = {u"#"_s};
    language.quotes = u"\"'"_s;
    return language;
}

QuickLookLanguage queries()
{
    QuickLookLanguage language;
    language.words = words(
        u"ADD ALL ALTER AND AS ASC BEGIN BETWEEN BY CASE CHECK COLUMN COMMIT CREATE DEFAULT DELETE DESC "
        "DISTINCT DROP ELSE END EXISTS FOREIGN FROM GROUP HAVING IF IN INDEX INNER INSERT INTO IS JOIN "
        "KEY LEFT LIKE LIMIT NOT NULL ON OR ORDER OUTER PRIMARY REFERENCES RIGHT ROLLBACK SELECT SET "
        "TABLE THEN TRIGGER UNION UNIQUE UPDATE VALUES VIEW WHEN WHERE"_s);
    language.lineComments = {u"--"_s};
    language.blockComments = {{u"/*"_s, u"*/"_s}};
    language.quotes = u"'\""_s;
    language.isCaseSensitive = false;
    return language;
}

QuickLookLanguage markup()
{
    QuickLookLanguage language;
    language.blockComments = {{u"<!--"_s, u"-->"_s}};
    language.hasNumbers = false;
    language.tags = true;
    return language;
}

/// Names and what they are set to: JSON, YAML, settings, style sheets.
QuickLookLanguage settings(const QList<QString>& comments, const QString& quotes = u"\"'"_s)
{
    QuickLookLanguage language;
    language.words = words(u"true false null yes no on off"_s);
    language.lineComments = comments;
    language.quotes = quotes;
    language.keys = true;
    return language;
}

QuickLookLanguage styles()
{
    QuickLookLanguage language = settings({}, u"\"'"_s);
    language.blockComments = {{u"/*"_s, u"*/"_s}};
    return language;
}

QuickLookLanguage logs()
{
    QuickLookLanguage language;
    language.words = words(u"ERROR FATAL CRITICAL WARN WARNING FAILED FAILURE PANIC"_s);
    language.isCaseSensitive = false;
    return language;
}

QHash<QString, QuickLookLanguage> makeTable()
{
    const std::pair<const char*, QuickLookLanguage> families[] = {
        {"c h cc cpp cxx hpp hh m mm java js mjs cjs jsx ts tsx cs go rs swift kt kts scala dart php groovy "
         "gradle glsl proto",
         braces()},
        {"py pyw rb sh bash zsh fish pl pm r jl tcl cmake make mk nix lua awk dockerfile", scripts()},
        {"sql", queries()},
        {"xml xsl xslt xsd rss atom plist qrc ui gpx kml opml xhtml vue svelte dtd", markup()},
        {"json jsonl geojson webmanifest ipynb map", settings({}, u"\""_s)},
        {"json5 jsonc", settings({u"//"_s}, u"\"'"_s)},
        {"yaml yml toml", settings({u"#"_s})},
        {"ini cfg conf properties env desktop service editorconfig gitconfig", settings({u"#"_s, u";"_s})},
        {"css scss less", styles()},
        {"log out err", logs()},
    };
    QHash<QString, QuickLookLanguage> table;
    for (const auto& [extensions, language] : families) {
        for (const QString& extension : QString::fromLatin1(extensions).split(u' '))
            table.insert(extension, language);
    }
    return table;
}

} // namespace

const QuickLookLanguage& QuickLookLanguage::of(const QString& extension)
{
    static const QHash<QString, QuickLookLanguage> table = makeTable();
    static const QuickLookLanguage plain{.words = {},
                                         .lineComments = {},
                                         .blockComments = {},
                                         .quotes = {},
                                         .hasNumbers = false,
                                         .isCaseSensitive = true,
                                         .keys = false,
                                         .tags = false};
    const auto found = table.constFind(extension.toLower());
    return found == table.constEnd() ? plain : *found;
}

} // namespace wendlore
