#include "reports/ReportDesk.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <limits>

namespace kavu {

ReportLayout ReportDesk::layout() {
    return file_.isOpen() ? file_.layout() : ReportLayout(context_.settings);
}

bool ReportDesk::set(UserInterface* parent, std::string_view key, std::string_view value) {
    if (file_.isOpen()) {
        return file_.set(parent, key, value);
    }
    auto layout = ReportLayout(context_.settings);
    // A value that is there already is no reason to write the settings.
    std::string held(value);
    toStoredForm(held);
    if (layout.stored(key) == held) {
        return true;
    }
    if (!layout.set(key, value)) {
        showBox(parent, formatPrintf("The settings cannot hold '%s=%s'.", key, value),
                "Report Layout File");
        return false;
    }
    return true;
}

bool ReportDesk::mayLeave(UserInterface* parent) {
    if (!file_.isOpen() || !file_.isChanged()) {
        return true;
    }
    const auto answer = showBox(parent,
                                formatPrintf("The currently opened Report Layout File:\n\n'%s'\n\n"
                                             "has changed. Do you wish to save it first?",
                                             file_.path()),
                                "Save Report Layout File", Icon::Question, Buttons::YesNoCancel);
    switch (answer) {
        case Button::Yes:
            return file_.save(parent);
        case Button::Cancel:
            return false;
        default:
            return true;
    }
}

bool ReportDesk::open(UserInterface* parent, const std::string& path) {
    return mayLeave(parent) && file_.open(parent, path);
}

bool ReportDesk::close(UserInterface* parent) {
    if (!mayLeave(parent)) {
        return false;
    }
    file_.close();
    return true;
}

std::optional<int> askStartPage(const Messages& messages, UserInterface& ui, int present) {
    while (true) {
        const auto page = ui.enterInteger({.title = "Starting Page Number",
                                           .prompt = "Enter Starting Page Number",
                                           .initial = present,
                                           .least = std::numeric_limits<int>::min(),
                                           .most = std::numeric_limits<int>::max() / 2});
        if (!page || *page >= 1) {
            return page ? std::optional(static_cast<int>(*page)) : std::nullopt;
        }
        messages.show(&ui, 161, title::kError, kErrorBox, 0);
    }
}

}  // namespace kavu
