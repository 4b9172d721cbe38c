#include "application/Application.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "conversion/ConversionStore.h"
#include "groups/DocumentTree.h"
#include "pcm/structure/StreamSummary.h"

#include <map>

namespace kavu::cli {

namespace {

/// The summaries of the PCM streams, by the index of their P files.
using Summaries = std::map<int, StreamSummary>;

/// True for the link of a PCM stream; all others have no frame.
bool isPcm(const TreeLink& link) {
    return link.group > 0 && link.kind.starts_with("PCM");
}

Summaries readSummaries(CommandContext& context, const DocumentTree& tree) {
    Summaries summaries;
    for (const auto& source : tree.dataSources) {
        for (const auto& link : source.links) {
            if (isPcm(link) && !summaries.contains(link.group)) {
                summaries[link.group] = readStreamSummary(context.application.context(), context.ui,
                                                          link.group, link.measurements);
            }
        }
    }
    return summaries;
}

Json linkJson(const TreeLink& link) {
    Json embedded = Json::array();
    for (const auto& name : link.embedded) {
        embedded.push_back(jsonText(name));
    }
    return {{"name", jsonText(link.name)},
            {"kind", jsonText(link.kind)},
            {"group", link.group},
            {"measurements", link.measurements},
            {"embedded", std::move(embedded)}};
}

Json sourceJson(const TreeSource& source) {
    Json links = Json::array();
    for (const auto& link : source.links) {
        links.push_back(linkJson(link));
    }
    return {{"name", jsonText(source.name)},
            {"type", jsonText(source.type)},
            {"class", std::string(1, source.sourceClass)},
            {"group", source.group},
            {"multiplex", source.multiplex},
            {"links", std::move(links)}};
}

/// The group of a link's own file: a bus, message or PAM stream may have a P file, too.
char streamLetter(const TreeLink& link) {
    return link.kind == "Message Data" ? 'S' : link.kind == "PAM" ? 'A' : 'P';
}

std::string countText(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The tree as text: indented names, and columns with what is known of them.
std::string treeText(const DocumentTree& tree, const Summaries& summaries) {
    std::vector<std::vector<std::string>> rows;
    for (const auto& source : tree.dataSources) {
        // The class T is a recorder, whose group letter is R.
        const char letter = source.sourceClass == 'R' ? 'T' : 'R';
        rows.push_back({terminalLine(source.name), terminalLine(source.type),
                        groupName(letter, source.group), groupName('M', source.multiplex)});
        for (const auto& link : source.links) {
            rows.push_back({"  " + terminalLine(link.name), terminalLine(link.kind),
                            groupName(streamLetter(link), link.group), "",
                            isPcm(link) ? terminalLine(summaryText(summaries.at(link.group)))
                                        : countText(link.measurements, "measurement")});
            for (const auto& name : link.embedded) {
                rows.push_back({"    " + terminalLine(name), "embedded"});
            }
        }
    }
    return alignedTable(rows);
}

}  // namespace

std::string groupName(char letter, int index) {
    return index > 0 ? std::string(1, letter) + "-" + std::to_string(index) : std::string();
}

Json dataSourcesJson(const DocumentTree& tree) {
    Json sources = Json::array();
    for (const auto& source : tree.dataSources) {
        sources.push_back(sourceJson(source));
    }
    return sources;
}

bool treeCommand(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    const DocumentTree tree = readDocumentTree(application.context(), context.ui);
    // Only in the text; a script reads the stream itself.
    const auto summaries = context.line.json ? Summaries() : readSummaries(context, tree);
    const auto names =
        application.conversions().definitionNames(-1).value_or(std::vector<std::string>());

    Json conversions = Json::array();
    output.text = context.line.json ? std::string() : treeText(tree, summaries);
    if (!names.empty()) {
        output.text += "Data conversions\n";
    }
    for (const auto& name : names) {
        conversions.push_back(jsonText(name));
        output.text += "  " + terminalLine(name) + "\n";
    }
    output.members["dataSources"] = dataSourcesJson(tree);
    output.members["conversions"] = std::move(conversions);
    // An incomplete tree is no result.
    return !cancelRequested(context.ui);
}

}  // namespace kavu::cli
