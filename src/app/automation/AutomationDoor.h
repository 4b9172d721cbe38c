// The door of the dialogs that calls of other programs open: puts each over the caller's window,
// and remembers how it was left.
#pragma once

#include "app/framework/DialogDoor.h"

#include <cstdint>
#include <memory>

class QWindow;

namespace kavu {

class AutomationDoor : public DialogDoor {
  public:
    /// `inner` shows the dialogs; without one they are shown as everywhere. It must outlive the
    /// object.
    explicit AutomationDoor(DialogDoor* inner = nullptr);
    ~AutomationDoor() override;

    /// The window that dialogs without another parent belong to from now on; 0 for none. An id that
    /// the platform cannot have counts as none.
    void setParentWindow(std::int64_t id);
    /// True if the last dialog that no other one has opened, message boxes aside, was left with OK.
    [[nodiscard]] bool wasAccepted() const { return accepted_; }
    void forgetResult() { accepted_ = false; }

    int run(QDialog& dialog) override;

  private:
    DialogDoor* inner_;
    std::int64_t parentId_ = 0;
    std::unique_ptr<QWindow> parent_;
    bool accepted_ = false;
};

}  // namespace kavu
