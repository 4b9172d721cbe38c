// How a run of the program ended, as scripts see it.
#pragma once

namespace kavu::cli {

enum class ExitStatus {
    Clean = 0,     ///< done, nothing was reported
    Reported = 1,  ///< done, and messages were reported
    Failed = 2,    ///< no document, no output, or cancelled
    Usage = 64,    ///< the command line is wrong
};

}  // namespace kavu::cli
