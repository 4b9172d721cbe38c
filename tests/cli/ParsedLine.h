// A valid command line.
#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::cli {

inline CommandLine parsed(const std::vector<std::string>& arguments) {
    auto result = parseCommandLine(arguments);
    EXPECT_TRUE(result.line.has_value()) << result.err;
    return result.line.value_or(CommandLine{});
}

}  // namespace kavu::cli
