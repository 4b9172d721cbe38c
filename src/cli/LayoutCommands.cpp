#include "application/Application.h"
#include "cli/OutputFile.h"
#include "cli/ReportCommands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "reports/layout/ReportColumns.h"

namespace kavu::cli {

namespace {

Json columnsJson(const DocumentContext& document, const ReportLayout& layout, bool isBus) {
    Json columns = Json::array();
    for (const auto& column : reportColumns(document, isBus)) {
        const auto key = columnKey(isBus, columns.size() + 1);
        columns.push_back({{"key", key},
                           {"name", jsonText(column.shownName())},
                           {"selected", layout.isChecked(key)}});
    }
    return columns;
}

void showLayout(CommandContext& context, CommandOutput& output, LayoutFile& file) {
    const auto& document = context.application.context();
    const auto layout = file.layout();
    Json keys = Json::object();
    std::vector<std::vector<std::string>> rows;
    for (const auto& key : layoutKeys(document)) {
        const auto value = layout.text(key.key);
        keys[key.key] = jsonText(value);
        rows.push_back({key.key, terminalLine(value)});
    }
    output.members["keys"] = std::move(keys);
    output.members["columns"] = columnsJson(document, layout, false);
    output.members["busColumns"] = columnsJson(document, layout, true);
    output.text = alignedTable(rows);
}

struct ProblemWords {
    const char* kind;
    const char* text;
};
ProblemWords wordsOf(LayoutFile::Problem::Kind kind) {
    switch (kind) {
        case LayoutFile::Problem::Kind::Value:
            return {"value", "%s: it cannot be '%s'."};
        case LayoutFile::Problem::Kind::Column:
            return {"column", "%s=%s: there is no such column."};
        default:
            return {"unknown", "%s=%s: there is no such key."};
    }
}

/// Reports what is wrong with a layout, each a message.
void tellProblems(CommandContext& context, const LayoutFile& file, Json* members) {
    for (const auto& problem : file.problems()) {
        const auto words = wordsOf(problem.kind);
        showBox(context.ui, formatPrintf(runtimeFormat(words.text), problem.key, problem.value),
                "Report Layout File", Icon::Warning);
        if (members != nullptr) {
            members->push_back({{"key", jsonText(problem.key)},
                                {"value", jsonText(problem.value)},
                                {"kind", words.kind}});
        }
    }
}

bool setKeys(CommandContext& context, CommandOutput& output, LayoutFile& file) {
    const auto& line = context.line;
    for (const auto& [key, value] : line.report.keys) {
        if (!file.set(context.ui, key, value)) {
            return false;
        }
    }
    const auto& path = line.output.empty() ? line.file : line.output;
    if (!file.saveAs(context.ui, path)) {
        return false;
    }
    tellProblems(context, file, nullptr);
    output.members["output"] = jsonText(path);
    output.text = "Saved as " + terminalLine(path) + "\n";
    return true;
}

bool newLayout(CommandContext& context, CommandOutput& output, LayoutFile& file) {
    const auto& path = context.line.output;
    if (!file.create(context.ui, path) || !file.save(context.ui)) {
        return false;
    }
    output.members["output"] = jsonText(path);
    output.text = "Saved as " + terminalLine(path) + "\n";
    return true;
}

}  // namespace

bool isLayoutCommand(Command command) {
    return command >= Command::LayoutNew && command <= Command::Workbook;
}

bool layoutCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    if (line.command == Command::Workbook) {
        return workbookCommand(context, output);
    }
    if (!line.output.empty() && !mayWriteOutput(context.ui, line, line.output)) {
        return false;
    }
    LayoutFile file(context.application.context());
    if (line.command == Command::LayoutNew) {
        return newLayout(context, output, file);
    }
    if (!file.open(context.ui, line.file)) {
        return false;
    }
    if (line.command == Command::LayoutSet) {
        return setKeys(context, output, file);
    }
    if (line.command == Command::LayoutShow) {
        showLayout(context, output, file);
        return true;
    }
    Json problems = Json::array();
    tellProblems(context, file, &problems);
    output.text = problems.empty() ? "There is nothing wrong with it.\n" : "";
    output.members["problems"] = std::move(problems);
    return true;
}

}  // namespace kavu::cli
