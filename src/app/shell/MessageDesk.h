// The findings of the open document, and the one window that shows them beside it: the messages
// and remarks of its opening and of the operations on it, of its streams, and of the last check.
#pragma once

#include "app/framework/FindingModel.h"
#include "app/framework/MessagesWindow.h"

#include <string>
#include <vector>

namespace kavu {

class DialogDoor;
class UserInterface;

class MessageDesk {
  public:
    /// All references must outlive the object; `owner` is the main window.
    MessageDesk(UserInterface& ui, DialogDoor& door, MessagesWindow::GoTo goTo, QWidget& owner);
    MessageDesk(const MessageDesk&) = delete;
    MessageDesk& operator=(const MessageDesk&) = delete;
    ~MessageDesk();

    /// A document has been opened with these remarks; what was found in the one before is gone.
    void begin(const std::string& path, const std::vector<std::string>& remarks);
    /// The command that has opened it has ended: what is reported from now on is of others.
    void endOpening() { isOpening_ = false; }
    /// The document is closed.
    void clear();
    /// Keeps what an operation has reported, in place of what the same source reported before, and
    /// shows the window unless the report is one of a stream. True if it is shown.
    bool take(MessageReport report);
    /// Replaces all by the result of a check, and shows the window.
    void renew(std::vector<Finding> findings, const std::string& subtitle);
    void show();

    [[nodiscard]] const FindingModel& model() const { return model_; }
    /// The window, or null if it was never shown.
    [[nodiscard]] MessagesWindow* window() const { return window_; }

  private:
    UserInterface& ui_;
    DialogDoor& door_;
    MessagesWindow::GoTo goTo_;
    QWidget& owner_;
    FindingModel model_;
    std::string subtitle_;
    bool isOpening_ = false;
    MessagesWindow* window_ = nullptr;
};

}  // namespace kavu
