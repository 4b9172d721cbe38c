// Numbered messages: the table's texts, shown in a box, or gathered in the message log
// while a file is being loaded, so that a file with a hundred faults brings one window.
#pragma once

#include "core/files/IoStatus.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

class WorkingStore;

/// One row of the table of messages. Numbers are never used again for another text.
struct MessageText {
    int id;
    std::string_view text;
};
/// All rows by rising id: 1 to 71 are the prompts of the menu, from 73 messages and titles.
[[nodiscard]] std::span<const MessageText> messageTable();
/// The text of a message, or nothing.
[[nodiscard]] std::optional<std::string_view> loadText(int id);

/// Titles that many callers use.
namespace title {
inline constexpr int kErrorReading = 75;
inline constexpr int kError = 78;
inline constexpr int kWarning = 79;
inline constexpr int kNote = 80;
inline constexpr int kInternalError = 81;
inline constexpr int kDeleteEntry = 83;
inline constexpr int kErrorSaving = 84;
inline constexpr int kErrorReadingConversion = 106;
}  // namespace title

/// How a box of a numbered message looks.
struct BoxStyle {
    Icon icon = Icon::Error;
    Buttons buttons = Buttons::Ok;
    Button defaultButton = Button::None;
};
inline constexpr BoxStyle kErrorBox{Icon::Error, Buttons::Ok};
inline constexpr BoxStyle kWarningBox{Icon::Warning, Buttons::Ok};
inline constexpr BoxStyle kNoteBox{Icon::Information, Buttons::Ok};
inline constexpr BoxStyle kYesNoBox{Icon::Question, Buttons::YesNo};

class Messages {
  public:
    explicit Messages(const WorkingStore& store) : store_(store) {}

    /// Shows a numbered message. A negative id shows the text of its absolute value
    /// without a number. Gives `Button::None` without a parent.
    template <typename... Args>
    Button show(UserInterface* parent, int id, int titleId, const BoxStyle& style,
                const Args&... args) const {
        return showArgs(parent, id, titleId, style, {PrintfArg(args)...});
    }
    template <typename... Args>
    Button showTitled(UserInterface* parent, int id, const std::string& title,
                      const BoxStyle& style, const Args&... args) const {
        return showTitledArgs(parent, id, title, style, {PrintfArg(args)...});
    }
    /// A message about a file operation: the reason stands behind the text.
    template <typename... Args>
    Button showFailure(UserInterface* parent, const IoStatus& status, int id, int titleId,
                       const BoxStyle& style, const Args&... args) const {
        return showFailureArgs(parent, status, id, titleId, style, {PrintfArg(args)...});
    }

    /// Appends a numbered message to the message log.
    template <typename... Args>
    void log(UserInterface* parent, int id, int titleId, const Args&... args) const {
        logArgs(parent, id, titleId, {}, {PrintfArg(args)...});
    }
    template <typename... Args>
    void logFailure(UserInterface* parent, const IoStatus& status, int id, int titleId,
                    const Args&... args) const {
        logArgs(parent, id, titleId, status, {PrintfArg(args)...});
    }
    /// Appends a text that has no number.
    void logText(UserInterface* parent, int titleId, const std::string& text) const;
    /// What a loader was reading when it reported: appended behind its message.
    void logLastCommands(std::string_view commands) const;

    /// Shows the log of the last operation in the Messages window, and deletes it. A
    /// missing or empty log shows nothing: that is how a clean load stays silent.
    void showLog(UserInterface* parent, const std::string& documentPath,
                 std::string_view streamName = {}) const;
    /// The Messages window over any log; false if the log is missing or empty.
    bool showDialog(UserInterface* parent, const std::string& title, const std::string& subtitle,
                    const std::string& logPath) const;
    [[nodiscard]] std::string logPath() const;

  private:
    Button showArgs(UserInterface* parent, int id, int titleId, const BoxStyle& style,
                    PrintfArgs args) const;
    Button showTitledArgs(UserInterface* parent, int id, const std::string& title,
                          const BoxStyle& style, PrintfArgs args) const;
    Button showFailureArgs(UserInterface* parent, const IoStatus& status, int id, int titleId,
                           const BoxStyle& style, PrintfArgs args) const;
    Button showBoxOf(UserInterface* parent, int id, int titleId, const std::string& title,
                     const BoxStyle& style, const IoStatus& status, PrintfArgs args) const;
    void logArgs(UserInterface* parent, int id, int titleId, const IoStatus& status,
                 PrintfArgs args) const;

    const WorkingStore& store_;
};

}  // namespace kavu
