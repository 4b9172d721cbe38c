// What can be done to a packet group: a packet, a measurement or a location is added, filled in by
// its form, or deleted. All checks of the forms are here, for the window and for scripts alike.
#pragma once

#include "bus/GroupPlace.h"
#include "bus/packet/PacketGroup.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class MeasurementNames;

/// A field of a form, by the name that scripts give: its code without family and indices.
struct PacketField {
    std::string_view name{};
    const Field* field = nullptr;
};

class PacketEdit {
  public:
    /// All must outlive the object; without `names` the names of other streams are not checked.
    PacketEdit(DocumentContext& context, PacketGroup& group, const MeasurementNames* names);

    /// What is at a place; `row` is null if there is nothing. Branches are 'T', 'H' and 'S'.
    struct Node {
        enum class Kind { None, Group, Packet, Family, Measurement, Location };
        Kind kind = Kind::None;
        GroupRow* row = nullptr;               ///< of a family: the row that has its list
        const PacketFamily* family = nullptr;  ///< from the family on
    };
    [[nodiscard]] Node find(const GroupPlace& place);
    /// The fields of the form of a kind of node, in its order; none for what has no form. `family`
    /// is that of a measurement or a location.
    [[nodiscard]] static std::vector<PacketField> fieldsOf(Node::Kind kind,
                                                           const PacketFamily* family = nullptr);
    /// What a new child of a node has before anything is entered.
    [[nodiscard]] static GroupRow newChildOf(const Node& node);

    /// Each of these fills in a form with stored values by the names of its fields and leaves it
    /// with OK. False if a check refuses it, or there is no such place or field, which is reported;
    /// then nothing has changed.
    bool add(UserInterface* parent, const GroupPlace& place, EnteredValues values);
    bool set(UserInterface* parent, const GroupPlace& place, EnteredValues values);
    /// Asks message 82 ("Are You Sure?") and removes the node with all below it.
    bool remove(UserInterface* parent, const GroupPlace& place);
    /// Asks the same, and removes the comment of the packet at a place.
    bool removeComment(UserInterface* parent, const GroupPlace& place);
    /// Puts a copy of a row at the end of those of a place, as a paste does: its commands of the
    /// file stay with the row that they belong to. Its codes are those of `family`, which may be
    /// another one than that of the place (a packet has none). False for a place without rows of
    /// the kind, for a semi-colon (402), and for the name of a measurement that another stream has
    /// (455).
    bool paste(UserInterface* parent, const GroupPlace& owner, Node::Kind kind,
               const PacketFamily* family, const GroupRow& row);

  private:
    [[nodiscard]] std::optional<GroupRow> pasted(UserInterface* parent, Node::Kind kind,
                                                 const PacketFamily* from, const PacketFamily* to,
                                                 const GroupRow& row) const;
    [[nodiscard]] bool check(UserInterface* parent, const Field& field, std::string_view former,
                             std::string& value) const;
    [[nodiscard]] bool isNameFree(UserInterface* parent, const Field& field,
                                  const std::string& value) const;
    [[nodiscard]] bool enter(UserInterface* parent, const Node& node, GroupRow& row,
                             EnteredValues values) const;

    DocumentContext& context_;
    PacketGroup& group_;
    const MeasurementNames* names_;
    int stream_ = 0;  ///< the number of the link's stream, for the names of others
};

}  // namespace kavu
