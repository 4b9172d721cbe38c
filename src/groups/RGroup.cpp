#include "groups/RGroup.h"

#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GroupLists.h"
#include "groups/SourceNames.h"
#include "vocabulary/References.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace kavu {

namespace {

constexpr std::string_view kTrackCount = "N";
constexpr std::size_t kMostTrackItems = 9999;

constexpr auto kRecorderSteps = std::to_array<LoadStep>({
    {"R1", 10},
    {"NSB", 20},
    {"RI3", 30},
    {"POC4", 40},
    {"DPOC4", 45},
    {"RMM\\N", 50},
    {"EV\\N", 60},
    {"IDX\\ICV", 70},
    {"RT\\N", 90},
});

const Field& trackCountField() {
    const auto fields = recorderSingleFields();
    return *std::find_if(fields.begin(), fields.end(),
                         [](const Field& field) { return field.code == kTrackCount; });
}

/// Not cut to the two characters of the field, which would give another number.
std::size_t readTrackCount(GroupSource& source, GroupRow& record) {
    const auto& field = trackCountField();
    const auto text = source.peek(field);
    const auto count = clampedCount(text, kMostTracks);
    if (text.size() > field.limit) {
        record.set(field.code, std::to_string(count));
    }
    return count;
}

bool readGroup(GroupSource& source, UserInterface* parent, int edition, RecorderGroup& group) {
    if (!source.readTable(recorderFieldsBeforeTracks(), group.record, kRecorderSteps)) {
        return false;
    }
    const auto count = readTrackCount(source, group.record);
    if (!readTracks(source, parent, edition, count, group.tracks) ||
        !source.readTable(recorderFieldsBehindTracks(), group.record, kRecorderSteps)) {
        return false;
    }
    for (const auto& track : group.tracks) {
        group.rowsRead.insert(track.fileRow);
    }
    return true;
}

void beginGroup(DocumentContext& context, UserInterface* parent, RecorderGroup& group) {
    constexpr int kNotFound = 310;
    context.messages.show(parent, -kNotFound, title::kNote, kNoteBox);
    for (const auto& field : knownFields(recorderSingleFields(), context.document.version)) {
        group.record.set(field.code, field.missing);
    }
    group.record.set("RI4",
                     presentDate(context.clock, FieldKind::DateTime, context.document.version));
}

bool isBlank(const GroupRow& row) {
    return std::all_of(row.values.begin(), row.values.end(),
                       [](const auto& value) { return value.second.empty(); });
}

/// Rows of measurements without any value are not written and do not count.
GroupRow withoutBlankMeasurements(GroupRow record) {
    const auto events = record.lists.find("EV\\N");
    if (events == record.lists.end()) {
        return record;
    }
    for (auto& event : events->second) {
        if (const auto rows = event.lists.find("EV\\PM\\N-n"); rows != event.lists.end()) {
            std::erase_if(rows->second, isBlank);
        }
    }
    return record;
}

/// A group with room for all rows of its file.
struct SettledRecorder {
    GroupRow record;
    GroupFile kept;
    std::vector<TrackNumbers> tracks;
};

/// A track as a row, with its items.
GroupRow trackRow(const Track& track) {
    GroupRow row;
    row.fileRow = track.fileRow;
    for (const auto& [count, items] : track.details.items) {
        const auto numbers = track.details.itemRows.find(count);
        auto& rows = row.lists[count];
        for (std::size_t i = 0; i < items.size(); ++i) {
            const bool isKnown =
                numbers != track.details.itemRows.end() && i < numbers->second.size();
            rows.emplace_back().fileRow = isKnown ? numbers->second[i] : 0;
        }
    }
    for (const auto& [count, read] : track.details.itemsRead) {
        auto& numbers = row.fileRows[count];
        for (std::size_t number = 1; number <= read; ++number) {
            numbers.insert(numbers.end(), number);
        }
    }
    return row;
}

/// The numbers of the rows that are not rows of the file alone, which stay between the others.
std::vector<std::size_t> numbersOf(const GroupRow& owner, std::string_view list) {
    const auto rows = owner.rows(list);
    const auto read = owner.fileRows.find(list);
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].fileRow == 0 ||
            (read != owner.fileRows.end() && read->second.contains(rows[i].fileRow))) {
            numbers.push_back(i + 1);
        }
    }
    return numbers;
}

SettledRecorder settle(const RecorderGroup& group, int edition) {
    SettledRecorder settled{
        .record = withoutBlankMeasurements(group.record), .kept = {}, .tracks = {}};
    auto& record = settled.record;
    const std::string count(kTrackCount);
    for (const auto& track : group.tracks) {
        record.lists[count].push_back(trackRow(track));
    }
    record.fileRows[count] = group.rowsRead;
    const auto prefix = groupHead('R', group.index);
    makeRoom(record, group.kept, recorderLists(), prefix, edition);
    const auto& rows = record.lists[count];
    for (const auto number : numbersOf(record, count)) {
        auto& track = settled.tracks.emplace_back();
        track.number = number;
        const auto& row = rows[number - 1];
        for (const auto& [items, itemRows] : row.lists) {
            track.items[items] = numbersOf(row, items);
            track.counts[items] = itemRows.size();
        }
    }
    if (rows.size() > group.tracks.size() &&
        rows.size() > clampedCount(record.value(kTrackCount), kMostTracks)) {
        record.set(kTrackCount, std::to_string(rows.size()));
    }
    settled.kept = keptAtRows(group.kept, recorderLists(), prefix, record);
    record.lists.erase(count);
    return settled;
}

using Names = std::vector<std::string*>;

/// Adds the items of a track that name a data link: subchannels and networks.
void addItemLinks(TrackDetails& details, int edition, Names& names) {
    for (const auto& type : channelTypes()) {
        const auto* const count = itemCount(type, edition);
        const auto items = details.items.find(count == nullptr ? std::string_view() : count->code);
        if (items == details.items.end()) {
            continue;
        }
        const auto fields = itemFields(type, edition);
        for (auto& item : items->second) {
            for (std::size_t i = 0; i < std::min(fields.size(), item.size()); ++i) {
                if (namesLink(fields[i]->refersTo)) {
                    names.push_back(&item[i]);
                }
            }
        }
    }
}

/// All values of the group that name a data link, in a fixed order.
Names linkNames(RecorderGroup& group, int edition) {
    Names names;
    const auto addOf = [&](auto& values, std::string_view behind) {
        for (auto& [code, value] : values) {
            if (namesLink(refersTo('R', code + std::string(behind)))) {
                names.push_back(&value);
            }
        }
    };
    for (auto& track : group.tracks) {
        track.values.resize(trackFields().size());
        names.push_back(&track.values.back());
        addOf(track.details.values, "-n");
        addItemLinks(track.details, edition, names);
    }
    if (const auto events = group.record.lists.find("EV\\N"); events != group.record.lists.end()) {
        for (auto& event : events->second) {
            addOf(event.values, {});
        }
    }
    return names;
}

void countTracks(RecorderGroup& group) {
    group.record.set(kTrackCount, std::to_string(group.tracks.size()));
}

}  // namespace

const GroupLists& recorderLists() {
    static const GroupLists kLists([] {
        const auto before = recorderFieldsBeforeTracks();
        std::vector<Field> table(before.begin(), before.end());
        std::erase_if(table, [](const Field& field) { return field.code == kTrackCount; });
        table.push_back({.code = kTrackCount, .kind = FieldKind::Count, .rows = kMostTracks});
        for (auto field : trackFields()) {
            field.list = kTrackCount;
            table.push_back(field);
        }
        for (const auto& type : channelTypes()) {
            std::string_view items;
            for (auto field : type.fields) {
                field.list = isItemField(field) ? items : kTrackCount;
                if (field.kind == FieldKind::Count) {
                    field.rows = kMostTrackItems;
                    items = field.code;
                }
                table.push_back(field);
            }
        }
        const auto behind = recorderFieldsBehindTracks();
        table.insert(table.end(), behind.begin(), behind.end());
        return table;
    }());
    return kLists;
}

std::optional<RecorderGroup> readRecorder(DocumentContext& context, UserInterface* parent,
                                          const std::string& source) {
    RecorderGroup group;
    group.source = source;
    const int found = findGroupIndex(context, parent, 'R', source);
    group.index = found > 0 ? found : -findGroupIndex(context, parent, 'R', {});
    if (group.index > kMostGroupIndex) {
        context.messages.show(parent, message::kUnableToEdit, title::kError, kErrorBox,
                              groupKind('R').messageName);
        return std::nullopt;
    }
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Initializing Tape Data Source Information...");
    GroupSource file(context, parent, 'R', group.index);
    group.isNew = isMissing(file.status());
    if (group.isNew) {
        beginGroup(context, parent, group);
    } else if (!file.status().ok()) {
        reportUnableToRead(parent, file.status());
        return std::nullopt;
    } else if (!readGroup(file, parent, context.document.version, group)) {
        setProgressBar(parent, -1);
        return std::nullopt;
    }
    group.record.set(ownNameOf('R'), source);
    group.kept = std::move(file.kept());
    setProgressBar(parent, -1);
    setStatusText(parent, "Edit Recorder/Reproducer Information.");
    return group;
}

std::string recorderText(const RecorderGroup& group, int edition) {
    const auto settled = settle(group, edition);
    GroupWriter writer('R', group.index);
    writer.writeTable(recorderFieldsBeforeTracks(), settled.record, edition);
    for (std::size_t i = 0; i < group.tracks.size(); ++i) {
        writeTrack(writer, group.tracks[i], settled.tracks[i], edition);
    }
    writer.writeTable(recorderFieldsBehindTracks(), settled.record, edition);
    return writer.text();
}

GroupFile recorderLeftovers(const RecorderGroup& group) {
    return settle(group, kLatestEdition).kept;
}

bool storeRecorder(DocumentContext& context, UserInterface* parent, const RecorderGroup& group) {
    return storeGroup(context, parent, 'R', group.index,
                      recorderText(group, context.document.version), recorderLeftovers(group));
}

void followRenamedLinks(RecorderGroup& group, const RecorderGroup& before,
                        const RecorderGroup& after, int edition) {
    auto old = before;
    auto now = after;
    const auto oldNames = linkNames(old, edition);
    const auto newNames = linkNames(now, edition);
    std::unordered_map<std::string, std::string> renamed;
    for (std::size_t i = 0; i < std::min(oldNames.size(), newNames.size()); ++i) {
        if (*oldNames[i] != *newNames[i]) {
            renamed.try_emplace(*oldNames[i], *newNames[i]);
        }
    }
    for (auto* const name : linkNames(group, edition)) {
        if (const auto it = renamed.find(*name); !name->empty() && it != renamed.end()) {
            *name = it->second;
        }
    }
    group.kept = after.kept;
}

bool setTrackCount(const Messages& messages, UserInterface* parent, RecorderGroup& group,
                   const std::string& number) {
    const auto tracks = static_cast<int>(group.tracks.size());
    if (static_cast<int>(clampedCount(number, kMostTracks)) < tracks) {
        messages.show(parent, message::kFewerThanTracks, title::kError, kErrorBox, tracks, tracks);
        return false;
    }
    group.record.set(kTrackCount, number);
    return true;
}

void addTrack(RecorderGroup& group, Track track) {
    track.details = group.memory.find(trackValue(track, "TK1-n"));
    group.tracks.push_back(std::move(track));
    countTracks(group);
}

void deleteTrack(RecorderGroup& group, std::size_t row) {
    group.memory.keep(group.tracks[row]);
    group.tracks.erase(group.tracks.begin() + static_cast<std::ptrdiff_t>(row));
    countTracks(group);
}

}  // namespace kavu
