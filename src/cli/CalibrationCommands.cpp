// Calibration data sheets and plots of several measurements.
#include "application/Application.h"
#include "cli/OutputFile.h"
#include "cli/ReportCommands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "drawing/CairoSurface.h"
#include "drawing/SvgSurface.h"
#include "reports/calibration/CalibrationSheet.h"
#include "reports/calibration/MultiPlot.h"
#include "reports/print/ReportPrinter.h"

#include <algorithm>

namespace kavu::cli {

namespace {

constexpr int kPlotPictureWidth = 900;
constexpr int kPlotPictureHeight = 1000;

bool endsWithIgnoreCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() &&
           equalsIgnoreCase(text.substr(text.size() - end.size()), end);
}

Json sheetsJson(const std::vector<CalibrationSheet>& sheets) {
    Json all = Json::array();
    for (const auto& sheet : sheets) {
        all.push_back({{"name", jsonText(sheet.calibration.name)},
                       {"page", sheet.page},
                       {"pageText", jsonText(sheet.pageText)},
                       {"pageLocation", sheet.pageLocation},
                       {"title", jsonText(sheet.title)},
                       {"left", jsonText(sheet.left)},
                       {"right", jsonText(sheet.right)},
                       {"text", jsonText(sheet.text())}});
    }
    return all;
}

bool noMeasurements(CommandContext& context, const char* text) {
    showBox(context.ui, text, "Print Calibration Reports", Icon::Information);
    return false;
}

}  // namespace

bool prepareCalibration(CommandContext& context) {
    const auto& line = context.line;
    return line.output.empty() || mayWriteOutput(context.ui, line, line.output);
}

bool calibrationCommand(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    const auto& line = context.line;
    if (!isFirstPage(context)) {
        return false;
    }
    const LineLayout layout(context);
    if (!layout.isOpen() || (!line.link.empty() && !loadStream(context, output))) {
        return false;
    }
    auto& document = application.context();
    const auto names = line.report.names.empty()
                           ? calibrationNames(application.conversions(), context.ui)
                           : line.report.names;
    const auto sheets = makeCalibrationSheets(
        document, application.conversions(), line.link.empty() ? nullptr : &application.pcmFormat(),
        layout.layout(), context.ui, names, line.report.startPage,
        static_cast<std::size_t>(line.report.pageWidth));
    output.members["sheets"] = sheetsJson(sheets);
    if (sheets.empty()) {
        return noMeasurements(context,
                              "There are no calibration reports to print, or none are selected.");
    }
    output.text = terminalText(calibrationText(sheets));
    if (line.output.empty()) {
        return !cancelRequested(context.ui);
    }
    const auto bytes = endsWithIgnoreCase(line.output, ".txt")
                           ? calibrationText(sheets)
                           : printCalibrationSheets(document, layout.layout(), sheets);
    return writeReport(context, output, bytes) && !cancelRequested(context.ui);
}

namespace {

Json plottedJson(const std::vector<PlottedRow>& rows) {
    Json all = Json::array();
    for (const auto& row : rows) {
        all.push_back({{"name", jsonText(row.name)},
                       {"date", jsonText(row.date)},
                       {"fit", row.order},
                       {"rms", row.rms},
                       {"correlation", row.correlation},
                       {"polynomial", row.polynomial}});
    }
    return all;
}

std::string plotFile(const CommandContext& context, const std::vector<PlottedRow>& rows) {
    const auto& document = context.application.context();
    const auto& path = context.line.output;
    if (endsWithIgnoreCase(path, ".svg")) {
        SvgSurface surface(kPlotPictureWidth, kPlotPictureHeight);
        (void)drawMultiPlot(document, surface, rows);
        return surface.document();
    }
    if (endsWithIgnoreCase(path, ".png")) {
        PngSurface surface(kPlotPictureWidth, kPlotPictureHeight);
        (void)drawMultiPlot(document, surface, rows);
        return surface.document();
    }
    PdfSurface surface(pdfSetup(document.clock, std::string(multiplot::kTitle)));
    (void)surface.startPage();
    surface.addOutline(multiplot::kTitle);
    (void)drawMultiPlot(document, surface, rows);
    return surface.document();
}

}  // namespace

bool plotsCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    const auto rows = plottedRows(context.application.context(), context.application.conversions(),
                                  line.report.names);
    output.members["title"] = multiplot::kTitle;
    output.members["xAxis"] = multiplot::kXAxis;
    output.members["yAxis"] = multiplot::kYAxis;
    output.members["rows"] = plottedJson(rows);
    if (rows.empty()) {
        return noMeasurements(context,
                              "There are no measurements that are defined as Pair Sets (with "
                              "\"defining polynomial fit\" option set)");
    }
    std::vector<std::vector<std::string>> table{{"Name", "Date", "Fit", "RMS", "Correlation"}};
    for (const auto& row : rows) {
        table.push_back(
            {terminalLine(row.name), terminalLine(row.date), row.order, row.rms, row.correlation});
    }
    const auto text = alignedTable(table);
    if (!line.output.empty() && !writeReport(context, output, plotFile(context, rows))) {
        return false;
    }
    output.text = text + output.text;
    return true;
}

bool isFirstPage(CommandContext& context) {
    if (context.line.report.startPage >= 1) {
        return true;
    }
    context.application.context().messages.show(context.ui, 161, title::kError, kErrorBox, 0);
    return false;
}

}  // namespace kavu::cli
