#include "app/bus/GroupTreeEditor.h"

#include "app/bus/GroupTreeItems.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/TableClipboard.h"
#include "app/framework/WindowCare.h"

#include <algorithm>

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// A tree whose one column is as wide as its longest line, but never narrower than the view, so
/// that the whole line of a selected row is marked.
class FullWidthTree : public QTreeView {
  public:
    using QTreeView::QTreeView;

  protected:
    void resizeEvent(QResizeEvent* event) override {
        header()->setMinimumSectionSize(viewport()->width());
        QTreeView::resizeEvent(event);
    }
};

/// The folders of a row are among its first rows.
constexpr std::size_t kMostFolders = 4;

QString textOr(std::string_view text, const char* otherwise) {
    return text.empty() ? QLatin1String(otherwise) : toQString(text);
}

std::optional<TreePath> unmoved(const TreePath& path) {
    return path;
}

/// A button that does what an action does, and is enabled with it.
QPushButton* buttonOf(QAction* action, const char* name, const QString& text, const char* icon,
                      QWidget* parent) {
    auto* const button = look::makeButton(name, text, QLatin1String(icon), parent);
    const auto follow = [action, button] { button->setEnabled(action->isEnabled()); };
    QObject::connect(action, &QAction::changed, button, follow);
    QObject::connect(button, &QPushButton::clicked, action, [action] { action->trigger(); });
    follow();
    return button;
}

}  // namespace

GroupTreeEditor::GroupTreeEditor(FormContext& form, GroupTreeModel& model, const char* name,
                                 const QString& spoken, QWidget* parent)
    : QWidget(parent), form_(form), model_(model), undo_(model) {
    setObjectName(QLatin1String(name));
    auto* const column = new QVBoxLayout(this);
    look::arrangePart(*column, *this);
    makeTree(spoken);
    column->addWidget(view_, 1);
    auto* const row = new QHBoxLayout;
    makeSearch(*row);
    column->addLayout(row);
    makeActions();
    makeButtons();
    view_->setCurrentIndex(items_->index(0, 0));
    view_->expand(items_->index(0, 0));
    updateActions();
}

GroupTreeEditor::~GroupTreeEditor() = default;

void GroupTreeEditor::makeTree(const QString& spoken) {
    items_ = new GroupTreeItems(model_, this);
    view_ = new FullWidthTree(this);
    view_->setObjectName(QStringLiteral("tree"));
    view_->setAccessibleName(spoken);
    view_->setModel(items_);
    view_->setHeaderHidden(true);
    // A line has all values of its row; one scrolls to what the window has no room for.
    view_->header()->setStretchLastSection(false);
    view_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view_->setTextElideMode(Qt::ElideNone);
    view_->setUniformRowHeights(true);
    view_->setExpandsOnDoubleClick(false);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->setMinimumSize(look::charactersWide(*this, 40), look::unit(*this) * 2 * 6);
    careForView(*view_);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &GroupTreeEditor::updateActions);
    connect(view_, &QTreeView::doubleClicked, this, &GroupTreeEditor::editRow);
    connect(view_, &QTreeView::customContextMenuRequested, this, [this](const QPoint& at) {
        if (view_->indexAt(at).isValid()) {
            view_->setCurrentIndex(view_->indexAt(at));
        }
        QMenu menu(this);
        fillMenu(menu);
        menu.exec(view_->viewport()->mapToGlobal(at));
    });
}

void GroupTreeEditor::makeSearch(QHBoxLayout& row) {
    find_ = new QLineEdit(this);
    find_->setObjectName(QStringLiteral("find"));
    find_->setClearButtonEnabled(true);
    row.addWidget(look::addKeyLabel(QStringLiteral("&Find:"), *find_));
    row.addWidget(find_, 1);
    auto* const previous =
        look::makeButton("findPrevious", QStringLiteral("Previous"), QStringLiteral("up"), this);
    auto* const next =
        look::makeButton("findNext", QStringLiteral("Next"), QStringLiteral("down"), this);
    previous->setToolTip(QStringLiteral("Shift+F3"));
    next->setToolTip(QStringLiteral("F3, or Enter in the field"));
    row.addWidget(previous);
    row.addWidget(next);
    connect(previous, &QPushButton::clicked, this, [this] { search(false); });
    connect(next, &QPushButton::clicked, this, [this] { search(true); });
}

QAction* GroupTreeEditor::makeAction(const char* name, const QString& text, const char* icon,
                                     const QList<QKeySequence>& keys,
                                     void (GroupTreeEditor::*run)()) {
    auto* const action = new QAction(look::icon(QLatin1String(icon)), text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    // The same keys edit the text of the field that searches.
    action->setShortcutContext(Qt::WidgetShortcut);
    view_->addAction(action);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void GroupTreeEditor::makeActions() {
    using Editor = GroupTreeEditor;
    add_ = makeAction("add", {}, "add", {Qt::Key_Insert}, &Editor::addRow);
    edit_ = makeAction("edit", {}, "edit", {Qt::Key_F2}, &Editor::editRow);
    // A row without a form opens and closes by it.
    makeAction("open", {}, "", {Qt::Key_Return, Qt::Key_Enter}, &Editor::editRow);
    delete_ = makeAction("delete", {}, "delete", {Qt::Key_Delete}, &Editor::deleteRow);
    cut_ = makeAction("cut", QStringLiteral("Cut"), "", {QKeySequence::Cut}, &Editor::cutRow);
    copy_ =
        makeAction("copy", QStringLiteral("Copy"), "copy", {QKeySequence::Copy}, &Editor::copyRow);
    paste_ =
        makeAction("paste", QStringLiteral("Paste"), "", {QKeySequence::Paste}, &Editor::pasteRow);
    undoAction_ =
        makeAction("undo", QStringLiteral("Undo"), "undo", {QKeySequence::Undo}, &Editor::undo);
    redoAction_ = makeAction(
        "redo", QStringLiteral("Redo"), "redo",
        {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)},
        &Editor::redo);
    expand_ =
        makeAction("expand", QStringLiteral("Expand Branch"), "expand", {}, &Editor::expandBranch);
    expandAll_ = makeAction("expandChildren", QStringLiteral("Expand Branch And Its Children"), "",
                            {}, &Editor::expandAll);
    collapse_ = makeAction("collapse", QStringLiteral("Collapse Branch"), "collapse", {},
                           &Editor::collapseBranch);
    collapseAll_ =
        makeAction("collapseChildren", QStringLiteral("Collapse Branch And Its Children"), "", {},
                   &Editor::collapseAll);
    const auto addKey = [this](const QKeySequence& key, const std::function<void()>& run) {
        auto* const action = new QAction(this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        connect(action, &QAction::triggered, this, run);
    };
    addKey(QKeySequence::Find, [this] {
        find_->setFocus();
        find_->selectAll();
    });
    addKey(Qt::Key_F3, [this] { search(true); });
    addKey(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { search(false); });
    // Return in the field searches, and leaves the window open.
    auto* const next = new QAction(find_);
    next->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    next->setShortcutContext(Qt::WidgetShortcut);
    find_->addAction(next);
    connect(next, &QAction::triggered, this, [this] { search(true); });
}

void GroupTreeEditor::makeButtons() {
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    row->addWidget(buttonOf(add_, "addButton", QStringLiteral("&Add"), "add", this));
    row->addWidget(buttonOf(edit_, "editButton", QStringLiteral("&Edit"), "edit", this));
    row->addWidget(buttonOf(delete_, "deleteButton", QStringLiteral("&Delete"), "delete", this));
    row->addStretch();
    row->addWidget(buttonOf(undoAction_, "undoButton", QStringLiteral("&Undo"), "undo", this));
    row->addWidget(buttonOf(redoAction_, "redoButton", QStringLiteral("&Redo"), "redo", this));
    note_ = look::makeNote({}, this);
    note_->setObjectName(QStringLiteral("note"));
    note_->setMinimumHeight(note_->fontMetrics().height());
    layout()->addWidget(note_);
}

// --- The rows -----------------------------------------------------------------------------------

TreePath GroupTreeEditor::current() const {
    return items_->pathOf(view_->currentIndex());
}

const GroupTreeRow& GroupTreeEditor::currentRow() const {
    const auto index = view_->currentIndex();
    return items_->rowOf(index.isValid() ? index : items_->index(0, 0));
}

void GroupTreeEditor::select(const TreePath& path) {
    const auto index = items_->indexOf(path);
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
}

std::optional<TreePath> GroupTreeEditor::ownerOfNew() const {
    auto owner = current();
    if (currentRow().kind->add.empty() && !owner.empty()) {
        owner.pop_back();
    }
    const auto& kind = *items_->rowOf(items_->indexOf(owner)).kind;
    return kind.add.empty() ? std::nullopt : std::optional(owner);
}

std::optional<TreePath> GroupTreeEditor::ownerOfPaste(std::string_view clip) const {
    const auto pastes = [&](const QModelIndex& index) {
        return items_->rowOf(index).kind->pastes == clip;
    };
    auto at = items_->indexOf(current());
    if (clip.empty()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < std::min(kMostFolders, items_->rowOf(at).rows) && !pastes(at);
         ++i) {
        if (const auto folder = items_->index(static_cast<int>(i), 0, at); pastes(folder)) {
            return items_->pathOf(folder);
        }
    }
    while (at.isValid() && !pastes(at)) {
        at = at.parent();
    }
    return at.isValid() ? std::optional(items_->pathOf(at)) : std::nullopt;
}

void GroupTreeEditor::updateActions() {
    const auto& kind = *currentRow().kind;
    const auto owner = ownerOfNew();
    add_->setEnabled(owner.has_value());
    add_->setText(owner ? toQString(items_->rowOf(items_->indexOf(*owner)).kind->add)
                        : QStringLiteral("Add"));
    edit_->setEnabled(!kind.edit.empty());
    edit_->setText(textOr(kind.edit, "Edit"));
    delete_->setEnabled(!kind.remove.empty());
    delete_->setText(textOr(kind.remove, "Delete"));
    copy_->setEnabled(!kind.clip.empty());
    cut_->setEnabled(!kind.clip.empty() && !kind.remove.empty());
    undoAction_->setEnabled(undo_.canUndo());
    redoAction_->setEnabled(undo_.canRedo());
    undoAction_->setText(toQString("Undo " + undo_.undoTitle()).trimmed());
    redoAction_->setText(toQString("Redo " + undo_.redoTitle()).trimmed());
    const bool isBranch = currentRow().rows > 0;
    for (auto* const action : {expand_, expandAll_, collapse_, collapseAll_}) {
        action->setEnabled(isBranch);
    }
    for (const auto* const name : {"undoButton", "redoButton"}) {
        auto* const button = findChild<QPushButton*>(QLatin1String(name));
        if (button != nullptr) {
            button->setToolTip((name[0] == 'u' ? undoAction_ : redoAction_)->text());
        }
    }
}

void GroupTreeEditor::fillMenu(QMenu& menu) {
    const auto& kind = *currentRow().kind;
    const auto path = current();
    for (auto* const action : {add_, edit_}) {
        const auto own = action == add_ ? kind.add : kind.edit;
        if (!own.empty()) {
            menu.addAction(action);
        }
    }
    for (const auto& entry : model_.entries(path)) {
        menu.addAction(look::icon(QLatin1String(entry.icon)), toQString(entry.text), this,
                       [this, entry, path] {
                           if (step(entry.text, path, false, [&] { return entry.run(window()); })) {
                               showAgain(unmoved, path);
                               emit changed();
                           }
                       });
    }
    if (!kind.remove.empty()) {
        menu.addAction(delete_);
    }
    menu.addSeparator();
    const auto clip = pasteTable();
    paste_->setEnabled(clip && ownerOfPaste(clip->kind));
    // What was copied may change while the menu is closed; the key looks again.
    connect(&menu, &QMenu::aboutToHide, paste_, [this] { paste_->setEnabled(true); });
    menu.addActions({cut_, copy_, paste_});
    menu.addSeparator();
    menu.addActions({undoAction_, redoAction_});
    menu.addSeparator();
    menu.addActions({expand_, expandAll_, collapse_, collapseAll_});
}

// --- Steps --------------------------------------------------------------------------------------

bool GroupTreeEditor::step(const std::string& title, const TreePath& at, bool isRemoval,
                           const std::function<bool()>& act) {
    auto before = model_.state();
    note_->clear();
    if (!act()) {
        model_.restore(before);
        return false;
    }
    undo_.add({title, at, isRemoval, std::move(before)});
    return true;
}

void GroupTreeEditor::showAgain(
    const std::function<std::optional<TreePath>(const TreePath&)>& moved,
    const TreePath& selected) {
    std::vector<TreePath> open;
    items_->eachKnown(items_->index(0, 0), [&](const QModelIndex& index) {
        if (view_->isExpanded(index)) {
            if (auto now = moved(items_->pathOf(index))) {
                open.push_back(std::move(*now));
            }
        }
    });
    const auto across = view_->horizontalScrollBar()->value();
    const auto down = view_->verticalScrollBar()->value();
    items_->reload();
    for (const auto& path : open) {
        const auto index = items_->indexOf(path);
        if (items_->pathOf(index) == path) {
            view_->setExpanded(index, true);
        }
    }
    view_->setCurrentIndex(items_->indexOf(selected));
    view_->verticalScrollBar()->setValue(down);
    view_->scrollTo(view_->currentIndex());
    view_->horizontalScrollBar()->setValue(across);
    updateActions();
}

TreePath GroupTreeEditor::lastRowOf(const TreePath& owner) const {
    auto last = owner;
    if (const auto rows = model_.row(owner).rows; rows > 0) {
        last.push_back(rows - 1);
    }
    return last;
}

void GroupTreeEditor::addRow() {
    const auto owner = ownerOfNew();
    if (!owner) {
        return;
    }
    const auto title = toBytes(add_->text());
    if (step(title, *owner, false, [&] { return model_.add(*owner, window()); })) {
        view_->expand(items_->indexOf(*owner));
        showAgain(unmoved, lastRowOf(*owner));
        emit changed();
    }
}

void GroupTreeEditor::editRow() {
    if (!edit_->isEnabled()) {
        // A folder has no form: it opens and closes.
        view_->setExpanded(view_->currentIndex(), !view_->isExpanded(view_->currentIndex()));
        return;
    }
    const auto at = current();
    if (step(toBytes(edit_->text()), at, false, [&] { return model_.edit(at, window()); })) {
        showAgain(unmoved, at);
        emit changed();
    }
}

void GroupTreeEditor::deleteRow() {
    const auto at = current();
    if (!step(toBytes(delete_->text()), at, true, [&] { return model_.remove(at); })) {
        return;
    }
    // The next row takes the place; of the last one the row before, or the one around it.
    auto owner = at;
    owner.pop_back();
    const auto rows = model_.row(owner).rows;
    auto next = at;
    if (rows == 0) {
        next = owner;
    } else {
        next.back() = std::min(at.back(), rows - 1);
    }
    showAgain(
        [&](const TreePath& path) {
            return isAtOrAround(at, path) ? std::nullopt : std::optional(movedPath(path, at, -1));
        },
        next);
    emit changed();
}

void GroupTreeEditor::copyRow() {
    auto clip = model_.copy(current());
    clip.kind = currentRow().kind->clip;
    copyTable(clip);
    note_->setText(QStringLiteral("Copied"));
}

void GroupTreeEditor::cutRow() {
    copyRow();
    deleteRow();
}

void GroupTreeEditor::pasteRow() {
    const auto clip = pasteTable();
    const auto owner = clip ? ownerOfPaste(clip->kind) : std::nullopt;
    if (!owner) {
        note_->setText(QStringLiteral("There is nothing in the clipboard that can be put here."));
        return;
    }
    if (step("Paste", *owner, false, [&] { return model_.paste(*owner, *clip); })) {
        view_->expand(items_->indexOf(*owner));
        showAgain(unmoved, lastRowOf(*owner));
        emit changed();
    }
}

void GroupTreeEditor::undo() {
    goBack(false);
}

void GroupTreeEditor::redo() {
    goBack(true);
}

void GroupTreeEditor::goBack(bool again) {
    const auto step = again ? undo_.redo() : undo_.undo();
    if (!step) {
        return;
    }
    showAgain(
        [&](const TreePath& path) -> std::optional<TreePath> {
            if (!step->isRemoval) {
                return path;
            }
            return again && isAtOrAround(step->at, path)
                       ? std::nullopt
                       : std::optional(movedPath(path, step->at, again ? -1 : 1));
        },
        step->at);
    note_->setText(toQString((again ? "Done again: " : "Undone: ") + step->title));
    emit changed();
}

void GroupTreeEditor::runStep(const std::string& title, const std::function<bool()>& act) {
    const auto at = current();
    if (step(title, at, false, act)) {
        showAgain(unmoved, at);
        emit changed();
    }
}

void GroupTreeEditor::reload() {
    showAgain(unmoved, current());
}

// --- Branches -----------------------------------------------------------------------------------

void GroupTreeEditor::expandBranch() {
    view_->expand(view_->currentIndex());
}

void GroupTreeEditor::expandAll() {
    view_->expandRecursively(view_->currentIndex());
}

void GroupTreeEditor::collapseBranch() {
    view_->collapse(view_->currentIndex());
}

void GroupTreeEditor::collapseAll() {
    items_->eachKnown(view_->currentIndex(),
                      [this](const QModelIndex& index) { view_->collapse(index); });
}

// --- Search -------------------------------------------------------------------------------------

namespace {

/// The next row in the order of the open tree, or the previous one; around its ends.
TreePath neighbour(const GroupTreeModel& model, TreePath path, bool forward) {
    const auto deepest = [&](TreePath from) {
        for (auto rows = model.row(from).rows; rows > 0; rows = model.row(from).rows) {
            from.push_back(rows - 1);
        }
        return from;
    };
    if (!forward) {
        if (path.empty()) {
            return deepest({});
        }
        if (path.back() == 0) {
            path.pop_back();
            return path;
        }
        --path.back();
        return deepest(std::move(path));
    }
    if (model.row(path).rows > 0) {
        path.push_back(0);
        return path;
    }
    while (!path.empty()) {
        auto owner = path;
        owner.pop_back();
        if (path.back() + 1 < model.row(owner).rows) {
            ++path.back();
            return path;
        }
        path = std::move(owner);
    }
    return path;
}

}  // namespace

void GroupTreeEditor::search(bool forward) {
    const auto wanted = find_->text();
    note_->clear();
    if (wanted.isEmpty()) {
        find_->setFocus();
        return;
    }
    const auto from = current();
    auto at = from;
    do {
        at = neighbour(model_, std::move(at), forward);
        if (toQString(model_.row(at).label).contains(wanted, Qt::CaseInsensitive)) {
            select(at);
            return;
        }
    } while (at != from);
    note_->setText(QStringLiteral("No line has '%1'.").arg(wanted));
}

}  // namespace kavu
