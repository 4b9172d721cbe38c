// The tree of a document as a model: built at once from what was read of the group files,
// without any look into a file. Names are kept as bytes and become text when they are shown.
#pragma once

#include "app/shell/TreeItem.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QAbstractItemModel>
#include <QIcon>

namespace kavu {

struct DocumentTree;
struct TreeLink;
struct TreeSource;

/// The first-level items there are: each appears only if its command is enabled.
struct TreeBranches {
    bool general = false;     ///< command 13
    bool conversion = false;  ///< command 18
    bool hardware = false;    ///< command 19
    bool pam = false;         ///< command 21
};

class TreeModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    explicit TreeModel(QObject* parent = nullptr);

    void clear();
    /// Replaces all items.
    void build(const DocumentTree& tree, std::vector<std::string> measurements,
               const TreeBranches& branches);

    /// REQUIRES: a valid index of this model.
    [[nodiscard]] const TreeItem& item(const QModelIndex& index) const;
    /// The name of the item's icon in the look of the house. REQUIRES: the same.
    [[nodiscard]] QString iconName(const QModelIndex& index) const;
    /// True if the item may have children, now or in another document.
    [[nodiscard]] static bool isBranch(TreeKind kind);
    /// The first item with the group file, not counting branches; not valid if there is none.
    [[nodiscard]] QModelIndex indexOfGroup(char letter, int group) const;
    /// The first item of a kind and a name; the name counts as it is spelled.
    [[nodiscard]] QModelIndex indexOf(TreeKind kind, std::string_view name = {}) const;
    [[nodiscard]] std::size_t itemCount() const { return nodes_.size(); }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  private:
    static constexpr std::uint32_t kNoNode = UINT32_MAX;
    struct Node {
        TreeItem item;
        std::string remark;  ///< shown after the name of a stream: its kind
        std::uint32_t parent = kNoNode;
        int row = 0;
        std::vector<std::uint32_t> children;
    };

    std::uint32_t add(std::uint32_t parent, TreeItem item, std::string remark = {});
    void addSources(std::uint32_t parent, const DocumentTree& tree, char sourceClass, TreeKind head,
                    bool always);
    void addSource(std::uint32_t parent, const TreeSource& source);
    void addStream(std::uint32_t parent, const TreeLink& link, bool isUnlinked);
    void addUnlinked(const DocumentTree& tree);
    void addVendors(const DocumentTree& tree);
    [[nodiscard]] QModelIndex indexOfNode(std::uint32_t node) const;
    [[nodiscard]] const std::vector<std::uint32_t>& childrenOf(const QModelIndex& parent) const;

    std::vector<Node> nodes_;
    std::vector<std::uint32_t> top_;
    std::vector<QIcon> icons_;
};

/// The label of an item without its remark.
[[nodiscard]] QString treeLabel(const TreeItem& item);

}  // namespace kavu
