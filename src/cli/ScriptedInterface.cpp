#include "cli/ScriptedInterface.h"

#include "cli/TerminalText.h"
#include "core/text/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ostream>

namespace kavu::cli {

namespace {

constexpr auto kPaintInterval = std::chrono::milliseconds(100);

/// A text of the logic as the report has it: real line breaks, and only line feeds.
std::string reportText(std::string text) {
    fromStoredForm(text);
    return replaceAll(text, "\r", "");
}

/// A number that is the whole text and within its limits.
template <typename Number>
std::optional<Number> wholeNumber(const std::string& text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && !text.empty() ? std::optional(value)
                                                                : std::nullopt;
}

/// The value of a number prompt for a reply, or nothing for Cancel.
template <typename Prompt, typename Number>
std::optional<Number> numberFor(const Prompt& prompt, const std::string& reply) {
    if (equalsIgnoreCase(reply, "yes")) {
        return prompt.initial;
    }
    const auto value = wholeNumber<Number>(reply);
    // Equal limits mean that there are none.
    const bool bounded = prompt.least < prompt.most;
    if (value && bounded && (*value < prompt.least || *value > prompt.most)) {
        return std::nullopt;
    }
    return value;
}

bool isCancel(const std::string& reply) {
    return equalsIgnoreCase(reply, "cancel") || equalsIgnoreCase(reply, "no");
}

std::string replyName(Button button) {
    switch (button) {
        case Button::Yes:
            return "yes";
        case Button::No:
            return "no";
        case Button::Cancel:
            return "cancel";
        case Button::Retry:
            return "retry";
        case Button::Ok:
            return "ok";
        case Button::None:
            break;
    }
    return {};
}

Button agreeing(Buttons buttons) {
    switch (buttons) {
        case Buttons::YesNo:
        case Buttons::YesNoCancel:
            return Button::Yes;
        case Buttons::RetryCancel:
            return Button::Retry;
        case Buttons::Ok:
        case Buttons::OkCancel:
            break;
    }
    return Button::Ok;
}

/// The button nearest to "no", or to "cancel".
Button refusing(Buttons buttons, bool cancel) {
    switch (buttons) {
        case Buttons::YesNo:
            return Button::No;
        case Buttons::YesNoCancel:
            return cancel ? Button::Cancel : Button::No;
        case Buttons::RetryCancel:
        case Buttons::OkCancel:
            return Button::Cancel;
        case Buttons::Ok:
            break;
    }
    return Button::Ok;
}

std::string percentText(double percent) {
    const auto whole = static_cast<int>(!(percent > 0) ? 0 : percent > 100 ? 100 : percent);
    return std::to_string(whole) + " %";
}

}  // namespace

ScriptedInterface::ScriptedInterface(ScriptedInterfaceOptions options, std::ostream& err)
    : options_(std::move(options)), err_(err) {}

ScriptedInterface::~ScriptedInterface() {
    wipeProgress();
}

const std::string& ScriptedInterface::replyTo(int id) const {
    const auto it = options_.replies.byId.find(std::abs(id));
    return id != 0 && it != options_.replies.byId.end() ? it->second : options_.replies.all;
}

Button ScriptedInterface::pressed(const MessageBox& box, const std::string& reply) {
    if (!equalsIgnoreCase(reply, "yes") && !followUp_) {
        return refusing(box.buttons, equalsIgnoreCase(reply, "cancel"));
    }
    const Button button = agreeing(box.buttons);
    if (button == Button::Retry) {
        // The cause is not mended while a script is waiting: the same box twice in a row
        // is the same failure, and a third would mean an endless loop.
        if (lastRetried_ == box.text) {
            return Button::Cancel;
        }
        lastRetried_ = box.text;
    }
    return button;
}

Button ScriptedInterface::message(const MessageBox& box) {
    const std::string text = reportText(box.text);
    const int id = std::abs(box.id);
    if (box.buttons == Buttons::Ok) {
        messages_.push_back({id, box.titleId, text, stream_});
        if (options_.showBoxes) {
            showLine((box.title.empty() ? std::string() : box.title + ": ") + box.shownText());
        }
        return Button::Ok;
    }
    const Button button = box.name.empty() ? numberedReply(box, text) : namedReply(box);
    questions_.push_back({id, box.titleId, box.name, text, replyName(button), stream_});
    if (options_.showBoxes) {
        showLine((box.title.empty() ? std::string() : box.title + ": ") + box.shownText() + " -> " +
                 replyName(button));
    }
    return button;
}

Button ScriptedInterface::namedReply(const MessageBox& box) const {
    const auto own = options_.replies.byName.find(box.name);
    if (own == options_.replies.byName.end()) {
        return box.defaultButton;
    }
    return equalsIgnoreCase(own->second, "yes")
               ? agreeing(box.buttons)
               : refusing(box.buttons, equalsIgnoreCase(own->second, "cancel"));
}

Button ScriptedInterface::numberedReply(const MessageBox& box, const std::string& text) {
    const int id = std::abs(box.id);
    const auto own = options_.replies.byId.find(id);
    const bool numbered = id != 0 && own != options_.replies.byId.end() &&
                          wholeNumber<long>(own->second) && agreeing(box.buttons) == Button::Yes;
    followUp_ = numbered ? std::optional(own->second) : std::nullopt;
    const auto* const mine = id == 0 ? ownReply(text) : nullptr;
    return pressed(box, mine != nullptr ? *mine : replyTo(box.id));
}

const std::string* ScriptedInterface::ownReply(const std::string& text) const {
    const auto it = ownReplies_.find(text);
    return it == ownReplies_.end() ? nullptr : &it->second;
}

std::string ScriptedInterface::promptReply(const std::string& text) {
    const auto* const mine = ownReply(text);
    auto reply = followUp_.value_or(mine != nullptr ? *mine : options_.replies.all);
    followUp_.reset();
    return reply;
}

void ScriptedInterface::remember(const std::string& text, const std::string& reply) {
    questions_.push_back({0, 0, {}, reportText(text), reply, stream_});
    if (options_.showBoxes) {
        showLine(text + " -> " + reply);
    }
}

std::optional<std::string> ScriptedInterface::enterText(const TextPrompt& prompt) {
    const auto* const mine = ownReply(prompt.prompt);
    const auto reply = promptReply(prompt.prompt);
    std::optional<std::string> value;
    if (mine != nullptr && reply == *mine) {
        value = reply;  // whatever text it is: the operation checks it
    } else if (equalsIgnoreCase(reply, "yes")) {
        value = prompt.initial;
    } else if (!isCancel(reply) && (prompt.limit == 0 || reply.size() <= prompt.limit)) {
        value = reply;
    }
    remember(prompt.prompt, value.value_or("cancel"));
    return value;
}

std::optional<long> ScriptedInterface::enterInteger(const IntegerPrompt& prompt) {
    const auto value = numberFor<IntegerPrompt, long>(prompt, promptReply(prompt.prompt));
    remember(prompt.prompt, value ? std::to_string(*value) : "cancel");
    return value;
}

std::optional<double> ScriptedInterface::enterDouble(const DoublePrompt& prompt) {
    const auto reply = promptReply(prompt.prompt);
    const auto value = numberFor<DoublePrompt, double>(prompt, reply);
    remember(prompt.prompt, value ? reply : "cancel");
    return value;
}

int ScriptedInterface::chooseFromList(const std::string& title,
                                      const std::vector<std::string>& choices) {
    // The choices of such a question may be numbers themselves.
    const bool textOnly = followUp_.has_value();
    const auto reply = promptReply(title);
    int chosen = -1;
    for (std::size_t i = 0; i < choices.size() && chosen < 0; ++i) {
        if (equalsIgnoreCase(choices[i], reply) || (!textOnly && reply == std::to_string(i + 1))) {
            chosen = static_cast<int>(i);
        }
    }
    remember(title, chosen < 0 ? "cancel" : choices[static_cast<std::size_t>(chosen)]);
    return chosen;
}

int ScriptedInterface::choose(const ChoicePrompt& prompt) {
    if (prompt.name.empty()) {
        return chooseFromList(prompt.text, prompt.choices);
    }
    const auto own = options_.replies.byName.find(prompt.name);
    const bool agrees =
        own != options_.replies.byName.end() && equalsIgnoreCase(own->second, "yes");
    const std::string reply = agrees ? "yes" : "cancel";
    questions_.push_back({0, 0, prompt.name, reportText(prompt.text), reply, stream_});
    if (options_.showBoxes) {
        showLine(prompt.title + ": " + prompt.text + " -> " + reply);
    }
    return agrees ? 0 : -1;
}

int ScriptedInterface::selectFromTable(const TablePrompt& prompt) {
    if (const auto* const mine = ownReply(prompt.title)) {
        const auto row = std::find_if(prompt.rows.begin(), prompt.rows.end(), [&](const auto& r) {
            return !r.empty() && r.front() == *mine;
        });
        const bool there = row != prompt.rows.end();
        remember(prompt.title, there ? *mine : "cancel");
        if (!there) {
            // The list in which the name from the command line is missing is not shown.
            showBox(this, "There is no '" + *mine + "' in this list.", prompt.title);
        }
        return there ? static_cast<int>(row - prompt.rows.begin()) : -1;
    }
    const auto number = wholeNumber<long>(promptReply(prompt.title));
    const bool there =
        number && *number >= 1 && static_cast<unsigned long>(*number) <= prompt.rows.size();
    remember(prompt.title, there ? std::to_string(*number) : "cancel");
    return there ? static_cast<int>(*number) - 1 : -1;
}

std::optional<FileChoice> ScriptedInterface::chooseFile(const FilePrompt& prompt) {
    const auto reply = promptReply(prompt.title);
    std::string path;
    if (ownReply(prompt.title) != nullptr) {
        path = reply;
    } else if (equalsIgnoreCase(reply, "yes")) {
        path = prompt.path;
    } else if (!isCancel(reply)) {
        path = reply;
    }
    remember(prompt.title, path.empty() ? "cancel" : path);
    return path.empty() ? std::nullopt
                        : std::optional(FileChoice{std::move(path), prompt.filterIndex});
}

void ScriptedInterface::logged(const LoggedMessage& message) {
    messages_.push_back({std::abs(message.id), message.titleId, reportText(message.text), stream_});
}

void ScriptedInterface::showMessages(const std::string& title, const std::string& subtitle,
                                     const std::vector<std::string>& lines) {
    shown_.push_back({title, subtitle, lines});
}

void ScriptedInterface::note(const std::string& text) {
    if (options_.showNotes) {
        showLine("Note: " + text);
    }
}

void ScriptedInterface::loadRemark(const std::string& text) {
    messages_.push_back({0, 0, reportText(text), stream_});
    note(text);
}

void ScriptedInterface::setStatusText(const std::string& text) {
    statusText_ = text;
    paintProgress();
}

void ScriptedInterface::setProgressBar(double percent) {
    percent_ = percent;
    paintProgress();
}

void ScriptedInterface::setProgressText(const std::string& text) {
    progressText_ = text;
    paintProgress();
}

bool ScriptedInterface::openProgress(ProgressMode /*mode*/, bool /*withBar*/) {
    const bool first = !progressOpen_;
    progressOpen_ = true;
    return first;
}

void ScriptedInterface::closeProgress() {
    progressOpen_ = false;
    progressText_.clear();
    wipeProgress();
}

bool ScriptedInterface::cancelRequested() {
    return options_.interrupted && options_.interrupted();
}

void ScriptedInterface::showLine(const std::string& text) {
    wipeProgress();
    err_ << terminalText(text) << '\n' << std::flush;
}

void ScriptedInterface::paintProgress() {
    if (!options_.showProgress) {
        return;
    }
    const std::string& text = statusText_.empty() ? progressText_ : statusText_;
    const auto now = std::chrono::steady_clock::now();
    if (text.empty() || now - lastPaint_ < kPaintInterval) {
        return;
    }
    std::string line = terminalLine(text);
    if (percent_ >= 0) {
        line += "  " + percentText(percent_);
    }
    if (line == lastPainted_) {
        return;
    }
    lastPaint_ = now;
    lastPainted_ = line;
    if (options_.terminal) {
        err_ << '\r' << line << "\x1b[K" << std::flush;
        lineOnScreen_ = true;
    } else {
        err_ << line << '\n' << std::flush;
    }
}

void ScriptedInterface::wipeProgress() {
    if (lineOnScreen_) {
        err_ << "\r\x1b[K" << std::flush;
        lineOnScreen_ = false;
        lastPainted_.clear();
    }
}

}  // namespace kavu::cli
