#include "core/talk/BoxLines.h"

#include "core/text/Printf.h"

#include <algorithm>

namespace kavu {

void addLines(MessageBox& box, const std::vector<std::string>& lines) {
    const auto shown = std::min(lines.size(), kMostNamesShown);
    for (std::size_t i = 0; i < shown; ++i) {
        box.text += lines[i] + "\n";
    }
    if (shown == lines.size()) {
        return;
    }
    box.text += formatPrintf("... and %d more\n", static_cast<long>(lines.size() - shown));
    for (const auto& line : lines) {
        box.details += line + "\n";
    }
}

Button askAboutLines(UserInterface& parent, const LinesQuestion& question,
                     const std::vector<std::string>& lines) {
    MessageBox box;
    box.name = question.name;
    box.title = question.title;
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNoCancel;
    box.defaultButton = question.defaultButton;
    box.yesText = question.yes;
    box.noText = question.no;
    box.text = question.before + "\n\n";
    addLines(box, lines);
    box.text += "\n" + question.after;
    return parent.message(box);
}

}  // namespace kavu
