#include "core/talk/OpenFileChecked.h"

#include "core/files/UserFile.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <cerrno>

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
    // A pipe without a writer would be an empty file, and a device has no end.
    PathKind kind = PathKind::Missing;
    if (probeNamed(path, kind).ok() && kind == PathKind::Other) {
        showBox(
            parent,
            formatPrintf("Unable to open '%s'\n\nReason: Is a pipe or a device, not a file", path),
            kOpenTitle);
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
                    kFileExistsTitle, Icon::Question, Buttons::YesNo) != Button::Yes) {
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
    if (ByteSource source; !source.open(path).ok()) {
        return reportUnreadable(parent, path, source.status().reason());
    }
    if (backup == path) {
        showBox(parent, "Unable to create backup file. File names are the same.", kBackupTitle);
        return false;
    }
    // A link of that name is replaced: what it leads to is no backup of ours.
    bool isChanged = false;
    const auto status = replaceWithCopy(path, backup, isChanged);
    if (isChanged) {
        return reportUnreadable(parent, path, "Another program has changed the file meanwhile");
    }
    if (!status.ok() && status.path() == path) {
        return reportUnreadable(parent, path, status.reason());
    }
    if (status.ok()) {
        if (made != nullptr) {
            *made = true;
        }
        return true;
    }
    return showBox(parent,
                   formatPrintf("Unable to create backup file '%s'\n\nUnable to save contents of "
                                "original file (%s) to backup file.\n\nContinue anyway?\n\n"
                                "Reason: %s",
                                backup, path, status.reason()),
                   kBackupTitle, Icon::Question, Buttons::YesNo, Button::No) == Button::Yes;
}

}  // namespace kavu
