#include "application/Application.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "conversion/ConversionStore.h"
#include "groups/DocumentTree.h"
#include "pcm/structure/StreamSummary.h"

#include <algorithm>
#include <map>
#include <vector>

namespace kavu::cli {

namespace {

/// The summaries of the PCM streams, by the index of their P files.
using Summaries = std::map<int, StreamSummary>;

/// True for the link of a PCM stream; all others have no frame.
bool isPcm(const TreeLink& link) {
    return link.group > 0 && link.kind.starts_with("PCM");
}

/// All links that the tree shows, in its order.
template <typename Visit>
void forEachLink(const DocumentTree& tree, const Visit& visit) {
    for (const auto& source : tree.dataSources) {
        for (const auto* const links : {&source.links, &source.tracks}) {
            std::for_each(links->begin(), links->end(), visit);
        }
    }
    std::for_each(tree.unlinked.begin(), tree.unlinked.end(), visit);
}

Summaries readSummaries(CommandContext& context, const DocumentTree& tree) {
    Summaries summaries;
    forEachLink(tree, [&](const TreeLink& link) {
        if (isPcm(link) && !summaries.contains(link.group)) {
            summaries[link.group] = readStreamSummary(context.application.context(), context.ui,
                                                      link.group, link.measurements);
        }
    });
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

/// The contract with scripts knows the links of the multiplex definitions alone.
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

std::string countText(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The rows of the tree as text: indented names, and columns with what is known of them.
class TreeRows {
  public:
    explicit TreeRows(const Summaries& summaries) : summaries_(summaries) {}

    void add(const TreeSource& source) {
        // The class T is a recorder, whose group letter is R.
        const char letter = source.groupLetter != 0     ? source.groupLetter
                            : source.sourceClass == 'R' ? 'T'
                                                        : 'R';
        rows_.push_back({terminalLine(source.name), terminalLine(source.type),
                         groupName(letter, source.group), groupName('M', source.multiplex)});
        addLinks(source.links);
        addLinks(source.tracks);
    }
    void addLinks(const std::vector<TreeLink>& links) {
        for (const auto& link : links) {
            rows_.push_back({"  " + terminalLine(link.name), terminalLine(link.kind),
                             groupName(link.letter, link.group), "",
                             isPcm(link) ? terminalLine(summaryText(summaries_.at(link.group)))
                                         : countText(link.measurements, "measurement")});
            for (const auto& name : link.embedded) {
                rows_.push_back({"    " + terminalLine(name), "embedded"});
            }
        }
    }
    void addHead(const std::string& text) { rows_.push_back({text}); }
    void add(const TreeVendor& vendor) {
        rows_.push_back({"  " + terminalLine(vendor.name), "", groupName('V', vendor.group)});
    }
    [[nodiscard]] std::string text() const { return alignedTable(rows_); }

  private:
    const Summaries& summaries_;
    std::vector<std::vector<std::string>> rows_;
};

std::string treeText(const DocumentTree& tree, const Summaries& summaries) {
    TreeRows rows(summaries);
    for (const auto& source : tree.dataSources) {
        rows.add(source);
    }
    if (!tree.unlinked.empty()) {
        rows.addHead("Unlinked streams");
        rows.addLinks(tree.unlinked);
    }
    if (!tree.vendors.empty()) {
        rows.addHead("Vendor");
    }
    for (const auto& vendor : tree.vendors) {
        rows.add(vendor);
    }
    return rows.text();
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
