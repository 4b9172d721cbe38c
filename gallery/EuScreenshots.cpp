#include "app/conversion/DefinitionList.h"
#include "app/conversion/DefinitionWindow.h"
#include "app/conversion/EuDialogs.h"
#include "app/conversion/EuSheet.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <memory>
#include <optional>

#include <QVariant>

namespace kavu {

namespace {

constexpr char kPictured[] = "ENG1-OIL-PRESS";

std::optional<DefinitionEdit> sampleRecord(ScreenshotStage& stage) {
    if (stage.document == nullptr || stage.application == nullptr) {
        return std::nullopt;
    }
    auto edit =
        DefinitionEdit::open(*stage.document, stage.application->conversions(), nullptr, kPictured);
    if (!edit) {
        return edit;
    }
    (void)edit->setValues(nullptr, {{"DCT", "COE"},
                                    {"BFM", "BWT"},
                                    {"MN1", "Oil pressure, engine 1"},
                                    {"MN2", "10 V"},
                                    {"MN3", "PSI"},
                                    {"MN4", "ANA"},
                                    {"MOT1", "120"},
                                    {"MOT2", "0"},
                                    {"MOT3", "110"},
                                    {"MOT4", "5"},
                                    {"SR", "62.5"},
                                    {"CO", "-0.25"},
                                    {"CO1", "N"},
                                    {"VOI\\E", "CVSD"},
                                    {"VOI\\D", "Cockpit intercom, pilot's channel"},
                                    {"VID\\E", "RS-170"},
                                    {"VID\\D", "Camera in the left wing tip"},
                                    {"OTH", "See the laboratory's sheet of 12 March."},
                                    {"DPA", "P = A * Q + B"},
                                    {"DPAT", "A"},
                                    {"DICI\\N", "2"},
                                    {"BTM", "M"},
                                    {"PTM", "H"}});
    const auto rows = [&edit](std::string_view count, std::vector<std::string_view> codes,
                              const DefinitionValues::Rows& values) {
        (void)edit->setRows(nullptr, count, codes, values);
    };
    rows("CO\\N", {"CO"}, {{"1.83105469E-03"}, {"4.0E-09"}});
    rows("MC\\N", {"MC1", "MC2", "MC3"}, {{"0 %", "512", "0.1"}, {"100 %", "61440", "119.8"}});
    rows("MA\\N", {"MA1", "MA2", "MA3"}, {{"20 C", "2048", "14.7"}});
    rows("DP\\N", {"DP"}, {{"IMPACT-PRESS"}, {"STATIC-PRESS"}});
    rows("DPC\\N", {"DPC"}, {{"A"}, {"B"}});
    rows("DIC\\N", {"DICC", "DICP"}, {{"0", "Pump off"}, {"1", "Pump on"}});
    rows("BWT\\N", {"BWTB", "BWTV"}, {{"1", "S"}, {"2", "90"}, {"3", "45"}, {"4", "22.5"}});
    return edit;
}

/// The record of a picture lives as long as the picture.
class HeldSheet : public EuSheet {
  public:
    static std::unique_ptr<HeldSheet> make(ScreenshotStage& stage) {
        auto edit = sampleRecord(stage);
        if (!edit) {
            return nullptr;
        }
        return std::unique_ptr<HeldSheet>(
            new HeldSheet(stage, std::make_unique<DefinitionEdit>(std::move(*edit))));
    }

  private:
    HeldSheet(ScreenshotStage& stage, std::unique_ptr<DefinitionEdit> edit)
        : EuSheet(stage.form, *stage.document, stage.application->conversions(), *edit, {},
                  nullptr),
          edit_(std::move(edit)) {}
    std::unique_ptr<DefinitionEdit> edit_;
};

class HeldWindow : public DefinitionWindow {
  public:
    static std::unique_ptr<QWidget> make(ScreenshotStage& stage, std::string_view type) {
        auto edit = sampleRecord(stage);
        const auto window = detailWindow(type, stage.form.edition, false);
        if (!edit || !window) {
            return nullptr;
        }
        return std::unique_ptr<QWidget>(
            new HeldWindow(stage, *window, std::make_unique<DefinitionEdit>(std::move(*edit))));
    }

  private:
    HeldWindow(ScreenshotStage& stage, const DetailWindow& window,
               std::unique_ptr<DefinitionEdit> edit)
        : DefinitionWindow(stage.form, *stage.document, stage.application->conversions(), *edit,
                           window, {}, nullptr),
          edit_(std::move(edit)) {}
    std::unique_ptr<DefinitionEdit> edit_;
};

void addDialogs(ScreenshotList& list) {
    list.add("edit_data_conversion_from_menu",
             [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                 if (stage.document == nullptr || stage.application == nullptr) {
                     return nullptr;
                 }
                 return std::make_unique<DefinitionListDialog>(
                     stage.form, *stage.document, stage.application->conversions(),
                     [](const std::string&) { return false; }, nullptr);
             });
    list.add("IMPORT_EU_VALUES", [](ScreenshotStage&) -> std::unique_ptr<QWidget> {
        const std::vector<std::string> names = {"ALTITUDE", "ENG1-N1", "ENG1-OIL-TEMP",
                                                "STATIC-PRESS"};
        return std::make_unique<ImportValuesDialog>(names, "ENG1-OIL-TEMP", nullptr);
    });
    list.add("BIT_WEIGHTS", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        const std::vector<ListRow> rows = {{"1", "S"}, {"2", "90"}, {"3", "45"}, {"4", "22.5"}};
        return std::make_unique<BitWeightDialog>(stage.form, rows, nullptr);
    });
    list.add("EUCommentOptions", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        return stage.document == nullptr
                   ? nullptr
                   : std::make_unique<CommentOptionsDialog>(stage.form, *stage.document, nullptr);
    });
}

}  // namespace

void addEuScreenshots(ScreenshotList& list) {
    std::vector<std::string> pages;
    for (const auto& page : euPages()) {
        pages.emplace_back(page.resource);
    }
    list.addSheet(pages, [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
        return HeldSheet::make(stage);
    });
    for (const std::string_view type :
         {"COE", "NPC", "OTH", "DER", "DIS", "VOI", "VID", "BTM", "PTM"}) {
        const auto window = detailWindow(type, kLatestEdition, false);
        // Two types share a window.
        const auto name = type == "NPC" ? std::string("coefficientsNegativePowers")
                                        : std::string(window->resource);
        list.add(name, [type](ScreenshotStage& stage) { return HeldWindow::make(stage, type); });
    }
    addDialogs(list);
}

}  // namespace kavu
