// The part of the command line for the measurement database: `mdb`.
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
struct RawMdb {
    std::string version;
    std::string to;
    std::string edition;
    std::string fields = "all";
    std::vector<std::string> values;  ///< FIELD=VALUE
};

/// The commands under `mdb`, each with its part of the parser.
struct MdbApps {
    CLI::App* mdb = nullptr;
    std::vector<std::pair<Command, CLI::App*>> commands{};
};

[[nodiscard]] MdbApps addMdbCommands(CLI::App& app, CommandLine& line, RawMdb& raw);
/// Checks the arguments of an `mdb` command and stores them in the line; throws a `UsageError`.
void readMdbArguments(const MdbApps& apps, const RawMdb& raw, CommandLine& line);

}  // namespace kavu::cli
