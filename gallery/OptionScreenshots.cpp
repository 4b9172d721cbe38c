#include "app/shell/OptionDialogs.h"
#include "app/translators/TranslatorConfigurationDialog.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

namespace kavu {

namespace {

/// The items of a translator, which no module has made.
constexpr kavu_translator_item kShownItems[] = {
    {"Setup", "Separator", "Character between two values", ","},
    {"Setup", "Header", "Write a line of column names (1: yes, 0: no)", "1"},
};
const kavu_translator kShownTranslator{
    KAVU_TRANSLATOR_INTERFACE, "Setup", "Setup", ".csv", kShownItems,
    std::size(kShownItems),    nullptr};

/// A dialog with the configuration that it shows.
struct ShownConfiguration {
    TranslatorConfiguration configuration{"/nowhere", &kShownTranslator, nullptr};
};
class ShownConfigurationDialog : private ShownConfiguration, public TranslatorConfigurationDialog {
  public:
    explicit ShownConfigurationDialog(FormContext& form)
        : TranslatorConfigurationDialog(form, configuration, nullptr) {}
};

}  // namespace

void addOptionScreenshots(ScreenshotList& list) {
    list.add("TMATS_VERSIONS", [](ScreenshotStage& stage) {
        VersionOptions options;
        options.method = 2;
        return std::make_unique<VersionDialog>(options, stage.form.edition, nullptr);
    });
    list.add("UPDATE_OPTIONS", [](ScreenshotStage& stage) {
        return std::make_unique<UpdateDialog>(stage.form, nullptr);
    });
    list.add("TranslatorConfigurationDialog", [](ScreenshotStage& stage) {
        return std::make_unique<ShownConfigurationDialog>(stage.form);
    });
    list.add("SAMPLE_RATE_OPTIONS",
             [](ScreenshotStage&) { return std::make_unique<SampleRateDialog>(true, 2, nullptr); });
}

}  // namespace kavu
