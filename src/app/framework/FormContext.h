// What every page, list and dialog of the editor is given. All of it outlives the form.
#pragma once

#include "core/TmatsDocument.h"

#include <functional>
#include <string>

namespace kavu {

class DialogDoor;

struct FormContext {
    UserInterface& ui;
    DialogDoor& door;
    ProfileSettings& settings;
    const Messages& messages;
    const Clock& clock;
    int edition = 2011;
    /// Opens the help at a topic, which is the resource name of a window or a page. Without
    /// it there is no help to open, and the Help buttons are disabled.
    std::function<void(const std::string& topic)> help;
    /// The dialog of the sample rate options. Without it its buttons are disabled.
    std::function<void()> sampleRates{};
};

/// The context of a form that edits the open document.
[[nodiscard]] inline FormContext formContext(UserInterface& ui, DialogDoor& door,
                                             DocumentContext& document) {
    return {
        ui, door, document.settings, document.messages, document.clock, document.document.version,
        {}, {}};
}

}  // namespace kavu
