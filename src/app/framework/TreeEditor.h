// A small tree whose items a person adds, inserts, renames, moves and deletes.
#pragma once

#include "app/framework/FormContext.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QWidget>

class QMenu;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kavu {

/// What holds for all items of a kind. Kinds are numbered by their place in the setup.
struct TreeEditorKind {
    std::string name{};        ///< as in "Add Message"
    std::string icon{};        ///< name of an icon of the look
    std::vector<int> holds{};  ///< kinds of its children
    bool canRename = true;
    bool canDelete = true;
    std::size_t nameLimit = 0;
    bool uniqueAmongSiblings = false;
};

struct TreeNode {
    int kind = 0;
    std::string name{};
    long id = 0;  ///< the caller's own, kept through all moves
    std::vector<TreeNode> children{};
};

struct TreeSetup {
    std::vector<TreeEditorKind> kinds{};
    std::vector<int> topKinds{};  ///< kinds that may be on the first level
};

class TreeEditor : public QWidget {
    Q_OBJECT
  public:
    TreeEditor(FormContext& form, const char* name, TreeSetup setup, QWidget* parent = nullptr);
    ~TreeEditor() override;

    void setNodes(const std::vector<TreeNode>& nodes);
    [[nodiscard]] std::vector<TreeNode> nodes() const;

    /// The selected item's node without its children, or nothing to edit with kind -1.
    [[nodiscard]] TreeNode current() const;
    /// Selects by the row at each level, as {0, 2}; false if there is no such item.
    bool select(const std::vector<int>& path);
    [[nodiscard]] std::vector<int> currentPath() const;

    /// The operations of the buttons and the context menu; each does nothing where it is
    /// not allowed.
    void addChild(int itemKind);
    void insertBefore(int itemKind);
    void renameCurrent();
    void deleteCurrent();
    void moveCurrent(int by);

    /// Asks for the name of a new item, or for a new name; without it the text prompt does.
    std::function<std::optional<std::string>(int itemKind, const std::string& before)> nameEditor;
    /// A double click, or Enter, on an item.
    std::function<void(const TreeNode&)> opened;
    /// Adds the caller's entries to the context menu of the current item.
    std::function<void(QMenu&)> extendMenu;

    [[nodiscard]] QTreeWidget* tree() const { return tree_; }
    /// The context menu of the current item.
    void fillMenu(QMenu& menu);

  signals:
    void changed();
    void currentChanged();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    QTreeWidgetItem* makeItem(const TreeNode& node) const;
    [[nodiscard]] TreeNode nodeOf(const QTreeWidgetItem& item, bool deep) const;
    [[nodiscard]] const std::vector<int>& kindsBelow(const QTreeWidgetItem* item) const;
    [[nodiscard]] const TreeEditorKind& kind(int number) const;
    [[nodiscard]] bool nameTaken(QTreeWidgetItem* parent, const QTreeWidgetItem* except,
                                 int itemKind, const std::string& name) const;
    std::optional<std::string> askName(QTreeWidgetItem* parent, const QTreeWidgetItem* item,
                                       int itemKind, const std::string& before);
    void place(QTreeWidgetItem* parent, int row, int itemKind);
    void addKindEntries(QMenu& menu);
    bool handleKey(int key, bool alt);
    void makeButtons();
    void updateButtons();

    FormContext& form_;
    TreeSetup setup_;
    QTreeWidget* tree_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* rename_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
};

}  // namespace kavu
