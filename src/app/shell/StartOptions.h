// The command line of the editor.
#pragma once

#include "app/framework/Look.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu {

/// What another program, or the bus, starts the editor for.
enum class AutomationSwitch { None, Unregister, Register, Embedding };

struct StartOptions {
    std::string file{};      ///< to open
    std::string settings{};  ///< in place of the settings file of the user
    std::optional<look::Scheme> scheme{};
    bool splash = true;
    /// Anything but None shows no main window, and only settings and palette count beside it.
    AutomationSwitch automation = AutomationSwitch::None;
    bool forSystem = false;  ///< registration for all users
    bool wrong = false;      ///< `print` says what is wrong
    std::string print{};     ///< to be printed, and that is all
};

/// Reads the arguments after the program's name. The first switch of the automation, behind "-" or
/// "/" and in any case, decides wherever it stands; behind "--" there is none.
[[nodiscard]] StartOptions readStartOptions(const std::vector<std::string>& arguments);

/// Numbers in files stay as they are, whatever the user's locale: the toolkit's application
/// object has taken that over. REQUIRES: the object exists.
void keepNumbersPlain();

}  // namespace kavu
