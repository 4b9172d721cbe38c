#include "core/document/SaveTarget.h"

#include "core/WorkingStore.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <cerrno>

namespace kavu {

namespace {

void noteInPlace(UserInterface* parent, const std::string& path, const std::string& reason) {
    if (parent != nullptr && !reason.empty()) {
        parent->note(formatPrintf("'%s' is written in place: %s.", path, reason));
    }
}

std::string savingTitle() {
    return std::string(loadText(title::kErrorSaving).value_or(""));
}

/// A name for a backup that must not be lost.
std::string freeKeptName(const std::string& backup) {
    std::string name = backup + "~";
    for (int number = 2; fileExists(name); ++number) {
        name = backup + "~" + std::to_string(number);
    }
    return name;
}

}  // namespace

bool SaveTarget::claim() {
    const auto status = file_.claim(path_);
    if (status.code() == EBUSY) {
        showBox(parent_, formatPrintf("Another program is saving '%s'.", path_), savingTitle());
    } else if (!status.ok()) {
        reportUnableToOpen(parent_, status);
    }
    claimedStamp_ = fileStamp(path_);
    return status.ok();
}

bool SaveTarget::begin() {
    backup_ = context_.settings.get(setting::kCreateBackup);
    auto status = file_.prepare(context_.settings.get(setting::kSaveInPlace));
    if (!status.ok()) {
        reportUnableToOpen(parent_, status);
        return false;
    }
    noteInPlace(parent_, path_, file_.reasonInPlace());
    if (!keepWholeBackup() || (file_.isInPlace() && !former_.keep(parent_, path_, backup_))) {
        return false;
    }
    hasTouched_ = file_.isInPlace();
    status = file_.open(context_.store.folder());
    if (!status.ok()) {
        reportUnableToOpen(parent_, status);
    }
    return status.ok();
}

/// What a save in place has left that was killed, or has failed and was not put back, is no backup
/// to replace a whole one.
bool SaveTarget::keepWholeBackup() {
    const auto& store = file_.killedOwner();
    if (store.empty()) {
        return true;
    }
    std::string text = formatPrintf(
        "A save in place that was not completed has left the file '%s' cut short.", path_);
    const auto backup = backupName(path_);
    if (backup_ && backup != path_ && isPlainFile(backup)) {
        const auto kept = freeKeptName(backup);
        if (const auto status = renameFile(backup, kept); !status.ok()) {
            reportUnableToWrite(parent_, status, title::kErrorSaving);
            return false;
        }
        text += formatPrintf("\n\nThe backup from before that save is kept as '%s'.", kept);
    }
    if (store != context_.store.folder() && folderExists(store)) {
        text += formatPrintf(
            "\n\nThe document of that run is in '%s'. The next start of the program offers to "
            "recover it, and so does kavu-cli recover.",
            store);
    }
    showBox(parent_, std::move(text), savingTitle(), Icon::Warning);
    return true;
}

bool SaveTarget::end(bool built) {
    auto status = file_.finish();
    if (built && status.ok() && !file_.isInPlace() && !checkUnchanged()) {
        return false;
    }
    if (built && status.ok() && !file_.isInPlace() && backup_ &&
        !former_.keep(parent_, path_, true)) {
        return false;
    }
    if (built && status.ok()) {
        status = putInPlace();
    }
    if (!status.ok()) {
        reportUnableToWrite(parent_, status, title::kErrorSaving);
    }
    if (built && status.ok()) {
        return true;
    }
    if (hasTouched_ && former_.offerToPutBack(parent_)) {
        file_.markWhole();
    }
    return false;
}

/// Not every program asks for the lock.
bool SaveTarget::checkUnchanged() {
    if (fileStamp(path_) == claimedStamp_) {
        return true;
    }
    showBox(parent_,
            formatPrintf("Another program has changed the file '%s' while it was being saved. "
                         "The file is left as that program has written it.",
                         path_),
            savingTitle());
    return false;
}

IoStatus SaveTarget::putInPlace() {
    const auto status = file_.commit();
    if (file_.isInPlace() || !UserFile::isRefusedRename(status)) {
        return status;
    }
    noteInPlace(parent_, path_, "it cannot be replaced (" + status.reason() + ")");
    if (!backup_ && !former_.keep(parent_, path_, false)) {
        return status;
    }
    hasTouched_ = true;
    return file_.commitInPlace(context_.store.folder());
}

}  // namespace kavu
