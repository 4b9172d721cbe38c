#include "core/talk/OpenFileChecked.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

constexpr const char* kOpenTitle = "Unable To Open File";
constexpr const char* kBackupTitle = "ERROR: Unable To Create Backup File";

/// Finds what a path leads to. A name with a NUL byte leads nowhere: the system would take
/// the part before it, which names another file.
IoStatus probeNamed(const std::string& path, PathKind& kind) {
    return path.find('\0') == std::string::npos ? probePath(path, kind) : IoStatus(path, EINVAL);
}

bool reportUnreadable(UserInterface* parent, const std::string& path, const std::string& reason) {
    showBox(parent, formatPrintf("Unable to read '%s'.\n\nReason: %s", path, reason), kBackupTitle);
    return false;
}

/// Makes an empty file that only those who may read `like` may read; false if there is a
/// file already or it cannot be made, in which case the copy reports why.
bool makePrivateFile(const std::string& like, const std::string& path) {
    struct stat info {};
    if (::stat(like.c_str(), &info) != 0) {
        return false;
    }
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                  (info.st_mode & 0777) | S_IWUSR);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return descriptor >= 0;
}

/// Checks that a file has the size it should have; a device takes every byte and keeps none.
IoStatus checkSize(const std::string& path, std::uint64_t size) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return {path, errno};
    }
    return {path, static_cast<std::uint64_t>(info.st_size) == size ? 0 : EIO};
}

/// Removes half a backup, so that it is not mistaken for a whole one.
void discard(const std::string& backup, bool isNew) {
    if (isNew) {
        (void)deleteFile(backup);
    }
}

}  // namespace

void reportUnableToOpen(UserInterface* parent, const IoStatus& status) {
    std::string text =
        formatPrintf("Unable to open '%s'\n\nReason: %s", status.path(), status.reason());
    if (hasReadOnlyAttribute(status.path())) {
        text += " (File is Read-Only)";
    }
    showBox(parent, std::move(text), kOpenTitle);
}

bool openFileChecked(UserInterface* parent, const std::string& path, ByteSource& source) {
    if (path.empty()) {
        showBox(parent, "No pathname was entered", kOpenTitle);
        return false;
    }
    const auto status = source.open(path);
    if (!status.ok()) {
        reportUnableToOpen(parent, status);
    }
    return status.ok();
}

bool openFileChecked(UserInterface* parent, const std::string& path, WriteMode mode,
                     OverwritePolicy policy, FileWriter& writer) {
    if (path.empty()) {
        if (policy != OverwritePolicy::BackUpOnly) {
            showBox(parent, "No pathname was entered", kOpenTitle);
        }
        return false;
    }
    PathKind kind = PathKind::Missing;
    if (const auto status = probeNamed(path, kind); !status.ok()) {
        reportUnableToOpen(parent, status);
        return false;
    }
    if (kind != PathKind::Missing) {
        // Without a parent the user has not agreed to lose what is in the file.
        if (policy != OverwritePolicy::BackUpOnly &&
            showBox(parent, formatPrintf("The file: '%s' already exists\n\nOverwrite?", path),
                    "File Already Exists", Icon::Question, Buttons::YesNo) != Button::Yes) {
            return false;
        }
        if (policy != OverwritePolicy::Ask && !makeBackup(parent, path)) {
            return false;
        }
    }
    // In place: links to the file, its owner and its mode stay.
    const auto status = writer.open(path, mode);
    if (!status.ok()) {
        reportUnableToOpen(parent, status);
    }
    return status.ok();
}

std::string backupName(const std::string& path) {
    return path.substr(0, path.rfind('.')) + ".bak";
}

bool makeBackup(UserInterface* parent, const std::string& path, bool* made) {
    if (made != nullptr) {
        *made = false;
    }
    const auto backup = backupName(path);
    ByteSource source;
    if (const auto status = source.open(path); !status.ok()) {
        return reportUnreadable(parent, path, status.reason());
    }
    // Two names of one file cannot hold two contents either.
    bool same = false;
    (void)probeSameFile(path, backup, same);  // the copy reports what is wrong with the backup
    if (same || backup == path) {
        showBox(parent, "Unable to create backup file. File names are the same.", kBackupTitle);
        return false;
    }
    const bool isNew = makePrivateFile(path, backup);
    auto status = copyFile(path, backup, true);
    if (!status.ok() && status.path() == path) {
        discard(backup, isNew);
        return reportUnreadable(parent, path, status.reason());
    }
    if (IoStatus failure; status.ok() && source.changedSinceOpened(&failure)) {
        discard(backup, isNew);
        return reportUnreadable(
            parent, path,
            failure.ok() ? "Another program has changed the file meanwhile" : failure.reason());
    }
    status = status.ok() ? checkSize(backup, source.size()) : status;
    if (status.ok() && isNew) {
        status = syncFolder(folderOf(backup));
    }
    if (status.ok()) {
        if (made != nullptr) {
            *made = true;
        }
        return true;
    }
    discard(backup, isNew);
    return showBox(parent,
                   formatPrintf("Unable to create backup file '%s'\n\nUnable to save contents of "
                                "original file (%s) to backup file.\n\nContinue anyway?\n\n"
                                "Reason: %s",
                                backup, path, status.reason()),
                   kBackupTitle, Icon::Question, Buttons::YesNo, Button::No) == Button::Yes;
}

}  // namespace kavu
