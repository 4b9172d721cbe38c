#include "app/automation/AutomationDoor.h"

#include "app/framework/EditDialog.h"

#include <limits>

#include <QMessageBox>
#include <QWindow>

namespace kavu {

AutomationDoor::AutomationDoor(DialogDoor* inner) : inner_(inner) {}

AutomationDoor::~AutomationDoor() = default;

void AutomationDoor::setParentWindow(std::int64_t id) {
    if (id == parentId_) {
        return;
    }
    parentId_ = id;
    parent_.reset();
    if (id > 0 && id <= std::numeric_limits<std::uint32_t>::max()) {
        // Null on a platform whose windows have no ids for others.
        parent_.reset(QWindow::fromWinId(static_cast<WId>(id)));
    }
}

int AutomationDoor::run(QDialog& dialog) {
    if (parent_ != nullptr && dialog.parentWidget() == nullptr) {
        // Its window must be there to be given a parent.
        (void)dialog.winId();
        dialog.windowHandle()->setTransientParent(parent_.get());
    }
    const int result = inner_ != nullptr ? inner_->run(dialog) : dialog.exec();
    if (depth() == 1 && qobject_cast<QMessageBox*>(&dialog) == nullptr) {
        accepted_ = result == QDialog::Accepted || result == EditDialog::kNothingToStore;
    }
    return result;
}

}  // namespace kavu
