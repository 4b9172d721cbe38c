// The part of the command line for tables and XML files: `dbase`, `xml`.
#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace kavu::cli {

/// The arguments of these commands, before they are checked.
struct RawTable {
    std::string row;
};

/// The commands under `dbase` and `xml`, each with its part of the parser.
struct TableApps {
    CLI::App* dbaseSet = nullptr;
    std::vector<std::pair<Command, CLI::App*>> commands{};
};

[[nodiscard]] TableApps addTableCommands(CLI::App& app, CommandLine& line, RawTable& raw);
/// Checks the arguments of these commands and stores them in the line; throws a `UsageError`.
void readTableArguments(const TableApps& apps, const RawTable& raw, CommandLine& line);

}  // namespace kavu::cli
