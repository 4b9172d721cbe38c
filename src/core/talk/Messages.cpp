#include "core/talk/Messages.h"

#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <cstdlib>

namespace kavu {

namespace {

constexpr std::size_t kBoxBuffer = 600;
constexpr std::size_t kLogBuffer = 1200;
constexpr std::size_t kColumnWithTitle = 70;
constexpr std::size_t kColumnWithoutTitle = 80;
constexpr std::string_view kStreamMark = " (Stream: ";
constexpr const char* kMissingText = "<Internal error: String not found>";
constexpr const char* kMissingTitle = "<internal error: String not found>";

std::string titleText(MessageTitle titleId) {
    return std::string(loadText(titleId.id()).value_or(kMissingTitle));
}

/// The title of a log entry; empty if it has none.
std::string entryTitle(MessageTitle titleId) {
    return titleId.id() > 0 ? titleText(titleId) : std::string();
}

/// The text of a message, formatted. `room` is the size of the buffer it must fit in.
std::string messageText(int id, PrintfArgs args, std::size_t room) {
    const auto format = loadText(std::abs(id));
    return format ? std::string(cutToBytes(formatPrintf(*format, args), room))
                  : std::string(kMissingText);
}

std::string withReason(std::string text, const IoStatus& status) {
    return status.ok() ? text : text + "\n\nReason: " + status.reason();
}

/// A text with its line breaks as line feeds, including those in stored form.
std::string withLineFeeds(std::string text) {
    fromStoredForm(text);
    std::erase(text, '\r');
    return text;
}

/// The body of a log entry: indented by a tab under a title, and broken at a blank once a
/// line is past the wrap column. A text without blanks is never broken.
std::string wrapped(const std::string& text, bool indented) {
    const std::size_t column = indented ? kColumnWithTitle : kColumnWithoutTitle;
    std::string result(indented ? "\t" : "");
    std::size_t count = 0;
    for (const char c : text) {
        result.push_back(c);
        ++count;
        const bool broken = count > column && c == ' ';
        if (broken) {
            result.push_back('\n');
        }
        if (broken || c == '\n') {
            result += indented ? "\t" : "";
            count = 0;
        }
    }
    return result;
}

void appendEntry(const std::string& path, const std::string& title, int id,
                 const std::string& text) {
    FileWriter log;
    if (!log.open(path, WriteMode::Append).ok()) {
        return;
    }
    const bool titled = !title.empty();
    const std::string lineEnds = titled ? "\n\n" : "\n";
    log.write(title);
    if (id > 0) {
        log.write(formatPrintf(" - (KAVU Error #%d)", id));
    }
    log.write(lineEnds);
    log.write(wrapped(text, titled));
    log.write(lineEnds);
    // A log that cannot be written loses the message, and nothing else.
    (void)log.close();
}

}  // namespace

std::string streamOfTitle(std::string_view title) {
    const auto mark = title.find(kStreamMark);
    if (mark == std::string_view::npos || !title.ends_with(')')) {
        return {};
    }
    const auto begin = mark + kStreamMark.size();
    return std::string(title.substr(begin, title.size() - begin - 1));
}

Button Messages::showArgs(UserInterface* parent, int id, MessageTitle titleId,
                          const BoxStyle& style, PrintfArgs args) const {
    return showBoxOf(parent, id, titleId, titleText(titleId), style, {}, args);
}

Button Messages::showTitledArgs(UserInterface* parent, int id, const std::string& title,
                                const BoxStyle& style, PrintfArgs args) const {
    return showBoxOf(parent, id, 0, title, style, {}, args);
}

Button Messages::showFailureArgs(UserInterface* parent, const IoStatus& status, int id,
                                 MessageTitle titleId, const BoxStyle& style,
                                 PrintfArgs args) const {
    return showBoxOf(parent, id, titleId, titleText(titleId), style, status, args);
}

Button Messages::showBoxOf(UserInterface* parent, int id, MessageTitle titleId,
                           const std::string& title, const BoxStyle& style, const IoStatus& status,
                           PrintfArgs args) const {
    if (parent == nullptr) {
        return Button::None;
    }
    MessageBox box;
    box.id = id;
    box.titleId = titleId.id();
    box.title = title;
    box.icon = style.icon;
    box.buttons = style.buttons;
    box.defaultButton = style.defaultButton;
    // The number before the text takes its part of the buffer.
    const auto prefix = box.shownText().size();
    box.text = withReason(messageText(id, args, kBoxBuffer - 1 - prefix), status);
    parent->beep();
    return parent->message(box);
}

void Messages::logArgs(UserInterface* parent, int id, MessageTitle titleId, const IoStatus& status,
                       PrintfArgs args) const {
    const auto text = withLineFeeds(withReason(messageText(id, args, kLogBuffer - 1), status));
    const auto title = entryTitle(titleId);
    appendEntry(logPath(), title, id, text);
    if (parent != nullptr) {
        parent->logged({id, titleId.id(), title, text});
    }
}

void Messages::logText(UserInterface* parent, MessageTitle titleId, const std::string& text) const {
    const auto title = entryTitle(titleId);
    const auto shown = text.empty() ? std::string(kMissingText) : withLineFeeds(text);
    appendEntry(logPath(), title, 0, shown);
    if (parent != nullptr) {
        parent->logged({0, titleId.id(), title, shown});
    }
}

void Messages::logLastCommands(std::string_view commands) const {
    FileWriter log;
    if (commands.empty() || !log.open(logPath(), WriteMode::Append).ok()) {
        return;
    }
    log.write("\tLast TMATS commands read:\n\n\t\t");
    log.write(replaceAll(commands, ";", ";\n\t\t"));
    log.write("\n\n");
    (void)log.close();
}

void Messages::showLog(UserInterface* parent, const std::string& documentPath,
                       std::string_view streamName) const {
    if (parent == nullptr) {
        return;
    }
    std::string title = "KAVU-9 Error Messages";
    if (!streamName.empty()) {
        title += kStreamMark;
        title += std::string(streamName) + ")";
    }
    showDialog(parent, title, formatPrintf("TMATS %s: %s", "File", documentPath), logPath());
}

bool Messages::showDialog(UserInterface* parent, const std::string& title,
                          const std::string& subtitle, const std::string& path) const {
    if (parent == nullptr) {
        return false;
    }
    std::string text;
    PathKind kind = PathKind::Missing;
    auto status = probePath(path, kind);
    if (status.ok() && kind == PathKind::Missing) {
        return false;
    }
    status = status.ok() ? readWholeFile(path, text) : status;
    (void)deleteFile(path);
    if (status.ok() && text.empty()) {
        return false;
    }
    auto lines = splitLines(text);
    for (auto& line : lines) {
        const auto first = line.find_first_not_of(" \t\v\f\r");
        line.erase(0, first == std::string::npos ? line.size() : first);
    }
    if (!status.ok()) {
        lines = {"Internal Error: Unable to display messages"};
    }
    parent->showMessages(title.empty() ? "Messages" : title, subtitle, lines);
    return true;
}

std::string Messages::logPath() const {
    return store_.pathOf(working::kMessageLog);
}

}  // namespace kavu
