// The command line of the editor.
#pragma once

#include "app/framework/Look.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu {

struct StartOptions {
    std::string file{};      ///< to open
    std::string settings{};  ///< in place of the settings file of the user
    std::optional<look::Scheme> scheme{};
    bool splash = true;
    bool automation = false;  ///< started for automation: there is no interface to show
    bool wrong = false;       ///< `print` says what is wrong
    std::string print{};      ///< to be printed, and that is all
};

/// Reads the arguments after the program's name. A switch begins with "-" or "/"; what is
/// no switch of ours and exists as a file is a file.
[[nodiscard]] StartOptions readStartOptions(const std::vector<std::string>& arguments);

/// Numbers in files stay as they are, whatever the user's locale: the toolkit's application
/// object has taken that over. REQUIRES: the object exists.
void keepNumbersPlain();

}  // namespace kavu
