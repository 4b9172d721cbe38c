#include "cli/ReportCommandLine.h"

#include "cli/CommandLineParts.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <array>
#include <limits>

namespace kavu::cli {

namespace {

constexpr auto kReportKinds = std::to_array<std::string_view>({"format", "frame", "measurements"});
constexpr auto kReportForms =
    std::to_array<std::string_view>({"text", "csv", "workbook", "xlsx", "pdf", "html"});

void addLayoutCommands(CLI::App& app, ReportApps& apps, CommandLine& line, RawReport& raw) {
    auto* const layout = addCommand(app, "layout", "Make, show, check and change a report layout");
    layout->require_subcommand(1);
    const auto add = [&](Command id, const char* name, const char* help) -> CLI::App& {
        auto* const command = addCommand(*layout, name, help);
        apps.commands.emplace_back(id, command);
        oneValue(command->add_option("RPT", id == Command::LayoutNew ? line.output : line.file,
                                     "The layout file"),
                 "")
            ->required();
        return *command;
    };
    add(Command::LayoutNew, "new", "Write a new layout file, with every key at its default");
    add(Command::LayoutShow, "show", "Show every key with the value that counts");
    add(Command::LayoutCheck, "check", "List unknown keys, and values that a key cannot have");
    auto& set = add(Command::LayoutSet, "set", "Set keys; all other lines stay");
    set.add_option("KEY=VALUE", raw.assignments, "Keys with their new values")
        ->type_name("")
        ->required();
    oneValue(set.add_option("-o,--output", line.output, "The file to write, in place of RPT"),
             "OUT");
}

void addLayoutOption(CLI::App& command, CommandLine& line) {
    oneValue(command.add_option("--layout", line.report.layout,
                                "A layout file, in place of the settings"),
             "RPT");
}

void addStartPage(CLI::App& command, RawReport& raw) {
    oneValue(command.add_option("--start-page", raw.startPage,
                                "The number of the first page (default: 1)"),
             "N");
}

void addPageWidth(CLI::App& command, RawReport& raw, const char* help) {
    oneValue(command.add_option("--page-width", raw.pageWidth, help), "N");
}

void addReport(CLI::App& app, ReportApps& apps, CommandLine& line, RawReport& raw) {
    auto* const command = addCommand(app, "report", "Make reports of a stream in one file");
    apps.commands.emplace_back(Command::Report, command);
    oneValue(command->add_option("FILE", line.file, "The TMATS file"), "")->required();
    oneValue(command->add_option("LINK", line.link, "The name of the stream's data link"), "")
        ->required();
    command
        ->add_option("--kind", line.report.kinds,
                     "format, frame or measurements. Repeatable (default: those that the layout "
                     "has checked)")
        ->type_name("KIND")
        ->take_all()
        ->allow_extra_args(false);
    oneValue(command->add_option("--to", line.report.form,
                                 "text, csv, workbook, xlsx, pdf or html (default: text)"),
             "FORM");
    addLayoutOption(*command, line);
    addPageWidth(*command, raw,
                 "Characters on a line of text that columns of the frame fit into (default: 132)");
    oneValue(command->add_option("--page-lines", raw.pageLines,
                                 "Lines on a page of text; 0 for no page breaks (default: 0)"),
             "N");
    addStartPage(*command, raw);
    oneValue(command->add_option("-o,--output", line.output, "The file to write"), "OUT")
        ->required();
}

void addNames(CLI::App& command, CommandLine& line, const char* help, bool isRequired) {
    command.add_option("NAME", line.report.names, help)->type_name("")->required(isRequired);
}

void addCalibration(CLI::App& app, ReportApps& apps, CommandLine& line, RawReport& raw) {
    auto* command = addCommand(app, "calibration", "Make the calibration data sheets of pair sets");
    apps.commands.emplace_back(Command::Calibration, command);
    oneValue(command->add_option("FILE", line.file, "The TMATS file"), "")->required();
    addNames(*command, line, "Measurements (default: all pair sets with a curve fit)", false);
    oneValue(command->add_option("--link", line.link,
                                 "The stream that places and word lengths come from"),
             "LINK");
    addLayoutOption(*command, line);
    addStartPage(*command, raw);
    addPageWidth(*command, raw,
                 "Characters on a line that two halves of the table fit into (default: 132)");
    oneValue(command->add_option("-o,--output", line.output,
                                 "The file to write: PDF, or text if its name ends in .txt"),
             "OUT");

    command = addCommand(app, "plots", "Draw the curves of up to eight measurements");
    apps.commands.emplace_back(Command::Plots, command);
    oneValue(command->add_option("FILE", line.file, "The TMATS file"), "")->required();
    addNames(*command, line, "The measurements", true);
    oneValue(command->add_option("-o,--output", line.output,
                                 "The file to write: SVG or PNG by the end of its name, else PDF"),
             "OUT");
}

void addWorkbook(CLI::App& app, ReportApps& apps, CommandLine& line) {
    auto* const command =
        addCommand(app, "workbook", "Write a workbook from a description of its sheets");
    apps.commands.emplace_back(Command::Workbook, command);
    oneValue(command->add_option("SHEETS", line.file, "The description, a JSON file"), "")
        ->required();
    command->add_flag("--delimited", line.report.isDelimited, "Delimited text in place of it");
    oneValue(command->add_option("-o,--output", line.output, "The file to write"), "OUT")
        ->required();
}

int readNumber(const char* option, const std::string& text, int least) {
    const auto number = parseInteger(text);
    if (!number || *number < least || *number > std::numeric_limits<int>::max()) {
        throw UsageError{std::string(option) + ": '" + text + "' is not a whole number from " +
                         std::to_string(least) + " on"};
    }
    return static_cast<int>(*number);
}

template <typename Words>
void requireWord(const char* option, const Words& words, const std::string& text,
                 const char* list) {
    if (std::find(words.begin(), words.end(), text) == words.end()) {
        throw UsageError{std::string(option) + ": '" + text + "' is not " + list};
    }
}

}  // namespace

ReportApps addReportCommands(CLI::App& app, CommandLine& line, RawReport& raw) {
    ReportApps apps;
    addLayoutCommands(app, apps, line, raw);
    addReport(app, apps, line, raw);
    addCalibration(app, apps, line, raw);
    addWorkbook(app, apps, line);
    return apps;
}

void readReportArguments(const RawReport& raw, CommandLine& line) {
    auto& report = line.report;
    for (const auto& text : raw.assignments) {
        const auto equals = text.find('=');
        if (equals == std::string::npos || equals == 0) {
            throw UsageError{"layout set: '" + text + "' is not of the form KEY=VALUE"};
        }
        report.keys.emplace_back(text.substr(0, equals), text.substr(equals + 1));
    }
    for (const auto& kind : report.kinds) {
        requireWord("--kind", kReportKinds, kind, "format, frame or measurements");
    }
    requireWord("--to", kReportForms, report.form, "text, csv, workbook, xlsx, pdf or html");
    if (report.form == "csv" &&
        std::find(report.kinds.begin(), report.kinds.end(), "format") != report.kinds.end()) {
        throw UsageError{"report: there is no delimited form of the format's attributes"};
    }
    if (!raw.pageWidth.empty()) {
        report.pageWidth = readNumber("--page-width", raw.pageWidth, 1);
    }
    if (!raw.pageLines.empty()) {
        report.pageLines = readNumber("--page-lines", raw.pageLines, 0);
    }
    if (!raw.startPage.empty()) {
        report.startPage = readNumber("--start-page", raw.startPage,
                                      std::numeric_limits<int>::min());  // a message of its own
    }
}

}  // namespace kavu::cli
