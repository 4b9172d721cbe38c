#include "core/document/FileJournal.h"

#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/files/FileLink.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr unsigned kPrivate = 0700;
constexpr std::string_view kNone = ".none";  ///< follows the name of a file that did not exist
constexpr std::string_view kNote = ".operation";
constexpr std::uint64_t kLongestNote = 4096;
constexpr std::string_view kPart = ".part";  ///< follows the name of a copy that is being made

void keepFirst(IoStatus& first, IoStatus status) {
    if (first.ok()) {
        first = std::move(status);
    }
}

bool sameBytes(const std::string& one, const std::string& other) {
    ByteSource a;
    ByteSource b;
    if (!a.open(one).ok() || !b.open(other).ok()) {
        return false;
    }
    for (;;) {
        const auto x = a.window();
        const auto y = b.window();
        const auto count = std::min(x.size(), y.size());
        if (count == 0) {
            return x.empty() && y.empty() && a.status().ok() && b.status().ok();
        }
        if (x.substr(0, count) != y.substr(0, count)) {
            return false;
        }
        a.take(count);
        b.take(count);
    }
}

}  // namespace

// --- a folder of former contents ------------------------------------------------------------

KeptFiles::KeptFiles(DocumentFiles& files, std::string folder)
    : files_(&files), folder_(std::move(folder)), path_(files.path(folder_)) {}

KeptFiles::KeptFiles(KeptFiles&& other) noexcept {
    *this = std::move(other);
}

KeptFiles& KeptFiles::operator=(KeptFiles&& other) noexcept {
    if (this != &other) {
        drop();
        files_ = other.files_;
        folder_ = std::exchange(other.folder_, {});
        path_ = std::exchange(other.path_, {});
        note_ = std::exchange(other.note_, {});
        kept_ = std::exchange(other.kept_, {});
        made_ = std::exchange(other.made_, false);
    }
    return *this;
}

KeptFiles::~KeptFiles() {
    drop();
}

std::string KeptFiles::pathOf(const std::string& name) const {
    return path_ + "/" + name;
}

std::string KeptFiles::markOf(const std::string& name) const {
    return pathOf(name) + std::string(kNone);
}

IoStatus KeptFiles::begin() {
    if (made_) {
        return {};
    }
    if (folderExists(path_)) {
        if (auto status = deleteFolder(path_); !status.ok()) {
            return status;
        }
    }
    if (const auto slash = folder_.find('/'); slash != std::string::npos) {
        if (auto status = makeFolder(files_->path(folder_.substr(0, slash)), kPrivate);
            !status.ok()) {
            return status;
        }
    }
    auto status = makeFolder(path_, kPrivate);
    made_ = status.ok();
    if (status.ok() && !note_.empty()) {
        status = writeWholeFile(pathOf(std::string(kNote)), note_);
    }
    return status;
}

IoStatus KeptFiles::keep(const std::string& name) {
    if (has(name)) {
        return {};
    }
    if (auto status = begin(); !status.ok()) {
        return status;
    }
    const auto path = files_->path(name);
    Kept kept;
    struct stat info {};
    IoStatus status;
    if (::stat(path.c_str(), &info) == 0) {
        kept = {true, static_cast<std::uint64_t>(info.st_size)};
        status = linkOrCopyFile(path, pathOf(name));
    } else if (errno == ENOENT) {
        status = writeWholeFile(markOf(name), {});
    } else {
        status = {path, errno};
    }
    if (status.ok()) {
        kept_.emplace(name, kept);
    }
    return status;
}

std::vector<std::string> KeptFiles::names() const {
    std::vector<std::string> names;
    names.reserve(kept_.size());
    for (const auto& [name, kept] : kept_) {
        names.push_back(name);
    }
    return names;
}

std::uint64_t KeptFiles::bytes() const {
    std::uint64_t bytes = 0;
    for (const auto& [name, kept] : kept_) {
        bytes += kept.bytes;
    }
    return bytes;
}

bool KeptFiles::isUnchanged(const std::string& name, const Kept& kept) const {
    const auto path = files_->path(name);
    struct stat now {};
    if (::stat(path.c_str(), &now) != 0) {
        return errno == ENOENT && !kept.there;
    }
    struct stat former {};
    if (!kept.there || ::stat(pathOf(name).c_str(), &former) != 0) {
        return false;
    }
    if (now.st_dev == former.st_dev && now.st_ino == former.st_ino) {
        return true;
    }
    return now.st_size == former.st_size && sameBytes(path, pathOf(name));
}

void KeptFiles::release(const std::string& name) {
    if (const auto it = kept_.find(name); it != kept_.end()) {
        (void)deleteFile(it->second.there ? pathOf(name) : markOf(name));
        kept_.erase(it);
    }
}

void KeptFiles::dropUnchanged() {
    for (const auto& name : names()) {
        if (isUnchanged(name, kept_.at(name))) {
            release(name);
        }
    }
}

IoStatus KeptFiles::putBack(const std::string& name) {
    const auto it = kept_.find(name);
    if (it == kept_.end()) {
        return {};
    }
    auto status =
        it->second.there ? files_->adopt(pathOf(name), name) : files_->removeIfThere(name);
    if (status.ok()) {
        // The mark goes last: as long as it exists, recovery deletes the file that did not
        // exist.
        if (!it->second.there) {
            (void)deleteFile(markOf(name));
        }
        kept_.erase(it);
    }
    return status;
}

IoStatus KeptFiles::putBackCopy(const std::string& name) const {
    const auto it = kept_.find(name);
    if (it == kept_.end() || !it->second.there) {
        return it == kept_.end() ? IoStatus() : files_->removeIfThere(name);
    }
    const auto second = pathOf(name) + std::string(kPart);
    auto status = linkOrCopyFile(pathOf(name), second);
    if (status.ok()) {
        status = files_->adopt(second, name);
    }
    if (!status.ok()) {
        (void)deleteFile(second);
    }
    return status;
}

IoStatus KeptFiles::putBackAll() {
    IoStatus first;
    for (const auto& name : names()) {
        keepFirst(first, putBack(name));
    }
    return first;
}

IoStatus KeptFiles::join(const KeptFiles& other) {
    IoStatus first;
    for (const auto& [name, kept] : other.kept_) {
        if (has(name)) {
            continue;
        }
        auto status = begin();
        if (status.ok()) {
            status = kept.there ? linkOrCopyFile(other.pathOf(name), pathOf(name))
                                : writeWholeFile(markOf(name), {});
        }
        if (status.ok()) {
            kept_.emplace(name, kept);
        }
        keepFirst(first, std::move(status));
    }
    return first;
}

IoStatus KeptFiles::moveTo(const std::string& folder) {
    IoStatus status;
    if (const auto slash = folder.find('/'); slash != std::string::npos) {
        status = makeFolder(files_->path(folder.substr(0, slash)), kPrivate);
    }
    if (status.ok() && folderExists(files_->path(folder))) {
        status = deleteFolder(files_->path(folder));
    }
    if (status.ok() && made_) {
        status = renameFile(path_, files_->path(folder));
    }
    if (status.ok()) {
        folder_ = folder;
        path_ = files_->path(folder);
    }
    return status;
}

void KeptFiles::drop() {
    if (std::exchange(made_, false) && folderExists(path_)) {
        (void)deleteFolder(path_);
    }
    kept_.clear();
}

void KeptFiles::leave() {
    kept_.clear();
    made_ = false;
}

// --- the journal ------------------------------------------------------------------------------

FileJournal::FileJournal(DocumentFiles& files, std::string folder, Filter filter)
    : files_(files), folder_(std::move(folder)), filter_(std::move(filter)) {
    kept_ = KeptFiles(files_, folder_);
}

IoStatus FileJournal::beforeChange(std::string_view name) {
    if (paused_ || (filter_ && !filter_(name))) {
        return {};
    }
    const auto& plain = *written_.emplace(name).first;
    return kept_.keep(plain);
}

IoStatus FileJournal::keepAll(const std::vector<std::string_view>& patterns) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(folderOf(files_.path("x")), entries);
    if (status.ok()) {
        status = kept_.begin();
    }
    for (const auto& entry : entries) {
        const auto matches = [&entry](std::string_view pattern) {
            return matchesWildcard(entry.name, pattern);
        };
        if (status.ok() && !entry.isFolder &&
            std::any_of(patterns.begin(), patterns.end(), matches)) {
            status = kept_.keep(entry.name);
        }
    }
    return status;
}

std::string FileJournal::nextFolder() {
    return folder_ + "." + std::to_string(++folders_);
}

KeptFiles FileJournal::take(IoStatus& status) {
    kept_.dropUnchanged();
    auto taken = std::exchange(kept_, KeptFiles(files_, folder_));
    if (!taken.empty()) {
        status = taken.moveTo(nextFolder());
    }
    if (taken.empty() || !status.ok()) {
        taken.drop();
    }
    return taken;
}

void FileJournal::exchange(KeptFiles& files, IoStatus& status) {
    KeptFiles held(files_, nextFolder());
    paused_ = true;
    for (const auto& name : files.names()) {
        auto done = held.keep(name);
        if (done.ok()) {
            done = files.putBack(name);
            if (!done.ok()) {
                held.release(name);
            }
        }
        keepFirst(status, std::move(done));
        // The next level begins with what is there now.
        kept_.release(name);
    }
    paused_ = false;
    files = std::move(held);
}

// --- after the death of a run -----------------------------------------------------------------

namespace {

IoStatus readOpenFolder(const std::string& folder, OpenChanges& changes) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(folder, entries);
    for (const auto& entry : entries) {
        std::string_view name = entry.name;
        if (entry.isFolder || name.ends_with(kPart)) {
            continue;
        }
        if (name == kNote) {
            std::string operation;
            const auto path = folder + "/" + entry.name;
            if (isOwnPlainFile(path) && fileSize(path) <= kLongestNote &&
                readWholeFile(path, operation).ok()) {
                changes.operations.insert(changes.operations.begin(), operation);
            }
            continue;
        }
        const bool there = !name.ends_with(kNone);
        if (!there) {
            name.remove_suffix(kNone.size());
        }
        changes.former[std::string(name)] = there ? folder + "/" + entry.name : std::string();
    }
    return status;
}

}  // namespace

IoStatus filesBeforeOpenChanges(const std::string& store, OpenChanges& changes) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(store, entries);
    std::map<std::int64_t, std::string> open;
    for (const auto& entry : entries) {
        if (entry.isFolder && working::isOpenOperation(entry.name)) {
            const auto digits = entry.name.substr(working::kOpenOperation.size());
            open.emplace(leadingInteger(digits), entry.name);
        }
    }
    // The innermost first, so that the outermost has the last word.
    for (auto it = open.rbegin(); status.ok() && it != open.rend(); ++it) {
        status = readOpenFolder(store + "/" + it->second, changes);
    }
    return status;
}

}  // namespace kavu
