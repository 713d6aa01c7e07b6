#include "Wendlores/CommandLine.h"

#include "Wendlores/ThemeLink.h"

#include "Platform/FileAddress.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString usage = u"Användning: wendlores [MAPP|FIL|LÄNK]\n"_s;
const QString help = usage + uR"(
Öppnar Wendlores, anteckningar som vanliga filer i vanliga mappar.

  MAPP            öppna mappen som bucket
  FIL             öppna filen, i den bucket som den ligger i
  LÄNK            följ en länk som börjar med wendlore:// eller file://

Är Wendlores redan igång öppnas det där.

Utan fönster, för skript:

  search MAPP TEXT   skriv anteckningarna som innehåller texten: sökväg, tabb, rad
  tree MAPP          skriv mappens innehåll, i sidofältets ordning

  -h, --help      visa den här hjälpen
  -v, --version   visa versionen

Slutstatus: 0 om allt gick bra, 1 om något inte gick att öppna eller hittas, 2 om
kommandot inte gick att förstå.
)"_s;

CommandLine refusal(const QString& reason)
{
    return {CommandLine::Action::RefuseUsage, u"wendlores: %1\n"_s.arg(reason) + usage};
}

CommandLine forPath(const QString& path, const QString& folder)
{
    const QString whole = QDir::cleanPath(QDir(folder).absoluteFilePath(path));
    return {CommandLine::Action::Run,
            {},
            QFileInfo(whole).isDir() ? FileURL::directory(whole) : FileURL::file(whole)};
}

CommandLine forLink(const QString& text)
{
    const QUrl link(text);
    if (isOwnLink(link))
        return {CommandLine::Action::Run, {}, std::nullopt, link};
    if (const auto file = fileAt(link))
        return {CommandLine::Action::Run, {}, file};
    return refusal(u"länken går inte att öppna här: %1"_s.arg(text));
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments, const QString& folder)
{
    QStringList paths;
    bool areOptionsOver = false;
    for (const QString& argument : arguments) {
        if (areOptionsOver || !argument.startsWith(u'-') || argument == u"-"_s)
            paths.append(argument);
        else if (argument == u"--"_s)
            areOptionsOver = true;
        else if (argument == u"-h"_s || argument == u"--help"_s)
            return {Action::ShowText, help};
        else if (argument == u"-v"_s || argument == u"--version"_s)
            return {Action::ShowText, u"Wendlores " WENDLORE_VERSION " (" WENDLORE_BUILD ")\n"_s};
        else
            return refusal(u"okänd flagga %1"_s.arg(argument));
    }
    if (paths.size() > 1)
        return refusal(u"bara en mapp, fil eller länk åt gången"_s);
    if (paths.isEmpty())
        return {};
    if (paths.front().isEmpty())
        return refusal(u"tom sökväg"_s);

    const bool isLink = !areOptionsOver && paths.front().contains("://"_L1);
    return isLink ? forLink(paths.front()) : forPath(paths.front(), folder);
}

} // namespace wendlore
