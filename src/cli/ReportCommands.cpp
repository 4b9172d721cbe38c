#include "cli/ReportCommands.h"

#include "application/Application.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusUnpack.h"
#include "cli/OutputFile.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "groups/DataSources.h"
#include "reports/ReportRun.h"
#include "reports/print/ReportPrinter.h"
#include "reports/writers/ExcelXmlWriter.h"
#include "reports/writers/HtmlWriter.h"
#include "reports/writers/ReportWorkbook.h"
#include "reports/writers/TextWriter.h"
#include "reports/writers/XlsxWriter.h"

#include <algorithm>
#include <array>

namespace kavu::cli {

namespace {

constexpr auto kKindNames = std::to_array<const char*>({"format", "frame", "measurements"});

const char* nameOf(ReportKind kind) {
    return kKindNames[static_cast<std::size_t>(kind)];
}

/// The reports that are wanted, in the order in which they are made.
std::vector<ReportKind> wantedReports(CommandContext& context, const ReportLayout& layout,
                                      bool isBus) {
    const auto& line = context.line.report;
    if (line.kinds.empty()) {
        return checkedReports(layout, line.form == "csv", isBus);
    }
    std::vector<ReportKind> kinds;
    for (const auto kind : {ReportKind::Format, ReportKind::Frame, ReportKind::Measurements}) {
        if (std::find(line.kinds.begin(), line.kinds.end(), nameOf(kind)) == line.kinds.end()) {
            continue;
        }
        if (isBus && kind != ReportKind::Measurements) {
            showBox(context.ui,
                    formatPrintf("A bus stream has a report of its measurements only, and none of "
                                 "its %s.",
                                 nameOf(kind)),
                    "Report Generation");
        } else {
            kinds.push_back(kind);
        }
    }
    return kinds;
}

/// What was made of the reports that were wanted.
class MadeReports {
  public:
    void make(const ReportSource& source, ReportKind kind, bool isDelimited) {
        if (isDelimited) {
            if (auto text = makeDelimitedReport(source, kind)) {
                delimited_ += *text;
                names_.push_back(nameOf(kind));
            }
        } else if (auto report = makeReport(source, kind)) {
            reports_.push_back(std::move(*report));
            names_.push_back(nameOf(kind));
        }
    }
    [[nodiscard]] const Json& names() const { return names_; }
    /// The output in the form of the line.
    IoStatus write(CommandContext& context, const ReportLayout& layout, std::string& bytes) const {
        const auto& line = context.line.report;
        const auto& document = context.application.context();
        if (line.form == "csv") {
            bytes = delimited_;
        } else if (line.form == "workbook") {
            ExcelXmlWriter workbook(context.ui);
            writeAll(workbook);
            bytes = workbook.document();
        } else if (line.form == "xlsx") {
            XlsxWriter workbook(document.store.folder(), document.clock.now());
            writeAll(workbook);
            return workbook.finish(bytes);
        } else if (line.form == "pdf") {
            bytes = printReports(document, layout, reports_, line.startPage);
        } else if (line.form == "html") {
            bytes = htmlPage(reports_);
        } else {
            bytes = reportText(reports_, {.pageWidth = static_cast<std::size_t>(line.pageWidth),
                                          .pageLines = static_cast<std::size_t>(line.pageLines)});
        }
        return {};
    }

  private:
    void writeAll(WorkbookWriter& workbook) const {
        for (const auto& report : reports_) {
            writeSheets(report, workbook);
        }
    }

    std::vector<ReportContent> reports_;
    std::string delimited_;
    Json names_ = Json::array();
};

bool reportFailure(const CommandContext& context, const IoStatus& status) {
    return reportOpened(context.application.context().messages, context.ui, status);
}

bool writeMade(CommandContext& context, CommandOutput& output, const ReportLayout& layout,
               const MadeReports& made, bool wasWanted) {
    output.members["reports"] = made.names();
    if (made.names().empty()) {
        output.text = wasWanted ? "" : "There is nothing to make.\n";
        return !wasWanted;
    }
    std::string bytes;
    return reportFailure(context, made.write(context, layout, bytes)) &&
           writeReport(context, output, bytes);
}

bool makeReports(CommandContext& context, CommandOutput& output, const LineLayout& layout,
                 const PcmFormat* format, const BusDefinition* bus) {
    auto& application = context.application;
    const ReportSource source{.context = application.context(),
                              .layout = layout.layout(),
                              .conversions = application.conversions(),
                              .parent = context.ui,
                              .format = format,
                              .bus = bus};
    const auto kinds = wantedReports(context, layout.layout(), bus != nullptr);
    const bool isWanted = !kinds.empty() || !context.line.report.kinds.empty();
    MadeReports made;
    for (const auto kind : kinds) {
        made.make(source, kind, context.line.report.form == "csv");
        if (cancelRequested(context.ui)) {
            // What there is of a frame is kept.
            (void)writeMade(context, output, layout.layout(), made, isWanted);
            return false;
        }
    }
    return writeMade(context, output, layout.layout(), made, isWanted);
}

bool reportBus(CommandContext& context, CommandOutput& output, const LineLayout& layout) {
    auto& document = context.application.context();
    const auto definition = openBusDefinition(document, context.ui, context.line.link);
    discardBusProfiles(document);
    output.members["stream"] = jsonText(context.line.link);
    return definition && makeReports(context, output, layout, nullptr, &*definition);
}

}  // namespace

LineLayout::LineLayout(CommandContext& context) : file_(context.application.context()) {
    const auto& path = context.line.report.layout;
    if (path.empty()) {
        layout_ = std::make_unique<ReportLayout>(context.application.context().settings);
    } else if (file_.open(context.ui, path)) {
        layout_ = std::make_unique<ReportLayout>(file_.layout());
    }
}

bool prepareReport(CommandContext& context) {
    return mayWriteOutput(context.ui, context.line, context.line.output);
}

bool writeReport(CommandContext& context, CommandOutput& output, std::string_view bytes) {
    const auto& path = context.line.output;
    if (!reportFailure(context, replaceUserFile(path, bytes))) {
        return false;
    }
    output.members["output"] = jsonText(path);
    output.text = "Saved as " + terminalLine(path) + "\n";
    return true;
}

bool reportCommand(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    const auto& link = context.line.link;
    const LineLayout layout(context);
    if (!layout.isOpen() || !isFirstPage(context)) {
        return false;
    }
    if (streamKindOfLink(document, context.ui, link) == StreamKind::Bus) {
        return reportBus(context, output, layout);
    }
    return loadStream(context, output) &&
           makeReports(context, output, layout, &context.application.pcmFormat(), nullptr);
}

}  // namespace kavu::cli
