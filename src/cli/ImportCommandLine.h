// The part of the command line for the import of tables: `mdb import`, `mdb profiles`.
#pragma once

#include "cli/MdbCommandLine.h"

#include <string>
#include <vector>

namespace kavu::cli {

/// The arguments of these commands, before they are checked.
struct RawImport {
    std::vector<std::string> map;  ///< FIELD=REF
    std::string delimiter;
};

void addImportCommands(MdbApps& apps, CommandLine& line, RawImport& import);
/// Checks the arguments of an import and stores them in the line; throws a `UsageError`.
void readImportArguments(const RawImport& raw, CommandLine& line);

}  // namespace kavu::cli
