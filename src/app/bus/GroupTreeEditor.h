// The tree of a group and what a person does with it: opens the form of a row, adds, deletes,
// copies and pastes rows, searches, and takes any of it back. It is put on a page of a sheet or
// into a dialog, which stores or drops the group in the end.
#pragma once

#include "app/bus/GroupTreeModel.h"
#include "app/bus/GroupTreeUndo.h"
#include "app/framework/FormContext.h"

#include <functional>
#include <optional>

#include <QWidget>

class QAction;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QTreeView;

namespace kavu {

class GroupTreeItems;

class GroupTreeEditor : public QWidget {
    Q_OBJECT
  public:
    /// `name` is the objectName; `spoken` is what a screen reader calls the tree. The model must
    /// outlive the editor.
    GroupTreeEditor(FormContext& form, GroupTreeModel& model, const char* name,
                    const QString& spoken, QWidget* parent = nullptr);
    ~GroupTreeEditor() override;

    [[nodiscard]] QTreeView* tree() const { return view_; }
    [[nodiscard]] TreePath current() const;
    /// Selects a row, or the nearest one around it, and shows it.
    void select(const TreePath& path);
    /// The context menu of the current row.
    void fillMenu(QMenu& menu);
    /// An act of the owner's own, as a button next to the tree has it: a step that can be undone.
    /// `act` gives true if it has changed the group.
    void runStep(const std::string& title, const std::function<bool()>& act);
    /// The group was changed by something else that cannot be undone here; the steps stay.
    void reload();

  signals:
    /// The group has changed.
    void changed();

  private:
    void makeTree(const QString& spoken);
    void makeActions();
    QAction* makeAction(const char* name, const QString& text, const char* icon,
                        const QList<QKeySequence>& keys, void (GroupTreeEditor::*run)());
    void makeButtons();
    void makeSearch(QHBoxLayout& row);
    void updateActions();

    void addRow();
    void editRow();
    void deleteRow();
    void cutRow();
    void copyRow();
    void pasteRow();
    void undo();
    void redo();
    void goBack(bool again);
    void expandBranch();
    void expandAll();
    void collapseBranch();
    void collapseAll();
    void search(bool forward);

    [[nodiscard]] const GroupTreeRow& currentRow() const;
    /// The row to which Add adds: the current one, or the one around it.
    [[nodiscard]] std::optional<TreePath> ownerOfNew() const;
    /// The row that takes what was copied as `clip`: the current one, one of its folders, or the
    /// nearest one around it.
    [[nodiscard]] std::optional<TreePath> ownerOfPaste(std::string_view clip) const;
    bool step(const std::string& title, const TreePath& at, bool isRemoval,
              const std::function<bool()>& act);
    /// Shows the group as it is now. Branches stay open; `moved` gives the place that a row has
    /// now, or nothing.
    void showAgain(const std::function<std::optional<TreePath>(const TreePath&)>& moved,
                   const TreePath& selected);
    [[nodiscard]] TreePath lastRowOf(const TreePath& owner) const;

    FormContext& form_;
    GroupTreeModel& model_;
    GroupTreeUndo undo_;
    GroupTreeItems* items_ = nullptr;
    QTreeView* view_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel* note_ = nullptr;
    QAction* add_ = nullptr;
    QAction* edit_ = nullptr;
    QAction* delete_ = nullptr;
    QAction* cut_ = nullptr;
    QAction* copy_ = nullptr;
    QAction* paste_ = nullptr;
    QAction* undoAction_ = nullptr;
    QAction* redoAction_ = nullptr;
    QAction* expand_ = nullptr;
    QAction* expandAll_ = nullptr;
    QAction* collapse_ = nullptr;
    QAction* collapseAll_ = nullptr;
};

}  // namespace kavu
