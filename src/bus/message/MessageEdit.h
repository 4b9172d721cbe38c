// What can be done to the tree of a message data group: a node is added, filled in by its form, or
// deleted. All checks of the forms are here, for the window and for scripts alike.
#pragma once

#include "bus/GroupPlace.h"
#include "bus/message/MessageGroup.h"

#include <string>
#include <vector>

namespace kavu {

class MeasurementNames;

/// A form: one text for each column of the row. Which of them can be entered changes with the
/// lists.
struct MessageForm {
    MessageKind kind = MessageKind::Root;
    std::string title{};
    std::vector<std::string> texts{};
    std::vector<std::string> former{};  ///< the row before
    MessageStream stream{};             ///< the row of its stream alone; unused of a stream

    /// False for a text that does not apply as the lists are now.
    [[nodiscard]] bool isEnabled(std::size_t column) const;
    /// The entries of a list; empty for a text.
    [[nodiscard]] std::vector<std::string> entries(std::size_t column) const;
};

class MessageEdit {
  public:
    /// All must outlive the object; without `names` the names of other streams are not checked.
    MessageEdit(DocumentContext& context, MessageGroup& group, const MeasurementNames* names);

    /// The node at a place; null if there is none. Branches are 'F' and 'M'.
    [[nodiscard]] MessageStream* find(const GroupPlace& place);
    /// The stream that a place is in; null outside of all.
    [[nodiscard]] const MessageStream* streamOf(const GroupPlace& place);

    /// The form of a node, as it is opened: lists of a stream show an entry whatever it has.
    [[nodiscard]] MessageForm formOf(const GroupPlace& place);
    /// The form of a new child of a node.
    [[nodiscard]] MessageForm formOfNew(const GroupPlace& place);
    /// The checks of OK, each of which reports what it refuses: no semi-colon and no comma in a
    /// text that was changed, an entry for a list, a name that no other stream has (455).
    [[nodiscard]] bool check(UserInterface* parent, const MessageForm& form) const;

    /// Each of these fills in a form with values by the names of its fields and leaves it with OK.
    /// False if a check refuses it, or there is no such place or field, which is reported; then
    /// nothing has changed. An empty place is the group itself, with `TA` and `COM`.
    bool add(UserInterface* parent, const GroupPlace& place, EnteredValues values);
    bool set(UserInterface* parent, const GroupPlace& place, EnteredValues values);
    /// Asks message 82 ("Are You Sure?") and removes the node with all below it.
    bool remove(UserInterface* parent, const GroupPlace& place);
    /// Puts a copy of a node at the end of the children of a place, as a paste does: its commands
    /// of the file stay with the node that they belong to. False for a node of another kind than
    /// these, for a semi-colon (402), and for the name of a measurement that another stream has
    /// (455).
    bool paste(UserInterface* parent, const GroupPlace& owner, MessageStream node);

  private:
    [[nodiscard]] bool isNameFree(UserInterface* parent, const std::string& name) const;
    [[nodiscard]] bool checkPasted(UserInterface* parent, const MessageStream& node) const;
    [[nodiscard]] bool enter(UserInterface* parent, MessageForm& form, EnteredValues values) const;
    bool setGroup(UserInterface* parent, EnteredValues values);

    DocumentContext& context_;
    MessageGroup& group_;
    const MeasurementNames* names_;
    int stream_ = 0;  ///< the number of the link's stream, for the names of others
};

}  // namespace kavu
