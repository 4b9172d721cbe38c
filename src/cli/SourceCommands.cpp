// The commands that change the set of data sources of a document. Each runs the operation of
// the editor; the command line has what its prompts would ask for.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "groups/DocumentTree.h"
#include "groups/SourceEdit.h"

namespace kavu::cli {

namespace {

void replyToAffixes(CommandContext& context) {
    const auto& line = context.line;
    const bool wanted = !line.prefix.empty() || !line.suffix.empty();
    context.ui->setReply(
        "Would you like to change the names of measurements that are copied, by adding a prefix "
        "and/or suffix to each measurement name?",
        wanted ? "yes" : "no");
    context.ui->setReply("Prefix:", line.prefix);
    context.ui->setReply("Suffix:", line.suffix);
}

bool copy(CommandContext& context, SourceParts& parts) {
    context.ui->setReply("Do you wish to make a copy of this Data Source?", "yes");
    context.ui->setReply("Enter New Name", context.line.newName);
    replyToAffixes(context);
    return copyDataSource(parts, context.ui, context.line.source);
}

bool import(CommandContext& context, SourceParts& parts) {
    const auto& line = context.line;
    context.ui->setReply("Import Data Source/Stream From TMATS File:", line.otherFile);
    context.ui->setReply(line.recorder ? "Select Which Recorder/Reproducer Stream To Import"
                                       : "Select Which RF Stream To Import",
                         line.source);
    context.ui->setReply("Would you also like to import EU conversions?",
                         line.withConversions ? "yes" : "no");
    replyToAffixes(context);
    return importDataSource(parts, context.ui, line.recorder ? 'T' : 'R');
}

bool runOperation(CommandContext& context, SourceParts& parts) {
    const auto& line = context.line;
    switch (line.command) {
        case Command::SourceCopy:
            return copy(context, parts);
        case Command::SourceRename:
            return renameDataSource(parts, context.ui, line.source, line.newName);
        case Command::SourceDelete:
            return deleteDataSource(parts, context.ui, line.source);
        case Command::SourceImport:
            return import(context, parts);
        case Command::LinkRename:
            return renameDataLink(parts, context.ui, line.link, line.newName);
        default:
            return false;
    }
}

}  // namespace

bool sourceListCommand(CommandContext& context, CommandOutput& output) {
    const auto tree = readDocumentTree(context.application.context(), context.ui);
    std::vector<std::vector<std::string>> rows;
    for (const auto& source : tree.dataSources) {
        std::string links;
        for (const auto& link : source.links) {
            links += (links.empty() ? "" : ", ") + link.name;
        }
        rows.push_back({terminalLine(source.name), terminalLine(source.type),
                        groupName(source.groupLetter, source.group),
                        groupName('M', source.multiplex), terminalLine(links)});
    }
    output.text = alignedTable(rows);
    output.members["dataSources"] = dataSourcesJson(tree);
    return !cancelRequested(context.ui);
}

bool sourceCommand(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    auto& document = application.context();
    SourceParts parts{document, application.conversions(), application.measurementNames()};
    if (!runOperation(context, parts)) {
        return false;
    }
    output.changed = document.document.changed;  // the save clears it
    const auto tree = readDocumentTree(document, context.ui);
    if (!context.application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.members["dataSources"] = dataSourcesJson(tree);
    output.text = "Saved as " + terminalLine(context.line.output) + "\n";
    return true;
}

}  // namespace kavu::cli
