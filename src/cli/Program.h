// One run of the program: from the arguments to the exit status.
#pragma once

#include "cli/ExitStatus.h"
#include "core/files/Environment.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace kavu::cli {

struct ProgramStreams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
};

/// Runs a command. `interrupted` returns true once the user has asked to stop; the run
/// then ends as a cancelled one. The working store is removed in every case.
[[nodiscard]] ExitStatus runProgram(const std::vector<std::string>& arguments,
                                    const Environment& environment, ProgramStreams streams,
                                    const std::function<bool()>& interrupted);

}  // namespace kavu::cli
