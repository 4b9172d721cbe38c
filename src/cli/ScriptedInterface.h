// The parent of a run without windows: it answers questions from replies given in
// advance, shows what is reported on standard error, and keeps all of it for the report.
#pragma once

#include "cli/CommandLine.h"
#include "core/talk/UserInterface.h"

#include <chrono>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace kavu::cli {

struct ScriptedInterfaceOptions {
    Replies replies;
    bool showBoxes = true;      ///< boxes and questions go to the error stream
    bool showNotes = true;      ///< so do remarks
    bool showProgress = false;  ///< and a progress line
    bool terminal = false;  ///< the error stream is a terminal: the progress line is overwritten
    /// True once the user has asked to stop; may be empty.
    std::function<bool()> interrupted;
};

/// A message box with an OK button, or a message of the log.
struct ReportedMessage {
    int id = 0;  ///< without its sign, 0 for a text without a number
    int titleId = 0;
    std::string text;
    std::string stream;  ///< the stream it belongs to, if known
};

/// A question and the reply to it.
struct AnsweredQuestion {
    int id = 0;
    int titleId = 0;
    std::string name;  ///< of a question that has one in place of a number
    std::string text;
    std::string reply;
    std::string stream;
};

/// What the Messages window was to show.
struct ShownMessages {
    std::string title;
    std::string subtitle;
    std::vector<std::string> lines;
};

class ScriptedInterface : public UserInterface {
  public:
    /// `err` must outlive the object.
    ScriptedInterface(ScriptedInterfaceOptions options, std::ostream& err);
    ~ScriptedInterface() override;

    [[nodiscard]] const std::vector<ReportedMessage>& messages() const { return messages_; }
    [[nodiscard]] const std::vector<AnsweredQuestion>& questions() const { return questions_; }
    [[nodiscard]] const std::vector<ShownMessages>& shown() const { return shown_; }

    /// Sets the reply to a question or a prompt without a number, identified by its text or
    /// title; for a table it is the first cell of the row.
    void setReply(const std::string& text, std::string reply) {
        ownReplies_[text] = std::move(reply);
    }

    /// What is reported from now on belongs to this stream, or to none if empty.
    void setStream(std::string stream) { stream_ = std::move(stream); }

    /// A number given as the reply to a certain question means Yes, and is the reply to
    /// the prompt that follows.
    Button message(const MessageBox& box) override;
    /// Prompts use the reply for all: a text or a number is the value, `yes` the initial
    /// one, anything that does not fit is Cancel.
    std::optional<std::string> enterText(const TextPrompt& prompt) override;
    std::optional<long> enterInteger(const IntegerPrompt& prompt) override;
    std::optional<double> enterDouble(const DoublePrompt& prompt) override;
    /// A reply is the text of a choice, or its number from 1; one given to the preceding
    /// question is the text.
    int chooseFromList(const std::string& title, const std::vector<std::string>& choices) override;
    /// A question with a name: yes is the first choice, every other reply none of them.
    int choose(const ChoicePrompt& prompt) override;
    /// A reply is the number of the row, from 1.
    int selectFromTable(const TablePrompt& prompt) override;
    /// A reply is a path, or `yes` for the offered one.
    std::optional<FileChoice> chooseFile(const FilePrompt& prompt) override;

    void logged(const LoggedMessage& message) override;
    void showMessages(const std::string& title, const std::string& subtitle,
                      const std::vector<std::string>& lines) override;
    void note(const std::string& text) override;
    /// A note that is a message without a number as well.
    void loadRemark(const std::string& text) override;
    void setStatusText(const std::string& text) override;
    void setProgressBar(double percent) override;
    void setProgressText(const std::string& text) override;
    bool openProgress(ProgressMode mode, bool withBar) override;
    void closeProgress() override;
    bool cancelRequested() override;

  private:
    [[nodiscard]] const std::string& replyTo(int id) const;
    /// The button for a question with a name: its default one without a reply of its own.
    [[nodiscard]] Button namedReply(const MessageBox& box) const;
    [[nodiscard]] Button numberedReply(const MessageBox& box, const std::string& text);
    /// The reply to a prompt.
    [[nodiscard]] std::string promptReply(const std::string& text);
    [[nodiscard]] const std::string* ownReply(const std::string& text) const;
    Button pressed(const MessageBox& box, const std::string& reply);
    void remember(const std::string& text, const std::string& reply);
    void showLine(const std::string& text);
    void paintProgress();
    void wipeProgress();

    ScriptedInterfaceOptions options_;
    std::ostream& err_;
    std::string stream_;
    std::map<std::string, std::string> ownReplies_;
    std::vector<ReportedMessage> messages_;
    std::vector<AnsweredQuestion> questions_;
    std::vector<ShownMessages> shown_;

    std::string lastRetried_;
    std::optional<std::string> followUp_;  ///< reply to the next prompt
    bool progressOpen_ = false;
    bool lineOnScreen_ = false;
    std::string statusText_;
    std::string progressText_;
    double percent_ = -1;
    std::chrono::steady_clock::time_point lastPaint_;
    std::string lastPainted_;
};

}  // namespace kavu::cli
