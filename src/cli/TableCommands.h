// The commands of tables and XML files, which open no document.
#pragma once

#include "cli/Commands.h"

namespace kavu::cli {

/// True for a command of `dbase` or `xml`.
[[nodiscard]] bool isTableCommand(Command command);
[[nodiscard]] bool tableCommand(CommandContext& context, CommandOutput& output);

}  // namespace kavu::cli
