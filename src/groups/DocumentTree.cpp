#include "groups/DocumentTree.h"

#include "core/TmatsDocument.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace kavu {

namespace {

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
        return row;
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
    StreamFiles files_;
    std::vector<Multiplex> multiplexes_;
    std::vector<PcmLinks> formats_;
    std::unordered_map<std::string, const PcmLinks*> formatOf_;
    std::unordered_map<std::string, std::size_t> counts_;
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
