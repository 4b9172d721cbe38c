#include "app/shell/MainWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"
#include "app/framework/WindowCare.h"
#include "app/shell/CommandPane.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/NoteBar.h"
#include "app/shell/TreePanel.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "conversion/ConversionStore.h"
#include "core/document/DocumentHistory.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/RecentFiles.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "groups/DocumentTree.h"

#include <algorithm>

#include <QActionGroup>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

namespace kavu {

namespace {

constexpr int kMostFileCharacters = 60;
constexpr int kProgressCharacters = 10;

}  // namespace

MainWindow::MainWindow(Application& application, DialogDoor& door)
    : application_(application), door_(door), ui_(std::make_unique<QtInterface>(this, door)) {
    setObjectName(QStringLiteral("MainWindow"));
    setWindowIcon(look::icon(QStringLiteral("kavu")));
    setAcceptDrops(true);
    makeStatusBar();
    makeMenus();
    makeToolBar();
    connectHooks();
    desk_ = std::make_unique<MessageDesk>(*ui_, door_, ui_->hooks.goTo, *this);
    updateTitle();
    updateActions();
    resize(look::charactersWide(*this, 150), look::unit(*this) * 96);
}

MainWindow::~MainWindow() {
    if (started_) {
        // The document may be closed without a window to show it.
        listen(false);
    }
}

// --- parts ----------------------------------------------------------------------------------

void MainWindow::makeStatusBar() {
    auto* const bar = statusBar();
    const auto makePart = [&](const char* name, const QString& spoken) {
        auto* const label = new QLabel(bar);
        label->setObjectName(QLatin1String(name));
        label->setAccessibleName(spoken);
        label->setTextFormat(Qt::PlainText);
        return label;
    };
    fileLabel_ = makePart("statusFile", QStringLiteral("File"));
    fileLabel_->setMaximumWidth(look::charactersWide(*this, kMostFileCharacters));
    editionLabel_ = makePart("statusEdition", QStringLiteral("Edition"));
    statusLabel_ = makePart("statusText", QStringLiteral("Status"));
    progress_ = new QProgressBar(bar);
    progress_->setObjectName(QStringLiteral("statusProgress"));
    progress_->setAccessibleName(QStringLiteral("Progress"));
    progress_->setFixedWidth(look::charactersWide(*this, kProgressCharacters));
    progress_->setTextVisible(false);
    progress_->setVisible(false);
    bar->setContentsMargins(look::unit(*this), 0, 0, 0);
    bar->addWidget(fileLabel_);
    bar->addWidget(editionLabel_);
    bar->addWidget(statusLabel_, 1);
    bar->addPermanentWidget(progress_);
}

void MainWindow::addCommand(const CommandRow& row, QMenu& menu) {
    if (row.separatorBefore) {
        menu.addSeparator();
    }
    auto* const entry = menu.addAction(toQString(row.text));
    entry->setObjectName(QStringLiteral("command%1").arg(static_cast<int>(row.id)));
    if (!row.icon.empty()) {
        entry->setIcon(look::icon(toQString(row.icon)));
    }
    if (!row.keys.empty()) {
        entry->setShortcut(QKeySequence(toQString(row.keys), QKeySequence::PortableText));
    }
    entry->setCheckable(row.checkable);
    connect(entry, &QAction::triggered, this, [this, id = row.id] { run(id); });
    commands_[row.id] = entry;
}

void MainWindow::makeMenus() {
    std::map<MenuId, QMenu*> menus;
    std::map<std::string_view, QMenu*> submenus;
    std::map<std::string_view, QActionGroup*> groups;
    for (const auto& row : commandTable()) {
        auto*& menu = menus[row.menu];
        if (menu == nullptr) {
            menu = menuBar()->addMenu(toQString(menuTitle(row.menu)));
            menu->setObjectName(toQString(menuTitle(row.menu).substr(1)).toLower() +
                                QStringLiteral("Menu"));
            menu->menuAction()->setStatusTip(toQString(menuPrompt(row.menu)));
            menu->installEventFilter(this);
        }
        if (row.id == CommandId::Exit) {
            recentMenu_ = menu->addMenu(QStringLiteral("&Recent Files"));
            recentMenu_->setObjectName(QStringLiteral("recentMenu"));
            recentMenu_->setToolTipsVisible(true);
            recentMenu_->menuAction()->setStatusTip(
                QStringLiteral("Open one of the TMATS files that were open last"));
            connect(menu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
        }
        auto* into = menu;
        if (!row.submenu.empty()) {
            auto*& submenu = submenus[row.submenu];
            if (submenu == nullptr) {
                submenu = menu->addMenu(toQString(row.submenu));
                submenu->menuAction()->setStatusTip(toQString(submenuPrompt(row.submenu)));
                groups[row.submenu] = new QActionGroup(this);
            }
            into = submenu;
        }
        addCommand(row, *into);
        if (!row.submenu.empty()) {
            groups[row.submenu]->addAction(commands_[row.id]);
        }
    }
    installBuiltIn();
    installChoices();
}

void MainWindow::makeToolBar() {
    auto* const bar = addToolBar(QStringLiteral("Commands"));
    bar->setObjectName(QStringLiteral("commands"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    const int size = look::unit(*this) * 5 / 2;
    bar->setIconSize({size, size});
    std::optional<MenuId> last;
    for (const auto& row : commandTable()) {
        if (!row.inToolBar) {
            continue;
        }
        if (last && *last != row.menu) {
            bar->addSeparator();
        }
        last = row.menu;
        bar->addAction(commands_[row.id]);
        bar->widgetForAction(commands_[row.id])
            ->setObjectName(QStringLiteral("tool%1").arg(static_cast<int>(row.id)));
    }
}

void MainWindow::makeDocumentArea() {
    auto* const area = new QWidget(this);
    auto* const column = new QVBoxLayout(area);
    column->setContentsMargins({});
    column->setSpacing(0);
    noteBar_ = new NoteBar(area);
    splitter_ = new QSplitter(area);
    splitter_->setObjectName(QStringLiteral("splitter"));
    splitter_->setChildrenCollapsible(false);
    tree_ = new TreePanel(readTreeExpansion(application_.context().settings), splitter_);
    pane_ = new CommandPane(application_, splitter_);
    splitter_->addWidget(tree_);
    splitter_->addWidget(pane_);
    splitter_->setSizes({look::charactersWide(*this, 50), look::charactersWide(*this, 90)});
    splitter_->setStretchFactor(1, 1);
    column->addWidget(noteBar_);
    column->addWidget(splitter_, 1);
    setCentralWidget(area);
    connect(tree_, &TreePanel::activated, this, &MainWindow::openTreeItem);
    connect(tree_, &TreePanel::requested, this, &MainWindow::runTreeAction);
    connect(tree_, &TreePanel::refused, this, [this] { ui_->beep(); });
    connect(tree_, &TreePanel::currentChanged, this, [this] {
        const auto item = tree_->current();
        facts_.treeItemSelected = item.has_value();
        updateActions();
        if (item) {
            pane_->showItem(*item);
        } else {
            pane_->clear();
        }
    });
    tree_->available = [this](TreeAction action, const TreeItem& item) {
        // An editor finds its group by the name.
        const bool isNamed =
            !item.name.empty() || item.group == 0 || item.letter == 'G' || item.letter == 'H';
        return isNamed && treeHandlers_.contains(action);
    };
}

void MainWindow::connectHooks() {
    auto& hooks = ui_->hooks;
    hooks.statusText = [this](const std::string& text) { showStatus(text); };
    hooks.progressBar = [this](double percent) {
        progress_->setVisible(percent >= 0);
        progress_->setValue(static_cast<int>(std::clamp(percent, 0.0, 100.0)));
    };
    hooks.note = [this](const std::string& text) { notes_.push_back(text); };
    hooks.goTo = [this](const Finding& finding) { return goTo(finding.place); };
    hooks.report = [this](const MessageReport& report) { return desk_->take(report); };
}

// --- state ----------------------------------------------------------------------------------

void MainWindow::installEditor(CommandId id, std::function<void()> editor) {
    handlers_[id] = std::move(editor);
    updateActions();
}

void MainWindow::installTreeAction(TreeAction treeAction,
                                   std::function<void(const TreeItem&)> edit) {
    treeHandlers_[treeAction] = std::move(edit);
}

QAction* MainWindow::action(CommandId id) const {
    const auto found = commands_.find(id);
    return found == commands_.end() ? nullptr : found->second;
}

void MainWindow::run(CommandId id) {
    const auto handler = handlers_.find(id);
    const auto* const entry = action(id);
    if (handler == handlers_.end() || entry == nullptr || !entry->isEnabled()) {
        return;
    }
    {
        const QScopedValueRollback topic(runningTopic_, topicOf(commandRow(id)));
        handler->second();
    }
    endCommand();
}

/// What a command has left to be told, once it has ended.
void MainWindow::endCommand() {
    showStatus({});
    desk_->endOpening();
    showNotes();
    offerEdition();
    updateActions();
    updateChecks();
}

/// The two entries name what they would undo and do again.
void MainWindow::updateHistoryEntries() {
    if (!started_) {
        return;
    }
    auto& facts = facts_.document;
    application_.documents().updateHistory(facts);
    const auto name = [this](CommandId id, const std::string& operation) {
        auto text = toQString(commandRow(id).text);
        if (!operation.empty()) {
            // A "&" of a name is no key.
            text += QLatin1Char(' ') +
                    toQString(operation).replace(QLatin1Char('&'), QStringLiteral("&&"));
        }
        action(id)->setText(text);
    };
    name(CommandId::Undo, facts.undoName);
    name(CommandId::Redo, facts.redoName);
}

void MainWindow::updateActions() {
    updateHistoryEntries();
    facts_.databaseOn = started_ && application_.context().settings.get(setting::kDatabaseEnabled);
    for (const auto& [id, entry] : commands_) {
        const bool installed = handlers_.contains(id);
        entry->setEnabled(installed && windowAllows(id, facts_));
        const auto prompt = installed ? commandPrompt(id) : promptWithoutEditor(id);
        entry->setStatusTip(toQString(prompt));
        auto name = entry->text().remove(QLatin1Char('&'));
        if (!entry->shortcut().isEmpty()) {
            name +=
                QStringLiteral(" (%1)").arg(entry->shortcut().toString(QKeySequence::NativeText));
        }
        entry->setToolTip(installed ? name : name + toQString(kNotAvailable));
    }
}

void MainWindow::updateTitle() {
    QString title = QStringLiteral("KAVU-9 - TMATS Editor");
    QString file;
    QString edition;
    bool changed = false;
    if (started_ && application_.context().document.open) {
        const auto& document = application_.context().document;
        file = document.path.empty() ? QStringLiteral("New TMATS File")
                                     : toQString(fileNameOf(document.path));
        edition = toQString(formatPrintf("106-%2.2d", editionNumber(document.version)));
        title += QStringLiteral(" %1 (%2)").arg(file, edition);
        title += document.readOnly ? QStringLiteral(" - Read-Only") : QString();
        changed = document.changed || document.created;
        fileLabel_->setToolTip(plainToolTip(toQString(document.path)));
    }
    // A "[*]" of a file's own name would be taken for the mark.
    title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    setWindowTitle(title + QStringLiteral("[*]"));
    setWindowModified(changed);
    fileLabel_->setText(file);
    fileLabel_->setVisible(!file.isEmpty());
    editionLabel_->setText(edition);
    editionLabel_->setVisible(!edition.isEmpty());
}

void MainWindow::rebuildTree() {
    auto& context = application_.context();
    facts_ = {};
    if (!context.document.open) {
        tree_->clear();
        pane_->clear();
        updateActions();
        return;
    }
    const ProgressScope progress(ui_.get(), ProgressMode::WithoutCancel, false);
    ui_->setProgressText("Rebulding Tree View");
    const auto tree = readDocumentTree(context, ui_.get());
    facts_.document = factsOf(context, tree);
    const auto branch = [this](CommandId id) { return windowAllows(id, facts_); };
    tree_->rebuild(
        tree, application_.conversions().definitionNames(-1).value_or(std::vector<std::string>()),
        {.general = branch(CommandId::General),
         .conversion = branch(CommandId::Conversion),
         .hardware = branch(CommandId::Hardware),
         .pam = branch(CommandId::Pam)});
    facts_.treeItemSelected = tree_->current().has_value();
    if (const auto item = tree_->current()) {
        pane_->showItem(*item);
    } else {
        pane_->clear();
    }
    updateActions();
}

void MainWindow::listen(bool on) {
    auto& history = application_.context().history;
    if (on) {
        history.addListener(*this);
    } else {
        history.removeListener(*this);
    }
}

void MainWindow::documentChanged(const DocumentChange& change) {
    const auto& context = application_.context();
    if (context.history.isInOperation()) {
        return;  // a part of it was taken back; its end is told as well
    }
    followDocument(change);
    facts_.document.open = context.document.open;
    facts_.document.version = context.document.version;
    updateTitle();
    updateActions();
    // A save has changed what the pane shows, and an open editor what the tree does.
    rebuildTree();
}

DocumentContext* MainWindow::document() {
    return facts_.document.open ? &application_.context() : nullptr;
}

FormContext MainWindow::formContext() {
    auto form = kavu::formContext(*ui_, door_, application_.context());
    form.help = [this](const std::string& topic) { showHelp(topic); };
    form.sampleRates = [this] { editSampleRates(); };
    form.reports = reports_;
    return form;
}

// --- events ---------------------------------------------------------------------------------

/// An open menu takes all keys: F1 on one of its entries opens the page about that entry.
bool MainWindow::eventFilter(QObject* receiver, QEvent* event) {
    auto* const menu = qobject_cast<QMenu*>(receiver);
    const bool isHelp = menu != nullptr && event->type() == QEvent::KeyPress &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1;
    if (!isHelp) {
        return QMainWindow::eventFilter(receiver, event);
    }
    const auto chosen = std::ranges::find_if(
        commands_, [menu](const auto& each) { return each.second == menu->activeAction(); });
    menu->close();
    showHelp(std::string(chosen == commands_.end() ? "index" : topicOf(commandRow(chosen->first))));
    return true;
}

/// A dialog without help of its own is part of the command that has opened it.
void MainWindow::customEvent(QEvent* event) {
    if (event->type() == HelpRequest::kind()) {
        const auto& topic = static_cast<HelpRequest*>(event)->topic();
        showHelp(!topic.empty()          ? topic
                 : runningTopic_.empty() ? topicOfSelection()
                                         : std::string(runningTopic_));
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (quitting_ || (!beginning_ && quit())) {
        event->accept();
    } else {
        event->ignore();
    }
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        checkDisk();
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const auto urls = event->mimeData()->urls();
    if (door_.depth() == 0 && urls.size() == 1 && urls.front().isLocalFile()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const auto urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.front().isLocalFile()) {
        event->acceptProposedAction();
        openNamed(toBytes(urls.front().toLocalFile()));
    }
}

}  // namespace kavu
