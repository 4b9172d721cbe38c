#include "app/bus/GroupTreeItems.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

GroupTreeItems::GroupTreeItems(const GroupTreeModel& model, QObject* parent)
    : QAbstractItemModel(parent), model_(model), root_(std::make_unique<Node>()) {}

GroupTreeItems::~GroupTreeItems() = default;

void GroupTreeItems::reload() {
    beginResetModel();
    root_ = std::make_unique<Node>();
    endResetModel();
}

GroupTreeItems::Node& GroupTreeItems::nodeOf(const QModelIndex& index) {
    return *static_cast<Node*>(index.internalPointer());
}

TreePath GroupTreeItems::pathOf(const Node& node) {
    TreePath path;
    for (const auto* each = &node; each->owner != nullptr; each = each->owner) {
        path.push_back(each->number);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

TreePath GroupTreeItems::pathOf(const QModelIndex& index) const {
    return index.isValid() ? pathOf(nodeOf(index)) : TreePath();
}

QModelIndex GroupTreeItems::indexOf(const TreePath& path) const {
    auto at = index(0, 0);
    for (const auto number : path) {
        if (number >= rowOf(at).rows) {
            break;
        }
        at = index(static_cast<int>(number), 0, at);
    }
    return at;
}

const GroupTreeRow& GroupTreeItems::shown(Node& node) const {
    if (!node.shown) {
        node.shown = model_.row(pathOf(node));
        node.rows.resize(node.shown->rows);
    }
    return *node.shown;
}

const GroupTreeRow& GroupTreeItems::rowOf(const QModelIndex& index) const {
    return shown(nodeOf(index));
}

void GroupTreeItems::eachKnown(const QModelIndex& from,
                               const std::function<void(const QModelIndex&)>& visit) const {
    visit(from);
    for (const auto& each : nodeOf(from).rows) {
        if (each != nullptr) {
            eachKnown(createIndex(static_cast<int>(each->number), 0, each.get()), visit);
        }
    }
}

QModelIndex GroupTreeItems::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0 || row >= rowCount(parent)) {
        return {};
    }
    if (!parent.isValid()) {
        return createIndex(0, 0, root_.get());
    }
    auto& owner = nodeOf(parent);
    const auto number = static_cast<std::size_t>(row);
    auto& node = owner.rows[number];
    if (node == nullptr) {
        node = std::make_unique<Node>();
        node->owner = &owner;
        node->number = number;
    }
    return createIndex(row, 0, node.get());
}

QModelIndex GroupTreeItems::parent(const QModelIndex& index) const {
    auto* const owner = index.isValid() ? nodeOf(index).owner : nullptr;
    return owner == nullptr ? QModelIndex()
                            : createIndex(static_cast<int>(owner->number), 0, owner);
}

int GroupTreeItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? static_cast<int>(rowOf(parent).rows) : 1;
}

bool GroupTreeItems::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant GroupTreeItems::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto& row = rowOf(index);
    if (role == Qt::DisplayRole) {
        auto text = row.label;
        fromStoredForm(text);
        return toQString(replaceAll(replaceAll(text, "\r\n", " "), "\n", " "));
    }
    if (role == Qt::DecorationRole) {
        return look::icon(QLatin1String(row.kind->icon));
    }
    return {};
}

}  // namespace kavu
