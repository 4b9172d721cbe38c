#include "reports/print/PaperSetup.h"

#include "core/talk/ProfileSettings.h"
#include "core/talk/SettingKeys.h"

#include <utility>

namespace kavu {

namespace {

constexpr DrawingSize kA4{595.28, 841.89};
constexpr DrawingSize kLetter{612, 792};

const FlagKey& orientationOf(PaperUse use) {
    return use == PaperUse::Reports ? setting::kLandscapeReports : setting::kLandscapeSheets;
}

}  // namespace

PaperSetup readPaper(const ProfileSettings& settings, PaperUse use) {
    return {.size = static_cast<PaperSize>(settings.get(setting::kPaper)),
            .isLandscape = settings.get(orientationOf(use))};
}

void writePaper(ProfileSettings& settings, PaperUse use, const PaperSetup& paper) {
    settings.set(setting::kPaper, static_cast<int>(paper.size));
    settings.set(orientationOf(use), paper.isLandscape);
}

DrawingSize paperPoints(const PaperSetup& paper) {
    auto size = paper.size == PaperSize::Letter ? kLetter : kA4;
    if (paper.isLandscape) {
        std::swap(size.width, size.height);
    }
    return size;
}

std::optional<bool> isLandscape(const DrawingSurface& surface) {
    const auto area = surface.area();
    const bool hasSize = area.width() > 0 && area.height() > 0;
    return hasSize ? std::optional(area.width() > area.height()) : std::nullopt;
}

}  // namespace kavu
