// What every page, list and dialog of the editor is given. All of it outlives the form.
#pragma once

#include "core/TmatsDocument.h"

#include <functional>
#include <string>

class QWidget;

namespace kavu {

class DialogDoor;
struct BusDefinition;
struct FitInput;
struct FitOptions;
struct FitResult;

/// What other windows have printed. Without a call its buttons are disabled.
struct ReportCalls {
    /// "Report Generation" of the stream in memory; the attributes of the format are checked at
    /// first if that is said.
    std::function<void(QWidget& window, bool checksFormat)> stream{};
    /// The same of a bus group.
    std::function<void(QWidget& window, const BusDefinition& bus)> bus{};
    /// The calibration sheet of a measurement whose record is being edited, with its last fit.
    std::function<void(QWidget& window, const std::string& name, const FitInput& input,
                       const FitOptions& options, const FitResult& result)>
        sheet{};
    /// "Print Calibration Reports"
    std::function<void(QWidget* window)> calibrations{};
};

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
    ReportCalls reports{};
};

/// The context of a form that edits the open document.
[[nodiscard]] inline FormContext formContext(UserInterface& ui, DialogDoor& door,
                                             DocumentContext& document) {
    return {ui,
            door,
            document.settings,
            document.messages,
            document.clock,
            document.document.version,
            {},
            {},
            {}};
}

}  // namespace kavu
