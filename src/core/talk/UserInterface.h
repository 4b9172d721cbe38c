// The seam through which the logic talks to a person: message boxes, prompts, progress
// and the log. There are three implementations: windows, the terminal with scripted
// replies, and a recorder for tests. A null `UserInterface *` is a valid parent
// everywhere: it is silent, and every question gets the answer that its operation
// documents.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

enum class Icon { None, Error, Question, Warning, Information };
enum class Buttons { Ok, OkCancel, RetryCancel, YesNo, YesNoCancel };
enum class Button { None, Ok, Cancel, Retry, Yes, No };

/// A message box. `id` is the signed number of a numbered message (0 for a text without
/// one); only a positive id is shown to the user.
struct MessageBox {
    int id = 0;
    int titleId = 0;
    std::string title;
    /// The text without its "KAVU Error #" line.
    std::string text;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    Button defaultButton = Button::None;
    /// More than a box can hold, shown on demand; empty if there is no more to say.
    std::string details{};
    /// What the buttons Yes and No say where these words say too little, with an "&".
    std::string yesText{};
    std::string noText{};
    /// One of `kQuestionNames`, for a question without a number; empty for all others.
    std::string name{};

    /// The text as a box shows it, preceded by the number if it has one to show.
    [[nodiscard]] std::string shownText() const;
};

/// A message that went to the message log.
struct LoggedMessage {
    int id = 0;
    int titleId = 0;
    std::string title;
    std::string text;
};

struct TextPrompt {
    std::string title;
    std::string prompt;
    std::string initial;
    std::size_t limit = 0;  ///< characters; 0 is no limit
    /// Shown above the field: the names already in use, for a user who needs a new one.
    std::vector<std::string> listed{};
};

struct IntegerPrompt {
    std::string title;
    std::string prompt;
    long initial = 0;
    long least = 0;
    long most = 0;
};

struct DoublePrompt {
    std::string title;
    std::string prompt;
    double initial = 0;
    double least = 0;
    double most = 0;
};

struct TablePrompt {
    std::string title;
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
};

/// A question with choices of its own in place of Yes and No.
struct ChoicePrompt {
    std::string name{};  ///< one of `kQuestionNames`; empty for a question that has none
    std::string title;
    std::string text;
    std::vector<std::string> choices{};  ///< with an "&"; a reply of "yes" means the first
    /// The choice that Enter takes; -1 is Cancel, which then is one more choice.
    int defaultChoice = -1;
};

struct FilePrompt {
    std::string title;
    /// Display text and patterns of each filter, as in {"TMATS Files", "*.tma;*.tmt"}.
    std::vector<std::pair<std::string, std::string>> filters;
    int filterIndex = 1;  ///< counts from 1
    std::string path;
    bool forSaving = false;
    std::string folder{};  ///< shown at first if there is no path; empty is the present one
    // The rest is for saving.
    std::string extension{};         ///< for a name without one (`withExtension`), as in ".tma"
    bool confirmsOverwrite = false;  ///< asks `overwriteQuestion` before a file is taken
    std::string own{};               ///< the file that is taken without a question
};

struct FileChoice {
    std::string path;
    int filterIndex = 1;
};

enum class ProgressMode { WithCancel, WithoutCancel };

/// Commands that a pass reads between two checks whether the user has cancelled.
inline constexpr unsigned kPollEvery = 64;

class UserInterface {
  public:
    UserInterface() = default;
    UserInterface(const UserInterface&) = delete;
    UserInterface& operator=(const UserInterface&) = delete;
    virtual ~UserInterface() = default;

    /// Shows a box and returns the button that was pressed.
    virtual Button message(const MessageBox& box) = 0;
    virtual std::optional<std::string> enterText(const TextPrompt& prompt) = 0;
    /// Asks for several texts in one dialog, or one after the other; nothing if any is
    /// cancelled.
    virtual std::optional<std::vector<std::string>> enterTexts(
        const std::string& title, const std::vector<TextPrompt>& prompts);
    virtual std::optional<long> enterInteger(const IntegerPrompt& prompt) = 0;
    virtual std::optional<double> enterDouble(const DoublePrompt& prompt) = 0;
    /// A two-button or multi-choice question; the index of the choice, or -1.
    virtual int chooseFromList(const std::string& title,
                               const std::vector<std::string>& choices) = 0;
    /// The index of the choice, or -1 for none of them.
    virtual int choose(const ChoicePrompt& prompt) {
        return chooseFromList(prompt.text, prompt.choices);
    }
    /// The row chosen, or -1.
    virtual int selectFromTable(const TablePrompt& prompt) = 0;
    /// The rows chosen, by rising row; empty for none. Where several cannot be chosen it is one.
    virtual std::vector<int> selectRowsFromTable(const TablePrompt& prompt);
    virtual std::optional<FileChoice> chooseFile(const FilePrompt& prompt) = 0;

    /// A message was appended to the message log.
    virtual void logged(const LoggedMessage&) {}
    /// The Messages window over the lines of a log that is not empty.
    virtual void showMessages(const std::string& title, const std::string& subtitle,
                              const std::vector<std::string>& lines) = 0;
    /// A remark that is not a message: it needs no answer and is not part of the log.
    virtual void note(const std::string&) {}
    /// A remark on what a load or a save has left out or normalised, and no numbered message
    /// reports. Whoever makes a report of what happened counts it among the messages.
    virtual void loadRemark(const std::string& text) { note(text); }

    virtual void setStatusText(const std::string&) {}
    /// Percent of the progress bar; -1 clears it.
    virtual void setProgressBar(double) {}
    virtual void beep() {}

    /// Opens the one progress window; false if it was open already, and then the caller
    /// does not close it.
    virtual bool openProgress(ProgressMode, bool /*withBar*/) { return true; }
    virtual void closeProgress() {}
    virtual void setProgressText(const std::string&) {}

    /// Lets the interface paint. No command is processed meanwhile.
    virtual void yieldToInterface() {}
    /// True once the user has asked to cancel and has confirmed it.
    virtual bool cancelRequested() { return false; }
};

/// Opens the progress window for the life of the object, and closes it only if it was
/// this object that opened it.
class ProgressScope {
  public:
    ProgressScope(UserInterface* parent, ProgressMode mode, bool withBar = true)
        : parent_(parent), opened_(parent != nullptr && parent->openProgress(mode, withBar)) {}
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;
    ~ProgressScope() { close(); }

    void close() {
        if (opened_) {
            parent_->closeProgress();
            opened_ = false;
        }
    }

  private:
    UserInterface* parent_;
    bool opened_;
};

// Frequent calls of a pass, safe for a null parent.
inline void setStatusText(UserInterface* parent, const std::string& text) {
    if (parent != nullptr) {
        parent->setStatusText(text);
    }
}
inline void setProgressBar(UserInterface* parent, double percent) {
    if (parent != nullptr) {
        parent->setProgressBar(percent);
    }
}
inline void setProgressText(UserInterface* parent, const std::string& text) {
    if (parent != nullptr) {
        parent->setProgressText(text);
    }
}
inline void yieldToInterface(UserInterface* parent) {
    if (parent != nullptr) {
        parent->yieldToInterface();
    }
}
[[nodiscard]] inline bool cancelRequested(UserInterface* parent) {
    return parent != nullptr && parent->cancelRequested();
}
/// A box without a number. Returns `Button::None` without a parent.
Button showBox(UserInterface* parent, std::string text, std::string title, Icon icon = Icon::Error,
               Buttons buttons = Buttons::Ok, Button defaultButton = Button::None);

}  // namespace kavu
