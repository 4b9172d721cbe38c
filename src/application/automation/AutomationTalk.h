// What one call of the automation says: it goes to the caller's window if there is one, and the
// error of the call is made of it.
#pragma once

#include "application/automation/AutomationError.h"
#include "core/talk/UserInterface.h"

#include <string>

namespace kavu {

/// The parent of the operations of one call. Without a window nothing is shown, and every question
/// gets the answer that its operation documents for no parent; only what the groups of a stream
/// hold beyond the model, and the former contents of a file, are kept, as nobody is asked whether
/// to lose them.
class AutomationTalk : public UserInterface {
  public:
    /// How a call can reach a person.
    enum class Reach {
        Silent,    ///< a call without a window
        Window,    ///< on `shown`
        NoDisplay  ///< a call with a window, where there is no display
    };
    /// `shown` is null unless the reach is a window; it must outlive the object.
    AutomationTalk(Reach reach, UserInterface* shown) : reach_(reach), shown_(shown) {}

    [[nodiscard]] Reach reach() const { return reach_; }
    [[nodiscard]] bool isSilent() const { return reach_ != Reach::Window; }
    /// The error of an operation that has failed: that there was no display for a question, that
    /// the user took Cancel or No, or the message that was reported last. One about a file of the
    /// store is `FileError`; one without a number is `unnumbered`, and so is the failure without
    /// any message.
    [[nodiscard]] AutomationError failure(
        AutomationFault unnumbered = AutomationFault::Refused,
        const std::string& withoutMessage = "The model does not allow it.") const;
    /// The number of the last message, without its sign; 0 if there was none.
    [[nodiscard]] int lastMessage() const { return last_; }
    [[nodiscard]] const std::string& lastText() const { return lastText_; }

    Button message(const MessageBox& box) override;
    std::optional<std::string> enterText(const TextPrompt& prompt) override;
    std::optional<std::vector<std::string>> enterTexts(
        const std::string& title, const std::vector<TextPrompt>& prompts) override;
    std::optional<long> enterInteger(const IntegerPrompt& prompt) override;
    std::optional<double> enterDouble(const DoublePrompt& prompt) override;
    int chooseFromList(const std::string& title, const std::vector<std::string>& choices) override;
    int choose(const ChoicePrompt& prompt) override;
    int selectFromTable(const TablePrompt& prompt) override;
    std::optional<FileChoice> chooseFile(const FilePrompt& prompt) override;
    void logged(const LoggedMessage& message) override;
    void showMessages(const std::string& title, const std::string& subtitle,
                      const std::vector<std::string>& lines) override;
    void note(const std::string& text) override;
    void loadRemark(const std::string& text) override;
    void setStatusText(const std::string& text) override;
    void setProgressBar(double percent) override;
    void beep() override;
    bool openProgress(ProgressMode mode, bool withBar) override;
    void closeProgress() override;
    void setProgressText(const std::string& text) override;
    void yieldToInterface() override;
    bool cancelRequested() override;

  private:
    Button answerUnseen(const MessageBox& box);
    template <typename Reply>
    Reply noteReply(Reply reply, bool wasCancelled);

    Reach reach_;
    UserInterface* shown_;
    int last_ = 0;
    std::string lastText_;
    bool lacksDisplay_ = false;
    bool cancelled_ = false;  ///< by the last answer; a message after it is the reason
    bool stopped_ = false;    ///< with the Cancel button of the progress window
};

}  // namespace kavu
