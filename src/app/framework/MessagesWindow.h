// The Messages window: what an operation has reported, line by line.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QDialog>

class QLineEdit;
class QListView;
class QPagedPaintDevice;
class QPushButton;

namespace kavu {

class DialogDoor;
class UserInterface;

struct MessageLines {
    std::string title;
    std::string subtitle;
    std::vector<std::string> lines;
};

class MessagesWindow : public QDialog {
    Q_OBJECT
  public:
    /// Both references must outlive the window. `goToLine` may be empty.
    MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content,
                   std::function<bool(const std::string&)> goToLine, QWidget* parent);

    /// Puts the selected lines, or all if none is selected, on the clipboard.
    void copyLines();
    /// Asks for a file and writes all lines; a failure is reported.
    void saveLines();
    /// Asks for a printer and prints all lines.
    void printLines();
    /// The line that the list shows at a row.
    [[nodiscard]] std::string lineAt(int row) const;

  private:
    void activate(int row);

    UserInterface& ui_;
    DialogDoor& door_;
    MessageLines content_;
    std::function<bool(const std::string&)> goToLine_;
    QListView* list_ = nullptr;
};

/// Prints title, subtitle and lines in Arial 10 with page numbers; stops at the first
/// failure and gives false. Long lines wrap.
bool printMessageLines(QPagedPaintDevice& device, const MessageLines& content);

}  // namespace kavu
