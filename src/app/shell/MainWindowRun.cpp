// The commands that the main window does itself, and the ways into the editors.
#include "app/framework/DialogDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"
#include "app/framework/SelectDialogs.h"
#include "app/framework/ToolTip.h"
#include "app/shell/CommandPane.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/OptionDialogs.h"
#include "app/shell/TreePanel.h"
#include "application/AboutText.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/RecentFiles.h"
#include "core/text/Clock.h"
#include "groups/MeasurementNames.h"

#include <algorithm>

#include <QApplication>
#include <QMenu>
#include <QScopedValueRollback>

namespace kavu {

namespace {

constexpr int kMostPrecision = 12;

/// Of the dialogs of an entry of the tree; empty for those about what is selected.
std::string_view topicOf(TreeAction action) {
    switch (action) {
        case TreeAction::Rename:
        case TreeAction::Delete:
        case TreeAction::MakeCopy:
        case TreeAction::CreateNew:
        case TreeAction::Import:
        case TreeAction::RenameStream:
        case TreeAction::CreateHome:
            return "sources";
        default:
            return {};
    }
}

}  // namespace

bool MainWindow::openNamed(const std::string& name) {
    const bool opened = application_.documents().openNamed(ui_.get(), name);
    endCommand();
    return opened;
}

void MainWindow::installBuiltIn() {
    // The window shows what they have done when it is told of it.
    const auto onDocument = [this](bool (DocumentService::*act)(UserInterface*)) {
        return [this, act] { return (application_.documents().*act)(ui_.get()); };
    };
    // A save that has failed may have put its banner into the files: the pane shows it.
    const auto onSave = [this, onDocument](bool (DocumentService::*act)(UserInterface*)) {
        return [this, saved = onDocument(act)] {
            if (!saved()) {
                rebuildTree();
            }
        };
    };
    handlers_[CommandId::CreateNew] = onDocument(&DocumentService::create);
    handlers_[CommandId::Open] = onDocument(&DocumentService::open);
    handlers_[CommandId::Save] = onSave(&DocumentService::save);
    handlers_[CommandId::SaveAs] = onSave(&DocumentService::saveAs);
    handlers_[CommandId::Close] = onDocument(&DocumentService::close);
    handlers_[CommandId::Undo] = onDocument(&DocumentService::undo);
    handlers_[CommandId::Redo] = onDocument(&DocumentService::redo);
    handlers_[CommandId::Exit] = [this] { close(); };
    handlers_[CommandId::SampleRateOptions] = [this] { editSampleRates(); };
    handlers_[CommandId::Precision] = [this] { choosePrecision(); };
    handlers_[CommandId::UpdateOptions] = [this] { editUpdateOptions(); };
    handlers_[CommandId::Versions] = [this] { editVersions(); };
    handlers_[CommandId::ExpandAll] = [this] { tree_->expandAll(); };
    handlers_[CommandId::ExpandBranch] = [this] { tree_->expandBranch(false); };
    handlers_[CommandId::ExpandChildren] = [this] { tree_->expandBranch(true); };
    handlers_[CommandId::CollapseAll] = [this] { tree_->collapseAll(); };
    handlers_[CommandId::CollapseBranch] = [this] { tree_->collapseBranch(false); };
    handlers_[CommandId::CollapseChildren] = [this] { tree_->collapseBranch(true); };
    handlers_[CommandId::HelpIndex] = [this] { showHelp("index"); };
    handlers_[CommandId::HelpSelection] = [this] { showHelp(topicOfSelection()); };
    handlers_[CommandId::About] = [this] { showAbout(); };
    handlers_[CommandId::ShowMessages] = [this] { desk_->show(); };
    handlers_[CommandId::CheckDocument] = [this] { checkDocument(); };
    installAppearance();
}

/// The entries of which one is checked.
void MainWindow::installChoices() {
    // Kept in the file when the program ends.
    const auto choice = [this](const IntKey& key, int value) {
        return
            [this, &key, value] { application_.context().settings.overrideForThisRun(key, value); };
    };
    handlers_[CommandId::AddRoot] = choice(setting::kDatabaseAddsRoot, 1);
    handlers_[CommandId::DoNotAddRoot] = choice(setting::kDatabaseAddsRoot, 0);
    handlers_[CommandId::AddChildren] = choice(setting::kDatabaseAddsChildren, 1);
    handlers_[CommandId::DoNotAddChildren] = choice(setting::kDatabaseAddsChildren, 0);
    const auto backups = [this](bool on) {
        return [this, on] { application_.context().settings.set(setting::kCreateBackup, on); };
    };
    handlers_[CommandId::AllowSameNames] = [this] {
        application_.context().settings.set(setting::kCheckDuplicates, false);
        application_.measurementNames().setChecking(false, false);
    };
    handlers_[CommandId::RefuseSameNames] = [this] {
        application_.context().settings.set(setting::kCheckDuplicates, true);
        application_.measurementNames().setChecking(true, false);
    };
    handlers_[CommandId::MakeBackups] = backups(true);
    handlers_[CommandId::NoBackups] = backups(false);
    handlers_[CommandId::KeepComments] = [this] {
        application_.context().settings.set(setting::kKeepComments,
                                            action(CommandId::KeepComments)->isChecked());
    };
    handlers_[CommandId::SaveInPlace] = [this] {
        application_.context().settings.set(setting::kSaveInPlace,
                                            action(CommandId::SaveInPlace)->isChecked());
    };
}

void MainWindow::updateChecks() {
    const auto& settings = application_.context().settings;
    const auto choose = [this](bool first, CommandId yes, CommandId no) {
        action(first ? yes : no)->setChecked(true);
    };
    choose(settings.get(setting::kDatabaseAddsRoot) != 0, CommandId::AddRoot,
           CommandId::DoNotAddRoot);
    choose(settings.get(setting::kDatabaseAddsChildren) != 0, CommandId::AddChildren,
           CommandId::DoNotAddChildren);
    choose(!settings.get(setting::kCheckDuplicates), CommandId::AllowSameNames,
           CommandId::RefuseSameNames);
    choose(settings.get(setting::kCreateBackup), CommandId::MakeBackups, CommandId::NoBackups);
    action(CommandId::KeepComments)->setChecked(settings.get(setting::kKeepComments));
    action(CommandId::SaveInPlace)->setChecked(settings.get(setting::kSaveInPlace));
    switch (look::appearanceOf(settings.get(setting::kAppearance))) {
        case look::Appearance::Desktop:
            action(CommandId::AppearanceDesktop)->setChecked(true);
            break;
        case look::Appearance::Light:
            action(CommandId::AppearanceLight)->setChecked(true);
            break;
        case look::Appearance::Dark:
            action(CommandId::AppearanceDark)->setChecked(true);
            break;
    }
}

void MainWindow::fillRecentMenu() {
    recentMenu_->clear();
    const auto files =
        started_ ? offeredRecentFiles(application_.context().settings) : std::vector<std::string>();
    int number = 0;
    for (const auto& path : files) {
        // A "&" in a name is no key.
        auto name = toQString(fileNameOf(path)).replace(QLatin1Char('&'), QStringLiteral("&&"));
        auto* const entry =
            recentMenu_->addAction(QStringLiteral("&%1  %2").arg(++number).arg(name));
        entry->setToolTip(plainToolTip(toQString(path)));
        entry->setStatusTip(toQString(path));
        connect(entry, &QAction::triggered, this, [this, path] { openNamed(path); });
    }
    if (files.empty()) {
        recentMenu_->addAction(QStringLiteral("(none)"))->setEnabled(false);
    }
}

// --- options --------------------------------------------------------------------------------

void MainWindow::choosePrecision() {
    std::vector<std::string> choices;
    for (int digits = 0; digits <= kMostPrecision; ++digits) {
        choices.push_back(std::to_string(digits));
    }
    auto& settings = application_.context().settings;
    ChoiceDialog dialog("Enter Precision", choices, ui_->dialogParent());
    // What is kept is one more than what was chosen.
    dialog.select(settings.get(setting::kFloatPrecision) - 1);
    if (runDialog(door_, dialog) == QDialog::Accepted) {
        settings.set(setting::kFloatPrecision, dialog.choice() + 1);
    }
}

void MainWindow::editSampleRates() {
    auto& settings = application_.context().settings;
    SampleRateDialog dialog(settings.get(setting::kCheckSampleRates),
                            settings.get(setting::kSampleRatePrecision), ui_->dialogParent());
    if (runDialog(door_, dialog) == QDialog::Accepted) {
        settings.set(setting::kCheckSampleRates, dialog.calculate());
        settings.set(setting::kSampleRatePrecision, dialog.digits());
    }
}

void MainWindow::editUpdateOptions() {
    auto form = formContext();
    UpdateDialog dialog(form, ui_->dialogParent());
    if (runDialog(door_, dialog) == QDialog::Accepted) {
        dialog.store();
    }
}

void MainWindow::editVersions() {
    auto& context = application_.context();
    if (!mayEditVersionOptions(context, ui_.get())) {
        return;
    }
    VersionDialog dialog(readVersionOptions(context),
                         context.document.open ? context.document.version : 0, ui_->dialogParent());
    if (runDialog(door_, dialog) == QDialog::Accepted) {
        application_.documents().setVersions(ui_.get(), dialog.options());
    }
}

// --- help -----------------------------------------------------------------------------------

void MainWindow::showHelp(const std::string& topic) {
    // A modal window lets nothing be used but what belongs to it.
    auto* const modal = QApplication::activeModalWidget();
    QWidget* const owner = modal != nullptr ? modal : this;
    if (help_ == nullptr) {
        help_ = new HelpWindow(manualFolder(toBytes(QApplication::applicationDirPath())), owner);
        connect(help_, &QObject::destroyed, this, [this] { help_ = nullptr; });
    } else if (help_->parentWidget() != owner) {
        help_->setParent(owner, Qt::Window);
    }
    // A heading has its place only in a window that has been laid out.
    help_->show();
    help_->openTopic(topic);
    help_->raise();
    help_->activateWindow();
}

void MainWindow::showAbout() {
    InstalledParts parts;
    parts.reports = handlers_.contains(CommandId::ReportOptions);
    parts.database = handlers_.contains(CommandId::EditDatabase);
    showBox(ui_.get(),
            aboutText(parts) + "\n\n" + rightsText(application_.context().clock.now().year),
            "About KAVU-9", Icon::Information);
}

// --- the tree, the disk ---------------------------------------------------------------------

void MainWindow::openTreeItem(const TreeItem& item) {
    switch (item.kind) {
        case TreeKind::General:
            run(CommandId::General);
            return;
        case TreeKind::Hardware:
            run(CommandId::Hardware);
            return;
        case TreeKind::Pam:
            run(CommandId::Pam);
            return;
        case TreeKind::Stream:
        case TreeKind::EmbeddedStream:
            runTreeAction(TreeAction::EditStream, item);
            return;
        case TreeKind::Measurement:
            runTreeAction(TreeAction::EditConversion, item);
            return;
        case TreeKind::Source:
        case TreeKind::MultiplexDefinition:
        case TreeKind::Vendor:
            runTreeAction(TreeAction::Edit, item);
            return;
        case TreeKind::TransmissionHead:
        case TreeKind::RecorderHead:
        case TreeKind::OtherHead:
        case TreeKind::StreamsHead:
        case TreeKind::ConversionHead:
        case TreeKind::UnlinkedHead:
        case TreeKind::VendorHead:
            tree_->toggleBranch();  // a head has nothing to open but itself
            return;
    }
}

void MainWindow::runTreeAction(TreeAction treeAction, const TreeItem& item) {
    const auto handler = treeHandlers_.find(treeAction);
    if (handler == treeHandlers_.end() || !tree_->available(treeAction, item)) {
        return;
    }
    {
        const QScopedValueRollback topic(runningTopic_, topicOf(treeAction));
        handler->second(item);
    }
    endCommand();
}

void MainWindow::checkDisk() {
    // A dialog that goes away activates the window as well.
    if (!started_ || checkingDisk_ || door_.depth() > 0 || ui_->progressWindow() != nullptr) {
        return;
    }
    checkingDisk_ = true;
    auto& documents = application_.documents();
    if (documents.diskState() != DocumentService::DiskState::Same) {
        documents.checkDisk(ui_.get());
        updateActions();
    }
    checkingDisk_ = false;
}

}  // namespace kavu
