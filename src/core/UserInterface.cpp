#include "core/UserInterface.h"

#include "core/Printf.h"

#include <utility>

namespace kavu {

std::string MessageBox::shownText() const {
    return id > 0 ? formatPrintf("KAVU Error #%d\n\n", id) + text : text;
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
