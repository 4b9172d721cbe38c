#include "groups/DataSources.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CommandIndex.h"
#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <map>

namespace kavu {

namespace {

constexpr int kTypeLimit = static_cast<int>(kSourceTypeWidth);

}  // namespace

SourceCodes::SourceCodes() : count(groupHead('G', 0)), name(count), type(count) {
    count.append(kSourceCount);
    name.append(stemOf(kSourceName)).append("-");
    type.append(stemOf(kSourceType)).append("-");
}

std::string SourceCodes::rowText(int row, std::string_view source,
                                 std::string_view sourceType) const {
    const auto line = [row](std::string_view front, std::string_view value) {
        return value.empty() ? std::string() : formatPrintf("%s%d:%s;\r\n", front, row, value);
    };
    return line(name, source) + line(type, sourceType);
}

char dataSourceClass(std::string_view type) {
    if (startsWithIgnoreCase(type, "RF")) {
        return 'R';
    }
    return type.empty() || startsWithIgnoreCase(type, "OTH") ? 'O' : 'T';
}

bool readDataSources(DocumentContext& context, UserInterface* parent,
                     std::vector<DataSource>& sources) {
    constexpr auto kWanted = std::to_array({stemOf(kSourceName), stemOf(kSourceType)});
    CommandIndex fields;
    const auto status = fields.readFile(context.reader, context.store.pathOf(groupFile('G')),
                                        Comments::Skip, kWanted);
    if (!status.ok()) {
        if (isMissing(status)) {
            return true;
        }
        reportUnableToRead(parent, status);
        return false;
    }
    const auto text = [&](std::string_view pattern, int row, int limit) {
        const auto code = groupHead('G', 0) + fieldCode(pattern, {row});
        return fields.findField(context.reader, parent, code, limit).value_or("");
    };
    const int count =
        std::min(fields.findIntField(parent, SourceCodes().count).value_or(0), kMostListRows);
    for (int row = 1; row <= count; ++row) {
        DataSource source;
        source.row = row;
        source.name = text(kSourceName, row, kNameLimit);
        source.type = text(kSourceType, row, kTypeLimit);
        sources.push_back(std::move(source));
    }
    return true;
}

int listDataSources(DocumentContext& context, UserInterface* parent,
                    std::vector<std::string>* names) {
    std::vector<DataSource> sources;
    readDataSources(context, parent, sources);
    if (names != nullptr) {
        names->clear();
        for (auto& source : sources) {
            names->push_back(std::move(source.name));
        }
    }
    return static_cast<int>(sources.size());
}

char dataSourceInfo(DocumentContext& context, UserInterface* parent, int index, std::string& name,
                    std::string& type) {
    name.clear();
    type.clear();
    ByteSource source;
    auto status = source.open(context.store.pathOf(groupFile('G')));
    if (status.ok()) {
        auto& reader = context.reader;
        const auto text = [&](std::string_view pattern, int limit) {
            return reader
                .findField(parent, source, groupHead('G', 0), fieldCode(pattern, {index}), limit)
                .value_or("");
        };
        name = text(kSourceName, kNameLimit);
        type = text(kSourceType, kTypeLimit);
        status = source.status();
    }
    if (!status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
    }
    return dataSourceClass(type);
}

int findGroupIndex(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view name) {
    if (name.empty()) {
        return -firstFreeIndex(context, letter);
    }
    return GroupNames(context, parent, letter).find(name);
}

bool gatherDataLinks(DocumentContext& context, UserInterface* parent,
                     std::vector<std::string>& links) {
    std::vector<Multiplex> multiplexes;
    const bool complete = readMultiplexes(context, parent, multiplexes);
    // Links whose names differ only in case are two links, each with its own streams.
    std::unordered_set<std::string> seen(links.begin(), links.end());
    for (auto& multiplex : multiplexes) {
        for (auto& link : multiplex.links) {
            if (seen.insert(link).second) {
                links.push_back(std::move(link));
            }
        }
    }
    return complete;
}

bool gatherPcmStreams(DocumentContext& context, UserInterface* parent,
                      std::vector<std::string>& streams) {
    std::vector<std::string> links;
    std::vector<PcmLinks> formats;
    if (!gatherDataLinks(context, parent, links) || !readPcmLinks(context, parent, formats)) {
        return false;
    }
    std::map<std::string, std::string, std::less<>> types;
    for (const auto& format : formats) {
        types.try_emplace(format.link, format.format);
        links.insert(links.end(), format.async.begin(), format.async.end());
    }
    std::vector<GroupNames> others;
    for (const char letter : {'B', 'S', 'A'}) {
        others.emplace_back(context, parent, letter);
    }
    LinkNames found;
    for (const auto& link : links) {
        const auto type = types.find(link);
        const bool isOther =
            type != types.end()
                ? type->second.starts_with(stream_type::kBus1553.stored) ||
                      type->second == stream_type::kPacket.stored
                : std::any_of(others.begin(), others.end(),
                              [&](const GroupNames& group) { return group.find(link) > 0; });
        if (!isOther && found.add(link)) {
            streams.push_back(link);
        }
    }
    return std::all_of(others.begin(), others.end(),
                       [](const GroupNames& group) { return group.complete(); });
}

StreamKind streamKindOfLink(DocumentContext& context, UserInterface* parent,
                            std::string_view link) {
    if (const int index = findGroupIndex(context, parent, 'P', link); index > 0) {
        ByteSource source;
        const auto status = source.open(context.store.pathOf(groupFile('P', index)));
        if (!status.ok()) {
            reportUnableToRead(parent, status);
            return StreamKind::PcmOrNone;
        }
        const auto format =
            context.reader.findField(parent, source, groupHead('P', index), p::kTf.code, 0);
        return format && *format == stream_type::kBus1553.stored ? StreamKind::Bus
                                                                 : StreamKind::PcmOrNone;
    }
    if (findGroupIndex(context, parent, 'B', link) > 0) {
        return StreamKind::Bus;
    }
    return context.document.version >= kMessageDataEdition &&
                   findGroupIndex(context, parent, 'S', link) > 0
               ? StreamKind::MessageData
               : StreamKind::PcmOrNone;
}

}  // namespace kavu
