// Listing of folders, the folder of this process, and what is not followed.
#include "core/files/FileIo.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

/// A link to a folder does not count as a folder: deleting a tree must not leave the
/// tree.
bool isRealFolder(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

IoStatus listFolder(const std::string& path, std::vector<FolderEntry>& entries) {
    entries.clear();
    DIR* folder = ::opendir(path.c_str());
    if (folder == nullptr) {
        return {path, errno};
    }
    errno = 0;
    while (const dirent* entry = ::readdir(folder)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            const bool isFolder = entry->d_type == DT_DIR ||
                                  (entry->d_type == DT_UNKNOWN && isRealFolder(path + "/" + name));
            entries.push_back({name, isFolder});
        }
        errno = 0;
    }
    const int code = errno;
    ::closedir(folder);
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return {path, code};
}

bool isOwnPlainFile(const std::string& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::string absolutePath(const std::string& path) {
    std::array<char, PATH_MAX> here{};
    if (path.empty() || path.front() == '/' || ::getcwd(here.data(), here.size()) == nullptr) {
        return path;
    }
    const std::string folder = here.data();
    std::string_view rest = path;
    while (rest.starts_with("./")) {
        rest.remove_prefix(std::min(rest.find_first_not_of('/', 1), rest.size()));
    }
    return (folder == "/" ? folder : folder + "/") + std::string(rest);
}

}  // namespace kavu
