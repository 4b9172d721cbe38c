#include "app/bus/MessageTree.h"

#include "app/bus/MessageRowDialog.h"
#include "app/framework/DialogDoor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace kavu {

namespace {

/// The kinds in the order of their values.
constexpr auto kMessageKinds = std::to_array<GroupTreeKind>({
    {.icon = "folder", .add = "Add New Stream", .pastes = "message-stream"},
    {.icon = "stream",
     .add = "Add New Message",
     .edit = "Edit This Stream",
     .remove = "Delete This Stream",
     .clip = "message-stream",
     .pastes = "message"},
    {.icon = "message",
     .edit = "Edit This Message",
     .remove = "Delete This Message",
     .clip = "message"},
    {.icon = "folder", .add = "Add New Message Field", .pastes = "message-field"},
    {.icon = "list",
     .edit = "Edit This Message Field",
     .remove = "Delete This Message Field",
     .clip = "message-field"},
    {.icon = "folder", .add = "Add New Measurement", .pastes = "message-measurement"},
    {.icon = "measurement",
     .add = "Add New Measurement Location",
     .edit = "Edit This Measurement",
     .remove = "Delete This Measurement",
     .clip = "message-measurement",
     .pastes = "message-location"},
    {.icon = "conversion",
     .edit = "Edit This Measurement Location",
     .remove = "Delete This Measurement Location",
     .clip = "message-location"},
});
/// A stream, its message, a measurement of that, its location.
constexpr std::size_t kDeepestClip = 4;
constexpr std::size_t kFirstKind = static_cast<std::size_t>(MessageKind::Root);

/// How much memory a tree takes, about.
std::size_t bytesOf(const MessageStream& node) {
    std::size_t bytes = sizeof node + node.row.size() * sizeof(std::string);
    for (const auto& child : node.children) {
        bytes += bytesOf(child);
    }
    return bytes;
}

// --- The clipboard ------------------------------------------------------------------------------

// A row of the clipboard is a node: how deep it is in the one that was copied, its kind, and its
// texts. The folders of a message are not in it.

void addRows(const MessageStream& node, int depth, TableRows& rows) {
    const bool isFolder = factsOf(node.kind).word.empty();
    if (!isFolder) {
        auto& row = rows.emplace_back();
        row = {std::to_string(depth), std::to_string(static_cast<int>(node.kind))};
        row.insert(row.end(), node.row.begin(), node.row.end());
    }
    for (const auto& child : node.children) {
        addRows(child, isFolder ? depth : depth + 1, rows);
    }
}

std::optional<std::size_t> numberOf(const std::string& text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

/// The node that takes a node of a kind: itself, or one of its folders.
MessageStream* takerOf(MessageStream& node, MessageKind kind) {
    if (factsOf(node.kind).child == kind) {
        return &node;
    }
    const auto folder =
        std::find_if(node.children.begin(), node.children.end(), [kind](const auto& child) {
            return factsOf(child.kind).word.empty() && factsOf(child.kind).child == kind;
        });
    return folder == node.children.end() ? nullptr : &*folder;
}

/// The node of one row; nothing for a row that is none.
std::optional<MessageStream> nodeOf(const std::vector<std::string>& row) {
    const auto kind = row.size() < 2 ? std::nullopt : numberOf(row[1]);
    if (!kind || *kind < kFirstKind || *kind >= kFirstKind + kMessageKinds.size()) {
        return std::nullopt;
    }
    auto node = newMessageNode(static_cast<MessageKind>(*kind));
    if (factsOf(node.kind).word.empty() || row.size() != node.row.size() + 2) {
        return std::nullopt;
    }
    std::copy(row.begin() + 2, row.end(), node.row.begin());
    return node;
}

/// The node of the rows from `next` on that are as deep, with those that are deeper; nothing for
/// rows that are no node.
std::optional<MessageStream> takeNode(const TableRows& rows, std::size_t& next, std::size_t depth) {
    auto node = next < rows.size() ? nodeOf(rows[next]) : std::nullopt;
    if (!node || numberOf(rows[next][0]) != depth || depth >= kDeepestClip) {
        return std::nullopt;
    }
    ++next;
    while (next < rows.size() && rows[next].size() >= 2 &&
           numberOf(rows[next][0]).value_or(0) > depth) {
        auto child = takeNode(rows, next, depth + 1);
        auto* const taker = child ? takerOf(*node, child->kind) : nullptr;
        if (taker == nullptr) {
            return std::nullopt;
        }
        taker->children.push_back(std::move(*child));
    }
    return node;
}

}  // namespace

// --- The rows -----------------------------------------------------------------------------------

GroupPlace MessageTree::placeOf(const TreePath& path) {
    constexpr std::size_t kFolder = 2;
    GroupPlace place;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (i == kFolder) {
            place.emplace_back(path[i] == 0 ? 'F' : 'M');
        } else {
            place.emplace_back(static_cast<int>(path[i]) + 1);
        }
    }
    return place;
}

const MessageStream& MessageTree::nodeAt(const TreePath& path) const {
    const auto* node = &group_.root;
    for (const auto number : path) {
        node = &node->children[number];
    }
    return *node;
}

GroupTreeRow MessageTree::row(const TreePath& at) const {
    const auto& node = nodeAt(at);
    const auto& stream = at.empty() ? node : group_.root.children[at.front()];
    return {&kMessageKinds[static_cast<std::size_t>(node.kind) - kFirstKind],
            messageLabel(node, stream), node.children.size()};
}

bool MessageTree::add(const TreePath& owner, QWidget* window) {
    MessageRowDialog dialog(form_, edit_, placeOf(owner), true, window);
    return runDialog(form_.door, dialog) == QDialog::Accepted;
}

bool MessageTree::edit(const TreePath& at, QWidget* window) {
    MessageRowDialog dialog(form_, edit_, placeOf(at), false, window);
    return runDialog(form_.door, dialog) == QDialog::Accepted;
}

bool MessageTree::remove(const TreePath& at) {
    return edit_.remove(&form_.ui, placeOf(at));
}

TableClip MessageTree::copy(const TreePath& at) const {
    TableClip clip;
    addRows(nodeAt(at), 0, clip.own);
    for (const auto& row : clip.own) {
        clip.rows.emplace_back(row.begin() + 2, row.end());
    }
    return clip;
}

bool MessageTree::paste(const TreePath& owner, const TableClip& clip) {
    std::size_t next = 0;
    auto node = takeNode(clip.own, next, 0);
    return node && next == clip.own.size() &&
           edit_.paste(&form_.ui, placeOf(owner), std::move(*node));
}

GroupTreeState MessageTree::state() const {
    return stateOf(group_.root, bytesOf(group_.root));
}

void MessageTree::restore(const GroupTreeState& state) {
    restoreTo(group_.root, state);
}

}  // namespace kavu
