// The steps of a tree editor, each of which can be undone and done again.
#pragma once

#include "app/bus/GroupTreeModel.h"

#include <deque>
#include <optional>
#include <string>

namespace kavu {

class GroupTreeUndo {
  public:
    /// The limit of all states together, in bytes; the latest one always stays.
    static constexpr std::size_t kMostBytes = std::size_t{128} << 20U;
    static constexpr std::size_t kMostSteps = 100;

    struct Step {
        std::string title{};  ///< what the user calls it
        TreePath at{};        ///< the row that it was about
        bool isRemoval = false;
        GroupTreeState state{};  ///< before the step, or, of one that was undone, after it
    };

    /// The model must outlive the object.
    explicit GroupTreeUndo(GroupTreeModel& model, std::size_t mostBytes = kMostBytes)
        : model_(model), mostBytes_(mostBytes) {}

    /// A step was done: what was undone before is lost.
    void add(Step step);
    [[nodiscard]] bool canUndo() const { return !undo_.empty(); }
    [[nodiscard]] bool canRedo() const { return !redo_.empty(); }
    [[nodiscard]] std::string undoTitle() const { return canUndo() ? undo_.back().title : ""; }
    [[nodiscard]] std::string redoTitle() const { return canRedo() ? redo_.back().title : ""; }
    /// Restores the model, and gives the step without its state; nothing if there is none.
    std::optional<Step> undo() { return go(undo_, redo_); }
    std::optional<Step> redo() { return go(redo_, undo_); }

  private:
    std::optional<Step> go(std::deque<Step>& from, std::deque<Step>& to);
    void dropOldest();

    GroupTreeModel& model_;
    std::size_t mostBytes_;
    std::deque<Step> undo_;
    std::deque<Step> redo_;
};

}  // namespace kavu
