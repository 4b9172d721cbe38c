// The part of the command line for reports and their layouts: `layout`, `report`, `calibration`,
// `plots`, `workbook`.
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
struct RawReport {
    std::vector<std::string> assignments;  ///< KEY=VALUE
    std::string pageWidth;
    std::string pageLines;
    std::string startPage;
};

/// The commands, each with its part of the parser.
struct ReportApps {
    std::vector<std::pair<Command, CLI::App*>> commands{};
};

[[nodiscard]] ReportApps addReportCommands(CLI::App& app, CommandLine& line, RawReport& raw);
/// Checks the arguments of these commands and stores them in the line; throws a `UsageError`.
void readReportArguments(const RawReport& raw, CommandLine& line);

}  // namespace kavu::cli
