// The tree of message data for its editor: the rows of a link's streams, each kind with its form.
#pragma once

#include "app/bus/GroupTreeModel.h"
#include "app/framework/FormContext.h"
#include "bus/message/MessageEdit.h"

namespace kavu {

class MessageTree : public GroupTreeModel {
  public:
    /// All must outlive the object.
    MessageTree(FormContext& form, MessageGroup& group, MessageEdit& edit)
        : form_(form), group_(group), edit_(edit) {}

    [[nodiscard]] GroupTreeRow row(const TreePath& at) const override;
    bool add(const TreePath& owner, QWidget* window) override;
    bool edit(const TreePath& at, QWidget* window) override;
    bool remove(const TreePath& at) override;
    bool paste(const TreePath& owner, const TableClip& clip) override;
    [[nodiscard]] TableClip copy(const TreePath& at) const override;
    [[nodiscard]] GroupTreeState state() const override;
    void restore(const GroupTreeState& state) override;

    /// The place of a row as scripts give it: the two folders of a message are 'F' and 'M'.
    [[nodiscard]] static GroupPlace placeOf(const TreePath& path);

  private:
    [[nodiscard]] const MessageStream& nodeAt(const TreePath& path) const;

    FormContext& form_;
    MessageGroup& group_;
    MessageEdit& edit_;
};

}  // namespace kavu
