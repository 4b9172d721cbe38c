// The windows of reports, filled from the sample's first stream and its pair sets.
#include "app/framework/Look.h"
#include "app/reports/CalibrationDialog.h"
#include "app/reports/PagePreview.h"
#include "app/reports/PlotsDialog.h"
#include "app/reports/ReportOptionsSheet.h"
#include "app/reports/ReportWindow.h"
#include "app/reports/TextViewer.h"
#include "application/Application.h"
#include "bus/definition/BusDefinition.h"
#include "conversion/DefinitionEdit.h"
#include "core/talk/ProfileSettings.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "groups/DataSources.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "reports/ReportDesk.h"
#include "reports/calibration/CalibrationSheet.h"
#include "reports/print/ReportPrinter.h"
#include "reports/writers/TextWriter.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace kavu {

namespace {

/// Of the curves that are pictured: enough for both kinds of marks.
constexpr std::size_t kPicturedCurves = 4;

bool loadFirstStream(ScreenshotStage& stage) {
    auto& application = *stage.application;
    std::vector<std::string> links;
    return gatherDataLinks(application.context(), nullptr, links) && !links.empty() &&
           loadPcmFormat(application.pcmFormat(), nullptr, application.pcmSteps(), links.front());
}

ReportWindowSetup windowSetup(ScreenshotStage& stage, const BusDefinition* bus) {
    auto& application = *stage.application;
    return {stage.form,
            application.context(),
            application.conversions(),
            application.reportDesk(),
            bus == nullptr ? &application.pcmFormat() : nullptr,
            bus,
            true};
}

/// The pair sets of the sample define no curve of their own.
void defineCurves(Application& application) {
    auto& context = application.context();
    for (const auto& row : definitionRows(context, application.conversions(), "All Measurements")) {
        if (!row.type.starts_with("PRS")) {
            continue;
        }
        if (auto edit = DefinitionEdit::open(context, application.conversions(), nullptr,
                                             row.measurement)) {
            (void)(edit->setValues(nullptr, {{"PS1", "Y"}}) && edit->store(nullptr));
        }
    }
}

CalibrationSetup calibrationSetup(ScreenshotStage& stage) {
    auto& application = *stage.application;
    if (calibrationNames(application.conversions(), nullptr).empty()) {
        defineCurves(application);
    }
    return {stage.form, application.context(), application.conversions(), application.reportDesk()};
}

/// The three reports of the first stream, with the columns that one needs first.
std::vector<ReportContent> sampleReports(ScreenshotStage& stage, const ReportLayout& layout) {
    auto& application = *stage.application;
    const ReportSource source{.context = application.context(),
                              .layout = layout,
                              .conversions = application.conversions(),
                              .format = &application.pcmFormat()};
    std::vector<ReportContent> reports;
    for (const auto kind : {ReportKind::Format, ReportKind::Frame, ReportKind::Measurements}) {
        if (auto made = makeReport(source, kind)) {
            reports.push_back(std::move(*made));
        }
    }
    return reports;
}

/// A layout of its own: that of the settings is the user's.
struct SampleLayout {
    SampleLayout() {
        for (const auto* const key :
             {"Fmt", "FrameRpt", "MesRpt", "M1", "M3", "M4", "M8", "M9", "M12", "M15"}) {
            settings.writeProfile(kReportSection, key, "1");
        }
    }
    ProfileSettings settings{""};
};

std::unique_ptr<QWidget> makePreview(ScreenshotStage& stage) {
    if (stage.application == nullptr || !loadFirstStream(stage)) {
        return nullptr;
    }
    const auto sample = std::make_shared<SampleLayout>();
    const auto reports = std::make_shared<std::vector<ReportContent>>(
        sampleReports(stage, ReportLayout(sample->settings)));
    return std::make_unique<PagePreview>(
        stage.form, "PCM Stream Attributes Report", PaperUse::Reports,
        [sample, reports, &stage](const PaperSetup& paper) {
            return printReportPages(stage.application->context(), ReportLayout(sample->settings),
                                    *reports, 1, paper, nullptr);
        });
}

std::unique_ptr<QWidget> makeSheetPreview(ScreenshotStage& stage) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    auto& application = *stage.application;
    (void)calibrationSetup(stage);
    return std::make_unique<PagePreview>(
        stage.form, "Calibration Reports", PaperUse::Sheets,
        [&application](const PaperSetup& paper) {
            SampleLayout sample;
            const ReportLayout layout(sample.settings);
            const auto sheets = makeCalibrationSheets(
                application.context(), application.conversions(), nullptr, layout, nullptr,
                calibrationNames(application.conversions(), nullptr), 1, 106);
            return printSheetPages(application.context(), layout, sheets, paper, nullptr);
        });
}

std::unique_ptr<QWidget> makeViewer(ScreenshotStage& stage) {
    if (stage.application == nullptr || !loadFirstStream(stage)) {
        return nullptr;
    }
    SampleLayout sample;
    return std::make_unique<TextViewer>(
        stage.form, stage.application->context(), "Report",
        reportText(sampleReports(stage, ReportLayout(sample.settings)), {}));
}

std::unique_ptr<QWidget> makePlots(ScreenshotStage& stage) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    const auto setup = calibrationSetup(stage);
    const auto names = calibrationNames(stage.application->conversions(), nullptr);
    auto& settings = stage.form.settings;
    const auto keep = readPlotted(settings);
    writePlotted(settings,
                 plottedRows(stage.application->context(), stage.application->conversions(),
                             {names.begin(), names.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                                 kPicturedCurves, names.size()))}));
    auto dialog = std::make_unique<PlotsDialog>(setup, names);
    std::vector<PlottedRow> before;
    for (const auto& each : keep) {
        before.push_back({.name = each.name, .date = each.date});
    }
    writePlotted(settings, before);
    return dialog;
}

}  // namespace

void addReportScreenshots(ScreenshotList& list) {
    list.add("PCMReports", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.application == nullptr || !loadFirstStream(stage)) {
            return nullptr;
        }
        return std::make_unique<ReportWindow>(windowSetup(stage, nullptr));
    });
    list.add("PCMReportsOfABus", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.application == nullptr) {
            return nullptr;
        }
        static const BusDefinition bus{};
        return std::make_unique<ReportWindow>(windowSetup(stage, &bus));
    });
    list.addSheet({"ReportOptions1", "ReportOptions2", "ReportOptions3", "ReportOptions4",
                   "ReportOptions5", "ReportOptions6"},
                  [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
                      if (stage.application == nullptr) {
                          return nullptr;
                      }
                      return std::make_unique<ReportOptionsSheet>(
                          stage.form, stage.application->reportDesk(), false);
                  });
    list.add("PagePreview", makePreview);
    list.add("PagePreviewOfSheets", makeSheetPreview);
    list.add("TextViewer", makeViewer);
    list.add("PrintCalibrationReports", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.application == nullptr) {
            return nullptr;
        }
        const auto setup = calibrationSetup(stage);
        return std::make_unique<CalibrationDialog>(
            setup, calibrationNames(stage.application->conversions(), nullptr));
    });
    list.add("ViewMultipleMeasurementPlots", makePlots);
}

}  // namespace kavu
