#include "groups/AGroup.h"

#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupLists.h"
#include "groups/GroupScan.h"
#include "vocabulary/MGroupFields.h"

namespace kavu {

namespace {

constexpr char kGroupName[] = "PAM (A)";

/// Adds the links of PAM signals of an M group.
void addLinks(DocumentContext& context, int index, LinkNames& links) {
    GroupSource source(context, nullptr, 'M', index);
    GroupRow record;
    if (!source.status().ok() || !source.readTable(multiplexFields(), record)) {
        return;
    }
    const auto add = [&links](std::string_view type, std::string_view name) {
        if (startsWithIgnoreCase(type, "PAM") && !name.empty()) {
            links.add(name);
        }
    };
    add(record.value(kSignalType), record.value(kBasebandLink));
    for (const auto& row : record.rows(kSubcarrierCount)) {
        add(row.value(kSubcarrierType), row.value(kSubcarrierLink));
    }
}

}  // namespace

std::vector<PamStream> pamStreams(DocumentContext& context, UserInterface* parent) {
    std::vector<PamStream> streams;
    LinkNames known;
    const GroupNames groups(context, parent, 'A');
    for (const auto& entry : groups.entries()) {
        streams.push_back({entry.name, entry.index});
        known.add(entry.name);
    }
    LinkNames links;
    const GroupNames multiplexes(context, parent, 'M');
    for (const auto& entry : multiplexes.entries()) {
        addLinks(context, entry.index, links);
    }
    for (const auto& link : links.names()) {
        if (!known.has(link)) {
            streams.push_back({link, 0});
        }
    }
    return streams;
}

bool loadPam(DocumentContext& context, UserInterface* parent, const PamStream& stream,
             PamGroup& group) {
    group = PamGroup{.link = stream.link, .index = stream.index};
    if (group.index == 0) {
        group.index = firstFreeIndex(context, 'A');
        if (group.index > kMostGroupIndex) {
            context.messages.show(parent, 303, title::kError, kErrorBox, kGroupName);
            return false;
        }
        context.messages.show(parent, -145, title::kNote, kNoteBox, kGroupName);
        return true;
    }
    GroupSource source(context, parent, 'A', group.index);
    if (!source.status().ok()) {
        reportUnableToRead(parent, source.status());
        return false;
    }
    if (!source.readTable(pamFields(), group.record)) {
        return false;
    }
    group.kept = std::move(source.kept());
    return true;
}

bool storePam(DocumentContext& context, UserInterface* parent, const PamGroup& group) {
    auto record = group.record;
    record.set(ownNameOf('A'), group.link);
    return storeTable(context, parent, 'A', group.index, pamFields(), record, group.kept);
}

}  // namespace kavu
