// The commands of the translator session, which open no document.
#pragma once

#include "cli/Commands.h"

namespace kavu::cli {

/// True for a command of `sdk`.
[[nodiscard]] bool isSdkCommand(Command command);
[[nodiscard]] bool sdkCommand(CommandContext& context, CommandOutput& output);

}  // namespace kavu::cli
