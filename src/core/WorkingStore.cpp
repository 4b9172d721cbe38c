#include "core/WorkingStore.h"

#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr unsigned kPrivateMode = 0700;
constexpr int kDeleteSteps = 198;  // 99 data sources and 99 data links

/// The files with a fixed name, in the order in which they are deleted.
constexpr auto kNamedFiles = std::to_array<std::string_view>({
    working::kGeneral,
    working::kMessageLog,
    "Kavu9Report.txt",
    "Kavu9Report.xml",
    working::kMultiplexScratch,
    working::kData1,
    working::kData2,
    "1553.TMP",
    "1553.INI",
    "1553Term.ini",
    "[kavu]TmpPCMMEASCOM",
    "[kavu]H.HHH",
    "SGROUP.TMP",
    "[kavu]TmpPCMFMT.MFF",
    "[kavu]TmpPCMFMT.FFI",
    "[kavu]TmpPCMFMT.ALTTAG",
});

/// Goes last: until then it says what of the document is gone.
constexpr std::string_view kLastFile = working::kStoreRecord;

/// True for a folder in which former contents of files are kept.
bool isOwnFolder(std::string_view name) {
    return name == working::kEuDefinitions || name == working::kUndoLevels ||
           name == working::kRedoLevels || working::isOpenOperation(name);
}

constexpr const char* kDeleteFileTitle = "ERROR: Unable To Delete File";

bool reportDelete(UserInterface* parent, const IoStatus& status, const char* title) {
    if (!status.ok()) {
        showBox(parent, formatPrintf("Unable to delete: %s\n\n%s", status.path(), status.reason()),
                title);
    }
    return status.ok();
}

bool deleteReported(UserInterface* parent, const std::string& path) {
    return reportDelete(parent, deleteFile(path), kDeleteFileTitle);
}

bool deleteFolderReported(UserInterface* parent, const std::string& path) {
    return reportDelete(parent, deleteFolder(path), "ERROR: Unable To Delete Folder");
}

/// The temporary root that the system names, without a trailing separator.
std::optional<std::string> namedTemporaryRoot(const Environment& environment) {
    for (const char* const name : {"TEMP", "TMPDIR"}) {
        if (auto root = environment.variable(name)) {
            while (root->size() > 1 && root->ends_with('/')) {
                root->pop_back();
            }
            return root;
        }
    }
    return std::nullopt;
}

/// The names in a folder from one listing: a thousand names are possible, but only what
/// exists has to be deleted. Where the folder cannot be listed, each name is tried, or
/// files of this document would get into the next one.
class Listing {
  public:
    explicit Listing(const std::string& folder) : folder_(folder) {
        std::vector<FolderEntry> entries;
        status_ = listFolder(folder, entries);
        for (auto& entry : entries) {
            (entry.isFolder ? folders_ : files_).insert(std::move(entry.name));
        }
    }
    [[nodiscard]] const IoStatus& status() const { return status_; }
    [[nodiscard]] bool hasFile(const std::string& name) const {
        return status_.ok() ? files_.contains(name) : isPlainFile(folder_ + "/" + name);
    }
    /// A link to a folder is none: what it leads to is not ours to delete.
    [[nodiscard]] const std::set<std::string>& folders() const { return folders_; }

  private:
    std::string folder_;
    IoStatus status_;
    std::set<std::string> files_;
    std::set<std::string> folders_;
};

/// Deletes the files of a document, in the order that the close has always had.
class DocumentCleaner {
  public:
    DocumentCleaner(const WorkingStore& store, UserInterface* parent, bool withStatus, int edition)
        : store_(store),
          parent_(parent),
          withStatus_(withStatus),
          dataLinkGroups_(edition >= groupKind('S').firstEdition ? "PDS" : "PD"),
          listing_(store.folder()) {}

    void remove() {
        reportDelete(withStatus_ ? parent_ : nullptr, listing_.status(), kDeleteFileTitle);
        for (const auto name : kNamedFiles) {
            // At the start this one is left to the editor that writes it.
            if (!withStatus_ && name == "1553.TMP") {
                continue;
            }
            removeFile(std::string(name));
        }
        status("Deleting all data source temporary files");
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            removeGroups("TRMV", index);
            step();
        }
        status("Deleting all data link temporary files");
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            removeGroups(dataLinkGroups_, index);
            removeMeasurementLists(index);
            removeGroups("BA", index);
            step();
        }
        removeTheRest();
        removeFile(std::string(kLastFile));
        for (const auto& folder : listing_.folders()) {
            if (isOwnFolder(folder)) {
                deleteFolderReported(parent_, store_.pathOf(folder));
            }
        }
        setProgressBar(withStatus_ ? parent_ : nullptr, -1);
        status({});
    }

  private:
    void removeFile(const std::string& name) {
        if (!name.empty() && listing_.hasFile(name)) {
            yieldToInterface(parent_);
            deleteReported(parent_, store_.pathOf(name));
        }
    }
    void removeGroups(std::string_view letters, int index) {
        for (const char letter : letters) {
            removeFile(groupFile(letter, index));
        }
    }
    /// The lists of one D group are numbered from 0 without a gap.
    void removeMeasurementLists(int index) {
        for (long list = 0;; ++list) {
            const auto name = formatPrintf("[kavu]D%8.8ld.D%2.2d", list, index);
            if (!listing_.hasFile(name)) {
                return;
            }
            removeFile(name);
        }
    }
    /// What the loops do not delete by name: conversion records, and groups of an index that
    /// is not saved. They would be read as part of the next document.
    void removeTheRest() {
        std::vector<FolderEntry> entries;
        (void)listFolder(store_.folder(), entries);
        const auto& packets = groupKind('S');
        for (const auto& entry : entries) {
            const bool ofLaterEdition =
                dataLinkGroups_.find(packets.letter) == std::string_view::npos &&
                matchesWildcard(entry.name, packets.wildcard);
            if (!entry.isFolder && entry.name.starts_with("[kavu]") && !ofLaterEdition) {
                (void)deleteFile(store_.pathOf(entry.name));
            }
        }
    }
    void step() {
        setProgressBar(withStatus_ ? parent_ : nullptr, ++steps_ * 100.0 / kDeleteSteps);
    }
    void status(const std::string& text) { setStatusText(withStatus_ ? parent_ : nullptr, text); }

    const WorkingStore& store_;
    UserInterface* parent_;
    bool withStatus_;
    std::string_view dataLinkGroups_;
    Listing listing_;
    int steps_ = 0;
};

/// True if files can be made in a folder, or in the one that it would be made in.
bool canMakeEntries(std::string folder) {
    while (::access(folder.c_str(), F_OK) != 0 && folder.size() > 1) {
        folder = folderOf(folder);
    }
    return folderExists(folder) && ::access(folder.c_str(), W_OK | X_OK) == 0;
}

bool isPlainInFileName(char c) {
    constexpr std::string_view kPlain = "-_+.#@$&=,()[]{}!'~^ ";
    return isDigit(c) || (toLowerAscii(c) >= 'a' && toLowerAscii(c) <= 'z') ||
           kPlain.find(c) != std::string_view::npos;
}

}  // namespace

bool working::isOpenOperation(std::string_view name) {
    return name.starts_with(kOpenOperation) && name.size() > kOpenOperation.size() &&
           std::all_of(name.begin() + kOpenOperation.size(), name.end(), isDigit);
}

WorkingStore::~WorkingStore() {
    releaseLock();
}

std::string WorkingStore::temporaryRoot() const {
    if (const auto root = namedTemporaryRoot(environment_)) {
        return *root;
    }
    // Next to the settings of this user.
    const auto beside = supportFolderPath(environment_, "x", environment_.userName, false);
    const auto root = folderOf(beside.substr(0, beside.size() - 1));
    return canMakeEntries(root) ? root : "/tmp";
}

bool WorkingStore::activate(UserInterface* parent, std::string_view applicationName,
                            RandomSource& random) {
    if (active()) {
        return true;  // one store for one process
    }
    applicationName_ = applicationName;
    random_ = &random;
    const auto guid = makeGuid(random);
    const auto root = temporaryRoot();
    folder_ = root + "/" + std::string(applicationName) + (guid ? "-" + *guid : std::string());
    if (folderExists(folder_)) {
        // Without a user to ask, assume that another copy is running: to share its folder
        // would mix two documents.
        const auto reply = showBox(
            parent,
            "The temporary directory used by this application already exists. Only one copy of "
            "this application can be running at any one time. Is there another copy of this "
            "application already running?",
            "WARNING: Temporary Directory Already Exists", Icon::Warning, Buttons::YesNo);
        if (reply != Button::No) {
            showBox(parent, "This application cannot run until all other copies have terminated.",
                    "WARNING: Temporary Directory Already Exists");
            folder_.clear();
            return false;
        }
    } else if (const auto status = makePrivateFolder(); !status.ok()) {
        showBox(parent,
                "Error: Unable to create temporary directory '" + folder_ +
                    "'. This software can not continue.\n\nThis software creates several folders "
                    "and files within the location where the software was installed. Please make "
                    "sure you have permissions to create files and folders in the location where "
                    "this software was installed.\n\nReason: " +
                    status.reason(),
                "Unable To Start Application");
        folder_.clear();
        return false;
    }
    takeLock();
    return true;
}

IoStatus WorkingStore::makePrivateFolder() const {
    // A temporary root that the system names has to exist: making it would hide a mistake
    // in its name. The one next to the settings may be new.
    auto status =
        namedTemporaryRoot(environment_) ? IoStatus() : makeFolders(temporaryRoot(), kPrivateMode);
    if (status.ok() && ::mkdir(folder_.c_str(), kPrivateMode) != 0) {
        status = {folder_, errno};
    }
    // The user's mask may have removed more permissions than it should.
    if (status.ok() && ::chmod(folder_.c_str(), kPrivateMode) != 0) {
        status = {folder_, errno};
        ::rmdir(folder_.c_str());
    }
    return status;
}

void WorkingStore::takeLock() {
    // The lock goes with the process, however it ends: a folder without one is abandoned.
    lock_ = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock_ >= 0) {
        (void)::flock(lock_, LOCK_EX | LOCK_NB);
    }
}

void WorkingStore::deactivate(UserInterface* parent) {
    if (!active()) {
        return;
    }
    if (!isKept_) {
        deleteFolderReported(parent, folder_);
    } else if (parent != nullptr) {
        parent->note(
            formatPrintf("The folder '%s' is left behind: recover the document from it.", folder_));
    }
    releaseLock();
    isKept_ = false;
    folder_.clear();
}

void WorkingStore::releaseLock() {
    if (lock_ >= 0) {
        ::close(lock_);
        lock_ = -1;
    }
}

bool WorkingStore::leaveKeptFolder(UserInterface* parent) {
    if (!isKept_) {
        return true;
    }
    const auto kept = std::exchange(folder_, {});
    const int lock = std::exchange(lock_, -1);
    if (!activate(parent, std::string(applicationName_), *random_)) {
        folder_ = kept;
        lock_ = lock;
        return false;
    }
    if (lock >= 0) {
        ::close(lock);
    }
    isKept_ = false;
    return true;
}

std::string WorkingStore::pathOf(std::string_view name) const {
    return (folder_.empty() ? std::string(".") : folder_) + "/" + std::string(name);
}

bool WorkingStore::deleteFiles(UserInterface* parent, std::string_view pattern) const {
    if (pattern.find('*') == std::string_view::npos) {
        const auto path = pathOf(pattern);
        if (!isPlainFile(path)) {
            return true;
        }
        yieldToInterface(parent);
        return deleteReported(parent, path);
    }
    std::vector<FolderEntry> entries;
    bool good = reportDelete(parent, listFolder(pathOf({}), entries), kDeleteFileTitle);
    for (const auto& entry : entries) {
        if (!entry.isFolder && matchesWildcard(entry.name, pattern)) {
            yieldToInterface(parent);
            good = deleteReported(parent, pathOf(entry.name)) && good;
        }
    }
    return good;
}

void WorkingStore::clearDocumentFiles(UserInterface* parent, int edition) const {
    if (active() && !isKept_) {
        DocumentCleaner(*this, parent, true, edition).remove();
    }
}

void WorkingStore::verifyNoDocumentFiles(UserInterface* parent) const {
    // A store is normally new and empty; one that existed is cleaned, whatever edition its
    // document had.
    if (active()) {
        DocumentCleaner(*this, parent, false, kLatestEdition).remove();
    }
}

std::string safeFileName(std::string_view name) {
    const bool valid = isValidUtf8(name);
    std::string safe;
    safe.reserve(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool hidden = c == '.' || c == ' ';
        const bool atEdge = hidden && (i == 0 || i + 1 == name.size());
        const bool readable =
            isPlainInFileName(c) || (static_cast<unsigned char>(c) >= 0x80 && valid);
        if (readable && !atEdge) {
            safe.push_back(c);
        } else {
            safe += formatPrintf("%%%2.2X", static_cast<unsigned char>(c));
        }
    }
    return safe;
}

}  // namespace kavu
