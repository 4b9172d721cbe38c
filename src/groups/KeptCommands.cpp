#include "groups/KeptCommands.h"

#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// More lines than this make a box too large for a screen.
constexpr std::size_t kMostLinesShown = 12;
constexpr std::size_t kMostCharactersShown = 72;

/// Codes of commands are compared without regard to case and trailing blanks.
std::string codeKey(const CommandView& command) {
    return lowerAscii(keyOf(command));
}

std::unordered_set<std::string> codesOf(std::string_view text) {
    std::unordered_set<std::string> codes;
    auto source = ByteSource::fromMemory(text);
    TmatsReader reader;
    std::string command;
    while (reader.nextCommand(source, command)) {
        codes.insert(codeKey(viewCommand(command)));
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

void KeptCommands::markCode(std::string_view code) {
    markedCodes_.insert(lowerAscii(code));
}

void KeptCommands::recode(const std::function<bool(std::string& code)>& change) {
    CommandIndex left;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        const auto command = commands_.at(place);
        std::string text(command.code);
        if (command.hasColon && !change(text)) {
            continue;
        }
        left.add(text.append(command.text.substr(command.code.size())));
        if (commands_.isRead(place)) {
            left.markRead(left.size() - 1);
        }
    }
    commands_ = std::move(left);
}

std::vector<std::string> KeptCommands::dropped(std::string_view rewritten) const {
    const auto written = codesOf(rewritten);
    std::unordered_set<std::string> read;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        if (commands_.isRead(place)) {
            read.insert(codeKey(commands_.at(place)));
        }
    }
    std::vector<std::string> lost;
    for (std::size_t place = 0; place < commands_.size(); ++place) {
        const auto command = commands_.at(place);
        const auto code = codeKey(command);
        const bool isWritten = written.contains(code);
        const bool isRepeat = read.contains(code);
        if (!commands_.isRead(place) && isWritten == isRepeat && !markedCodes_.contains(code)) {
            lost.emplace_back(command.text);
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
