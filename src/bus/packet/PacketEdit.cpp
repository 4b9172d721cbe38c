#include "bus/packet/PacketEdit.h"

#include "core/TmatsDocument.h"
#include "core/text/Text.h"
#include "groups/MeasurementNames.h"
#include "groups/NamesInStreams.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

using Kind = PacketEdit::Node::Kind;
using Node = PacketEdit::Node;

/// The code of the list whose rows are the children of a node; empty for a node without children.
std::string_view listOf(const Node& node) {
    switch (node.kind) {
        case Kind::Group:
            return packet_field::kPackets;
        case Kind::Family:
            return node.family->count.code;
        case Kind::Measurement:
            return node.family->locationCount.code;
        default:
            return {};
    }
}

Kind childKindOf(const Node& node) {
    switch (node.kind) {
        case Kind::Group:
            return Kind::Packet;
        case Kind::Family:
            return Kind::Measurement;
        case Kind::Measurement:
            return Kind::Location;
        default:
            return Kind::None;
    }
}

std::string_view wordOf(Kind kind) {
    switch (kind) {
        case Kind::Packet:
            return "Source Packet";
        case Kind::Measurement:
            return "Measurement";
        case Kind::Location:
            return "Measurement Location";
        default:
            return {};
    }
}

Node childAt(const Node& node, const std::variant<int, char>& part) {
    if (const auto* const letter = std::get_if<char>(&part)) {
        const bool isBranch = (node.kind == Kind::Group && *letter == 'T') ||
                              (node.kind == Kind::Packet && (*letter == 'H' || *letter == 'S'));
        return isBranch ? Node{Kind::Family, node.row, &packetFamily(*letter)} : Node{};
    }
    const auto list = listOf(node);
    const auto rows = list.empty() ? node.row->lists.end() : node.row->lists.find(list);
    const auto number = static_cast<std::size_t>(std::get<int>(part));
    if (rows == node.row->lists.end() || number < 1 || number > rows->second.size()) {
        return {};
    }
    return {childKindOf(node), &rows->second[number - 1], node.family};
}

std::vector<PacketField> ofTable(std::string_view list) {
    std::vector<PacketField> fields;
    for (const auto& field : packetFields()) {
        if (field.list == list && !governsRows(field) && field.refersTo != Refers::LinkName) {
            fields.push_back({stemOf(field.code), &field});
        }
    }
    return fields;
}

std::vector<PacketField> ofFamily(std::initializer_list<const Field*> all) {
    std::vector<PacketField> fields;
    for (const auto* const field : all) {
        fields.push_back({stemOf(field->code).substr(1), field});
    }
    return fields;
}

/// The values of a new row, in the order of its fields.
std::vector<std::string_view> defaultsOf(Kind kind) {
    switch (kind) {
        case Kind::Packet:
            return {"0", "0", "0", "0"};
        case Kind::Measurement:
            return {"NewName", "NO", "L"};
        case Kind::Location:
            return {"1", "1", "FW", "MSB", "1"};
        default:
            return {};
    }
}

}  // namespace

PacketEdit::PacketEdit(DocumentContext& context, PacketGroup& group, const MeasurementNames* names)
    : context_(context),
      group_(group),
      names_(names),
      stream_(names == nullptr ? 0 : streamNumberOf(context, nullptr, group.link)) {}

PacketEdit::Node PacketEdit::find(const GroupPlace& place) {
    Node node{Kind::Group, &group_.record, nullptr};
    for (const auto& part : place) {
        node = node.kind == Kind::None ? node : childAt(node, part);
    }
    return node;
}

std::vector<PacketField> PacketEdit::fieldsOf(Kind kind, const PacketFamily* family) {
    switch (kind) {
        case Kind::Group:
            return ofTable({});
        case Kind::Packet:
            return ofTable(packet_field::kPackets);
        case Kind::Measurement:
            return ofFamily({&family->name, &family->parity, &family->parityOrder});
        case Kind::Location:
            return ofFamily({&family->wordPosition, &family->wordLength, &family->mask,
                             &family->transferOrder, &family->fragment});
        default:
            return {};
    }
}

GroupRow PacketEdit::newChildOf(const Node& node) {
    GroupRow row;
    const Node child{childKindOf(node), &row, node.family};
    const auto fields = fieldsOf(child.kind, child.family);
    const auto values = defaultsOf(child.kind);
    for (std::size_t i = 0; i < values.size(); ++i) {
        row.set(fields[i].field->code, values[i]);
    }
    if (child.kind == Kind::Packet) {
        row.lists[std::string(packetFamily('H').count.code)];
        row.lists[std::string(packetFamily('S').count.code)];
    }
    if (const auto list = listOf(child); !list.empty()) {
        row.lists[std::string(list)];
    }
    return row;
}

bool PacketEdit::check(UserInterface* parent, const Field& field, std::string_view former,
                       std::string& value) const {
    if (value == former) {
        return true;
    }
    if (!hasNoSemicolon(context_, parent, value)) {
        return false;
    }
    if (!field.choices.empty() && !value.empty()) {
        const auto entry =
            std::find_if(field.choices.begin(), field.choices.end(), [&](const Choice& each) {
                return equalsIgnoreCase(each.value, value) || equalsIgnoreCase(each.text, value);
            });
        if (entry == field.choices.end()) {
            std::vector<std::string> entries;
            for (const auto& each : field.choices) {
                entries.emplace_back(each.value);
            }
            reportNoEntry(parent, value, entries);
            return false;
        }
        value = entry->value;
        return true;
    }
    return isWithinLimit(parent, value, field.limit) && isNameFree(parent, field, value);
}

bool PacketEdit::isNameFree(UserInterface* parent, const Field& field,
                            const std::string& value) const {
    return !namesMeasurement(field.refersTo) || value.empty() || names_ == nullptr ||
           isFreeInOtherStreams(context_, parent, *names_, value, stream_);
}

bool PacketEdit::enter(UserInterface* parent, const Node& node, GroupRow& row,
                       EnteredValues values) const {
    const auto fields = fieldsOf(node.kind, node.family);
    for (const auto& [name, entered] : values) {
        const auto found =
            std::find_if(fields.begin(), fields.end(),
                         [&wanted = name](const PacketField& each) { return each.name == wanted; });
        if (found == fields.end()) {
            reportNoField(parent, name);
            return false;
        }
        const auto& field = *found->field;
        auto value = withLineBreaks(entered);
        if (!check(parent, field, row.value(field.code), value)) {
            return false;
        }
        row.set(field.code, value);
    }
    return true;
}

bool PacketEdit::add(UserInterface* parent, const GroupPlace& place, EnteredValues values) {
    const auto node = find(place);
    const auto list = listOf(node);
    if (node.kind == Kind::None || list.empty()) {
        node.kind == Kind::None ? reportNoPlace(parent, place)
                                : reportNoAct(parent, place, "added");
        return false;
    }
    auto row = newChildOf(node);
    if (!enter(parent, {childKindOf(node), &row, node.family}, row, values)) {
        return false;
    }
    node.row->lists[std::string(list)].push_back(std::move(row));
    return true;
}

bool PacketEdit::set(UserInterface* parent, const GroupPlace& place, EnteredValues values) {
    const auto node = find(place);
    if (node.kind == Kind::None || node.kind == Kind::Family) {
        node.kind == Kind::None ? reportNoPlace(parent, place)
                                : reportNoAct(parent, place, "edited");
        return false;
    }
    // A check that refuses a later value must leave the earlier ones undone.
    GroupRow row;
    row.values = node.row->values;
    if (!enter(parent, node, row, values)) {
        return false;
    }
    node.row->values = std::move(row.values);
    return true;
}

bool PacketEdit::remove(UserInterface* parent, const GroupPlace& place) {
    const auto node = find(place);
    const auto word = wordOf(node.kind);
    if (word.empty()) {
        node.kind == Kind::None ? reportNoPlace(parent, place)
                                : reportNoAct(parent, place, "deleted");
        return false;
    }
    if (!asksToDelete(context_, parent, word)) {
        return false;
    }
    auto owner = place;
    owner.pop_back();
    const auto parentNode = find(owner);
    auto& rows = parentNode.row->lists[std::string(listOf(parentNode))];
    rows.erase(rows.begin() + std::get<int>(place.back()) - 1);
    return true;
}

bool PacketEdit::removeComment(UserInterface* parent, const GroupPlace& place) {
    const auto node = find(place);
    if (node.kind != Kind::Packet || !asksToDelete(context_, parent, "Comment")) {
        return false;
    }
    node.row->set(packet_field::kPacketComment, {});
    return true;
}

namespace {

/// The lists of the rows in a row of a kind, each with the family that they have.
struct InnerList {
    std::string_view from{};
    std::string_view to{};
    Kind kind = Kind::None;
    const PacketFamily* fromFamily = nullptr;
    const PacketFamily* toFamily = nullptr;
};
std::vector<InnerList> listsIn(Kind kind, const PacketFamily* from, const PacketFamily* to) {
    if (kind == Kind::Measurement) {
        return {{from->locationCount.code, to->locationCount.code, Kind::Location, from, to}};
    }
    std::vector<InnerList> lists;
    if (kind == Kind::Packet) {
        for (const char letter : {'H', 'S'}) {
            const auto& family = packetFamily(letter);
            lists.push_back(
                {family.count.code, family.count.code, Kind::Measurement, &family, &family});
        }
    }
    return lists;
}

}  // namespace

std::optional<GroupRow> PacketEdit::pasted(UserInterface* parent, Kind kind,
                                           const PacketFamily* from, const PacketFamily* to,
                                           const GroupRow& row) const {
    const auto sources = fieldsOf(kind, from);
    const auto targets = fieldsOf(kind, to);
    GroupRow copy;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const std::string value(row.value(sources[i].field->code));
        if (!hasNoSemicolon(context_, parent, value) ||
            !isNameFree(parent, *targets[i].field, value)) {
            return std::nullopt;
        }
        copy.set(targets[i].field->code, value);
    }
    for (const auto& list : listsIn(kind, from, to)) {
        auto& rows = copy.lists[std::string(list.to)];
        for (const auto& each : row.rows(list.from)) {
            auto inner = pasted(parent, list.kind, list.fromFamily, list.toFamily, each);
            if (!inner) {
                return std::nullopt;
            }
            rows.push_back(std::move(*inner));
        }
    }
    return copy;
}

bool PacketEdit::paste(UserInterface* parent, const GroupPlace& owner, Kind kind,
                       const PacketFamily* family, const GroupRow& row) {
    const auto to = find(owner);
    if (to.kind == Kind::None || childKindOf(to) != kind ||
        (kind != Kind::Packet && family == nullptr)) {
        return false;
    }
    auto copy = pasted(parent, kind, family, to.family, row);
    if (copy) {
        to.row->lists[std::string(listOf(to))].push_back(std::move(*copy));
    }
    return copy.has_value();
}

}  // namespace kavu
