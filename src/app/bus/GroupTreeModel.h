// What the editor of a tree shows and changes: a group with its rows, whatever it is. A kind of row
// is plugged in by a `GroupTreeKind`, which says what the menus call it, and by `add`, `edit` and
// `remove`, which open the form of a row of that kind, or ask; the editor does all else (the tree,
// the keys, the menus, search, the clipboard, undo).
//
//     class Streams : public GroupTreeModel {
//         GroupTreeRow row(const TreePath& at) const override {
//             return at.empty() ? GroupTreeRow{&kRoot, "Streams", group_.streams.size()}
//                               : GroupTreeRow{&kStream, group_.streams[at[0]].name};
//         }
//         bool edit(const TreePath& at, QWidget* window) override {
//             StreamDialog dialog(form_, group_.streams[at[0]], window);
//             return runDialog(form_.door, dialog) == QDialog::Accepted;
//         }
//         ...
//     };
//     auto* editor = new GroupTreeEditor(form, streams, "streams", "Streams", page);
//     connect(editor, &GroupTreeEditor::changed, page, [this] { markChanged(); });
#pragma once

#include "app/framework/TableClipboard.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace kavu {

/// The place of a row: the numbers of its rows from the root down, each from 0. The root, which is
/// the one row on the first level, has none.
using TreePath = std::vector<std::size_t>;

/// What holds for all rows of a kind. The texts are those of the context menu; what has no text
/// cannot be done.
struct GroupTreeKind {
    const char* icon = "";      ///< name of an icon of the look
    std::string_view add{};     ///< "Add New Message": a row is added at the end of its rows
    std::string_view edit{};    ///< "Edit This Stream"
    std::string_view remove{};  ///< "Delete This Stream"
    std::string_view clip{};    ///< under which a row is copied: "message-stream"
    std::string_view pastes{};  ///< what its rows are copied under
};

struct GroupTreeRow {
    const GroupTreeKind* kind = nullptr;  ///< never null
    std::string label{};                  ///< as bytes of the document
    std::size_t rows = 0;                 ///< the rows in it
};

/// One more entry of the context menu of a row.
struct GroupTreeEntry {
    std::string text{};
    const char* icon = "";
    std::function<bool(QWidget* window)> run{};  ///< true if it has changed the group
};

/// A state of the group, to go back to.
struct GroupTreeState {
    std::shared_ptr<const void> state{};
    std::size_t bytes = 0;  ///< about how much memory it takes
};

class GroupTreeModel {
  public:
    GroupTreeModel() = default;
    GroupTreeModel(const GroupTreeModel&) = delete;
    GroupTreeModel& operator=(const GroupTreeModel&) = delete;
    virtual ~GroupTreeModel() = default;

    /// REQUIRES for all of these: there is such a row.
    [[nodiscard]] virtual GroupTreeRow row(const TreePath& at) const = 0;

    // Each of these gives true if the group has changed. What one that gives false has changed all
    // the same, as a form within a form does, the editor takes back by `restore`.

    /// Opens the form of a new row at the end of those of `owner`.
    virtual bool add(const TreePath& owner, QWidget* window) = 0;
    /// Opens the form of a row.
    virtual bool edit(const TreePath& at, QWidget* window) = 0;
    /// Asks, and removes the row with all in it.
    virtual bool remove(const TreePath& at) = 0;
    /// Puts what was copied at the end of the rows of `owner`, whose kind pastes it. What the
    /// clipboard holds may come from anywhere: what is no such row is refused.
    virtual bool paste(const TreePath& owner, const TableClip& clip) = 0;

    /// The row with all in it for the clipboard: `own` is for `paste`, `rows` for other programs.
    /// The editor sets the kind.
    [[nodiscard]] virtual TableClip copy(const TreePath& at) const = 0;
    /// Entries that the kind alone does not tell, between "Edit" and "Delete".
    [[nodiscard]] virtual std::vector<GroupTreeEntry> entries(const TreePath& /*at*/) { return {}; }

    [[nodiscard]] virtual GroupTreeState state() const = 0;
    virtual void restore(const GroupTreeState& state) = 0;
};

/// For groups that are values: `state` and `restore` in one line each.
template <class Group>
[[nodiscard]] GroupTreeState stateOf(const Group& group, std::size_t bytes) {
    return {std::make_shared<const Group>(group), bytes};
}
template <class Group>
void restoreTo(Group& group, const GroupTreeState& state) {
    group = *static_cast<const Group*>(state.state.get());
}

/// True if a row is `inner` itself or around it.
[[nodiscard]] bool isAtOrAround(const TreePath& outer, const TreePath& inner);
/// Where a row is after a row of another place was removed, or (`by` 1) is there again. REQUIRES:
/// it is not the removed one.
[[nodiscard]] TreePath movedPath(const TreePath& path, const TreePath& removed, int by);

}  // namespace kavu
