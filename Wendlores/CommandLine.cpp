#include "Wendlores/CommandLine.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

const QString usage = u"Användning: wendlores [MAPP|FIL]\n"_s;
const QString help = usage + uR"(
Öppnar Wendlores, anteckningar som vanliga filer i vanliga mappar.

  MAPP            öppna mappen som bucket
  FIL             öppna filen, i den bucket som den ligger i

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
    return {CommandLine::Action::RefuseUsage, u"wendlores: %1\n"_s.arg(reason) + usage, std::nullopt};
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
            return {Action::ShowText, help, std::nullopt};
        else if (argument == u"-v"_s || argument == u"--version"_s)
            return {Action::ShowText, u"Wendlores " WENDLORE_VERSION " (" WENDLORE_BUILD ")\n"_s,
                    std::nullopt};
        else
            return refusal(u"okänd flagga %1"_s.arg(argument));
    }
    if (paths.size() > 1)
        return refusal(u"bara en mapp eller fil åt gången"_s);
    if (paths.isEmpty())
        return {};
    if (paths.front().isEmpty())
        return refusal(u"tom sökväg"_s);

    const QString path = QDir::cleanPath(QDir(folder).absoluteFilePath(paths.front()));
    return {Action::Run, {}, QFileInfo(path).isDir() ? FileURL::directory(path) : FileURL::file(path)};
}

} // namespace wendlore
