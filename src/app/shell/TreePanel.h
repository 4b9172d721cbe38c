// The tree of the open document with its menus. It changes nothing: what a person asks for
// goes out as a signal.
#pragma once

#include "app/shell/TreeModel.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QWidget>

class QLabel;
class QMenu;
class QStackedLayout;
class QTreeView;

namespace kavu {

class ProfileSettings;

/// Which of the four large branches are open.
struct TreeExpansion {
    bool general = false;     ///< `ExpG`
    bool conversion = false;  ///< `ExpE`
    bool radio = false;       ///< `ExpR`
    bool tape = false;        ///< `ExpT`
    [[nodiscard]] bool operator==(const TreeExpansion&) const = default;
};
[[nodiscard]] TreeExpansion readTreeExpansion(const ProfileSettings& settings);
void writeTreeExpansion(ProfileSettings& settings, const TreeExpansion& expansion);

/// The text of an entry of the context menus.
[[nodiscard]] QString treeActionText(TreeAction action);
/// The entries of a kind of item, without those that open and close branches.
[[nodiscard]] std::vector<TreeAction> treeActionsOf(TreeKind kind);

class TreePanel : public QWidget {
    Q_OBJECT
  public:
    explicit TreePanel(const TreeExpansion& expansion, QWidget* parent = nullptr);

    /// Fills the tree again. What was open and what was selected stays so where it still is;
    /// a branch that was not there before is opened as its flag says.
    void rebuild(const DocumentTree& tree, std::vector<std::string> measurements,
                 const TreeBranches& branches);
    /// No document is open: the tree gives way to a hint.
    void clear();

    [[nodiscard]] const TreeExpansion& expansion() const { return expansion_; }
    /// The selected item, or nothing.
    [[nodiscard]] std::optional<TreeItem> current() const;

    /// Selects the item with a group file, or of a name; false if there is none. An item stands
    /// for one file: a stream for its format, and not for the file of its measurements.
    bool select(char letter, int group);
    bool selectStream(std::string_view name);
    bool selectMeasurement(std::string_view name);

    // The operations of the menu entries of the same names. Those of a branch work on the
    // selected item, and do nothing without one.
    void expandAll();
    void collapseAll();
    void expandBranch(bool withChildren);
    void collapseBranch(bool withChildren);
    /// Opens the selected branch if it is closed, and the other way round.
    void toggleBranch();

    /// Whether an entry can be chosen; without it all of them can.
    std::function<bool(TreeAction, const TreeItem&)> available;
    /// The context menu of the selected item.
    void fillMenu(QMenu& menu);

    [[nodiscard]] QTreeView* view() const { return view_; }
    [[nodiscard]] const TreeModel& model() const { return *model_; }

  signals:
    /// A double click or Enter on an item.
    void activated(const kavu::TreeItem& item);
    void requested(kavu::TreeAction action, const kavu::TreeItem& item);
    void currentChanged();
    /// A key asked for what the item does not have.
    void refused();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    void showMenu(const QPoint& globalPosition);
    void choose(TreeAction action);
    void activateCurrent();
    bool handleKey(int key);
    bool chooseFirst(std::initializer_list<TreeAction> actions);
    bool selectIndex(const QModelIndex& index);
    void setExpanded(const QModelIndex& index, bool expanded);
    void setBranch(const QModelIndex& index, bool expanded);
    /// What an item is called from the first level down, the same in every rebuild.
    [[nodiscard]] std::string pathOf(const QModelIndex& index) const;
    void rememberOpen(const QModelIndex& parent);
    void openAgain(const QModelIndex& parent);
    [[nodiscard]] bool* flagOf(TreeKind kind);

    QStackedLayout* layers_ = nullptr;
    QTreeView* view_ = nullptr;
    TreeModel* model_ = nullptr;
    TreeExpansion expansion_;
    std::set<std::string> open_;   ///< paths of the branches that were open before a rebuild
    std::set<std::string> known_;  ///< paths of all branches then
    bool rebuilding_ = false;
};

}  // namespace kavu
