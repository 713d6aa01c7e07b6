// What is started under the product's name. It becomes the program that does the work: loading the web engine
// takes longer than most searches, so that scripts get a program without it.

#include "Wendlores/CompanionCommands.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

enum ExitCode { Failed = 1 };

/// The folder of this program, however it was found; empty when the system does not tell.
std::string ownFolder()
{
    std::array<char, PATH_MAX> path{};
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
    const std::string program(path.data(), length > 0 ? std::size_t(length) : 0);
    return program.substr(0, program.rfind('/') + 1);
}

} // namespace

int main(int argc, char** argv)
{
    const bool isCommand = argc > 1 && wendlore::isCompanionCommand(argv[1]);
    const std::string program = isCommand ? "wendlores-companion" : "wendlores-window";
    // Beside this one, where they are built, or where they are installed.
    for (const char* place : {"", "../libexec/wendlores/"})
        ::execv((ownFolder() + place + program).c_str(), argv);
    std::fprintf(stderr, "wendlores: %s går inte att starta: %s\n", program.c_str(), std::strerror(errno));
    return Failed;
}
