// Numbered messages: the table's texts, shown in a box, or gathered in the message log
// while a file is being loaded, so that a file with a hundred faults opens one window.
#pragma once

#include "core/files/IoStatus.h"
#include "core/talk/MessageFor.h"
#include "core/talk/Titles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <string>
#include <string_view>

namespace kavu {

class WorkingStore;

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

/// The text of a message as it is stored, with its arguments.
template <typename... Args>
[[nodiscard]] std::string formatMessage(MessageFor<Args...> id, const Args&... args) {
    return formatPrintf(runtimeFormat(loadText(id.id() < 0 ? -id.id() : id.id()).value_or("")),
                        args...);
}

/// The stream that a title of the Messages window names; empty if it is about the document.
[[nodiscard]] std::string streamOfTitle(std::string_view title);

class Messages {
  public:
    explicit Messages(const WorkingStore& store) : store_(store) {}

    /// Shows a numbered message. A negative id shows the text of its absolute value
    /// without a number. Returns `Button::None` without a parent.
    template <typename... Args>
    Button show(UserInterface* parent, MessageFor<Args...> id, MessageTitle titleId,
                const BoxStyle& style, const Args&... args) const {
        return showArgs(parent, id.id(), titleId, style, {PrintfArg(args)...});
    }
    template <typename... Args>
    Button showTitled(UserInterface* parent, MessageFor<Args...> id, const std::string& title,
                      const BoxStyle& style, const Args&... args) const {
        return showTitledArgs(parent, id.id(), title, style, {PrintfArg(args)...});
    }
    /// A message about a file operation: the reason follows the text.
    template <typename... Args>
    Button showFailure(UserInterface* parent, const IoStatus& status, MessageFor<Args...> id,
                       MessageTitle titleId, const BoxStyle& style, const Args&... args) const {
        return showFailureArgs(parent, status, id.id(), titleId, style, {PrintfArg(args)...});
    }

    /// Appends a numbered message to the message log.
    template <typename... Args>
    void log(UserInterface* parent, MessageFor<Args...> id, MessageTitle titleId,
             const Args&... args) const {
        logArgs(parent, id.id(), titleId, {}, {PrintfArg(args)...});
    }
    template <typename... Args>
    void logFailure(UserInterface* parent, const IoStatus& status, MessageFor<Args...> id,
                    MessageTitle titleId, const Args&... args) const {
        logArgs(parent, id.id(), titleId, status, {PrintfArg(args)...});
    }
    /// Appends a text that has no number.
    void logText(UserInterface* parent, MessageTitle titleId, const std::string& text) const;
    /// Appends to a message what the loader was reading when it reported it.
    void logLastCommands(std::string_view commands) const;

    /// Shows the log of the last operation in the Messages window, and deletes it. A
    /// missing or empty log shows nothing: that is how a clean load stays silent.
    void showLog(UserInterface* parent, const std::string& documentPath,
                 std::string_view streamName = {}) const;
    /// Shows any log in the Messages window; false if the log is missing or empty.
    bool showDialog(UserInterface* parent, const std::string& title, const std::string& subtitle,
                    const std::string& logPath) const;
    [[nodiscard]] std::string logPath() const;

  private:
    Button showArgs(UserInterface* parent, int id, MessageTitle titleId, const BoxStyle& style,
                    PrintfArgs args) const;
    Button showTitledArgs(UserInterface* parent, int id, const std::string& title,
                          const BoxStyle& style, PrintfArgs args) const;
    Button showFailureArgs(UserInterface* parent, const IoStatus& status, int id,
                           MessageTitle titleId, const BoxStyle& style, PrintfArgs args) const;
    Button showBoxOf(UserInterface* parent, int id, MessageTitle titleId, const std::string& title,
                     const BoxStyle& style, const IoStatus& status, PrintfArgs args) const;
    void logArgs(UserInterface* parent, int id, MessageTitle titleId, const IoStatus& status,
                 PrintfArgs args) const;

    const WorkingStore& store_;
};

}  // namespace kavu
