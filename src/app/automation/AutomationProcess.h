// The process that the bus starts: serves the automation without a main window.
#pragma once

#include "app/shell/StartOptions.h"

#include <functional>

namespace kavu {

/// Serves both names until nobody needs them, `isStopped` says so, or the bus ends, and gives the
/// exit status. Another process that serves them already ends this one at once, with 0. When the
/// bus ends, what is not saved is left in the working store, to be recovered; a stop drops it.
[[nodiscard]] int serveAutomation(int& argc, char** argv, const StartOptions& options,
                                  const std::function<bool()>& isStopped);

/// Writes or removes the files of the registration, as the switch says, and reports on standard
/// error what could not be. Gives the exit status.
[[nodiscard]] int changeRegistration(int& argc, char** argv, const StartOptions& options);

}  // namespace kavu
