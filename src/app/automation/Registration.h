// The files by which the bus finds and starts the automation.
#pragma once

#include "core/files/Environment.h"
#include "core/files/IoStatus.h"

#include <string>

namespace kavu {

/// Whose bus is to find it.
enum class RegistrationScope {
    User,   ///< `$XDG_DATA_HOME`, or ".local/share" of the home
    System  ///< "/usr/share"
};

/// The folder that both calls work below.
[[nodiscard]] std::string registrationFolder(const Environment& environment,
                                             RegistrationScope scope);

/// Writes an activation file for each name on the bus, which starts `program`, and the type library
/// of each interface. The first failure ends it.
[[nodiscard]] IoStatus registerAutomation(const std::string& folder, const std::string& program);
/// Removes these files. One that is not there is no failure.
[[nodiscard]] IoStatus unregisterAutomation(const std::string& folder);

}  // namespace kavu
