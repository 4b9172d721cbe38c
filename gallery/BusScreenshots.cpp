#include "app/bus/BusLocationDialog.h"
#include "app/bus/BusMeasurementDialog.h"
#include "app/bus/BusMessageSheet.h"
#include "app/bus/BusSheet.h"
#include "app/bus/BusWindow.h"
#include "app/bus/GroupTreeEditor.h"
#include "bus/definition/BusEdit.h"
#include "bus/definition/BusTerminalEdit.h"
#include "core/TmatsDocument.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <array>
#include <memory>

#include <QTreeView>

namespace kavu {

namespace {

/// A bus group of a test aircraft, in the latest edition.
struct SampleBus {
    explicit SampleBus(ScreenshotStage& stage)
        : document(stage.document->document),
          context{stage.document->clock,    stage.document->ticker, stage.document->random,
                  stage.document->settings, stage.document->store,  stage.document->files,
                  stage.document->messages, stage.document->reader, document,
                  stage.document->steps,    stage.document->history},
          form(stage.form),
          setup{form, context, definition, edit, [](QWidget&, const std::string&) {}} {
        constexpr int kEdition = 2011;
        document.version = kEdition;
        form.edition = kEdition;
        definition = {.link = "1553 Bus 1", .index = 1, .edition = kEdition};
        edit.set({}, {.values = {{"TA", "Aircraft 4"}, {"BP", "OD"}}});
        edit.add({}, {.values = {{"BID", "000"},
                                 {"BNA", "Avionics"},
                                 {"BT", "1553"},
                                 {"UMN1", "BUS_TIME"},
                                 {"U1P", "OD"},
                                 {"U1PT", "T"},
                                 {"U1M", "FW"},
                                 {"U1T", "MSB"}},
                      .tracks = std::vector<std::string>{"7", "8"}});
        edit.add({}, {.values = {{"BID", "001"}, {"BNA", "Radio"}, {"BT", "A429"}}});
        addMessage("1", "INS position", "INS", "00101", "POSITION", "00010");
        addMessage("2", "Air data", "ADC", "00110", "STATUS", "00001");
        addMessage("3", "Radar track", "RADAR", "01001", "TRACK", "10001");
        edit.add({2},
                 {.values = {{"MID", "1"}, {"MNA", "Frequency"}, {"LBL", "030"}, {"SDI", "ALL"}}});
        addMeasurement("LATITUDE", {{"1", "FW"}, {"2", "1111111100000000"}});
        addMeasurement("LONGITUDE", {{"3", "FW"}, {"4", "1111111100000000"}});
    }

    void addMessage(const char* number, const char* name, const char* remote,
                    const char* remoteAddress, const char* sub, const char* subAddress) {
        edit.add({1}, {.values = {{"MID", number},
                                  {"MNA", name},
                                  {"CWE", "W"},
                                  {"CMD", "2844"},
                                  {"TRN", remote},
                                  {"TRA", remoteAddress},
                                  {"STN", sub},
                                  {"STA", subAddress},
                                  {"TRM", "0"},
                                  {"DWC", "8"},
                                  {"BMG\\FOT", "F"},
                                  {"RTRN", "DISPLAY"},
                                  {"RTRA", "01100"},
                                  {"RSTN", "MAP"},
                                  {"RSTA", "00011"},
                                  {"RDWC", "8"},
                                  {"SPR", "Two's complement, 2^-31 semicircles."},
                                  {"MCD", "None."}}});
    }
    void addMeasurement(const char* name,
                        const std::vector<std::pair<const char*, const char*>>& places) {
        const BusPlace message = {1, 1};
        edit.add(message,
                 {.values = {
                      {"MN", name}, {"MT", "D"}, {"MN1", "NO"}, {"MN2", "T"}, {"BME\\FOT", "T"}}});
        const auto number =
            rowsOf(std::as_const(*busRowAt(definition, message)), BusLevel::Measurement).size();
        int fragment = 0;
        for (const auto& [word, mask] : places) {
            edit.add({1, 1, number}, {.values = {{"MWN", word},
                                                 {"MBM", mask},
                                                 {"MTO", "MSB"},
                                                 {"MFP", std::to_string(++fragment)}}});
        }
    }

    TmatsDocument document;
    DocumentContext context;
    FormContext form;
    BusDefinition definition{};
    BusEdit edit{context, &form.ui, definition};
    BusFormSetup setup;
};

/// The window keeps its group.
template <typename Window, typename... Args>
std::unique_ptr<Window> makeOver(ScreenshotStage& stage, Args&&... args) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto sample = std::make_shared<SampleBus>(stage);
    auto window = std::make_unique<Window>(sample->setup, std::forward<Args>(args)..., nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [sample] {});
    return window;
}

void addSheets(ScreenshotList& list) {
    list.addSheet({"1553_EDIT_BUS1", "1553_EDIT_BUS2", "1553_EDIT_BUS3", "1553_EDIT_BUS4"},
                  [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
                      return makeOver<BusSheet>(stage, BusPlace{1}, false);
                  });
    list.addSheet({"1553_EDIT_MESSAGE1", "1553_EDIT_MESSAGE2", "1553_EDIT_MESSAGE3",
                   "1553_EDIT_MESSAGE4", "1553_EDIT_MESSAGE5"},
                  [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
                      return makeOver<BusMessageSheet>(stage, BusPlace{1, 1}, false);
                  });
    list.add("1553_EDIT_MESSAGE6", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        auto sheet = makeOver<BusMessageSheet>(stage, BusPlace{2, 1}, false);
        if (sheet != nullptr) {
            sheet->openFirst(sheet->pageCount() - 1);
        }
        return sheet;
    });
}

}  // namespace

void addBusScreenshots(ScreenshotList& list) {
    list.add("1553_select_bus", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        auto window = makeOver<BusWindow>(stage, [] { return true; });
        if (window != nullptr) {
            window->editor().tree()->expandAll();
            window->editor().select({0});
        }
        return window;
    });
    addSheets(list);
    list.add("1553_edit_measurement_info", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        return makeOver<BusMeasurementDialog>(stage, BusPlace{1, 1, 1}, false);
    });
    list.add("1553_edit_measurement_location",
             [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
                 return makeOver<BusLocationDialog>(stage, BusPlace{1, 1, 1, 2}, false);
             });
}

}  // namespace kavu
