// The part of the command line for codes and values: `vocabulary`, `get`, `set`.
#pragma once

#include "cli/CommandLine.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu::cli {

/// The arguments of these commands, before they are checked.
struct RawAttributes {
    std::string letter;
    std::vector<std::string> codes;
    std::vector<std::string> assignments;  ///< CODE=VALUE
};

/// "G, T, R": the groups that have a vocabulary.
[[nodiscard]] std::string vocabularyLetterList();

/// Checks the arguments for the command of `line` and stores them there. Returns an error
/// text for the user, or nothing.
[[nodiscard]] std::optional<std::string> readAttributeArguments(const RawAttributes& raw,
                                                                CommandLine& line);

}  // namespace kavu::cli
