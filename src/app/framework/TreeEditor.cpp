#include "app/framework/TreeEditor.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kavu {

namespace {

enum Role { kKindRole = Qt::UserRole, kIdRole, kNameRole };

int kindOf(const QTreeWidgetItem& item) {
    return item.data(0, kKindRole).toInt();
}

std::string nameOf(const QTreeWidgetItem& item) {
    return item.data(0, kNameRole).toByteArray().toStdString();
}

void setName(QTreeWidgetItem& item, const std::string& name) {
    item.setText(0, toQString(name));
    item.setData(0, kNameRole, QByteArray::fromStdString(name));
}

/// The children of an item, or the first level for none.
QTreeWidgetItem* levelOf(QTreeWidget& tree, QTreeWidgetItem* parent) {
    return parent == nullptr ? tree.invisibleRootItem() : parent;
}

}  // namespace

TreeEditor::TreeEditor(FormContext& form, const char* name, TreeSetup setup, QWidget* parent)
    : QWidget(parent), form_(form), setup_(std::move(setup)) {
    setObjectName(QLatin1String(name));
    auto* layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    tree_ = new QTreeWidget(this);
    tree_->setObjectName(QStringLiteral("tree"));
    tree_->setAccessibleName(QStringLiteral("Tree"));
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    tree_->setExpandsOnDoubleClick(false);
    tree_->setMinimumSize(look::charactersWide(*this, 30), look::unit(*this) * 2 * 10);
    tree_->installEventFilter(this);
    layout->addWidget(tree_, 1);
    makeButtons();
    connect(tree_, &QTreeWidget::currentItemChanged, this, [this] {
        updateButtons();
        emit currentChanged();
    });
    connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this] {
        if (opened) {
            opened(current());
        }
    });
    connect(tree_, &QTreeWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        fillMenu(menu);
        menu.exec(tree_->viewport()->mapToGlobal(at));
    });
    updateButtons();
}

TreeEditor::~TreeEditor() = default;

void TreeEditor::makeButtons() {
    auto* row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    const auto make = [&](const char* name, const char16_t* text, const char16_t* icon) {
        auto* button =
            look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), this);
        row->addWidget(button);
        return button;
    };
    add_ = make("add", u"&Add", u"add");
    rename_ = make("rename", u"&Rename", u"rename");
    delete_ = make("delete", u"&Delete", u"delete");
    up_ = make("moveUp", u"Move &Up", u"up");
    down_ = make("moveDown", u"Move Do&wn", u"down");
    row->addStretch();
    connect(add_, &QPushButton::clicked, this, [this] {
        const auto& kinds = kindsBelow(tree_->currentItem());
        if (kinds.size() == 1) {
            addChild(kinds.front());
            return;
        }
        QMenu menu(this);
        addKindEntries(menu);
        menu.exec(add_->mapToGlobal(QPoint(0, add_->height())));
    });
    connect(rename_, &QPushButton::clicked, this, &TreeEditor::renameCurrent);
    connect(delete_, &QPushButton::clicked, this, &TreeEditor::deleteCurrent);
    connect(up_, &QPushButton::clicked, this, [this] { moveCurrent(-1); });
    connect(down_, &QPushButton::clicked, this, [this] { moveCurrent(1); });
}

const TreeEditorKind& TreeEditor::kind(int number) const {
    return setup_.kinds[static_cast<std::size_t>(number)];
}

const std::vector<int>& TreeEditor::kindsBelow(const QTreeWidgetItem* item) const {
    return item == nullptr ? setup_.topKinds : kind(kindOf(*item)).holds;
}

void TreeEditor::updateButtons() {
    auto* item = tree_->currentItem();
    add_->setEnabled(!kindsBelow(item).empty());
    rename_->setEnabled(item != nullptr && kind(kindOf(*item)).canRename);
    delete_->setEnabled(item != nullptr && kind(kindOf(*item)).canDelete);
    const auto* level = item == nullptr ? nullptr : levelOf(*tree_, item->parent());
    const int at = level == nullptr ? -1 : level->indexOfChild(item);
    up_->setEnabled(at > 0);
    down_->setEnabled(level != nullptr && at + 1 < level->childCount());
}

QTreeWidgetItem* TreeEditor::makeItem(const TreeNode& node) const {
    auto* item = new QTreeWidgetItem;
    item->setData(0, kKindRole, node.kind);
    item->setData(0, kIdRole, static_cast<qlonglong>(node.id));
    item->setIcon(0, look::icon(toQString(kind(node.kind).icon)));
    setName(*item, node.name);
    for (const auto& child : node.children) {
        item->addChild(makeItem(child));
    }
    return item;
}

TreeNode TreeEditor::nodeOf(const QTreeWidgetItem& item, bool deep) const {
    TreeNode node;
    node.kind = kindOf(item);
    node.name = nameOf(item);
    node.id = static_cast<long>(item.data(0, kIdRole).toLongLong());
    for (int i = 0; deep && i < item.childCount(); ++i) {
        node.children.push_back(nodeOf(*item.child(i), true));
    }
    return node;
}

void TreeEditor::setNodes(const std::vector<TreeNode>& nodes) {
    tree_->clear();
    QList<QTreeWidgetItem*> items;
    for (const auto& node : nodes) {
        items.append(makeItem(node));
    }
    tree_->addTopLevelItems(items);
    tree_->expandAll();
    tree_->setCurrentItem(tree_->topLevelItem(0));
    updateButtons();
}

std::vector<TreeNode> TreeEditor::nodes() const {
    std::vector<TreeNode> all;
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        all.push_back(nodeOf(*tree_->topLevelItem(i), true));
    }
    return all;
}

TreeNode TreeEditor::current() const {
    const auto* item = tree_->currentItem();
    return item == nullptr ? TreeNode{-1, {}, 0, {}} : nodeOf(*item, false);
}

bool TreeEditor::select(const std::vector<int>& path) {
    QTreeWidgetItem* item = tree_->invisibleRootItem();
    for (const int row : path) {
        if (row < 0 || row >= item->childCount()) {
            return false;
        }
        item = item->child(row);
    }
    tree_->setCurrentItem(path.empty() ? nullptr : item);
    return true;
}

std::vector<int> TreeEditor::currentPath() const {
    std::vector<int> path;
    for (auto* item = tree_->currentItem(); item != nullptr; item = item->parent()) {
        path.insert(path.begin(), levelOf(*tree_, item->parent())->indexOfChild(item));
    }
    return path;
}

bool TreeEditor::nameTaken(QTreeWidgetItem* parent, const QTreeWidgetItem* except, int itemKind,
                           const std::string& name) const {
    const auto* level = levelOf(*tree_, parent);
    for (int i = 0; kind(itemKind).uniqueAmongSiblings && i < level->childCount(); ++i) {
        const auto* other = level->child(i);
        if (other != except && equalsIgnoreCase(nameOf(*other), name)) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> TreeEditor::askName(QTreeWidgetItem* parent, const QTreeWidgetItem* item,
                                               int itemKind, const std::string& before) {
    auto initial = before;
    while (true) {
        const auto name = nameEditor ? nameEditor(itemKind, initial)
                                     : form_.ui.enterText({.title = {},
                                                           .prompt = kind(itemKind).name + ":",
                                                           .initial = initial,
                                                           .limit = kind(itemKind).nameLimit});
        if (!name || name->empty() || *name == before) {
            return std::nullopt;
        }
        if (!nameTaken(parent, item, itemKind, *name)) {
            return name;
        }
        showBox(&form_.ui,
                formatPrintf("Another '%s' exists with this same value.", kind(itemKind).name),
                kIllegalText);
        initial = *name;
    }
}

void TreeEditor::place(QTreeWidgetItem* parent, int row, int itemKind) {
    if (const auto name = askName(parent, nullptr, itemKind, {})) {
        auto* item = makeItem({itemKind, *name, 0, {}});
        levelOf(*tree_, parent)->insertChild(row, item);
        tree_->setCurrentItem(item);
        updateButtons();
        emit changed();
    }
}

void TreeEditor::addChild(int itemKind) {
    auto* parent = tree_->currentItem();
    const auto& allowed = kindsBelow(parent);
    if (std::find(allowed.begin(), allowed.end(), itemKind) != allowed.end()) {
        place(parent, levelOf(*tree_, parent)->childCount(), itemKind);
    }
}

void TreeEditor::insertBefore(int itemKind) {
    auto* item = tree_->currentItem();
    if (item == nullptr) {
        return;
    }
    const auto& allowed = kindsBelow(item->parent());
    if (std::find(allowed.begin(), allowed.end(), itemKind) != allowed.end()) {
        place(item->parent(), levelOf(*tree_, item->parent())->indexOfChild(item), itemKind);
    }
}

void TreeEditor::renameCurrent() {
    auto* item = tree_->currentItem();
    if (item == nullptr || !kind(kindOf(*item)).canRename) {
        return;
    }
    if (const auto name = askName(item->parent(), item, kindOf(*item), nameOf(*item))) {
        setName(*item, *name);
        emit changed();
    }
}

void TreeEditor::deleteCurrent() {
    auto* item = tree_->currentItem();
    if (item == nullptr || !kind(kindOf(*item)).canDelete) {
        return;
    }
    const std::string question =
        item->childCount() == 0
            ? "Do you wish to delete '" + nameOf(*item) + "'?"
            : "Do you wish to delete '" + nameOf(*item) + "' and everything below it?";
    if (showBox(&form_.ui, question, std::string(loadText(title::kDeleteEntry).value_or("")),
                Icon::Question, Buttons::YesNo) == Button::Yes) {
        delete item;
        updateButtons();
        emit changed();
    }
}

void TreeEditor::moveCurrent(int by) {
    auto* item = tree_->currentItem();
    if (item == nullptr) {
        return;
    }
    auto* level = levelOf(*tree_, item->parent());
    const int from = level->indexOfChild(item);
    const int to = from + by;
    if (to < 0 || to >= level->childCount()) {
        return;
    }
    // Taking an item out of the tree folds it.
    const bool expanded = item->isExpanded();
    level->insertChild(to, level->takeChild(from));
    item->setExpanded(expanded);
    tree_->setCurrentItem(item);
    updateButtons();
    emit changed();
}

void TreeEditor::addKindEntries(QMenu& menu) {
    for (const int below : kindsBelow(tree_->currentItem())) {
        menu.addAction(look::icon(QStringLiteral("add")),
                       QStringLiteral("Add %1...").arg(toQString(kind(below).name)), this,
                       [this, below] { addChild(below); });
    }
}

void TreeEditor::fillMenu(QMenu& menu) {
    addKindEntries(menu);
    auto* item = tree_->currentItem();
    if (item != nullptr) {
        for (const int beside : kindsBelow(item->parent())) {
            menu.addAction(QStringLiteral("Insert %1 Before...").arg(toQString(kind(beside).name)),
                           this, [this, beside] { insertBefore(beside); });
        }
    }
    menu.addSeparator();
    const auto add = [&](const QPushButton* button, const char16_t* text, const char16_t* icon,
                         auto action) {
        menu.addAction(look::icon(QString::fromUtf16(icon)), QString::fromUtf16(text), this, action)
            ->setEnabled(button->isEnabled());
    };
    add(rename_, u"Rename...", u"rename", [this] { renameCurrent(); });
    add(delete_, u"Delete", u"delete", [this] { deleteCurrent(); });
    add(up_, u"Move Up", u"up", [this] { moveCurrent(-1); });
    add(down_, u"Move Down", u"down", [this] { moveCurrent(1); });
    if (extendMenu) {
        menu.addSeparator();
        extendMenu(menu);
    }
}

bool TreeEditor::handleKey(int key, bool alt) {
    switch (key) {
        case Qt::Key_F2:
            renameCurrent();
            return true;
        case Qt::Key_Delete:
            deleteCurrent();
            return true;
        case Qt::Key_Insert:
            add_->click();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (opened && tree_->currentItem() != nullptr) {
                opened(current());
                return true;
            }
            return false;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (alt) {
                moveCurrent(key == Qt::Key_Up ? -1 : 1);
            }
            return alt;
        default:
            return false;
    }
}

bool TreeEditor::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == tree_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (handleKey(key->key(), (key->modifiers() & Qt::AltModifier) != 0)) {
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

}  // namespace kavu
