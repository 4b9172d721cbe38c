#include "groups/KeptCommands.h"

#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// More lines than this make a box that a screen can not hold.
constexpr std::size_t kMostLinesShown = 12;
constexpr std::size_t kMostCharactersShown = 72;

std::unordered_set<std::string> codesOf(std::string_view text) {
    std::unordered_set<std::string> codes;
    auto source = ByteSource::fromMemory(text);
    TmatsReader reader;
    std::string command;
    while (reader.nextCommand(source, command)) {
        codes.insert(commandKey(command));
    }
    return codes;
}

std::string shownLine(std::string_view command) {
    std::string line(command);
    std::replace(line.begin(), line.end(), kStoredCarriageReturn, ' ');
    std::replace(line.begin(), line.end(), kStoredLineFeed, ' ');
    if (line.size() <= kMostCharactersShown) {
        return line;
    }
    return std::string(cutToBytes(line, kMostCharactersShown - 3)) + "...";
}

MessageBox questionOf(const std::vector<std::string>& dropped) {
    MessageBox box;
    box.title = "Keep Commands?";
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.defaultButton = Button::Yes;
    box.text = "These commands of the file are not part of this form, and would be dropped:\n\n";
    const auto shown = std::min(dropped.size(), kMostLinesShown);
    for (std::size_t i = 0; i < shown; ++i) {
        box.text += shownLine(dropped[i]) + "\n";
    }
    if (shown < dropped.size()) {
        box.text += formatPrintf("... and %d more\n", static_cast<long>(dropped.size() - shown));
        for (const auto& command : dropped) {
            box.details += command + "\n";
        }
        fromStoredForm(box.details);
    }
    box.text += "\nDo you want to keep them at the end of the file?";
    return box;
}

}  // namespace

std::string commandKey(std::string_view command) {
    return lowerAscii(trimRight(command.substr(0, command.find(':'))));
}

void KeptCommands::add(std::string command) {
    auto key = commandKey(command);
    commands_.push_back({std::move(command), std::move(key), false});
}

void KeptCommands::markRead(std::size_t place) {
    commands_[place].read = true;
    readCodes_.insert(commands_[place].code);
}

void KeptCommands::markCode(std::string_view code) {
    markedCodes_.insert(lowerAscii(code));
}

void KeptCommands::recode(const std::function<bool(std::string& code)>& change) {
    std::vector<Command> left;
    left.reserve(commands_.size());
    readCodes_.clear();
    for (auto& command : commands_) {
        const auto colon = command.text.find(':');
        auto code = command.text.substr(0, colon);
        if (colon != std::string::npos && !change(code)) {
            continue;
        }
        command.text.replace(0, std::min(colon, command.text.size()), code);
        command.code = commandKey(command.text);
        if (command.read) {
            readCodes_.insert(command.code);
        }
        left.push_back(std::move(command));
    }
    commands_ = std::move(left);
}

void KeptCommands::clear() {
    *this = KeptCommands();
}

std::vector<std::string> KeptCommands::dropped(std::string_view rewritten) const {
    const auto written = codesOf(rewritten);
    std::vector<std::string> lost;
    for (const auto& [text, code, read] : commands_) {
        const bool isWritten = written.contains(code);
        const bool isRepeat = readCodes_.contains(code);
        if (!read && isWritten == isRepeat && !markedCodes_.contains(code)) {
            lost.push_back(text);
        }
    }
    return lost;
}

std::string keptTail(UserInterface* parent, const KeptCommands& kept, std::string_view rewritten) {
    if (parent == nullptr) {
        return {};
    }
    const auto dropped = kept.dropped(rewritten);
    if (dropped.empty() || parent->message(questionOf(dropped)) != Button::Yes) {
        return {};
    }
    std::string tail;
    for (const auto& command : dropped) {
        tail += command;
        tail += "\r\n";
    }
    return tail;
}

}  // namespace kavu
