#include "application/StoreFacts.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

constexpr std::uint64_t kLongestMark = 64 * 1024;

bool isAbandoned(const std::string& folder, AbandonedStore& found) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct stat info {};
    // A living run holds a lock on its folder, which the system releases when the run ends.
    const bool abandoned = ::fstat(descriptor, &info) == 0 && info.st_uid == ::geteuid() &&
                           ::flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    ::close(descriptor);
    found = {folder, info.st_mtim.tv_sec};
    return abandoned;
}

/// A run that ended before it opened anything leaves a folder with no more than scratch in it. One
/// that cannot be listed is not called empty.
bool isEmptyStore(const std::string& folder) {
    std::vector<FolderEntry> entries;
    return listFolder(folder, entries).ok() &&
           std::ranges::none_of(entries, [](const FolderEntry& entry) {
               return entry.name.starts_with("[kavu]") || entry.name == working::kData1 ||
                      matchesWildcard(entry.name, working::kFormerFiles);
           });
}

}  // namespace

StoreFacts describeStore(const std::string& folder) {
    StoreFacts facts;
    facts.isEmpty = isEmptyStore(folder);
    (void)readStoreRecord(folder + "/" + std::string(working::kStoreRecord), facts.record);
    const auto mark = folder + "/" + std::string(working::kRecovered);
    std::string text;
    if (isOwnPlainFile(mark) && fileSize(mark) <= kLongestMark && readWholeFile(mark, text).ok()) {
        facts.isRecovered = true;
        // The time is in the first line, and the rest is the path, whatever is in it.
        facts.recoveredAs = text.substr(std::min(text.find('\n'), text.size() - 1) + 1);
    }
    return facts;
}

std::string incompleteText(const std::string& folder, const StoreFacts& facts) {
    auto text = formatPrintf(
        "The folder '%s' is incomplete: the run that left it behind ended before its file was "
        "read to the end.",
        folder);
    if (!facts.record || facts.record->source.path.empty()) {
        return text;
    }
    const auto& path = facts.record->source.path;
    return text + (isSourceUnchanged(facts.record->source)
                       ? formatPrintf("\n\nThe file '%s' is as it was: open it instead.", path)
                       : formatPrintf("\n\nThe file was '%s', which has changed since.", path));
}

std::string proposedName(const StoreFacts& facts) {
    if (!facts.record || facts.record->source.path.empty()) {
        return {};
    }
    const auto& path = facts.record->source.path;
    const auto name = fileNameOf(path);
    const auto dot = name.rfind('.');
    const bool isNamed = dot != std::string::npos && dot > 0;
    const auto extension = isNamed ? name.substr(dot) : std::string(".tma");
    const auto stem = folderOf(path) + "/" + name.substr(0, isNamed ? dot : name.size());
    auto proposed = stem + " recovered" + extension;
    for (int number = 2; fileExists(proposed); ++number) {
        proposed = formatPrintf("%s recovered %d%s", stem, number, extension);
    }
    return proposed;
}

IoStatus markRecovered(const std::string& folder, const std::string& output, const Clock& clock) {
    const auto now = clock.now();
    return replaceWorkingFile(
        folder + "/" + std::string(working::kRecovered),
        formatPrintf("%s %s\n%s", dateText(now), timeText(now), absolutePath(output)));
}

StoreClaim::StoreClaim(const std::string& folder)
    : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    isInUse_ =
        descriptor_ >= 0 && ::flock(descriptor_, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

StoreClaim::~StoreClaim() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

std::vector<AbandonedStore> findAbandonedStores(const std::string& temporaryRoot,
                                                IoStatus* failure) {
    std::vector<FolderEntry> entries;
    std::vector<AbandonedStore> stores;
    if (auto status = listFolder(temporaryRoot, entries); failure != nullptr) {
        *failure = std::move(status);
    }
    for (const auto& entry : entries) {
        AbandonedStore store;
        if (entry.isFolder && entry.name.starts_with(kApplicationName) &&
            isAbandoned(temporaryRoot + "/" + entry.name, store)) {
            stores.push_back(std::move(store));
        }
    }
    std::sort(stores.begin(), stores.end(),
              [](const auto& a, const auto& b) { return a.modified > b.modified; });
    return stores;
}

}  // namespace kavu
