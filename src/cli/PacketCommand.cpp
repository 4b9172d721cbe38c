// The command `packet`: the transfer frame and the source packets of a link.
#include "application/Application.h"
#include "bus/StreamDataEdition.h"
#include "bus/packet/PacketEdit.h"
#include "cli/EditRun.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/text/Text.h"

namespace kavu::cli {

namespace {

using Kind = PacketEdit::Node::Kind;

std::string shown(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return text;
}

/// The fields of a form by their names.
Json fieldsJson(const std::vector<PacketField>& fields, const GroupRow& row) {
    Json members = Json::object();
    for (const auto& each : fields) {
        members[std::string(each.name)] = jsonText(shown(row.value(each.field->code)));
    }
    return members;
}

Json measurementsJson(const PacketFamily& family, const GroupRow& owner) {
    const auto fields = PacketEdit::fieldsOf(Kind::Measurement, &family);
    const auto locationFields = PacketEdit::fieldsOf(Kind::Location, &family);
    Json measurements = Json::array();
    for (const auto& row : owner.rows(family.count.code)) {
        Json locations = Json::array();
        for (const auto& location : row.rows(family.locationCount.code)) {
            locations.push_back({{"number", locations.size() + 1},
                                 {"label", jsonText(shown(locationLabel(family, location)))},
                                 {"fields", fieldsJson(locationFields, location)}});
        }
        measurements.push_back({{"number", measurements.size() + 1},
                                {"label", jsonText(shown(measurementLabel(family, row)))},
                                {"fields", fieldsJson(fields, row)},
                                {"locations", std::move(locations)}});
    }
    return measurements;
}

Json packetsJson(const PacketGroup& group) {
    auto fields = PacketEdit::fieldsOf(Kind::Packet);
    // The comment is a node of the tree.
    std::erase_if(fields,
                  [](const PacketField& each) { return each.field->kind == FieldKind::Comment; });
    Json packets = Json::array();
    for (const auto& packet : group.record.rows(packet_field::kPackets)) {
        packets.push_back({{"number", packets.size() + 1},
                           {"label", jsonText(shown(packetLabel(packet)))},
                           {"comment", jsonText(shown(packet.value(packet_field::kPacketComment)))},
                           {"fields", fieldsJson(fields, packet)},
                           {"secondaryHeader", measurementsJson(packetFamily('H'), packet)},
                           {"sourceData", measurementsJson(packetFamily('S'), packet)}});
    }
    return packets;
}

void addModel(const PacketGroup& group, CommandOutput& output) {
    const auto fields = PacketEdit::fieldsOf(Kind::Group);
    Json entries = Json::object();
    for (const auto& each : fields) {
        if (!each.field->choices.empty()) {
            entries[std::string(each.name)] =
                jsonText(shown(shownEntry(*each.field, group.record.value(each.field->code))));
        }
    }
    output.members["group"] = group.index;
    output.members["fields"] = fieldsJson(fields, group.record);
    output.members["shown"] = std::move(entries);
    output.members["transferMeasurements"] = measurementsJson(packetFamily('T'), group.record);
    output.members["label"] = kPacketRoot;
    output.members["packets"] = packetsJson(group);
}

void addMeasurements(const PacketFamily& family, const GroupRow& owner, int level,
                     std::string& text) {
    for (const auto& row : owner.rows(family.count.code)) {
        text += treeLine(level, measurementLabel(family, row));
        for (const auto& location : row.rows(family.locationCount.code)) {
            text += treeLine(level + 1, locationLabel(family, location));
        }
    }
}

std::string modelText(const PacketGroup& group) {
    std::vector<std::vector<std::string>> rows;
    for (const auto& each : PacketEdit::fieldsOf(Kind::Group)) {
        const auto value = group.record.value(each.field->code);
        rows.push_back({terminalLine(each.name), terminalLine(each.field->label),
                        terminalLine(value.empty() ? value : shownEntry(*each.field, value))});
    }
    auto text = alignedTable(rows);
    const auto& frame = packetFamily('T');
    text += treeLine(0, "Transfer Frame Secondary Header");
    addMeasurements(frame, group.record, 1, text);
    text += treeLine(0, kPacketRoot);
    for (const auto& packet : group.record.rows(packet_field::kPackets)) {
        text += treeLine(1, packetLabel(packet));
        text += treeLine(2, "Secondary Header");
        addMeasurements(packetFamily('H'), packet, 3, text);
        text += treeLine(2, "Source Data");
        addMeasurements(packetFamily('S'), packet, 3, text);
        text += treeLine(2, "Comment");
        if (const auto comment = packet.value(packet_field::kPacketComment); !comment.empty()) {
            text += treeLine(3, shown(comment));
        }
    }
    return text;
}

}  // namespace

bool packetCommand(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    auto& document = application.context();
    PacketGroup group;
    if (!knowsPackets(document, context.ui) || !isKnownLink(context) ||
        !loadPackets(document, context.ui, context.line.link, group)) {
        return false;
    }
    PacketEdit edit(document, group, &application.measurementNames());
    return finishEdit(
        context, output, edit, [&] { return storePackets(document, context.ui, group); },
        [&](CommandOutput& printed) {
            context.line.json ? addModel(group, printed)
                              : static_cast<void>(printed.text = modelText(group));
        });
}

}  // namespace kavu::cli
