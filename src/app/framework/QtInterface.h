// The maker of the user interface seam with windows. Logic calls it through
// `UserInterface`; the main window makes one and hangs its status bar into the hooks.
#pragma once

#include "core/talk/UserInterface.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QPoint>
#include <QPointer>

class QWidget;

namespace kavu {

class DialogDoor;
class ProgressWindow;
struct EnterValueSetup;
struct Finding;
struct MessageReport;

/// Where the main window receives what has no window of its own. A hook that is not set is
/// silent.
struct InterfaceHooks {
    std::function<void(const std::string&)> statusText;
    /// Percent, or -1 to clear the bar.
    std::function<void(double)> progressBar;
    std::function<void(const LoggedMessage&)> logged;
    std::function<void(const std::string&)> note;
    /// Goes to the place of a finding of the Messages window; false if it names none that is
    /// there.
    std::function<bool(const Finding&)> goTo;
    /// Takes what an operation has reported. False if it is to be shown here, modally, because the
    /// operation waits for it.
    std::function<bool(const MessageReport&)> report;
    std::function<void()> beep;  ///< in place of the system's beep
};

class QtInterface : public UserInterface {
  public:
    /// `window` is the parent of all dialogs that no other dialog opens, and may be null.
    /// The door must outlive the object.
    QtInterface(QWidget* window, DialogDoor& door);
    ~QtInterface() override;

    InterfaceHooks hooks;

    Button message(const MessageBox& box) override;
    std::optional<std::string> enterText(const TextPrompt& prompt) override;
    std::optional<std::vector<std::string>> enterTexts(
        const std::string& title, const std::vector<TextPrompt>& prompts) override;
    std::optional<long> enterInteger(const IntegerPrompt& prompt) override;
    std::optional<double> enterDouble(const DoublePrompt& prompt) override;
    int chooseFromList(const std::string& title, const std::vector<std::string>& choices) override;
    int choose(const ChoicePrompt& prompt) override;
    int selectFromTable(const TablePrompt& prompt) override;
    std::vector<int> selectRowsFromTable(const TablePrompt& prompt) override;
    std::optional<FileChoice> chooseFile(const FilePrompt& prompt) override;
    void logged(const LoggedMessage& message) override;
    void showMessages(const std::string& title, const std::string& subtitle,
                      const std::vector<std::string>& lines) override;
    void note(const std::string& text) override;
    void setStatusText(const std::string& text) override;
    void setProgressBar(double percent) override;
    void beep() override;
    bool openProgress(ProgressMode mode, bool withBar) override;
    void closeProgress() override;
    void setProgressText(const std::string& text) override;
    void yieldToInterface() override;
    bool cancelRequested() override;

    /// The window that a new dialog belongs to: the modal one on top, else the main window.
    [[nodiscard]] QWidget* dialogParent() const;
    [[nodiscard]] DialogDoor& door() { return door_; }
    /// The progress window while an operation runs, shown or not yet shown; else null.
    [[nodiscard]] ProgressWindow* progressWindow() const { return progress_.get(); }

  private:
    /// Where a prompt of a title was when its position was locked.
    using LockedPositions = std::map<std::string, QPoint>;

    std::optional<std::string> enterValue(EnterValueSetup setup);

    QPointer<QWidget> window_;
    DialogDoor& door_;
    std::unique_ptr<ProgressWindow> progress_;
    bool cancelled_ = false;  ///< the operation under the progress window
    LockedPositions locked_;
    std::vector<LoggedMessage> logged_;  ///< since the last log that was shown
};

}  // namespace kavu
