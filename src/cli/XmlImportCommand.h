// `xml-import`, which opens no document: the conversion of TMATS XML to a TMATS file.
#pragma once

#include "cli/Commands.h"

namespace CLI {
class App;
}

namespace kavu::cli {

/// Tells the parser about the command.
[[nodiscard]] CLI::App* addXmlImportCommand(CLI::App& app, CommandLine& line);

/// Converts the file of the line. False if the output was not created; the members of the output
/// are set in any case.
[[nodiscard]] bool xmlImportCommand(CommandContext& context, CommandOutput& output);

}  // namespace kavu::cli
