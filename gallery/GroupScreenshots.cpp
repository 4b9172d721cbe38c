// Sample content for the sheets and dialogs over the attribute groups.
#include "app/framework/EnterTextsDialog.h"
#include "app/framework/EnterValueDialog.h"
#include "app/groups/GSheet.h"
#include "app/groups/GenericEditDialog.h"
#include "app/groups/MultiplexDialog.h"
#include "app/groups/PamDialog.h"
#include "app/groups/RSheet.h"
#include "app/groups/SelectSourceDialog.h"
#include "app/groups/TSheet.h"
#include "application/Application.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "groups/DataSources.h"
#include "vocabulary/TGroupFields.h"

#include <algorithm>
#include <memory>

namespace kavu {

namespace {

constexpr std::string_view kSubcarriers = "SI\\N";
constexpr std::string_view kPamSubframeRows = "SF\\N";

void addGeneralScreenshots(ScreenshotList& list) {
    list.addSheet({"GeneralInfo1", "GeneralInfo2", "GeneralInfo3", "GeneralInfo4"},
                  [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
                      if (stage.document == nullptr) {
                          return nullptr;
                      }
                      auto group = readGeneral(*stage.document, nullptr);
                      return group
                                 ? std::make_unique<GeneralSheet>(stage.form, *stage.document,
                                                                  std::move(*group), SourceDeeds{})
                                 : nullptr;
                  });
}

void addTransmissionScreenshots(ScreenshotList& list) {
    std::vector<std::string> names;
    for (const auto& page : transmissionPages()) {
        names.emplace_back(page.name);
    }
    list.addSheet(names, [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        auto& document = *stage.document;
        std::vector<std::string> sources;
        listDataSources(document, nullptr, &sources);
        std::string source = "Transmitter";
        for (const auto& name : sources) {
            source = findGroupIndex(document, nullptr, 'T', name) > 0 ? name : source;
        }
        auto group = readTransmission(document, nullptr, source);
        return group ? std::make_unique<TransmissionSheet>(stage.form, document, std::move(*group),
                                                           [] { return false; })
                     : nullptr;
    });
}

void addGenericEditScreenshots(ScreenshotList& list) {
    list.add("GenericEditDialog", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        GroupText group{.letter = 'H', .exists = true};
        group.text =
            "H\\TA:ENG 4711;\r\nH\\ST1-1:PCM encoder, left bay;\r\n"
            "H\\COM:Harness replaced after flight 12;\r\n";
        return makeGenericEditDialog(stage.form, *stage.document, std::move(group));
    });
}

void addSelectSourceScreenshots(ScreenshotList& list) {
    for (const char letter : {'T', 'R'}) {
        list.add(letter == 'T' ? "SelectDataSourceRF" : "SelectDataSourceRecorder",
                 [letter](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                     if (stage.document == nullptr || stage.application == nullptr) {
                         return nullptr;
                     }
                     return std::make_unique<SelectSourceDialog>(
                         stage.form,
                         SourceParts{*stage.document, stage.application->conversions(),
                                     stage.application->measurementNames()},
                         letter);
                 });
    }
    list.add("PrefixSuffix", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        const std::vector<TextPrompt> prompts = {
            {.title = {}, .prompt = "Prefix:", .initial = "L_"},
            {.title = {}, .prompt = "Suffix:", .initial = {}}};
        return std::make_unique<EnterTextsDialog>(stage.form.ui, "Measurement Prefix And Suffix",
                                                  prompts, nullptr);
    });
    list.add("NewDataSource", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        EnterValueSetup setup;
        setup.title = "Enter New Data Source Name";
        setup.prompt = "Enter New Data Source Name";
        setup.listed = {"L-Band Telemetry", "S-Band Telemetry", "Onboard Recorder"};
        return std::make_unique<EnterValueDialog>(stage.form.ui, std::move(setup), nullptr);
    });
}

void addMultiplexScreenshots(ScreenshotList& list) {
    list.add("MULTIPLEX_INFO", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.application == nullptr || stage.document == nullptr) {
            return nullptr;
        }
        const SourceParts parts{*stage.document, stage.application->conversions(),
                                stage.application->measurementNames()};
        MultiplexGroup group;
        group.source = "L-Band Telemetry";
        loadMultiplex(*stage.document, nullptr, group.source, 1, group);
        auto& rows = group.record.lists[std::string(kSubcarriers)];
        for (const auto* const type : {"PCM", "ANA", "OTH"}) {
            auto& row = rows.emplace_back();
            row.set("SI1-n", std::to_string(rows.size()));
            row.set("SI2-n", type);
            row.set("SI3-n", "POS");
            row.set("SIF1-n", "6.0");
            row.set("SIF2-n", "CD");
            setSubcarrierName(row, type == std::string_view("ANA") ? "ENG_TEMP" : "PCM Stream 2");
        }
        return makeMultiplexDialog(stage.form, parts, std::move(group));
    });
}

/// The sheet of the sample; a page of a newer edition is shown in a sheet of that
/// edition.
std::unique_ptr<RecorderSheet> makeSample(ScreenshotStage& stage, int firstEdition) {
    auto& document = *stage.document;
    RecorderSurroundings around;
    listDataSources(document, nullptr, &around.sources);
    (void)gatherDataLinks(document, nullptr, around.links);
    around.editMultiplex = [](FormContext&, const std::string&) { return false; };
    const auto source = std::find_if(
        around.sources.begin(), around.sources.end(),
        [&](const auto& name) { return findGroupIndex(document, nullptr, 'R', name) > 0; });
    auto group =
        readRecorder(document, nullptr, source == around.sources.end() ? "Recorder" : *source);
    if (!group) {
        return nullptr;
    }
    const auto form = std::make_shared<FormContext>(stage.form);
    form->edition = std::max(form->edition, firstEdition);
    auto sheet =
        std::make_unique<RecorderSheet>(*form, document, std::move(*group), std::move(around));
    // The form lives as long as the sheet.
    QObject::connect(sheet.get(), &QObject::destroyed, [form] {});
    return sheet;
}

void addRecorderScreenshots(ScreenshotList& list) {
    int place = 0;
    for (const auto& page : recorderPages()) {
        list.add(
            std::string(page.name),
            [first = page.firstEdition, place](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                if (stage.document == nullptr) {
                    return nullptr;
                }
                auto sheet = makeSample(stage, first);
                if (sheet) {
                    sheet->openFirst(place);
                }
                return sheet;
            });
        ++place;
    }
}

void addPamScreenshots(ScreenshotList& list) {
    list.add("PAM_INFO", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        PamGroup group{.link = "PAM Stream 1", .index = 1};
        for (const auto& [code, value] : {std::pair{"A1", "NR"},
                                          {"A2", "N"},
                                          {"A3", "STD"},
                                          {"A5", "900"},
                                          {"A\\N", "45"},
                                          {"RC1", "1"},
                                          {"RC2", "23"},
                                          {"RC3", "45"}}) {
            group.record.set(code, value);
        }
        auto& row = group.record.lists[std::string(kPamSubframeRows)].emplace_back();
        row.set("SF1-n", "7");
        row.set("SF2-n", "OTH");
        row.set("SF3-n", "0FFFH");
        return makePamDialog(stage.form, *stage.document, std::move(group));
    });
}

}  // namespace

void addGroupScreenshots(ScreenshotList& list) {
    addGeneralScreenshots(list);
    addTransmissionScreenshots(list);
    addGenericEditScreenshots(list);
    addSelectSourceScreenshots(list);
    addMultiplexScreenshots(list);
    addRecorderScreenshots(list);
    addPamScreenshots(list);
}

}  // namespace kavu
