#include "groups/KeptCommands.h"

#include "core/document/CarriedCommands.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// More lines than this make a box too large for a screen.
constexpr std::size_t kMostLinesShown = 12;
constexpr std::size_t kMostCharactersShown = 72;

std::string shownLine(std::string_view command) {
    std::string line(command);
    std::replace(line.begin(), line.end(), kStoredCarriageReturn, ' ');
    std::replace(line.begin(), line.end(), kStoredLineFeed, ' ');
    if (line.size() <= kMostCharactersShown) {
        return line;
    }
    return std::string(cutToBytes(line, kMostCharactersShown - 3)) + "...";
}

/// Adds the first commands to the text of a box, and all of them to its details if there are more.
void list(const std::vector<std::string>& commands, MessageBox& box) {
    const auto shown = std::min(commands.size(), kMostLinesShown);
    for (std::size_t i = 0; i < shown; ++i) {
        box.text += shownLine(commands[i]) + "\n";
    }
    if (shown < commands.size()) {
        box.text += formatPrintf("... and %d more\n", static_cast<long>(commands.size() - shown));
        for (const auto& command : commands) {
            box.details += command + "\n";
        }
        fromStoredForm(box.details);
    }
}

MessageBox questionOf(const std::vector<std::string>& dropped) {
    MessageBox box;
    box.title = "Keep Commands?";
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.defaultButton = Button::Yes;
    box.text = "These commands of the file are not part of this form, and would be dropped:\n\n";
    list(dropped, box);
    box.text += "\nDo you want to keep them at the end of the file?";
    return box;
}

}  // namespace

bool askToKeep(UserInterface* parent, const std::vector<std::string>& dropped) {
    return parent != nullptr && !dropped.empty() &&
           parent->message(questionOf(dropped)) == Button::Yes;
}

void showReplaced(UserInterface* parent, const std::vector<std::string>& replaced) {
    if (parent == nullptr || replaced.empty()) {
        return;
    }
    MessageBox box;
    box.title = "Commands Replaced";
    box.icon = Icon::Information;
    box.buttons = Buttons::Ok;
    box.text =
        "The stream states now what these commands of its file stated. They are replaced:\n\n";
    list(replaced, box);
    parent->message(box);
}

std::string keptText(UserInterface* parent, const GroupFile& file, std::string_view rewritten) {
    std::string text(rewritten);
    if (parent != nullptr) {
        const auto dropped = file.leftovers(rewritten);
        if (askToKeep(parent, dropped)) {
            for (const auto& command : dropped) {
                text.append(command).append("\r\n");
            }
        }
    }
    CarriedCommands carried(CarriedCommands::Follow::Codes);
    for (std::size_t place = 0; place < file.commands().size(); ++place) {
        carried.add(file.commands().at(place));
    }
    return withCarried(text, carried);
}

}  // namespace kavu
