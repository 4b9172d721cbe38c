// The outputs of a command other than TMATS files: pictures, tables, documents.
#pragma once

#include "cli/CommandLine.h"

#include <string>

namespace kavu {
class UserInterface;
}

namespace kavu::cli {

/// Whether a command may write this output, to be asked before it works. A file that is an
/// input of the command is refused, and so is one that exists, unless the line has
/// `--overwrite`; why is reported.
[[nodiscard]] bool mayWriteOutput(UserInterface* ui, const CommandLine& line,
                                  const std::string& path);

/// Whether a file that is to be used as the settings file may be one: it has sections. One that
/// does not exist, or is empty, may. Else it is reported.
[[nodiscard]] bool isSettingsFile(UserInterface* ui, const std::string& path);

}  // namespace kavu::cli
