// Layout files and conversion records of any bytes, and the reports of a stream by them: every
// report ends, a workbook is well-formed, no row has more cells than its table has
// columns, and the values of a layout file stay when it is saved.
#include "Check.h"
#include "Choices.h"
#include "FuzzRun.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "reports/StreamReports.h"
#include "reports/calibration/CalibrationSheet.h"
#include "reports/calibration/MultiPlot.h"
#include "reports/layout/ReportColumns.h"
#include "reports/layout/ReportLayout.h"
#include "reports/print/ReportPrinter.h"
#include "reports/writers/ExcelXmlWriter.h"
#include "reports/writers/HtmlWriter.h"
#include "reports/writers/ReportWorkbook.h"
#include "reports/writers/TextWriter.h"
#include "xml/XmlDocument.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace kavu;

constexpr std::string_view kLink = "PCM 1";
/// Names and values of the stream come from the input, its shape does not.
constexpr int kWords = 5;
constexpr int kFrames = 3;

/// A value without what would end its command or its line.
std::string field(std::string text) {
    std::erase_if(text, [](char c) { return c == ';' || c == '\n' || c == '\r' || c == '\0'; });
    return text.empty() ? "x" : text;
}

std::string streamOf(fuzz::Choices& choices) {
    std::string text = "P-1\\DLN:" + std::string(kLink) + ";\r\nP-1\\D1:" + field(choices.text(6)) +
                       ";\r\nP-1\\D2:" + field(choices.text(8)) +
                       ";\r\nP-1\\F1:16;\r\nP-1\\MF\\N:" + std::to_string(kFrames) +
                       ";\r\nP-1\\MF1:" + std::to_string(kWords) +
                       ";\r\nP-1\\MF4:16;\r\nP-1\\MF5:1110101110010000;\r\n";
    return text;
}

std::string measurementsOf(fuzz::Choices& choices) {
    std::string text = "D-1\\DLN:" + std::string(kLink) + ";\r\nD-1\\ML\\N:1;\r\n";
    const unsigned count = 1 + choices.below(6);
    text += "D-1\\MN\\N-1:" + std::to_string(count) + ";\r\n";
    for (unsigned m = 1; m <= count; ++m) {
        const auto at = "-1-" + std::to_string(m);
        const auto add = [&](const std::string& code, const std::string& value) {
            text += "D-1\\" + code + at + ":" + value + ";\r\n";
        };
        add("MN", field(choices.text(20)));
        add("LT", "WDFR");
        add("WFP", std::to_string(1 + choices.below(kWords - 1)));
        add("WFF", std::to_string(1 + choices.below(kFrames)));
    }
    return text;
}

void checkWorkbook(const std::string& folder, const std::vector<ReportContent>& reports) {
    ExcelXmlWriter workbook(nullptr);
    for (const auto& report : reports) {
        writeSheets(report, workbook);
    }
    const auto path = folder + "/fuzz-workbook.xml";
    KAVU_CHECK(writeWholeFile(path, workbook.document()).ok());
    XmlDocument document;
    KAVU_CHECK(document.load(nullptr, path, "Workbook"));
    KAVU_CHECK(!document.fault());
    document.discard();
}

void checkReports(const ReportSource& source, const DocumentContext& context,
                  const std::string& folder) {
    std::vector<ReportContent> reports;
    for (const auto kind : {ReportKind::Format, ReportKind::Frame, ReportKind::Measurements}) {
        if (auto made = makeReport(source, kind)) {
            for (const auto& row : made->table.rows) {
                KAVU_CHECK(row.cells().size() <= made->table.columns.size());
            }
            reports.push_back(std::move(*made));
        }
        (void)makeDelimitedReport(source, kind);
    }
    if (reports.empty()) {
        return;
    }
    for (const std::size_t lines : {std::size_t{0}, std::size_t{1}, std::size_t{20}}) {
        KAVU_CHECK(!reportText(reports, {.pageWidth = 40, .pageLines = lines}).empty());
    }
    checkWorkbook(folder, reports);
    KAVU_CHECK(htmlPage(reports).find("<html") != std::string::npos);
    const auto printed =
        printReportPages(context, source.layout, reports, 1, PaperSetup{}, nullptr);
    KAVU_CHECK(printed.pages.size() >= reports.size());
    KAVU_CHECK(printed.pdf.starts_with("%PDF"));
}

void checkCalibrations(const DocumentContext& context, ConversionStore& store,
                       const ReportLayout& layout) {
    const auto names = calibrationNames(store, nullptr);
    const auto sheets =
        makeCalibrationSheets(context, store, nullptr, layout, nullptr, names, 1, 100);
    KAVU_CHECK(sheets.size() <= names.size());
    if (!sheets.empty()) {
        KAVU_CHECK(printSheetPages(context, layout, sheets, PaperSetup{}, nullptr).pages.size() >=
                   sheets.size());
    }
    const auto rows = plottedRows(context, store, names);
    KAVU_CHECK(rows.size() <= kMostPlotted);
    PdfSurface surface({});
    (void)drawMultiPlot(context, surface, rows);
}

std::vector<std::optional<std::string>> storedValues(LayoutFile& file,
                                                     const DocumentContext& context) {
    std::vector<std::optional<std::string>> values;
    for (const auto& key : layoutKeys(context)) {
        values.push_back(file.layout().stored(key.key));
    }
    return values;
}

void checkLayout(fuzz::Run& run, const std::string& folder, const std::string& text) {
    auto& context = run.application.context();
    const auto path = folder + "/fuzz.rpt";
    KAVU_CHECK(writeWholeFile(path, text).ok());
    LayoutFile file(context);
    if (!file.open(&run.ui, path)) {
        return;
    }
    for (const auto& key : layoutKeys(context)) {
        const auto value = file.layout().text(key.key);
        KAVU_CHECK(key.isText || canHave(key, value));
    }
    (void)file.problems();
    const auto values = storedValues(file, context);
    KAVU_CHECK(file.save(&run.ui));
    const auto saved = fuzz::read(path);
    // Bytes that no line can hold are left out once; all values stay.
    KAVU_CHECK(file.open(&run.ui, path) && storedValues(file, context) == values);
    KAVU_CHECK(file.save(&run.ui) && fuzz::read(path) == saved);
    const auto layout = file.layout();
    const ReportSource source{.context = context,
                              .layout = layout,
                              .conversions = run.application.conversions(),
                              .parent = &run.ui,
                              .format = &run.application.pcmFormat()};
    checkReports(source, context, folder);
    checkCalibrations(context, run.application.conversions(), layout);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string folder = fuzz::makeScratch();
    static fuzz::Run run(folder);
    fuzz::Choices choices(data, size);
    auto& context = run.application.context();
    auto& format = run.application.pcmFormat();
    run.ui.boxes.clear();
    const auto put = [&](const char* name, const std::string& text) {
        KAVU_CHECK(writeWholeFile(context.store.pathOf(name), text).ok());
    };
    put("[kavu]PCMFMT.P01", streamOf(choices));
    put("[kavu]PCMMEAS.D01", measurementsOf(choices));
    put("[kavu]00000001.C_O",
        "[A]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=" + field(choices.text(3)) + "\r\nPS\\N=3\r\nPS3-1=" +
            field(choices.text(10)) + "\r\nPS4-1=" + field(choices.text(10)) +
            "\r\nPS3-2=7\r\nPS4-2=9\r\nPS3-3=8\r\nPS4-3=" + field(choices.text(10)) +
            "\r\nMN1=" + field(choices.text(30)) + "\r\n");
    run.application.conversions().forget();
    format.closeFormat();
    if (loadPcmFormat(format, &run.ui, {}, kLink)) {
        std::string rest;
        while (!choices.atEnd()) {
            rest += choices.text(200);
        }
        checkLayout(run, folder, "[Reports]\r\n" + rest);
    }
    format.closeFormat();
    context.store.deleteFiles(nullptr, "[kavu]*");
    return 0;
}
