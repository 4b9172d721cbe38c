#include "bus/packet/PacketGroup.h"

#include "bus/LengthReport.h"
#include "bus/RowReader.h"
#include "bus/StoreRows.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/SourceList.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kPacketGroup = "Packet (S)";

using packet_field::kPackets;

class GroupReader {
  public:
    explicit GroupReader(RowReader& rows) : rows_(rows) {}

    /// False if the user has cancelled.
    [[nodiscard]] bool read(GroupRow& record) {
        for (const auto& field : packetFields()) {
            if (field.list.empty() && !governsRows(field)) {
                take(record, field, {});
            } else if (field.code == packetFamily('T').count.code) {
                complete_ = complete_ && readFamily(packetFamily('T'), record, {});
            } else if (field.code == kPackets) {
                complete_ = complete_ && readPackets(field, record);
            }
        }
        return complete_;
    }

  private:
    void take(GroupRow& row, const Field& field, RowNumbers at) {
        row.set(field.code, rows_.warnedText(field, at));
    }

    [[nodiscard]] bool readPackets(const Field& count, GroupRow& record) {
        const auto packets = rows_.count(count);
        auto& rows = record.lists[std::string(kPackets)];
        auto& read = record.fileRows[std::string(kPackets)];
        rows.reserve(packets);
        for (std::size_t i = 1; i <= packets; ++i) {
            auto& row = rows.emplace_back();
            row.fileRow = i;
            read.insert(read.end(), i);
            for (const auto& field : packetFields()) {
                if (field.list == kPackets && !governsRows(field)) {
                    take(row, field, RowNumbers{i});
                }
            }
            if (!readFamily(packetFamily('H'), row, RowNumbers{i}) ||
                !readFamily(packetFamily('S'), row, RowNumbers{i})) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] bool readFamily(const PacketFamily& family, GroupRow& owner, RowNumbers at) {
        const std::string list(family.count.code);
        const auto measurements = rows_.count(family.count, at);
        auto& rows = owner.lists[list];
        auto& read = owner.fileRows[list];
        for (std::size_t i = 1; i <= measurements; ++i) {
            if (rows_.cancelled()) {
                return false;
            }
            const auto here = at.row(i);
            GroupRow row;
            take(row, family.name, here);
            if (family.letter == 'T' && row.value(family.name.code).empty()) {
                continue;
            }
            row.fileRow = i;
            read.insert(read.end(), i);
            take(row, family.parity, here);
            take(row, family.parityOrder, here);
            readLocations(family, row, here);
            rows.push_back(std::move(row));
        }
        return true;
    }

    void readLocations(const PacketFamily& family, GroupRow& measurement, RowNumbers at) {
        const std::string list(family.locationCount.code);
        const auto locations = rows_.count(family.locationCount, at);
        auto& rows = measurement.lists[list];
        auto& read = measurement.fileRows[list];
        for (std::size_t i = 1; i <= locations; ++i) {
            auto& row = rows.emplace_back();
            row.fileRow = i;
            read.insert(read.end(), i);
            for (const auto* const field : {&family.wordPosition, &family.wordLength, &family.mask,
                                            &family.transferOrder, &family.fragment}) {
                take(row, *field, at.row(i));
            }
        }
    }

    RowReader& rows_;
    bool complete_ = true;
};

/// "NAME:value, NAME:value"
std::string pairs(const GroupRow& row,
                  std::initializer_list<std::pair<std::string_view, std::string_view>> texts) {
    std::string line;
    for (const auto& [keyword, code] : texts) {
        line += line.empty() ? "" : ", ";
        line.append(keyword).append(":").append(row.value(code));
    }
    return line;
}

}  // namespace

bool bringInPackets(DocumentContext& context, UserInterface* parent, std::string_view link) {
    setStatusText(parent, "Initializing Packet Information...");
    // A copy beside the groups is no change of the document.
    const ChangeScope scope(context.files);
    const int index = findGroupIndex(context, parent, 'S', link);
    const auto status =
        index > 0 ? context.files.copyIn(context.files.path(groupFile('S', index)), kPacketCopy)
                  : context.files.removeIfThere(kPacketCopy);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

bool loadPackets(DocumentContext& context, UserInterface* parent, std::string_view link,
                 PacketGroup& group) {
    group = PacketGroup{.link = std::string(link)};
    if (!bringInPackets(context, parent, link)) {
        return false;
    }
    group.index = std::max(0, findGroupIndex(context, parent, 'S', link));
    if (group.index == 0) {
        return true;
    }
    const LengthReport lengths(context, parent);
    const auto status = group.kept.commands().readFile(
        context.reader, context.files.path(kPacketCopy), Comments::Keep);
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    RowReader rows(context.reader, parent, group.kept.commands(), groupHead('S', group.index),
                   packetFields());
    const bool complete = GroupReader(rows).read(group.record);
    group.corrected = lengths.hasAny();
    setStatusText(parent, {});
    return complete;
}

bool storePackets(DocumentContext& context, UserInterface* parent, PacketGroup& group) {
    const int index =
        group.index > 0 ? group.index : indexForNew(context, parent, 'S', kPacketGroup);
    if (index == 0) {
        return false;
    }
    auto record = group.record;
    record.set(ownNameOf('S'), group.link);
    // Counts are written for lists without rows, too; a row without a name is none.
    const auto& frame = packetFamily('T');
    std::erase_if(record.lists[std::string(frame.count.code)],
                  [&](const GroupRow& row) { return row.value(frame.name.code).empty(); });
    if (!storeRows(context, parent, index, packetFields(), record, group.kept)) {
        return false;
    }
    group.index = index;
    return true;
}

std::string packetSheetTitle(std::string_view link) {
    return formatPrintf("Edit Packet Attributes - Data Link: %s", link);
}

std::string packetLabel(const GroupRow& packet) {
    return pairs(packet, {{"Secondary Header Flag", packet_field::kPacketHeaderFlag},
                          {"Process ID", packet_field::kProcessId},
                          {"Data Length", packet_field::kDataLength},
                          {"Secondary Header Length", packet_field::kPacketHeaderLength}});
}

std::string measurementLabel(const PacketFamily& family, const GroupRow& row) {
    return pairs(row, {{"Measurement", family.name.code},
                       {"Parity", family.parity.code},
                       {"Parity Transfer Order", family.parityOrder.code}});
}

std::string locationLabel(const PacketFamily& family, const GroupRow& row) {
    return pairs(row, {{"Position", family.wordPosition.code},
                       {"Word Length", family.wordLength.code},
                       {"BitMask", family.mask.code},
                       {"Transfer Order", family.transferOrder.code},
                       {"Fragment", family.fragment.code}});
}

std::string_view shownEntry(const Field& field, std::string_view stored) {
    if (field.choices.empty()) {
        return stored;
    }
    if (stored.empty()) {
        return field.choices.front().text;
    }
    const auto found = std::find_if(
        field.choices.begin(), field.choices.end(),
        [stored](const Choice& each) { return startsWithIgnoreCase(each.text, stored); });
    return found == field.choices.end() ? stored : found->text;
}

}  // namespace kavu
