#include "cli/TableCommandLine.h"

#include "cli/CommandLineParts.h"
#include "vocabulary/FieldRules.h"

namespace kavu::cli {

namespace {

/// The highest number of a row that a table can have.
constexpr long kMostRow = 0xFFFFFFFFL;

void addPositional(CLI::App& command, const char* name, std::string& text, const char* help) {
    oneValue(command.add_option(name, text, help), "")->required();
}

void addDbaseCommands(CLI::App& app, TableApps& apps, CommandLine& line, RawTable& raw) {
    auto* const dbase = addCommand(app, "dbase", "Show and change a table of the dBase format");
    dbase->require_subcommand(1);
    const auto add = [&](Command id, const char* name, const char* help) -> CLI::App& {
        auto* const command = addCommand(*dbase, name, help);
        apps.commands.emplace_back(id, command);
        addPositional(*command, "FILE", line.file, "The table");
        return *command;
    };
    const auto addCell = [&](CLI::App& command, const char* help) {
        addPositional(command, "COLUMN", line.table.column, "The name of a column, or its number");
        addPositional(command, "TEXT", line.table.text, help);
    };
    add(Command::DbaseInfo, "info", "Show the numbers and columns of a table");
    add(Command::DbaseRows, "rows", "Show all rows");
    apps.dbaseSet = &add(Command::DbaseSet, "set", "Write a cell");
    addCell(*apps.dbaseSet, "The text of the cell");
    oneValue(apps.dbaseSet->add_option("--row", raw.row, "The row, from 0; -1 adds one (default)"),
             "N");
    auto& find = add(Command::DbaseFind, "find", "Find the rows that hold a text in a column");
    addCell(find, "The text to find");
    find.add_flag("--case", line.table.matchesCase, "Letters in their case");
    find.add_flag("--whole", line.table.isWhole, "The text is the whole value");
    auto& purge = add(Command::DbasePurge, "purge", "Remove the rows that are marked as deleted");
    purge.add_flag("--yes", line.table.yes, "Remove them; without it they stay");
}

void addXmlCommands(CLI::App& app, TableApps& apps, CommandLine& line) {
    auto* const xml = addCommand(app, "xml", "Show and change the nodes of an XML file");
    xml->require_subcommand(1);
    const auto add = [&](Command id, const char* name, const char* help) -> CLI::App& {
        auto* const command = addCommand(*xml, name, help);
        apps.commands.emplace_back(id, command);
        addPositional(*command, "FILE", line.file, "The XML file");
        addPositional(*command, "PATH", line.table.path, "An XPath below the root element");
        oneValue(command->add_option("--root", line.table.root, "The name of the root element"),
                 "NAME")
            ->required();
        return *command;
    };
    add(Command::XmlSelect, "select", "Show the texts of all nodes of a path");
    addPositional(add(Command::XmlSet, "set", "Set the text of a node; missing steps are made"),
                  "VALUE", line.table.text, "The text");
    auto& attribute = add(Command::XmlSetAttribute, "set-attribute", "Set an attribute of a node");
    addPositional(attribute, "NAME", line.table.attribute, "The name of the attribute");
    addPositional(attribute, "VALUE", line.table.text, "Its value");
    auto& remove = add(Command::XmlRemove, "remove",
                       "Remove all nodes of a path, or the first parent whose last step has a "
                       "text");
    oneValue(remove.add_option("VALUE", line.table.value, "The text of the last step"), "");
}

}  // namespace

TableApps addTableCommands(CLI::App& app, CommandLine& line, RawTable& raw) {
    TableApps apps;
    addDbaseCommands(app, apps, line, raw);
    addXmlCommands(app, apps, line);
    return apps;
}

void readTableArguments(const TableApps& apps, const RawTable& raw, CommandLine& line) {
    if (apps.dbaseSet->count("--row") == 0) {
        return;
    }
    const auto row = parseInteger(raw.row);
    if (!row || *row < -1 || *row > kMostRow) {
        throw UsageError{"--row: '" + raw.row + "' is not a whole number from -1 on"};
    }
    line.table.row = *row;
}

}  // namespace kavu::cli
