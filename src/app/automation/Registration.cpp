#include "app/automation/Registration.h"

#include "app/automation/AutomationTable.h"
#include "core/files/FileIo.h"

#include <algorithm>

namespace kavu {

namespace {

std::string nameOnTheBus(const AutomationInterface& interface) {
    std::string name(interface.path.substr(1));
    std::replace(name.begin(), name.end(), '/', '.');
    return name;
}

std::string activationPath(const std::string& folder, const AutomationInterface& interface) {
    return folder + "/dbus-1/services/" + nameOnTheBus(interface) + ".service";
}

std::string libraryPath(const std::string& folder, const AutomationInterface& interface) {
    return folder + "/dbus-1/interfaces/" + std::string(interface.name) + ".xml";
}

/// A word of the command line as the bus reads it: by the rules of the shell, in a file whose
/// values have escapes of their own.
std::string quotedWord(const std::string& word) {
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? "'\\\\''" : c == '\\' ? "\\\\" : std::string(1, c);
    }
    return quoted + "'";
}

std::string commandWord(const std::string& word) {
    const bool isPlain = std::all_of(word.begin(), word.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '/' || c == '.' || c == '_' || c == '-' || c == '+';
    });
    return isPlain ? word : quotedWord(word);
}

std::string activation(const AutomationInterface& interface, const std::string& program) {
    return "[D-BUS Service]\nName=" + nameOnTheBus(interface) + "\nExec=" + commandWord(program) +
           " -Embedding\n";
}

IoStatus writeFile(const std::string& path, std::string_view bytes) {
    const auto status = makeFolders(folderOf(path));
    return status.ok() ? replaceUserFile(path, bytes) : status;
}

}  // namespace

std::string registrationFolder(const Environment& environment, RegistrationScope scope) {
    if (scope == RegistrationScope::System) {
        return "/usr/share";
    }
    // A relative path is invalid there, and counts as none.
    if (const auto data = environment.variable("XDG_DATA_HOME"); data && data->starts_with('/')) {
        return *data;
    }
    return environment.variable("HOME").value_or(environment.accountHome) + "/.local/share";
}

IoStatus registerAutomation(const std::string& folder, const std::string& program) {
    for (const auto& interface : automationInterfaces()) {
        for (const auto& [path, bytes] :
             {std::pair(libraryPath(folder, interface), std::string(interface.library)),
              std::pair(activationPath(folder, interface), activation(interface, program))}) {
            if (const auto status = writeFile(path, bytes); !status.ok()) {
                return status;
            }
        }
    }
    return {};
}

IoStatus unregisterAutomation(const std::string& folder) {
    IoStatus first;
    for (const auto& interface : automationInterfaces()) {
        for (const auto& path :
             {activationPath(folder, interface), libraryPath(folder, interface)}) {
            PathKind kind{};
            auto status = probePath(path, kind);
            if (status.ok() && kind != PathKind::Missing) {
                status = deleteFile(path);
            }
            if (!status.ok() && first.ok()) {
                first = status;
            }
        }
    }
    return first;
}

}  // namespace kavu
