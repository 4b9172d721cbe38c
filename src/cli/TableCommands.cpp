#include "cli/TableCommands.h"

#include "application/Application.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "mdb/dbase/DbaseTable.h"
#include "vocabulary/FieldRules.h"
#include "xml/XmlDocument.h"

namespace kavu::cli {

namespace {

// --- dbase --------------------------------------------------------------------------------

/// The column of the line: by its name, in any case, else by its number; -1 if there is none.
int lineColumn(const CommandContext& context, const DbaseTable& table) {
    const auto& text = context.line.table.column;
    if (const int named = table.columnIndexByName(text); named >= 0) {
        return named;
    }
    const auto number = parseInteger(text);
    return number && *number >= 0 && *number < table.columnCount() ? static_cast<int>(*number) : -1;
}

bool reportNoColumn(const CommandContext& context) {
    showBox(context.ui,
            formatPrintf("There is no column '%s' in '%s'.", context.line.table.column,
                         context.line.file),
            "ERROR: Unable To Locate Dbase Cell");
    return false;
}

bool dbaseInfo(DbaseTable& table, CommandOutput& output) {
    Json columns = Json::array();
    std::vector<std::vector<std::string>> rows{{"Column", "Type", "Length"}};
    for (const auto& column : table.columns()) {
        const std::string type(1, column.type);
        columns.push_back(
            {{"name", jsonText(column.name)}, {"length", column.length}, {"type", jsonText(type)}});
        rows.push_back(
            {terminalLine(column.name), terminalLine(type), std::to_string(column.length)});
    }
    output.members["rows"] = table.rowCount();
    output.members["rowLength"] = table.rowLength();
    output.members["headerLength"] = table.headerLength();
    output.members["columns"] = std::move(columns);
    output.text = alignedTable({{"Rows", std::to_string(table.rowCount())},
                                {"Row length", std::to_string(table.rowLength())},
                                {"Header length", std::to_string(table.headerLength())}}) +
                  "\n" + alignedTable(rows);
    return true;
}

bool dbaseRows(CommandContext& context, DbaseTable& table, CommandOutput& output) {
    Json rows = Json::array();
    std::vector<std::vector<std::string>> lines{{"Row", "Deleted"}};
    for (const auto& column : table.columns()) {
        lines.front().push_back(terminalLine(column.name));
    }
    for (std::int64_t row = 0; row < table.rowCount(); ++row) {
        Json values = Json::array();
        bool isDeleted = false;
        auto& line = lines.emplace_back(2);
        for (int column = 0; column < table.columnCount(); ++column) {
            const auto text = table.readCell(context.ui, row, column, &isDeleted);
            if (!text) {
                return false;
            }
            values.push_back(jsonText(*text));
            line.push_back(terminalLine(*text));
        }
        line[0] = std::to_string(row);
        line[1] = isDeleted ? "yes" : "";
        rows.push_back({{"row", row}, {"deleted", isDeleted}, {"values", std::move(values)}});
    }
    output.members["rows"] = std::move(rows);
    output.text = alignedTable(lines);
    return true;
}

bool dbaseSet(CommandContext& context, DbaseTable& table, CommandOutput& output) {
    const int column = lineColumn(context, table);
    if (column < 0) {
        return reportNoColumn(context);
    }
    auto row = context.line.table.row;
    if (!table.writeCell(context.ui, &row, column, context.line.table.text)) {
        return false;
    }
    output.members["row"] = row;
    output.text = "Row " + std::to_string(row) + "\n";
    return true;
}

bool dbaseFind(CommandContext& context, DbaseTable& table, CommandOutput& output) {
    const auto& line = context.line.table;
    const int column = lineColumn(context, table);
    if (column < 0) {
        return reportNoColumn(context);
    }
    const auto found = table.findRows(column, line.text, {line.matchesCase, line.isWhole});
    if (!found) {
        showBox(context.ui, "No Text specified", "Unable To Find Text");
        return false;
    }
    output.members["rows"] = *found;
    for (const auto row : *found) {
        output.text += std::to_string(row) + "\n";
    }
    return true;
}

bool dbasePurge(CommandContext& context, DbaseTable& table, CommandOutput& output) {
    const auto purged = table.purgeDeletedRows(context.ui);
    if (!purged || cancelRequested(context.ui)) {
        return false;
    }
    output.members["purged"] = *purged;
    output.text = std::to_string(*purged) + (*purged == 1 ? " row removed\n" : " rows removed\n");
    return true;
}

bool dbaseCommand(CommandContext& context, CommandOutput& output) {
    DbaseTable table(context.application.context().messages);
    if (!table.open(context.ui, context.line.file)) {
        return false;
    }
    switch (context.line.command) {
        case Command::DbaseInfo:
            return dbaseInfo(table, output);
        case Command::DbaseRows:
            return dbaseRows(context, table, output);
        case Command::DbaseSet:
            return dbaseSet(context, table, output);
        case Command::DbaseFind:
            return dbaseFind(context, table, output);
        default:
            return dbasePurge(context, table, output);
    }
}

// --- xml ----------------------------------------------------------------------------------

bool xmlSelect(XmlDocument& document, const std::string& path, CommandOutput& output) {
    Json texts = Json::array();
    output.members["count"] = document.select(path);
    for (const auto& text : document.texts()) {
        texts.push_back(jsonText(text));
        output.text += terminalLine(text) + "\n";
    }
    output.members["texts"] = std::move(texts);
    return true;
}

bool xmlChange(XmlDocument& document, const CommandLine& line) {
    const auto& given = line.table;
    switch (line.command) {
        case Command::XmlSet:
            return document.setText(given.path, given.text);
        case Command::XmlSetAttribute:
            return document.setAttribute(given.path, given.attribute, given.text);
        default:
            return given.value ? document.removeByValue(given.path, *given.value)
                               : document.removeNodes(given.path);
    }
}

bool xmlCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    XmlDocument document;
    if (!document.load(context.ui, line.file, line.table.root)) {
        return false;
    }
    if (line.command == Command::XmlSelect) {
        return xmlSelect(document, line.table.path, output);
    }
    const bool isDone = xmlChange(document, line);
    if (const auto status = document.close(context.ui); !status.ok()) {
        reportUnableToWrite(context.ui, status);
        return false;
    }
    output.members["done"] = isDone;
    output.text = isDone ? "Done\n" : "Nothing was changed\n";
    return true;
}

}  // namespace

bool isTableCommand(Command command) {
    return command >= Command::DbaseInfo && command <= Command::XmlRemove;
}

bool tableCommand(CommandContext& context, CommandOutput& output) {
    return context.line.command <= Command::DbasePurge ? dbaseCommand(context, output)
                                                       : xmlCommand(context, output);
}

}  // namespace kavu::cli
