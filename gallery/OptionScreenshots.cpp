#include "app/shell/OptionDialogs.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

namespace kavu {

void addOptionScreenshots(ScreenshotList& list) {
    list.add("TMATS_VERSIONS", [](ScreenshotStage& stage) {
        VersionOptions options;
        options.method = 2;
        return std::make_unique<VersionDialog>(options, stage.form.edition, nullptr);
    });
    list.add("UPDATE_OPTIONS", [](ScreenshotStage& stage) {
        return std::make_unique<UpdateDialog>(stage.form, nullptr);
    });
    list.add("SAMPLE_RATE_OPTIONS",
             [](ScreenshotStage&) { return std::make_unique<SampleRateDialog>(true, 2, nullptr); });
}

}  // namespace kavu
