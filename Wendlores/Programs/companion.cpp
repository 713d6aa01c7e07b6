// Carries out a command for scripts and ends.

#include "Wendlores/Companion.h"

#include <QDir>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    using namespace wendlore;

    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    const Companion::Answer answer = Companion::run(arguments, QDir::currentPath());
    std::fwrite(answer.output.constData(), 1, size_t(answer.output.size()), stdout);
    std::fwrite(answer.errors.constData(), 1, size_t(answer.errors.size()), stderr);
    return std::fflush(stdout) == 0 ? answer.status : Companion::Misused;
}
