// The rows of a bus group as a tree: its buses, their messages, the measurements of these and
// their locations.
#pragma once

#include "app/bus/BusRowForms.h"
#include "app/bus/GroupTreeModel.h"

namespace kavu {

class BusTree : public GroupTreeModel {
  public:
    /// `setup` must outlive the tree.
    explicit BusTree(const BusFormSetup& setup) : setup_(setup) {}

    [[nodiscard]] GroupTreeRow row(const TreePath& at) const override;
    bool add(const TreePath& owner, QWidget* window) override;
    bool edit(const TreePath& at, QWidget* window) override;
    bool remove(const TreePath& at) override;
    /// A message into a bus, or a measurement into a message, from this group or another one.
    bool paste(const TreePath& owner, const TableClip& clip) override;
    [[nodiscard]] TableClip copy(const TreePath& at) const override;
    [[nodiscard]] GroupTreeState state() const override;
    void restore(const GroupTreeState& state) override;

  private:
    const BusFormSetup& setup_;
};

[[nodiscard]] BusPlace busPlaceOf(const TreePath& path);

/// A message or a measurement with all in it as texts, and back: nothing for texts that are none.
[[nodiscard]] TableRows busRowTexts(const GroupRow& row, BusLevel level);
[[nodiscard]] std::optional<GroupRow> busRowOfTexts(const TableRows& texts, BusLevel level);

}  // namespace kavu
