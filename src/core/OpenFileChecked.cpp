#include "core/OpenFileChecked.h"

#include "core/Printf.h"
#include "core/UserInterface.h"

#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kOpenTitle = "Unable To Open File";
constexpr const char* kBackupTitle = "ERROR: Unable To Create Backup File";

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
    if (const auto status = probePath(path, kind); !status.ok()) {
        reportUnableToOpen(parent, status);
        return false;
    }
    if (kind != PathKind::Missing) {
        // Without a parent nobody objects to the overwriting that the caller has asked for.
        if (policy != OverwritePolicy::BackUpOnly && parent != nullptr &&
            showBox(parent, formatPrintf("The file: '%s' already exists\n\nOverwrite?", path),
                    "File Already Exists", Icon::Question, Buttons::YesNo) != Button::Yes) {
            return false;
        }
        if (policy != OverwritePolicy::Ask && !makeBackup(parent, path)) {
            return false;
        }
    }
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
    const auto backup = backupName(path);
    ByteSource source;
    if (const auto status = source.open(path); !status.ok()) {
        showBox(parent, formatPrintf("Unable to read '%s'.\n\nReason: %s", path, status.reason()),
                kBackupTitle);
        return false;
    }
    // Two names of one file can not hold two contents either.
    if (backup == path || isSameFile(backup, path)) {
        showBox(parent, "Unable to create backup file. File names are the same.", kBackupTitle);
        return false;
    }
    auto status = copyFile(path, backup, true);
    if (made != nullptr) {
        *made = false;
    }
    if (status.ok() && fileSize(backup) != source.size()) {
        status = {backup, EIO};
    }
    if (!status.ok() && status.path() == path) {
        showBox(parent, formatPrintf("Unable to read '%s'.\n\nReason: %s", path, status.reason()),
                kBackupTitle);
        return false;
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
