#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace wendlore {

/// The commands for scripts. They are known apart from what they do, to programs that link no Qt.
constexpr std::string_view searchCommand = "search";
constexpr std::string_view treeCommand = "tree";

/// Whether the first argument behind the program's name is a command.
constexpr bool isCompanionCommand(std::string_view argument)
{
    constexpr std::array commands{searchCommand, treeCommand};
    return std::ranges::find(commands, argument) != commands.end();
}

} // namespace wendlore
