#include "core/ProfileSettings.h"
#include "core/TmatsDocument.h"
#include "core/UserInterface.h"
#include "pcm/PcmFormat.h"
#include "pcm/WordFrameConversion.h"

namespace kavu {

namespace {

constexpr std::string_view kSetting = "WdFrCreation";
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
        found = !equalsIgnoreCase(format.cells().measurement(cell).locationType, "WDFR");
        return !found;
    });
    return found;
}

}  // namespace

bool chooseWordFrameMode(PcmFormat& format, UserInterface* parent) {
    if (parent == nullptr) {
        return false;
    }
    const int choice = parent->chooseFromList(
        "Measurement Definition Options",
        {"Create new measurements with word/frame locations, without subframe definitions",
         "Create new measurements with the older location types"});
    if (choice < 0) {
        return false;
    }
    auto& settings = format.context().settings;
    const int mode = choice == 0 ? kWordFrame : kOlderTypes;
    if (settings.integer(kSetting, -1) == mode) {
        return false;
    }
    settings.writeInteger(kSetting, mode);
    wordFrameMode(format, parent);
    return true;
}

void wordFrameMode(PcmFormat& format, UserInterface* parent) {
    if (format.edition() < 2004 || format.edition() >= 2011) {
        format.implicitSubframes = format.edition() >= 2011;
        return;
    }
    auto& settings = format.context().settings;
    if (settings.text(kSetting).empty()) {
        settings.writeInteger(kSetting, kWordFrame);
        if (!format.hasAnyMeasurement() && chooseWordFrameMode(format, parent)) {
            return;
        }
    }
    format.implicitSubframes = settings.integer(kSetting, kWordFrame) == kWordFrame &&
                               !hasShownSubframe(format) && !hasOlderType(format);
}

}  // namespace kavu
