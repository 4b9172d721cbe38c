// The folder for settings, and the check that it can be written.
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

namespace kavu {

namespace {

constexpr const char* kWriteTest = "kavu.tmp";

constexpr const char* kDefaultSharedRoot = "/etc/xdg";

/// The first folder of a list; empty entries are skipped.
std::string firstOf(const std::string& list) {
    const auto first = list.find_first_not_of(':');
    return first == std::string::npos ? kDefaultSharedRoot
                                      : list.substr(first, list.find(':', first) - first);
}

/// The root of the files that all users share.
std::string sharedRoot(const Environment& environment) {
    if (const auto profile = environment.variable("ALLUSERSPROFILE")) {
        return *profile + "/Application Data";
    }
    return firstOf(environment.variable("XDG_CONFIG_DIRS").value_or(kDefaultSharedRoot));
}

/// The root of the files of this user.
std::string userRoot(const Environment& environment, const std::string& otherwise) {
    if (const auto data = environment.variable("AppData")) {
        return *data;
    }
    if (const auto config = environment.variable("XDG_CONFIG_HOME")) {
        return *config;
    }
    if (const auto home = environment.variable("HOME")) {
        return *home + "/.config";
    }
    return otherwise;
}

/// Tries a step until it works or the user gives up.
template <typename Step>
bool retried(UserInterface* parent, PrintfFormat<std::string> text, const char* title,
             const Step& step) {
    for (IoStatus status = step(); !status.ok(); status = step()) {
        const auto shown = formatPrintf(text, status.path()) + "\n\nReason: " + status.reason();
        // Without a parent there is no second try.
        if (showBox(parent, shown, title, Icon::Error, Buttons::RetryCancel, Button::Retry) !=
            Button::Retry) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string supportFolderPath(const Environment& environment, std::string_view name,
                              std::string_view base, bool mayUseNetwork) {
    const auto separator = name.rfind('/');
    const bool hasParent = separator != std::string_view::npos;
    const std::string leaf(hasParent ? name.substr(separator + 1) : name);
    const std::string parent =
        hasParent ? std::string(name.substr(0, separator)) : environment.programFolder;
    if (mayUseNetwork && parent.starts_with("//")) {
        return parent + "/" + leaf + "/" + std::string(base) + (base.empty() ? "" : "/");
    }
    const std::string root = base.empty() ? sharedRoot(environment) : userRoot(environment, parent);
    return root + "/" + leaf + "/";
}

bool activateSupportFolder(UserInterface* parent, const std::string& folder) {
    const std::string path = folder.ends_with('/') ? folder.substr(0, folder.size() - 1) : folder;
    const bool made =
        folderExists(path) ||
        retried(parent,
                "Could not create the path '%s'.\n\nThis application creates and uses this folder "
                "to store temporary files.\n\nRetry: Try again\nCancel: Terminate application.",
                "ERROR Activating Application", [&path] { return makeFolders(path); });
    // An existing folder is checked as well.
    return made &&
           retried(parent,
                   "This application could not write to the folder '%s'.\n\nThis application uses "
                   "this folder to store temporary files. Make sure you have 'Write' permissons "
                   "on this folder.\n\nRetry: Try again\nCancel: Terminate application.",
                   "Error Activating Application", [&path] {
                       const auto test = path + "/" + kWriteTest;
                       const auto status = writeWholeFile(test, {});
                       const int code = status.ok() ? deleteFile(test).code() : status.code();
                       return IoStatus(path, code);
                   });
}

}  // namespace kavu
