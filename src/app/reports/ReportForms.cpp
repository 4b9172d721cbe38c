#include "app/reports/ReportForms.h"

#include "app/framework/DialogDoor.h"
#include "app/reports/CalibrationDialog.h"
#include "app/reports/PlotsDialog.h"
#include "app/reports/ReportOptionsSheet.h"
#include "app/reports/ReportWindow.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "pcm/PcmFormat.h"
#include "reports/calibration/Calibration.h"

namespace kavu {

namespace {

/// What the windows work on. The parts are there once the application has started.
struct ReportStage {
    MainWindow& window;
    Application& application;

    [[nodiscard]] QWidget* parent() const { return window.ui().dialogParent(); }
    [[nodiscard]] const PcmFormat* format() const {
        auto& format = application.pcmFormat();
        return format.loaded() ? &format : nullptr;
    }
    [[nodiscard]] CalibrationSetup calibrations(FormContext& form) const {
        return {form, application.context(), application.conversions(), application.reportDesk(),
                format()};
    }
    void generate(QWidget& over, const BusDefinition* bus, bool checksFormat) const {
        auto form = window.formContext();
        if (bus == nullptr && format() == nullptr) {
            return;
        }
        ReportWindow reports(
            {form, application.context(), application.conversions(), application.reportDesk(),
             bus == nullptr ? format() : nullptr, bus, checksFormat},
            &over);
        runDialog(form.door, reports);
    }
    void printAll(QWidget* over) const {
        auto form = window.formContext();
        printAllCalibrationReports(calibrations(form), over);
    }
};

}  // namespace

void installReportForms(MainWindow& window, Application& application) {
    const ReportStage stage{window, application};
    window.installEditor(CommandId::Plots, [stage] {
        auto form = stage.window.formContext();
        viewMultipleMeasurementPlots(stage.calibrations(form), stage.parent());
    });
    window.installEditor(CommandId::CalibrationReports,
                         [stage] { stage.printAll(stage.parent()); });
    window.installEditor(CommandId::ReportOptions, [stage] {
        auto form = stage.window.formContext();
        (void)editReportOptionsAsked(form, stage.application.reportDesk(), stage.parent());
    });
    window.installTreeAction(TreeAction::PrintReports,
                             [stage](const TreeItem&) { stage.printAll(stage.parent()); });
    window.installReports(
        {.stream = [stage](QWidget& over,
                           bool checksFormat) { stage.generate(over, nullptr, checksFormat); },
         .bus = [stage](QWidget& over,
                        const BusDefinition& bus) { stage.generate(over, &bus, false); },
         .sheet =
             [stage](QWidget& over, const std::string& name, const FitInput& input,
                     const FitOptions& options, const FitResult& result) {
                 auto form = stage.window.formContext();
                 const auto setup = stage.calibrations(form);
                 printCalibrationSheet(
                     setup,
                     editedCalibration(setup.document, setup.conversions, setup.format, name, input,
                                       options, result),
                     &over);
             },
         .calibrations = [stage](QWidget* over) { stage.printAll(over); }});
}

}  // namespace kavu
