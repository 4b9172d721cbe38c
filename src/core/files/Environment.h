// What the program gets from the system it runs on, passed in so that tests can set it.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace kavu {

struct Environment {
    /// The value of an environment variable; nothing if it is unset or empty.
    std::function<std::optional<std::string>(const std::string& name)> variable;
    /// The folder of the program, without a trailing separator.
    std::string programFolder;
    std::string userName;
    /// The home of the user's account, whatever the variable says; empty if there is none.
    std::string accountHome;

    /// The environment of this process.
    [[nodiscard]] static Environment ofProcess();
};

}  // namespace kavu
