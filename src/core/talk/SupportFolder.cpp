// The folder for settings, and the check that it can be written.
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"

#include <cerrno>
#include <unistd.h>

namespace kavu {

namespace {

/// Of runs that died in the middle of the proof and had the same number.
constexpr int kMaxLeftovers = 100;

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
    return environment.accountHome.empty() ? otherwise : environment.accountHome + "/.config";
}

/// Makes a file that nobody else has and deletes it. Programs that start together would take
/// one of a fixed name from each other.
IoStatus proveWritable(const std::string& folder) {
    const auto number = static_cast<std::int64_t>(::getpid());
    IoStatus status;
    for (int i = 0; i < kMaxLeftovers; ++i) {
        const auto path = formatPrintf("%s/kavu-%s-%d.tmp", folder, std::to_string(number), i);
        FileWriter writer;
        status = writer.open(path, WriteMode::New);
        if (status.ok()) {
            status = writer.close();
            const auto deleted = deleteFile(path);
            return status.ok() ? deleted : status;
        }
        if (status.code() != EEXIST) {
            break;
        }
    }
    return status;
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

IoStatus prepareSupportFolder(const std::string& folder) {
    const std::string path = folder.ends_with('/') ? folder.substr(0, folder.size() - 1) : folder;
    const auto status = folderExists(path) ? IoStatus() : makeFolders(path);
    return status.ok() ? proveWritable(path) : status;
}

}  // namespace kavu
