// What the parts of the command line share while they tell the parser about their commands.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace kavu::cli {

inline constexpr const char* kFooter =
    "Exit status: 0 done, nothing reported; 1 done, and messages were reported;\n"
    "2 the operation failed or was cancelled; 64 wrong usage.\n"
    "\n"
    "`kavu-cli COMMAND --help` tells about a command.";

/// A wrong value; the text is for the user.
struct UsageError {
    std::string text;
};

/// One option that takes one value. Without this a list option would swallow the argument
/// after it, and a value in brackets would be taken for a list.
inline CLI::Option* oneValue(CLI::Option* option, const char* valueName) {
    return option->expected(1)->allow_extra_args(false)->type_name(valueName);
}

inline CLI::App* addCommand(CLI::App& app, const char* name, const char* description) {
    CLI::App* const command = app.add_subcommand(name, description);
    // So that the common options may also follow the command.
    command->fallthrough();
    command->group("Commands");
    command->footer(kFooter);
    return command;
}

}  // namespace kavu::cli
