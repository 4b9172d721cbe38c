#include "core/files/Environment.h"

#include "core/files/FileIo.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace kavu {

Environment Environment::ofProcess() {
    Environment environment;
    environment.variable = [](const std::string& name) -> std::optional<std::string> {
        const char* const value = std::getenv(name.c_str());
        return value == nullptr || *value == 0 ? std::nullopt : std::optional<std::string>(value);
    };
    std::array<char, 4096> program{};
    const auto length = ::readlink("/proc/self/exe", program.data(), program.size());
    if (length > 0) {
        environment.programFolder =
            folderOf(std::string(program.data(), static_cast<std::size_t>(length)));
    }
    if (const passwd* const user = ::getpwuid(::geteuid()); user != nullptr) {
        environment.userName = user->pw_name;
        environment.accountHome = user->pw_dir == nullptr ? "" : user->pw_dir;
    }
    if (environment.userName.empty()) {
        environment.userName = std::to_string(::geteuid());
    }
    return environment;
}

}  // namespace kavu
