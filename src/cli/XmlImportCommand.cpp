#include "cli/XmlImportCommand.h"

#include "application/Application.h"
#include "cli/CommandLineParts.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "xml/bridge/read/XmlToTmats.h"

namespace kavu::cli {

namespace {

constexpr const char* kImportTitle = "TMATS XML To TMATS File";

/// The output may exist, but it cannot be the input: an XML file would be lost.
bool mayImport(const CommandContext& context) {
    const auto& line = context.line;
    bool isSame = false;
    if (const auto status = probeSameFile(line.output, line.file, isSame);
        !status.ok() || !isSame) {
        return true;
    }
    showBox(context.ui, formatPrintf("'%s' is the input; it is not overwritten.", line.output),
            kImportTitle);
    return false;
}

void addNotes(const CommandContext& context, const XmlToTmats& import) {
    const auto& line = context.line;
    if (line.bridge.isSchema) {
        return;
    }
    if (import.isInSchemaNamespace()) {
        context.ui->note(
            formatPrintf("'%s' is in the namespace of the public schema: --schema reads all that "
                         "the schema has.",
                         line.file));
    }
    if (const auto lost = leftOutText(import.leftOut()); !lost.empty()) {
        context.ui->note(
            formatPrintf("The default form does not read all of '%s': %s.", line.file, lost));
    }
}

}  // namespace

CLI::App* addXmlImportCommand(CLI::App& app, CommandLine& line) {
    auto* const command = addCommand(app, "xml-import", "Convert TMATS XML to a TMATS file");
    oneValue(command->add_option("FILE", line.file, "The XML file"), "")->required();
    oneValue(command->add_option("-o,--output", line.output, "The TMATS file to write"), "OUT")
        ->required();
    command->add_flag("--schema", line.bridge.isSchema,
                      "The namespace, names and values of the public schema of 106-11");
    return command;
}

bool xmlImportCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    Json status = Json::array();
    XmlToTmats import(
        [&](XmlStatusLevel, const std::string& text) {
            status.push_back(jsonText(text));
            output.text += terminalLine(text) + "\n";
        },
        line.file, line.output, line.bridge.isSchema ? XmlDialect::Schema : XmlDialect::Classic);
    bool isCreated = false;
    if (mayImport(context) && import.convert(context.ui)) {
        addNotes(context, import);
        for (const auto& message : import.messages()) {
            showBox(context.ui, message, kImportTitle);
        }
        isCreated = import.write(context.application.context(), context.ui);
    }
    auto& members = output.members;
    members["file"] = jsonText(line.file);
    members["output"] = jsonText(line.output);
    members["created"] = isCreated;
    members["version"] = import.version();
    members["status"] = std::move(status);
    return isCreated;
}

}  // namespace kavu::cli
