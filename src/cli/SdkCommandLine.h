// The part of the command line for the translator session: `sdk`.
#pragma once

#include "cli/CommandLine.h"

#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace kavu::cli {

/// The commands under `sdk`, each with its part of the parser.
using SdkApps = std::vector<std::pair<Command, CLI::App*>>;

[[nodiscard]] SdkApps addSdkCommands(CLI::App& app, CommandLine& line);

}  // namespace kavu::cli
