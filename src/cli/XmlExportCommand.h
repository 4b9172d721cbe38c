// `xml-export`, which opens no document: the conversion of a TMATS file to TMATS XML.
#pragma once

#include "cli/Commands.h"

namespace CLI {
class App;
}

namespace kavu::cli {

/// Tells the parser about the command.
[[nodiscard]] CLI::App* addXmlExportCommand(CLI::App& app, CommandLine& line);

/// Converts the file of the line. All that is to be said is in the members of the output, also
/// after a failure; `output.reported` says that there were errors or warnings.
[[nodiscard]] bool xmlExportCommand(CommandContext& context, CommandOutput& output);

}  // namespace kavu::cli
