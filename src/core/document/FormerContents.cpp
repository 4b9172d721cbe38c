#include "core/document/FormerContents.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

namespace kavu {

namespace {

constexpr const char* kSavingTitle = "Error Saving TMATS File";
constexpr const char* kWorkingName = "FORMER.TMP";

}  // namespace

FormerContents::~FormerContents() {
    if (inStore_) {
        (void)deleteFile(kept_);
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
    const auto copy = store_.pathOf(kWorkingName);
    inStore_ = true;
    kept_ = copy;
    if (const auto status = copyFile(target, copy); !status.ok()) {
        showBox(parent,
                formatPrintf("Unable to keep the contents of '%s' before it is overwritten.\n\n"
                             "Unable to copy '%s'\n\nReason: %s",
                             target, status.path(), status.reason()),
                kSavingTitle);
        return false;
    }
    return true;
}

void FormerContents::offerToPutBack(UserInterface* parent) {
    if (kept_.empty() ||
        showBox(parent,
                formatPrintf("The file '%s' was not written completely.\n\n"
                             "Do you want its former contents to be put back?",
                             target_),
                kSavingTitle, Icon::Question, Buttons::YesNo, Button::Yes) != Button::Yes) {
        return;
    }
    if (const auto status = copyFile(kept_, target_, true); !status.ok()) {
        // The only copy left must outlive this object.
        inStore_ = false;
        showBox(parent,
                formatPrintf("Unable to put the former contents of '%s' back.\n\nThey are in "
                             "'%s'.\n\nUnable to write '%s'\n\nReason: %s",
                             target_, kept_, status.path(), status.reason()),
                kSavingTitle);
    }
}

}  // namespace kavu
