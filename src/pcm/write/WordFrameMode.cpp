#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "pcm/PcmFormat.h"
#include "pcm/write/WordFrameConversion.h"

namespace kavu {

namespace {

constexpr int kWordFrame = 1;
constexpr int kOlderTypes = 0;

bool hasShownSubframe(const PcmFormat& format) {
    for (const auto& counter : format.idCounters) {
        for (const auto& subframe : counter.subframes) {
            if (!subframe.name.empty() && !subframe.hidden) {
                return true;
            }
        }
    }
    return false;
}

bool hasOlderType(const PcmFormat& format) {
    bool found = false;
    format.forEachMeasurement([&](CellRef cell, int, int) {
        found = !isWordFrame(format.cells().measurement(cell));
        return !found;
    });
    return found;
}

std::optional<bool> chooseFromTwo(UserInterface& parent) {
    const int choice = parent.chooseFromList(
        "Measurement Definition Options",
        {"Create new measurements with word/frame locations, without subframe definitions",
         "Create new measurements with the older location types"});
    return choice < 0 ? std::nullopt : std::optional(choice == 0);
}

}  // namespace

bool chooseWordFrameMode(PcmFormat& format, UserInterface* parent,
                         const ChooseDefinitionMode& choose) {
    if (parent == nullptr) {
        return false;
    }
    auto& settings = format.context().settings;
    const bool before = settings.get(setting::kDefinitionMode) == kWordFrame;
    const auto choice = choose ? choose(*parent, before) : chooseFromTwo(*parent);
    if (!choice) {
        return false;
    }
    const int mode = *choice ? kWordFrame : kOlderTypes;
    if (settings.stored(setting::kDefinitionMode) == mode) {
        return false;
    }
    settings.set(setting::kDefinitionMode, mode);
    wordFrameMode(format, parent, choose);
    return true;
}

void wordFrameMode(PcmFormat& format, UserInterface* parent, const ChooseDefinitionMode& choose) {
    if (format.edition() < 2004 || format.edition() >= 2011) {
        format.implicitSubframes = format.edition() >= 2011;
        return;
    }
    auto& settings = format.context().settings;
    if (settings.text(setting::kDefinitionMode.name).empty()) {
        settings.set(setting::kDefinitionMode, kWordFrame);
        if (!format.hasAnyMeasurement() && chooseWordFrameMode(format, parent, choose)) {
            return;
        }
    }
    format.implicitSubframes = settings.get(setting::kDefinitionMode) == kWordFrame &&
                               !hasShownSubframe(format) && !hasOlderType(format);
}

}  // namespace kavu
