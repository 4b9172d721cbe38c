#include "core/talk/UserInterface.h"

#include "core/text/Printf.h"

#include <utility>

namespace kavu {

std::string MessageBox::shownText() const {
    return id > 0 ? formatPrintf("KAVU Error #%d\n\n", id) + text : text;
}

std::optional<std::vector<std::string>> UserInterface::enterTexts(
    const std::string& /*title*/, const std::vector<TextPrompt>& prompts) {
    std::vector<std::string> texts;
    for (const auto& prompt : prompts) {
        auto text = enterText(prompt);
        if (!text) {
            return std::nullopt;
        }
        texts.push_back(std::move(*text));
    }
    return texts;
}

std::vector<int> UserInterface::selectRowsFromTable(const TablePrompt& prompt) {
    const int row = selectFromTable(prompt);
    return row < 0 ? std::vector<int>() : std::vector<int>{row};
}

Button showBox(UserInterface* parent, std::string text, std::string title, Icon icon,
               Buttons buttons, Button defaultButton) {
    if (parent == nullptr) {
        return Button::None;
    }
    MessageBox box;
    box.text = std::move(text);
    box.title = std::move(title);
    box.icon = icon;
    box.buttons = buttons;
    box.defaultButton = defaultButton;
    return parent->message(box);
}

}  // namespace kavu
