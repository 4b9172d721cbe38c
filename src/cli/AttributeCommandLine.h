// The part of the command line that tells of codes and values: `vocabulary`, `get`, `set`.
#pragma once

#include "cli/CommandLine.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu::cli {

/// What these commands take, before it is checked.
struct RawAttributes {
    std::string letter;
    std::vector<std::string> codes;
    std::vector<std::string> assignments;  ///< CODE=VALUE
};

/// "G, T, R": the groups that have a vocabulary.
[[nodiscard]] std::string vocabularyLetterList();

/// Checks what belongs to the command of the line and puts it there. Gives what is wrong with
/// it, for the user.
[[nodiscard]] std::optional<std::string> readAttributeArguments(const RawAttributes& raw,
                                                                CommandLine& line);

}  // namespace kavu::cli
