#include "app/shell/TreePanel.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/ProfileSettings.h"
#include "groups/DocumentTree.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QStackedLayout>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

struct ActionRow {
    std::string_view text;
    std::string_view icon;
};

// By the number of the action.
constexpr auto kActions = std::to_array<ActionRow>({
    {"Edit", "edit"},
    {"Rename", "rename"},
    {"Delete", "delete"},
    {"Make A Copy Of This Data Source", "copy"},
    {"Create New Data Source/Stream Template", "new"},
    {"Import Data Source/Stream From Another TMATS File", "import"},
    {"View/Edit/Print Data Conversion Information For All Measurements", "list"},
    {"Print All Calibration Reports", "print"},
    {"Edit Data Conversion Information", "edit"},
    {"Delete Data Conversion Information", "delete"},
    {"Rename Measurement", "rename"},
    {"Edit Stream", "edit"},
    {"Rename Stream", "rename"},
    {"Create A Home For This Stream...", "new"},
    {"Expand Branch", "expand"},
    {"Expand Branch And Its Children", ""},
    {"Collapse Branch", "collapse"},
    {"Collapse Branch And Its Children", ""},
});
static_assert(kActions.size() == static_cast<std::size_t>(TreeAction::CollapseChildren) + 1);

const ActionRow& rowOf(TreeAction action) {
    return kActions[static_cast<std::size_t>(action)];
}

QKeySequence keyOf(TreeAction action) {
    switch (action) {
        case TreeAction::Rename:
        case TreeAction::RenameStream:
        case TreeAction::RenameMeasurement:
            return Qt::Key_F2;
        case TreeAction::Delete:
        case TreeAction::DeleteConversion:
            return Qt::Key_Delete;
        default:
            return {};
    }
}

/// Shown while no document is open.
QWidget* makeEmptyState(QWidget* parent) {
    auto* page = new QWidget(parent);
    page->setObjectName(QStringLiteral("noDocument"));
    auto* layout = new QVBoxLayout(page);
    look::arrangeWindow(*layout, *page);
    auto* text = look::makeNote(QStringLiteral("Open or create a TMATS file to begin."), page);
    text->setObjectName(QStringLiteral("emptyText"));
    text->setAlignment(Qt::AlignCenter);
    layout->addStretch(2);
    layout->addWidget(text);
    layout->addStretch(3);
    return page;
}

}  // namespace

TreeExpansion readTreeExpansion(const ProfileSettings& settings) {
    return {.general = settings.get(setting::kExpandGeneral),
            .conversion = settings.get(setting::kExpandConversions),
            .radio = settings.get(setting::kExpandRadio),
            .tape = settings.get(setting::kExpandTape)};
}

void writeTreeExpansion(ProfileSettings& settings, const TreeExpansion& expansion) {
    settings.set(setting::kExpandGeneral, expansion.general);
    settings.set(setting::kExpandConversions, expansion.conversion);
    settings.set(setting::kExpandRadio, expansion.radio);
    settings.set(setting::kExpandTape, expansion.tape);
}

QString treeActionText(TreeAction action) {
    return toQString(rowOf(action).text);
}

std::vector<TreeAction> treeActionsOf(TreeKind kind) {
    using enum TreeAction;
    switch (kind) {
        case TreeKind::Source:
            return {Edit, Rename, Delete, MakeCopy};
        case TreeKind::TransmissionHead:
        case TreeKind::RecorderHead:
        case TreeKind::OtherHead:
            return {CreateNew, Import};
        case TreeKind::Stream:
        case TreeKind::EmbeddedStream:
            return {EditStream, RenameStream};
        case TreeKind::ConversionHead:
            return {ViewAllConversions, PrintReports};
        case TreeKind::Measurement:
            return {EditConversion, DeleteConversion, RenameMeasurement};
        case TreeKind::General:
        case TreeKind::MultiplexDefinition:
        case TreeKind::Hardware:
        case TreeKind::Pam:
        case TreeKind::Vendor:
            return {Edit};
        case TreeKind::StreamsHead:
        case TreeKind::UnlinkedHead:
        case TreeKind::VendorHead:
            break;
    }
    return {};
}

TreePanel::TreePanel(const TreeExpansion& expansion, QWidget* parent)
    : QWidget(parent), expansion_(expansion) {
    setObjectName(QStringLiteral("TreePanel"));
    layers_ = new QStackedLayout(this);
    model_ = new TreeModel(this);
    view_ = new QTreeView(this);
    view_->setObjectName(QStringLiteral("documentTree"));
    view_->setAccessibleName(QStringLiteral("Document tree"));
    view_->setModel(model_);
    view_->setHeaderHidden(true);
    view_->setUniformRowHeights(true);
    view_->setExpandsOnDoubleClick(false);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->setTextElideMode(Qt::ElideRight);
    view_->setFrameShape(QFrame::NoFrame);
    const int line = view_->fontMetrics().height();
    view_->setIconSize(QSize(line * 5 / 4, line * 5 / 4));
    view_->setIndentation(line * 5 / 4);
    view_->installEventFilter(this);
    layers_->addWidget(view_);
    layers_->addWidget(makeEmptyState(this));
    layers_->setCurrentIndex(1);
    setMinimumWidth(look::charactersWide(*this, 24));

    connect(view_, &QTreeView::doubleClicked, this, [this] { activateCurrent(); });
    connect(view_, &QTreeView::customContextMenuRequested, this, [this](const QPoint& at) {
        if (view_->indexAt(at).isValid()) {
            showMenu(view_->viewport()->mapToGlobal(at));
        }
    });
    const auto followFlag = [this](bool expanded) {
        return [this, expanded](const QModelIndex& index) {
            if (auto* flag = flagOf(model_->item(index).kind); flag != nullptr && !rebuilding_) {
                *flag = expanded;
            }
        };
    };
    connect(view_, &QTreeView::expanded, this, followFlag(true));
    connect(view_, &QTreeView::collapsed, this, followFlag(false));
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (!rebuilding_) {
            emit currentChanged();
        }
    });
}

bool* TreePanel::flagOf(TreeKind kind) {
    switch (kind) {
        case TreeKind::General:
            return &expansion_.general;
        case TreeKind::ConversionHead:
            return &expansion_.conversion;
        case TreeKind::TransmissionHead:
            return &expansion_.radio;
        case TreeKind::RecorderHead:
            return &expansion_.tape;
        default:
            return nullptr;
    }
}

std::string TreePanel::pathOf(const QModelIndex& index) const {
    std::string path;
    for (auto at = index; at.isValid(); at = at.parent()) {
        const auto& item = model_->item(at);
        // A NUL is in no name.
        path += std::to_string(static_cast<int>(item.kind)) + ' ' + item.name;
        path.push_back('\0');
    }
    return path;
}

void TreePanel::rememberOpen(const QModelIndex& parent) {
    for (int row = 0; row < model_->rowCount(parent); ++row) {
        const auto index = model_->index(row, 0, parent);
        if (!TreeModel::isBranch(model_->item(index).kind)) {
            continue;
        }
        const auto path = pathOf(index);
        known_.insert(path);
        if (view_->isExpanded(index)) {
            open_.insert(path);
        }
        rememberOpen(index);
    }
}

void TreePanel::openAgain(const QModelIndex& parent) {
    for (int row = 0; row < model_->rowCount(parent); ++row) {
        const auto index = model_->index(row, 0, parent);
        const auto kind = model_->item(index).kind;
        if (!TreeModel::isBranch(kind)) {
            continue;
        }
        const auto path = pathOf(index);
        const bool* flag = flagOf(kind);
        if (open_.contains(path) || (!known_.contains(path) && flag != nullptr && *flag)) {
            view_->setExpanded(index, true);
        }
        openAgain(index);
    }
}

void TreePanel::rebuild(const DocumentTree& tree, std::vector<std::string> measurements,
                        const TreeBranches& branches) {
    open_.clear();
    known_.clear();
    rememberOpen({});
    const auto selected = current();
    const auto selectedPath = selected ? pathOf(view_->currentIndex()) : std::string();
    rebuilding_ = true;
    model_->build(tree, std::move(measurements), branches);
    openAgain({});
    layers_->setCurrentIndex(0);
    bool kept = false;
    if (selected) {
        // A name may be in the tree more than once; the one in the same place counts.
        QModelIndex best;
        const auto matches = [&](const QModelIndex& index) {
            return index.isValid() && pathOf(index) == selectedPath;
        };
        if (const auto first = model_->indexOf(selected->kind, selected->name); matches(first)) {
            best = first;
        } else if (selected->group > 0) {
            best = model_->indexOfGroup(selected->letter, selected->group);
        }
        kept = best.isValid();
        view_->setCurrentIndex(best);
    }
    if (!kept) {
        view_->setCurrentIndex(model_->index(0, 0, {}));
    }
    rebuilding_ = false;
    emit currentChanged();
}

void TreePanel::clear() {
    rebuilding_ = true;
    model_->clear();
    rebuilding_ = false;
    layers_->setCurrentIndex(1);
    emit currentChanged();
}

std::optional<TreeItem> TreePanel::current() const {
    const auto index = view_->currentIndex();
    return index.isValid() ? std::optional(model_->item(index)) : std::nullopt;
}

bool TreePanel::selectIndex(const QModelIndex& index) {
    if (!index.isValid()) {
        return false;
    }
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
    return true;
}

bool TreePanel::select(char letter, int group) {
    return selectIndex(model_->indexOfGroup(letter, group));
}

bool TreePanel::selectStream(std::string_view name) {
    return selectIndex(model_->indexOf(TreeKind::Stream, name)) ||
           selectIndex(model_->indexOf(TreeKind::EmbeddedStream, name));
}

bool TreePanel::selectMeasurement(std::string_view name) {
    return selectIndex(model_->indexOf(TreeKind::Measurement, name));
}

// --- Opening and closing branches --------------------------------------------------------

void TreePanel::setBranch(const QModelIndex& index, bool expanded) {
    for (int row = 0; row < model_->rowCount(index); ++row) {
        const auto child = model_->index(row, 0, index);
        if (TreeModel::isBranch(model_->item(child).kind)) {
            setBranch(child, expanded);
        }
    }
    setExpanded(index, expanded);
}

void TreePanel::setExpanded(const QModelIndex& index, bool expanded) {
    if (index.isValid() && TreeModel::isBranch(model_->item(index).kind)) {
        view_->setExpanded(index, expanded);
    }
}

void TreePanel::expandAll() {
    expansion_ = {.general = true, .conversion = true, .radio = true, .tape = true};
    setBranch({}, true);
}

void TreePanel::collapseAll() {
    setBranch({}, false);
    expansion_ = {};
}

void TreePanel::expandBranch(bool withChildren) {
    const auto index = view_->currentIndex();
    if (withChildren && index.isValid()) {
        setBranch(index, true);
    } else {
        setExpanded(index, true);
    }
}

void TreePanel::collapseBranch(bool withChildren) {
    const auto index = view_->currentIndex();
    if (withChildren && index.isValid()) {
        setBranch(index, false);
    } else {
        setExpanded(index, false);
    }
}

void TreePanel::toggleBranch() {
    const auto index = view_->currentIndex();
    setExpanded(index, !view_->isExpanded(index));
}

// --- Menus and keys ------------------------------------------------------------------------

void TreePanel::choose(TreeAction action) {
    switch (action) {
        case TreeAction::ExpandBranch:
        case TreeAction::ExpandChildren:
            expandBranch(action == TreeAction::ExpandChildren);
            return;
        case TreeAction::CollapseBranch:
        case TreeAction::CollapseChildren:
            collapseBranch(action == TreeAction::CollapseChildren);
            return;
        default:
            break;
    }
    if (const auto item = current()) {
        emit requested(action, *item);
    }
}

void TreePanel::fillMenu(QMenu& menu) {
    const auto item = current();
    if (!item) {
        return;
    }
    const auto add = [&](TreeAction action, bool enabled) {
        auto* entry =
            menu.addAction(look::icon(toQString(rowOf(action).icon)), treeActionText(action), this,
                           [this, action] { choose(action); });
        entry->setEnabled(enabled);
        entry->setShortcut(keyOf(action));
        // The tree has its own way with the keys: here they are only told.
        entry->setShortcutContext(Qt::WidgetShortcut);
    };
    for (const auto action : treeActionsOf(item->kind)) {
        add(action, !available || available(action, *item));
    }
    if (item->isUnlinked) {
        add(TreeAction::CreateHome, !available || available(TreeAction::CreateHome, *item));
    }
    const auto index = view_->currentIndex();
    const bool hasChildren = model_->rowCount(index) > 0;
    // A stream is a branch only where something is embedded in it.
    if (!TreeModel::isBranch(item->kind) || (item->kind == TreeKind::Stream && !hasChildren)) {
        return;
    }
    if (!menu.isEmpty()) {
        menu.addSeparator();
    }
    add(TreeAction::ExpandBranch, hasChildren && !view_->isExpanded(index));
    add(TreeAction::ExpandChildren, hasChildren);
    add(TreeAction::CollapseBranch, hasChildren && view_->isExpanded(index));
    add(TreeAction::CollapseChildren, hasChildren);
}

void TreePanel::showMenu(const QPoint& globalPosition) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("treeMenu"));
    fillMenu(menu);
    if (!menu.isEmpty()) {
        menu.exec(globalPosition);
    }
}

void TreePanel::activateCurrent() {
    if (const auto item = current()) {
        emit activated(*item);
    }
}

bool TreePanel::handleKey(int key) {
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            activateCurrent();
            return true;
        case Qt::Key_F2:
            return chooseFirst(
                {TreeAction::Rename, TreeAction::RenameStream, TreeAction::RenameMeasurement});
        case Qt::Key_Delete:
            return chooseFirst({TreeAction::Delete, TreeAction::DeleteConversion});
        default:
            return false;
    }
}

/// Does the one of the actions that the item has. What cannot be renamed or deleted takes the key
/// and does nothing.
bool TreePanel::chooseFirst(std::initializer_list<TreeAction> actions) {
    const auto item = current();
    if (!item) {
        return false;
    }
    const auto offered = treeActionsOf(item->kind);
    for (const auto action : actions) {
        if (std::ranges::find(offered, action) != offered.end() &&
            (!available || available(action, *item))) {
            choose(action);
            return true;
        }
    }
    emit refused();
    return true;
}

bool TreePanel::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == view_ && event->type() == QEvent::KeyPress &&
        handleKey(static_cast<QKeyEvent*>(event)->key())) {
        return true;
    }
    if (receiver == view_ && event->type() == QEvent::ContextMenu) {
        const auto* asked = static_cast<QContextMenuEvent*>(event);
        if (asked->reason() == QContextMenuEvent::Keyboard) {
            // Where the item is, and not where the pointer happens to be.
            const auto place = view_->visualRect(view_->currentIndex());
            showMenu(view_->viewport()->mapToGlobal(place.bottomLeft()));
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

}  // namespace kavu
