#include "app/bus/PacketTree.h"

#include "app/bus/GroupRowClip.h"
#include "app/bus/PacketRowDialog.h"
#include "app/framework/DialogDoor.h"

#include <span>

namespace kavu {

namespace {

using Kind = PacketEdit::Node::Kind;

constexpr GroupTreeKind kPacketRootKind{
    .icon = "folder", .add = "Add New Source Packet Definition", .pastes = "packet"};
constexpr GroupTreeKind kPacketKind{.icon = "packet",
                                    .edit = "Edit This Source Packet",
                                    .remove = "Delete This Source Packet",
                                    .clip = "packet"};
constexpr GroupTreeKind kPacketFamilyKind{
    .icon = "folder", .add = "Add New Measurement", .pastes = "packet-measurement"};
constexpr GroupTreeKind kPacketCommentKind{
    .icon = "general", .edit = "Edit This Comment", .remove = "Delete This Comment"};
constexpr GroupTreeKind kPacketMeasurementKind{.icon = "measurement",
                                               .edit = "Edit This Measurement Definition",
                                               .remove = "Delete This Measurement",
                                               .clip = "packet-measurement"};
constexpr GroupTreeKind kPacketLocationsKind{
    .icon = "folder", .add = "Add New Measurement Location", .pastes = "packet-location"};
constexpr GroupTreeKind kPacketLocationKind{.icon = "conversion",
                                            .edit = "Edit This Measurement Location",
                                            .remove = "Delete This Measurement Location",
                                            .clip = "packet-location"};

/// The rows of a packet, and how deep the others are.
enum PacketPart : std::size_t { kHeaderPart, kDataPart, kCommentPart, kPacketParts };
enum Depth : std::size_t { kOfPacket = 1, kOfPart, kOfMeasurement, kOfLocations, kOfLocation };

bool isComment(const TreePath& path) {
    return path.size() == kOfPart && path.back() == kCommentPart;
}

/// The place of a row as scripts give it. The folder of locations has that of its measurement, a
/// comment that of its packet.
GroupPlace placeOf(const TreePath& path) {
    GroupPlace place;
    for (std::size_t i = 0; i < path.size(); ++i) {
        switch (i + 1) {
            case kOfPart:
                if (path[i] != kCommentPart) {
                    place.emplace_back(path[i] == kHeaderPart ? 'H' : 'S');
                }
                break;
            case kOfLocations:
                break;
            default:
                place.emplace_back(static_cast<int>(path[i]) + 1);
        }
    }
    return place;
}

std::string commentLabel(const GroupRow& packet) {
    const auto comment = packet.value(packet_field::kPacketComment);
    return comment.empty() ? "Comment" : "Comment:" + std::string(comment);
}

}  // namespace

PacketEdit::Node PacketTree::nodeAt(const TreePath& path) const {
    return edit_.find(placeOf(path));
}

GroupTreeRow PacketTree::row(const TreePath& at) const {
    const auto node = nodeAt(at);
    switch (at.size()) {
        case 0:
            return {&kPacketRootKind, std::string(kPacketRoot),
                    node.row->rows(packet_field::kPackets).size()};
        case kOfPacket:
            return {&kPacketKind, packetLabel(*node.row), kPacketParts};
        case kOfPart:
            return isComment(at)
                       ? GroupTreeRow{&kPacketCommentKind, commentLabel(*node.row), 0}
                       : GroupTreeRow{&kPacketFamilyKind,
                                      at.back() == kHeaderPart ? "Secondary Header" : "Source Data",
                                      node.row->rows(node.family->count.code).size()};
        case kOfMeasurement:
            return {&kPacketMeasurementKind, measurementLabel(*node.family, *node.row), 1};
        case kOfLocations:
            return {&kPacketLocationsKind, "Measurement Locations",
                    node.row->rows(node.family->locationCount.code).size()};
        default:
            return {&kPacketLocationKind, locationLabel(*node.family, *node.row), 0};
    }
}

bool PacketTree::add(const TreePath& owner, QWidget* window) {
    PacketRowDialog dialog(form_, edit_, placeOf(owner), PacketForm::NewRow, window);
    return runDialog(form_.door, dialog) == QDialog::Accepted;
}

bool PacketTree::edit(const TreePath& at, QWidget* window) {
    PacketRowDialog dialog(form_, edit_, placeOf(at),
                           isComment(at) ? PacketForm::Comment : PacketForm::Row, window);
    return runDialog(form_.door, dialog) == QDialog::Accepted;
}

bool PacketTree::remove(const TreePath& at) {
    if (!isComment(at)) {
        return edit_.remove(&form_.ui, placeOf(at));
    }
    return !nodeAt(at).row->value(packet_field::kPacketComment).empty() &&
           edit_.removeComment(&form_.ui, placeOf(at));
}

TableClip PacketTree::copy(const TreePath& at) const {
    const auto node = nodeAt(at);
    TableClip clip;
    auto& cells = clip.rows.emplace_back();
    for (const auto& [name, field] : PacketEdit::fieldsOf(node.kind, node.family)) {
        cells.emplace_back(node.row->value(field->code));
    }
    clip.own = clipOfRow(*node.row);
    clip.own.insert(clip.own.begin(),
                    {std::string(node.family == nullptr ? 0 : 1,
                                 node.family == nullptr ? ' ' : node.family->letter)});
    return clip;
}

bool PacketTree::paste(const TreePath& owner, const TableClip& clip) {
    if (clip.own.size() < 2 || clip.own.front().size() != 1) {
        return false;
    }
    const auto& letter = clip.own.front().front();
    const auto row = rowOfClip(std::span(clip.own).subspan(1));
    const auto* const family =
        letter == "T" || letter == "H" || letter == "S" ? &packetFamily(letter.front()) : nullptr;
    const auto kind = owner.empty()             ? Kind::Packet
                      : owner.size() == kOfPart ? Kind::Measurement
                                                : Kind::Location;
    return row && edit_.paste(&form_.ui, placeOf(owner), kind, family, *row);
}

std::vector<GroupTreeEntry> PacketTree::entries(const TreePath& at) {
    if (at.size() != kOfMeasurement || !editConversion_) {
        return {};
    }
    return {{"Edit Data Conversion Attributes", "conversion", [this, at](QWidget* window) {
                 const auto node = nodeAt(at);
                 editConversion_(std::string(node.row->value(node.family->name.code)), window);
                 // The conversion is stored already, and is no part of the group.
                 return false;
             }}};
}

namespace {

std::size_t bytesOf(const GroupRow& row) {
    constexpr std::size_t kBytesOfValue = 120;
    std::size_t bytes = sizeof row + row.values.size() * kBytesOfValue;
    for (const auto& [count, rows] : row.lists) {
        bytes += kBytesOfValue;
        for (const auto& each : rows) {
            bytes += bytesOf(each);
        }
    }
    return bytes;
}

}  // namespace

GroupTreeState PacketTree::state() const {
    return stateOf(group_.record.lists, bytesOf(group_.record));
}

void PacketTree::restore(const GroupTreeState& state) {
    restoreTo(group_.record.lists, state);
}

}  // namespace kavu
