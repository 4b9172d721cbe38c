#include "cli/XmlExportCommand.h"

#include "application/Application.h"
#include "cli/CommandLineParts.h"
#include "cli/OutputFile.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/WorkingStore.h"
#include "core/text/Printf.h"
#include "sdk/TranslatorSdk.h"
#include "xml/bridge/write/XmlExport.h"

namespace kavu::cli {

namespace {

Json textsJson(const std::vector<std::string>& texts) {
    Json list = Json::array();
    for (const auto& text : texts) {
        list.push_back(jsonText(text));
    }
    return list;
}

void addMembers(const CommandLine& line, const XmlExportReport& report, bool isCreated,
                CommandOutput& output) {
    auto& members = output.members;
    members["file"] = jsonText(line.file);
    members["output"] = jsonText(line.output);
    members["created"] = isCreated;
    members["status"] = textsJson(report.status);
    members["errors"] = textsJson(report.errors);
    members["warnings"] = textsJson(report.warnings);
    Json bad = Json::array();
    for (const auto& value : report.badValues) {
        bad.push_back(
            {{"description", jsonText(value.description)}, {"value", jsonText(value.value)}});
    }
    members["badValues"] = std::move(bad);
    Json losses = Json::array();
    for (const auto& loss : report.losses.list()) {
        losses.push_back({{"field", jsonText(loss.field)},
                          {"code", jsonText(loss.code)},
                          {"count", loss.count}});
    }
    members["losses"] = std::move(losses);
}

/// What the document does not hold, in one sentence.
std::string lossText(const XmlLosses& losses) {
    constexpr std::size_t kMostNamed = 8;
    std::string text = std::to_string(losses.total());
    text += losses.total() == 1 ? " command is not in the document: "
                                : " commands are not in the document: ";
    std::size_t named = 0;
    for (const auto& loss : losses.list()) {
        if (named == kMostNamed) {
            return text + ", and others";
        }
        text += named++ == 0 ? "" : ", ";
        text += loss.code;
        if (loss.count > 1) {
            text += " (" + std::to_string(loss.count) + " of this kind)";
        }
    }
    return text;
}

std::string textOf(const XmlExportReport& report) {
    std::string text;
    for (const auto* const list : {&report.errors, &report.warnings}) {
        for (const auto& said : *list) {
            text += terminalLine(said) + "\n";
        }
    }
    return text;
}

}  // namespace

CLI::App* addXmlExportCommand(CLI::App& app, CommandLine& line) {
    auto* const command = addCommand(app, "xml-export", "Convert a TMATS file to TMATS XML");
    oneValue(command->add_option("FILE", line.file, "The TMATS file"), "")->required();
    oneValue(command->add_option("-o,--output", line.output, "The XML file to write"), "OUT")
        ->required();
    command->add_flag("--schema", line.bridge.isSchema,
                      "The namespace, names and values of the public schema of 106-11");
    command
        ->add_option("--stream", line.bridge.streams, "Only the data link of this name. Repeatable")
        ->type_name("NAME")
        ->take_all()
        ->allow_extra_args(false);
    return command;
}

bool xmlExportCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    XmlExportReport report;
    bool isCreated = false;
    if (mayWriteOutput(context.ui, line, line.output)) {
        auto& document = context.application.context();
        TranslatorSdk session(document.store.environment(), document.clock, document.random);
        if (session.open(line.file, context.ui)) {
            XmlExportOptions options;
            options.dialect = line.bridge.isSchema ? XmlDialect::Schema : XmlDialect::Classic;
            options.links = line.bridge.streams;
            options.now = document.clock.now();
            options.announce = [&context](const XmlExportReport& known) {
                if (known.losses.total() > 0 && context.ui != nullptr) {
                    context.ui->note(lossText(known.losses));
                }
            };
            isCreated = tmatsToXmlFile(session, context.ui, options, line.output, report);
        } else {
            report.errors = session.errors();
        }
    } else if (line.json && !context.ui->messages().empty()) {
        // The document has no messages; the reason would be nowhere.
        report.errors.push_back(context.ui->messages().back().text);
    }
    addMembers(line, report, isCreated, output);
    output.isReported = !report.errors.empty() || !report.warnings.empty();
    output.text = textOf(report);
    if (!isCreated && !line.json) {
        for (const auto& said : report.errors) {
            showBox(context.ui, said, "Unable To Convert TMATS File");
        }
    }
    return isCreated;
}

}  // namespace kavu::cli
