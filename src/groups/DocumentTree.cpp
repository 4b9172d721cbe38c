#include "groups/DocumentTree.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>
#include <utility>

namespace kavu {

namespace {

/// The data source of a track: the name of its multiplex definition.
constexpr std::string_view kTrackSource = "DSI";

/// All data for the rows of the tree; each group file is read once.
class TreeReader {
  public:
    TreeReader(DocumentContext& context, UserInterface* parent)
        : context_(context),
          parent_(parent),
          radios_(context, parent, 'T'),
          recorders_(context, parent, 'R'),
          buses_(context, parent, 'B'),
          messages_(context, parent, 'S'),
          pams_(context, parent, 'A'),
          measurements_(context, parent, 'D'),
          files_(context, parent) {
        // What could be read is shown; the rest has been reported.
        (void)readMultiplexes(context, parent, multiplexes_);
        (void)readPcmLinks(context, parent, formats_);
        for (const auto& format : formats_) {
            formatOf_.try_emplace(format.link, &format);
        }
    }

    DocumentTree read() {
        DocumentTree tree;
        std::vector<DataSource> sources;
        readDataSources(context_, parent_, sources);
        for (const auto& source : sources) {
            tree.dataSources.push_back(sourceRow(source));
        }
        addUnlinked(tree);
        addVendors(tree);
        return tree;
    }

  private:
    TreeSource sourceRow(const DataSource& source) {
        TreeSource row;
        row.name = source.name;
        row.type = source.type;
        row.sourceClass = dataSourceClass(source.type);
        if (row.sourceClass != 'T') {
            row.group = radios_.find(source.name);
            row.groupLetter = row.group > 0 ? 'T' : '\0';
        }
        if (row.group == 0 && row.sourceClass != 'R') {
            row.group = recorders_.find(source.name);
            row.groupLetter = row.group > 0 ? 'R' : '\0';
        }
        for (const auto& multiplex : multiplexes_) {
            if (source.name.empty() || multiplex.source != source.name) {
                continue;
            }
            row.multiplex = row.multiplex == 0 ? multiplex.index : row.multiplex;
            for (const auto& link : multiplex.links) {
                row.links.push_back(linkRow(link));
            }
        }
        if (row.groupLetter == 'R') {
            addTracks(row);
        }
        for (const auto& links : {&row.links, &row.tracks}) {
            for (const auto& link : *links) {
                reached_.add(link.name);
                for (const auto& embedded : link.embedded) {
                    reached_.add(embedded);
                }
            }
        }
        return row;
    }

    /// What the tracks of a recorder name and is a stream.
    void addTracks(TreeSource& row) {
        LinkNames links;
        LinkNames sources;
        const auto status =
            forEachCommand(context_.reader, context_.store.pathOf(groupFile('R', row.group)),
                           [&](std::string_view command) {
                               const auto view = viewCommand(command);
                               if (refersTo('R', view.field) == Refers::Link) {
                                   links.add(view.value.substr(0, kNameLimit));
                               } else if (codeHead(view.field) == kTrackSource) {
                                   sources.add(view.value);
                               }
                               return true;
                           });
        if (!status.ok()) {
            reportUnableToRead(parent_, status);
        }
        for (const auto& multiplex : multiplexes_) {
            for (const auto& link : multiplex.links) {
                if (sources.has(multiplex.source)) {
                    links.add(link);
                }
            }
        }
        for (const auto& link : links.names()) {
            const bool known = std::any_of(row.links.begin(), row.links.end(),
                                           [&](const TreeLink& each) { return each.name == link; });
            if (auto track = linkRow(link); !known && track.group > 0) {
                row.tracks.push_back(std::move(track));
            }
        }
    }

    /// A stream that is only embedded in one that nothing leads to stands below that one.
    void addUnlinked(DocumentTree& tree) {
        LinkNames embedded;
        for (const auto& format : formats_) {
            for (const auto& link : format.embedded) {
                if (link != format.link) {
                    embedded.add(link);
                }
            }
        }
        // Those that embed each other in a circle come in the second round.
        for (const bool mayBeEmbedded : {false, true}) {
            for (const auto& format : formats_) {
                if (mayBeEmbedded || !embedded.has(format.link)) {
                    addUnlinked(tree, 'P', {format.index, format.link});
                }
            }
        }
        for (const auto& [letter, names] : {std::pair{'D', &measurements_}, std::pair{'B', &buses_},
                                            std::pair{'S', &messages_}, std::pair{'A', &pams_}}) {
            for (const auto& entry : names->entries()) {
                addUnlinked(tree, letter, entry);
            }
            for (const int index : names->nameless()) {
                addUnlinked(tree, letter, {index, {}});
            }
        }
    }

    void addUnlinked(DocumentTree& tree, char letter, const GroupNames::Entry& entry) {
        if (entry.name.empty()) {
            // Nothing can lead to it, and it is no other's.
            if (letter != 'P' || nameless_.insert(entry.index).second) {
                TreeLink row;
                row.group = entry.index;
                row.letter = letter;
                tree.unlinked.push_back(std::move(row));
            }
            return;
        }
        if (!reached_.add(entry.name)) {
            return;
        }
        auto row = linkRow(entry.name);
        if (row.group == 0) {
            row.group = entry.index;
            row.letter = letter;
        }
        for (const auto& inner : row.embedded) {
            reached_.add(inner);
        }
        tree.unlinked.push_back(std::move(row));
    }

    void addVendors(DocumentTree& tree) {
        const GroupNames vendors(context_, parent_, 'V');
        for (const auto& entry : vendors.entries()) {
            tree.vendors.push_back({entry.name, entry.index});
        }
        for (const int index : vendors.nameless()) {
            tree.vendors.push_back({{}, index});
        }
    }

    TreeLink linkRow(const std::string& link) {
        TreeLink row;
        row.name = link;
        if (const auto* const format = formatNamed(link); format != nullptr) {
            row.kind = streamKindText(format->format);
            row.group = format->index;
            row.letter = 'P';
            row.embedded = format->embedded;
        } else if (const int bus = buses_.find(link); bus > 0) {
            row.kind = stream_type::kBus1553.text;
            row.group = bus;
            row.letter = 'B';
        } else if (const int message = messages_.find(link); message > 0) {
            row.kind = context_.document.version >= kMessageDataEdition
                           ? std::string_view("Message Data")
                           : stream_type::kPacket.text;
            row.group = message;
            row.letter = 'S';
        } else if (const int pam = pams_.find(link); pam > 0) {
            row.kind = "PAM";
            row.group = pam;
            row.letter = 'A';
        }
        row.measurements = measurementCount(link);
        return row;
    }

    const PcmLinks* formatNamed(const std::string& link) const {
        const auto it = formatOf_.find(link);
        return it == formatOf_.end() ? nullptr : it->second;
    }

    /// A link may be in more than one multiplex; its file is read once.
    std::size_t measurementCount(const std::string& link) {
        const auto [it, added] = counts_.try_emplace(link, 0);
        if (added) {
            files_.readNames(parent_, link, [&count = it->second](std::string_view) { ++count; });
        }
        return it->second;
    }

    DocumentContext& context_;
    UserInterface* parent_;
    GroupNames radios_;
    GroupNames recorders_;
    GroupNames buses_;
    GroupNames messages_;
    GroupNames pams_;
    GroupNames measurements_;
    StreamFiles files_;
    std::vector<Multiplex> multiplexes_;
    std::vector<PcmLinks> formats_;
    std::unordered_map<std::string, const PcmLinks*> formatOf_;
    std::unordered_map<std::string, std::size_t> counts_;
    LinkNames reached_;       ///< by a data source, or shown already
    std::set<int> nameless_;  ///< P groups that are shown
};

}  // namespace

std::string streamKindText(std::string_view format) {
    const auto* const type = findStreamType(format);
    return std::string(type == nullptr ? format : type->text);
}

DocumentTree readDocumentTree(DocumentContext& context, UserInterface* parent) {
    return TreeReader(context, parent).read();
}

}  // namespace kavu
