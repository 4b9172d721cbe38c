#include "core/document/FormerContents.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/QuestionNames.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

namespace kavu {

namespace {

constexpr const char* kSavingTitle = "Error Saving TMATS File";

/// Other contents may be kept for recovery already.
std::string freeName(const WorkingStore& store) {
    std::string path;
    for (int number = 0; path.empty() || fileExists(path); ++number) {
        path = store.pathOf(formatPrintf(working::kFormerFormat, number));
    }
    return path;
}

/// Yes unless the answer is no: it costs nothing, and the other way loses a file.
bool wantsFormer(UserInterface* parent, const std::string& target) {
    if (parent == nullptr) {
        return true;
    }
    MessageBox box;
    box.name = question::kRestore;
    box.title = kSavingTitle;
    box.text = formatPrintf(
        "The file '%s' was not written completely.\n\n"
        "Do you want its former contents to be put back?",
        target);
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.defaultButton = Button::Yes;
    return parent->message(box) != Button::No;
}

}  // namespace

FormerContents::~FormerContents() {
    if (inStore_) {
        (void)deleteFile(kept_);
        (void)deleteFile(kept_ + std::string(working::kFormerOf));
    }
}

bool FormerContents::keep(UserInterface* parent, const std::string& target, bool backup) {
    target_ = target;
    // Only a plain file has contents to lose; the open reports a folder or device that
    // cannot be written.
    PathKind kind = PathKind::Missing;
    if (const auto status = probePath(target, kind); !status.ok()) {
        reportUnableToOpen(parent, status);
        return false;
    }
    if (kind != PathKind::PlainFile) {
        return true;
    }
    if (backup) {
        bool made = false;
        if (!makeBackup(parent, target, &made)) {
            return false;
        }
        // The user may have chosen to go on without a backup.
        if (made) {
            kept_ = backupName(target);
            return true;
        }
    }
    const auto copy = freeName(store_);
    inStore_ = true;
    kept_ = copy;
    auto status = copyFile(target, copy);
    if (status.ok()) {
        status = writeWholeFile(copy + std::string(working::kFormerOf), target);
    }
    if (!status.ok()) {
        showBox(parent,
                formatPrintf("Unable to keep the contents of '%s' before it is overwritten.\n\n"
                             "Unable to copy '%s'\n\nReason: %s",
                             target, status.path(), status.reason()),
                kSavingTitle);
        return false;
    }
    return true;
}

bool FormerContents::offerToPutBack(UserInterface* parent) {
    if (kept_.empty() || !wantsFormer(parent, target_)) {
        return false;
    }
    const auto status = copyFile(kept_, target_, true);
    if (!status.ok()) {
        if (inStore_) {
            // The only copy left must outlive this object and the run.
            inStore_ = false;
            store_.keepForRecovery();
        }
        showBox(parent,
                formatPrintf("Unable to put the former contents of '%s' back.\n\nThey are in "
                             "'%s'.\n\nUnable to write '%s'\n\nReason: %s",
                             target_, kept_, status.path(), status.reason()),
                kSavingTitle);
    }
    return status.ok();
}

}  // namespace kavu
