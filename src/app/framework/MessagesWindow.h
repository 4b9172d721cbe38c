// The Messages window: what an operation has reported, as a list of findings. It is modal where
// an operation waits for it, and stays open beside the document where it is shown by the main
// window.
#pragma once

#include "app/framework/FindingModel.h"

#include <functional>
#include <string>
#include <vector>

#include <QDialog>

class QLabel;
class QPagedPaintDevice;
class QPlainTextEdit;
class QPushButton;
class QTreeView;

namespace kavu {

class DialogDoor;
class UserInterface;

struct MessageLines {
    std::string title;
    std::string subtitle;
    std::vector<std::string> lines;  ///< of the log, which are saved and printed
};

/// What a report has, before anybody decides how it is shown.
struct MessageReport {
    MessageLines content;
    std::vector<Finding> findings;
    std::string stream{};  ///< the stream that it is about; empty for the document
};

class MessagesWindow : public QDialog {
    Q_OBJECT
  public:
    /// Goes to the place of a finding; false if it has none that is there.
    using GoTo = std::function<bool(const Finding&)>;

    /// Shows lines, each as a finding of its own. All references must outlive the window. `goTo`
    /// may be empty.
    MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content, GoTo goTo,
                   QWidget* parent);
    /// Shows the findings of a model, which may change and must outlive the window. Without lines
    /// of its own the content that is saved and printed is made of them.
    MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content, FindingModel& model,
                   GoTo goTo, QWidget* parent);

    void setSubtitle(const std::string& subtitle);
    /// Puts the texts of the selected rows, or all lines if none is selected, on the clipboard.
    void copyLines();
    /// Asks for a file and writes all lines; a failure is reported.
    void saveLines();
    /// Asks for a printer and prints all lines.
    void printLines();

  private:
    void makeList(QWidget* parent);
    void makeButtons();
    void activate(int row);
    void showWhole();
    void fitColumns();
    void updateButtons();
    [[nodiscard]] MessageLines content() const;

    UserInterface& ui_;
    DialogDoor& door_;
    MessageLines content_;
    FindingModel& model_;
    GoTo goTo_;
    QLabel* subtitle_ = nullptr;
    QTreeView* list_ = nullptr;
    QPlainTextEdit* whole_ = nullptr;
    std::vector<QPushButton*> needContent_;
    QPushButton* goToButton_ = nullptr;
};

/// Prints title, subtitle and lines in Arial 10 with page numbers; stops at the first
/// failure and gives false. Long lines wrap.
bool printMessageLines(QPagedPaintDevice& device, const MessageLines& content);

}  // namespace kavu
