#include "core/talk/RecentFiles.h"

#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

std::string keyOf(std::size_t number) {
    return formatPrintf("File%d", number);
}

}  // namespace

std::vector<std::string> recentFiles(const ProfileSettings& settings) {
    std::vector<std::string> files;
    for (std::size_t number = 1; number <= kMostRecentFiles; ++number) {
        auto path = settings.profileText(kRecentSection, keyOf(number));
        if (!path.empty()) {
            files.push_back(std::move(path));
        }
    }
    return files;
}

std::vector<std::string> offeredRecentFiles(const ProfileSettings& settings) {
    auto files = recentFiles(settings);
    std::erase_if(files, [](const std::string& path) { return !fileExists(path); });
    return files;
}

void rememberFile(ProfileSettings& settings, const std::string& file) {
    const auto path = absolutePath(file);
    // A line break would end the entry in the settings file.
    if (path.empty() || holdsLineBreak(path)) {
        return;
    }
    auto files = recentFiles(settings);
    if (!files.empty() && files.front() == path) {
        return;
    }
    std::erase(files, path);
    files.insert(files.begin(), path);
    files.resize(std::min(files.size(), kMostRecentFiles));
    for (std::size_t i = 0; i < files.size(); ++i) {
        settings.writeProfile(kRecentSection, keyOf(i + 1), files[i]);
    }
}

}  // namespace kavu
