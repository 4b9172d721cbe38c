// The tree of source packets for its editor: packets with the measurements of their secondary
// header and of their source data, and their comments.
#pragma once

#include "app/bus/GroupTreeModel.h"
#include "app/framework/FormContext.h"
#include "bus/packet/PacketEdit.h"

#include <functional>
#include <string>

namespace kavu {

class PacketTree : public GroupTreeModel {
  public:
    /// Opens the conversion of a measurement.
    using EditConversion = std::function<void(const std::string& name, QWidget* window)>;

    /// All must outlive the object. Without `editConversion` no menu offers it.
    PacketTree(FormContext& form, PacketGroup& group, PacketEdit& edit,
               EditConversion editConversion)
        : form_(form), group_(group), edit_(edit), editConversion_(std::move(editConversion)) {}

    [[nodiscard]] GroupTreeRow row(const TreePath& at) const override;
    bool add(const TreePath& owner, QWidget* window) override;
    bool edit(const TreePath& at, QWidget* window) override;
    bool remove(const TreePath& at) override;
    bool paste(const TreePath& owner, const TableClip& clip) override;
    [[nodiscard]] TableClip copy(const TreePath& at) const override;
    [[nodiscard]] std::vector<GroupTreeEntry> entries(const TreePath& at) override;
    [[nodiscard]] GroupTreeState state() const override;
    void restore(const GroupTreeState& state) override;

  private:
    [[nodiscard]] PacketEdit::Node nodeAt(const TreePath& path) const;

    FormContext& form_;
    PacketGroup& group_;
    PacketEdit& edit_;
    EditConversion editConversion_;
};

}  // namespace kavu
