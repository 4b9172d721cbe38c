// Sample content for the pictures of the windows of measurements.
#include "app/pcm/CommentDialog.h"
#include "app/pcm/DefinitionOptionsDialog.h"
#include "app/pcm/EditDataWordDialog.h"
#include "app/pcm/FilterListDialog.h"
#include "app/pcm/FragmentDialog.h"
#include "app/pcm/GenerateDialog.h"
#include "app/pcm/WordFrameEntryDialog.h"
#include "app/pcm/WordSteps.h"
#include "core/TmatsDocument.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "pcm/structure/SubframeEdit.h"

#include <memory>

namespace kavu {

namespace {

/// A small stream, with the document of the pictures around it in the edition of the picture.
struct WordSample {
    WordSample(ScreenshotStage& stage, int edition)
        : document(stage.document->document),
          context{stage.document->clock,    stage.document->ticker, stage.document->random,
                  stage.document->settings, stage.document->store,  stage.document->files,
                  stage.document->messages, stage.document->reader, document,
                  stage.document->steps,    stage.document->history},
          format(context) {
        document.version = edition;
        format.commonWordLength = 16;
        format.raiseNumberOfFrames({}, 16);
        format.allocateWords({}, 33);
        format.setWord(0, WordType::Sync, -1, -1);
        createIdCounter(format, nullptr, 1);
        format.implicitSubframes = edition >= 2011;
        if (edition < 2011) {
            createSubframe(format, nullptr, {.fwp = 12, .name = "ENGINE", .depth = 8});
        }
        for (const auto* name : {"ALT_BARO", "AIRSPEED", "PITCH_RATE", "ROLL_RATE", "FUEL_FLOW"}) {
            place(name);
        }
    }

    void place(const char* name) {
        Measurement cell;
        cell.name = name;
        cell.locationType = format.implicitSubframes ? "WDFR" : "MF";
        cell.mask = "FW";
        cell.parity = "DE";
        cell.parityTransferOrder = "D";
        cell.transferOrder = "M";
        cell.filterOverwrite = "N";
        if (const auto at = format.getFreeCell(nullptr, ++word, 1)) {
            format.cells().store(at, cell);
        }
    }

    int word = 2;
    TmatsDocument document;
    DocumentContext context;
    PcmFormat format;
    WordSteps steps;
};

/// The window keeps its stream.
template <typename Window, typename... Args>
std::unique_ptr<QWidget> makeOver(const std::shared_ptr<WordSample>& sample, Args&&... args) {
    auto window = std::make_unique<Window>(std::forward<Args>(args)..., nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [sample] {});
    return window;
}

using Change = std::function<void(WordToEdit&)>;

std::unique_ptr<QWidget> makeWord(ScreenshotStage& stage, int edition, int fwp, const char* name,
                                  const Change& change) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto sample = std::make_shared<WordSample>(stage, edition);
    auto word = wordToEdit(sample->format, nullptr, fwp, 1, name);
    if (!word) {
        return nullptr;
    }
    change(*word);
    return makeOver<EditDataWordDialog>(sample, stage.form, sample->format, sample->steps,
                                        std::move(*word));
}

void addWords(ScreenshotList& list) {
    list.add("Pre_106_11_EditDataWord", [](ScreenshotStage& stage) {
        return makeWord(stage, 2009, 3, "ALT_BARO", [](WordToEdit&) {});
    });
    list.add("SuperComWindow", [](ScreenshotStage& stage) {
        return makeWord(stage, 2009, 4, "AIRSPEED", [](WordToEdit& word) {
            auto& definition = word.definition;
            definition.attributes.locationType = "MFSC";
            definition.attributes.locationMode = "E";
            definition.spots.clear();
            for (const int fwp : {4, 13, 22, 31}) {
                definition.spots.push_back({fwp, "", 0, "FW", "", 0});
            }
        });
    });
    list.add("MinorFrameFragments", [](ScreenshotStage& stage) {
        return makeWord(stage, 2009, 5, "PITCH_RATE", [](WordToEdit& word) {
            auto& definition = word.definition;
            definition.attributes.locationType = "MFFR";
            definition.attributes.locationMode = "E";
            definition.attributes.reconstructedLength = 24;
            definition.spots = {{5, "", 0, "FW", "M", 1}, {6, "", 0, "1111111100000000", "M", 2}};
        });
    });
    list.add("SubframeFragments", [](ScreenshotStage& stage) {
        return makeWord(stage, 2009, 12, "", [](WordToEdit& word) {
            auto& definition = word.definition;
            definition.attributes.name = "EGT_LONG";
            definition.attributes.locationType = "SFFR";
            definition.attributes.reconstructedLength = 32;
            definition.spots = {{0, "ENGINE", 2, "FW", "M", 1}, {0, "ENGINE", 2, "FW", "M", 2}};
        });
    });
    list.add("EditDataWord", [](ScreenshotStage& stage) {
        return makeWord(stage, 2011, 6, "ROLL_RATE", [](WordToEdit& word) {
            WordFrameLocation second{
                24, {{8, 0, 8, 1, 1, 16, "FW", 'M', 1}, {9, 0, 9, 1, 1, 16, "11111111", 'M', 2}}};
            word.definition.wordFrame.locations.push_back(second);
        });
    });
}

std::unique_ptr<QWidget> makeEntry(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto sample = std::make_shared<WordSample>(stage, 2011);
    WordFrameEntryDialog::Setup setup;
    setup.name = "ROLL_RATE";
    setup.location = {32, {{8, 8, 24, 2, 4, 14, "FW", 'M', 1}, {9, 8, 25, 2, 4, 14, "FW", 'D', 2}}};
    return makeOver<WordFrameEntryDialog>(sample, stage.form, sample->format, setup);
}

}  // namespace

void addWordScreenshots(ScreenshotList& list) {
    addWords(list);
    list.add("EditWordFrameEntry", makeEntry);
    list.add("EditFragmentDefinition", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        const auto sample = std::make_shared<WordSample>(stage, 2009);
        FragmentDialog::Setup setup{true, {0, "ENGINE", 2, "FW", "M", 1}, {1, 2, 3}, false};
        return makeOver<FragmentDialog>(sample, stage.form, sample->format, setup);
    });
    list.add("ChangeDefaultAttributes", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        const auto sample = std::make_shared<WordSample>(stage, 2009);
        return makeOver<GenerateDialog>(sample, stage.form, sample->format,
                                        DataWordDefaults{"DE", "D", "M", "FW", "UNS", "NON"});
    });
    list.add("EditMeasurementSectionComment",
             [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                 if (stage.document == nullptr) {
                     return nullptr;
                 }
                 const auto sample = std::make_shared<WordSample>(stage, 2009);
                 return makeOver<CommentDialog>(
                     sample, stage.form, sample->format,
                     std::string("Strain gauges of the left wing.\r\nZeroed before each flight."));
             });
    list.add("EditMeasurementFilterList", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        const auto sample = std::make_shared<WordSample>(stage, 2011);
        const std::vector<FilterRow> rows = {
            {"ALT_BARO", "Overwrite"}, {"AIRSPEED", "Neither"}, {"PITCH_RATE", "Filter"}};
        return makeOver<FilterListDialog>(sample, stage.form, sample->format, rows);
    });
    list.add("MeasurementDefinitionOptions", [](ScreenshotStage&) -> std::unique_ptr<QWidget> {
        return std::make_unique<DefinitionOptionsDialog>(true, nullptr);
    });
}

}  // namespace kavu
