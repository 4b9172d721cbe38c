// The rows of a group for the view of a tree. A row is asked for when it is shown first, so that a
// group with thousands of rows opens at once.
#pragma once

#include "app/bus/GroupTreeModel.h"

#include <memory>
#include <optional>
#include <vector>

#include <QAbstractItemModel>

namespace kavu {

class GroupTreeItems : public QAbstractItemModel {
    Q_OBJECT
  public:
    /// The model must outlive the object.
    GroupTreeItems(const GroupTreeModel& model, QObject* parent);
    ~GroupTreeItems() override;

    /// The group has changed.
    void reload();

    [[nodiscard]] TreePath pathOf(const QModelIndex& index) const;
    /// The item of a row; that of the nearest row around it if there is none.
    [[nodiscard]] QModelIndex indexOf(const TreePath& path) const;
    /// The row of an item. REQUIRES: a valid one.
    [[nodiscard]] const GroupTreeRow& rowOf(const QModelIndex& index) const;
    /// All rows that were asked for below an item and are open to `visit`.
    void eachKnown(const QModelIndex& from,
                   const std::function<void(const QModelIndex&)>& visit) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& /*parent*/ = {}) const override { return 1; }
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  private:
    struct Node {
        Node* owner = nullptr;
        std::size_t number = 0;
        std::optional<GroupTreeRow> shown{};
        std::vector<std::unique_ptr<Node>> rows{};  ///< null until they are asked for
    };
    [[nodiscard]] static Node& nodeOf(const QModelIndex& index);
    [[nodiscard]] static TreePath pathOf(const Node& node);
    const GroupTreeRow& shown(Node& node) const;

    const GroupTreeModel& model_;
    std::unique_ptr<Node> root_;
};

}  // namespace kavu
