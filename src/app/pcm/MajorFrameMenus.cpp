#include "app/framework/QtText.h"
#include "app/pcm/MajorFrameFind.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/MeasurementList.h"
#include "core/talk/ProfileSettings.h"
#include "groups/MeasurementNames.h"
#include "pcm/edit/FrameEditFilter.h"

#include <algorithm>

#include <QAction>
#include <QActionGroup>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

namespace kavu {

namespace {

constexpr int kTaggedSince = 2011;
constexpr const char* kNotThere = "Not available in this program";

void enableStep(QAction& action, bool isThere) {
    action.setEnabled(isThere);
    if (!isThere) {
        action.setToolTip(QLatin1String(kNotThere));
    }
}

}  // namespace

QAction* MajorFrameWindow::addEntry(QMenu& menu, const char* name, const QString& text,
                                    const std::function<void()>& run, const QKeySequence& keys) {
    auto* const action = menu.addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [run] { run(); });
    return action;
}

QAction* MajorFrameWindow::addStep(QMenu& menu, const char* name, const QString& text,
                                   const PcmFormSteps::Edit& step, const char* title) {
    auto* const action = addEntry(menu, name, text, [this, &step, title] { runEdit(step, title); });
    enableStep(*action, static_cast<bool>(step));
    return action;
}

QAction* MajorFrameWindow::addWordStep(QMenu& menu, const char* name, const QString& text,
                                       const PcmFormSteps::EditWords& step, const char* title) {
    auto* const action =
        addEntry(menu, name, text, [this, &step, title] { runWords(step, title); });
    enableStep(*action, static_cast<bool>(step));
    return action;
}

void MajorFrameWindow::addPair(QMenu& menu, const char* name, const QString& on, const QString& off,
                               bool isOn, const std::function<void(bool)>& change) {
    auto* const group = new QActionGroup(this);
    group->setObjectName(QLatin1String(name));
    for (const bool value : {true, false}) {
        auto* const action = menu.addAction(value ? on : off);
        action->setObjectName(QLatin1String(name) +
                              (value ? QStringLiteral("On") : QStringLiteral("Off")));
        action->setCheckable(true);
        action->setChecked(value == isOn);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [change, value] { change(value); });
    }
}

QMenu* MajorFrameWindow::makeEditMenu() {
    auto* const menu = menus_->addMenu(QStringLiteral("&Edit"));
    undoAction_ = addEntry(
        *menu, "undo", QStringLiteral("&Undo"), [this] { undo(); }, QKeySequence::Undo);
    redoAction_ = addEntry(*menu, "redo", QStringLiteral("&Redo"), [this] { redo(); });
    // Which of the two is the usual one depends on the desktop.
    redoAction_->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    menu->addSeparator();
    addBlockEntries(*menu);
    menu->addSeparator();
    editAction_ = addEntry(*menu, "editCell", QStringLiteral("&Edit Data Word..."), [this] {
        const auto at = areas_->view().selected();
        editCell(at.word, at.frame);
    });
    addEntry(*menu, "editSubframe", QStringLiteral("Su&bframe Or ID Counter..."), [this] {
        if (const auto at = areas_->view().selected()) {
            editLabel(at.word);
        }
    })->setEnabled(steps_.editSubframeAt && steps_.createSubframeAt);
    menu->addSeparator();
    addFrameEntries(*menu);
    return menu;
}

void MajorFrameWindow::addBlockEntries(QMenu& menu) {
    const auto add = [&](const char* name, const QString& text, const std::function<void()>& run,
                         const QKeySequence& keys) {
        auto* const action = addEntry(menu, name, text, run, keys);
        blockActions_.push_back(action);
        return action;
    };
    add(
        "cut", QStringLiteral("Cut"), [this] { cutBlock(); }, QKeySequence::Cut);
    add(
        "copy", QStringLiteral("&Copy"), [this] { copyBlock(); }, QKeySequence::Copy);
    add(
        "paste", QStringLiteral("&Paste"), [this] { pasteBlock(); }, QKeySequence::Paste);
    add(
        "fillRight", QStringLiteral("Fill Ri&ght..."), [this] { fillBlock(FillDirection::Right); },
        QKeySequence(Qt::CTRL | Qt::Key_R));
    add(
        "fillDown", QStringLiteral("Fill Do&wn..."), [this] { fillBlock(FillDirection::Down); },
        QKeySequence(Qt::CTRL | Qt::Key_D));
    deleteAction_ = addEntry(
        menu, "deleteCell", QStringLiteral("&Delete..."), [this] { deleteCell(); },
        QKeySequence::Delete);
    menu.addSeparator();
    add(
        "selectWord", QStringLiteral("Select Whole Word"),
        [this] { areas_->selectWord(areas_->view().selected().word); },
        QKeySequence(Qt::CTRL | Qt::Key_Space));
    add(
        "selectFrame", QStringLiteral("Select Whole Frame"),
        [this] { areas_->selectFrame(areas_->view().selected().frame); },
        QKeySequence(Qt::SHIFT | Qt::Key_Space));
    addEntry(
        menu, "selectAll", QStringLiteral("Select &All"), [this] { areas_->selectAll(); },
        QKeySequence::SelectAll);
}

void MajorFrameWindow::addFrameEntries(QMenu& menu) {
    addStep(menu, "generate", QStringLiteral("&Initialize Undefined Measurements..."),
            steps_.generateDataWords, "Initialize Measurements");
    addStep(menu, "sectionComment", QStringLiteral("Measurement &Section Comment Field..."),
            steps_.editSectionComment, "Edit Comment");
    if (hasFilterList(format_)) {
        addStep(menu, "filterList",
                QStringLiteral("Measurement Selected &Filter/Overwrite List..."),
                steps_.editFilterList, "Edit Filter List");
    }
    if (format_.edition() >= kTaggedSince) {
        addStep(menu, "taggedData", QStringLiteral("&Tagged Data Definitions..."),
                steps_.editTaggedData, "Edit Tagged Data");
    }
    addStep(menu, "conversions", QStringLiteral("Data C&onversion Information..."),
            steps_.editConversions, "Edit Conversion");
    menu.addSeparator();
    addWordEntries(menu, "");
    menu.addSeparator();
    addEntry(
        menu, "closeDisplay", QStringLiteral("Close"), [this] { accept(); },
        QKeySequence(Qt::CTRL | Qt::Key_W));
}

void MajorFrameWindow::addWordEntries(QMenu& menu, const std::string& ofMenu) {
    const auto name = [&](const char* entry) { return ofMenu + entry; };
    addWordStep(menu, name("insertFwps").c_str(), QStringLiteral("I&nsert New FWPs..."),
                steps_.insertFwps, "Insert Words");
    addWordStep(menu, name("deleteFwps").c_str(), QStringLiteral("De&lete FWPs..."),
                steps_.deleteFwps, "Delete Words");
    addWordStep(menu, name("moveFwps").c_str(), QStringLiteral("&Move FWPs..."), steps_.moveFwps,
                "Move Words");
}

/// The menus of the labels and legends, with what concerns whole words and frames.
void MajorFrameWindow::makeStripMenus() {
    wordMenu_ = new QMenu(this);
    wordMenu_->setObjectName(QStringLiteral("wordMenu"));
    addEntry(*wordMenu_, "wordSelect", QStringLiteral("Select &Whole Word"),
             [this] { areas_->selectWord(areas_->view().selected().word); });
    addEntry(*wordMenu_, "wordSubframe", QStringLiteral("Su&bframe Or ID Counter..."), [this] {
        if (const auto at = areas_->view().selected()) {
            editLabel(at.word);
        }
    })->setEnabled(steps_.editSubframeAt && steps_.createSubframeAt);
    wordMenu_->addSeparator();
    addWordEntries(*wordMenu_, "word_");
    frameMenu_ = new QMenu(this);
    frameMenu_->setObjectName(QStringLiteral("frameMenu"));
    addEntry(*frameMenu_, "frameSelect", QStringLiteral("Select &Whole Frame"),
             [this] { areas_->selectFrame(menuFrame_); });
    addEntry(*frameMenu_, "frameGoTo", QStringLiteral("&Go To This Frame"),
             [this] { areas_->goToCell(std::max(0, areas_->view().selected().word), menuFrame_); });
    addEntry(*frameMenu_, "frameCopy", QStringLiteral("&Copy This Frame"), [this] {
        areas_->selectFrame(menuFrame_);
        copyBlock();
    });
}

void MajorFrameWindow::makeSearchMenu() {
    auto* const menu = menus_->addMenu(QStringLiteral("&Search"));
    addEntry(
        *menu, "find", QStringLiteral("&Find..."), [this] { find_->begin(); }, QKeySequence::Find);
    addEntry(
        *menu, "findNextEntry", QStringLiteral("Find &Next"), [this] { find_->find(true); },
        QKeySequence(Qt::Key_F3));
    addEntry(
        *menu, "findPreviousEntry", QStringLiteral("Find &Previous"),
        [this] { find_->find(false); }, QKeySequence(Qt::SHIFT | Qt::Key_F3));
    menu->addSeparator();
    addEntry(
        *menu, "goTo", QStringLiteral("&Go To FWP/FN"),
        [this] {
            fwp_->setFocus(Qt::ShortcutFocusReason);
            fwp_->selectAll();
        },
        QKeySequence(Qt::CTRL | Qt::Key_G));
    addEntry(*menu, "goToMeasurement", QStringLiteral("Go To &Measurement Name..."),
             [this] { goToMeasurement(); });
    addEntry(*menu, "goToSubframe", QStringLiteral("Go To &Subframe Name..."),
             [this] { goToSubframe(); });
    menu->addSeparator();
    addEntry(
        *menu, "goToList", QStringLiteral("&List of Measurements"),
        [this] { list_->focusFilter(); }, QKeySequence(Qt::CTRL | Qt::Key_L));
}

void MajorFrameWindow::makeViewMenu() {
    auto* const menu = menus_->addMenu(QStringLiteral("&View"));
    for (const int percent : {25, 50, 75, 100}) {
        addEntry(*menu, qPrintable(QStringLiteral("zoom%1").arg(percent)),
                 QStringLiteral("%1%").arg(percent),
                 [this, percent] { setCellWidth(widthOfPercent(percent)); });
    }
    addEntry(
        *menu, "zoomIn", QStringLiteral("Zoom &In By 10%"),
        [this] { setCellWidth(areas_->view().cellWidth() + kZoomStep); }, QKeySequence::ZoomIn);
    addEntry(
        *menu, "zoomOut", QStringLiteral("Zoom &Out By 10%"),
        [this] { setCellWidth(areas_->view().cellWidth() - kZoomStep); }, QKeySequence::ZoomOut);
    menu->addSeparator();
    auto& display = areas_->display();
    addPair(
        *menu, "highlightEu", QStringLiteral("&Highlight Measurement Names With EU Definitions"),
        QStringLiteral("&Don't Highlight Measurement Names"), display.highlightEu, [this](bool on) {
            areas_->display().highlightEu = on;
            form_.settings.set(setting::kHighlightConversions, on);
            showOptions();
        });
    menu->addSeparator();
    addPair(*menu, "depthOnly", QStringLiteral("Only Show Cells &To Depth Of Word Location"),
            QStringLiteral("Show &All Cells In Major Frame"), !display.showAllCells,
            [this](bool on) {
                areas_->display().showAllCells = !on;
                form_.settings.set(setting::kShowAllCells, !on);
                showOptions();
            });
    auto* const colours = menu->addMenu(QStringLiteral("&Colours"));
    colours->setObjectName(QStringLiteral("coloursMenu"));
    addPair(*colours, "calmColours", QStringLiteral("Ca&lm"), QStringLiteral("Cla&ssic"),
            display.colours == FrameColours::Calm, [this](bool calm) { setColours(calm); });
}

void MajorFrameWindow::setColours(bool calm) {
    areas_->display().colours = calm ? FrameColours::Calm : FrameColours::Classic;
    form_.settings.set(setting::kDisplayColours, calm ? 1 : 0);
    showOptions();
}

void MajorFrameWindow::makeDatabaseMenu() {
    auto* const menu = menus_->addMenu(QStringLiteral("&Database"));
    menu->setObjectName(QStringLiteral("databaseMenu"));
    menu->menuAction()->setEnabled(!steps_.databaseEntries.empty());
    databaseAction_ = addEntry(*menu, "viewDatabase", QStringLiteral("&View Measurement Database"),
                               [this] { showDatabase(databaseAction_->isChecked()); });
    databaseAction_->setCheckable(true);
    databaseAction_->setEnabled(static_cast<bool>(steps_.makeDatabasePane));
    for (std::size_t i = 0; i < steps_.databaseEntries.size(); ++i) {
        const auto& entry = steps_.databaseEntries[i];
        addStep(*menu, qPrintable(QStringLiteral("database%1").arg(i)), toQString(entry.text),
                entry.run, "Database");
    }
    if (!steps_.databaseEntries.empty() && steps_.makeDatabasePane &&
        form_.settings.get(setting::kViewDatabase)) {
        databaseAction_->setChecked(true);
        showDatabase(true);
    }
}

void MajorFrameWindow::makeOptionsMenu() {
    auto* const reports = menus_->addMenu(QStringLiteral("&Reports"));
    addStep(*reports, "reports", QStringLiteral("&Generate Reports..."), steps_.generateReports,
            "Reports");
    auto* const menu = menus_->addMenu(QStringLiteral("&Options"));
    if (format_.edition() < kTaggedSince) {
        addStep(*menu, "definitionMode", QStringLiteral("&Measurement Definition Options..."),
                steps_.chooseDefinitionMode, "Definition Options");
        menu->addSeparator();
    }
    const auto* const names = steps_.edit.names;
    addPair(*menu, "sameNames",
            QStringLiteral("&Allow the same measurement name in different streams"),
            QStringLiteral("Do &not allow the same measurement name in different streams"),
            names == nullptr || !names->checking(), [this](bool allow) { allowSameNames(allow); });
    findChild<QActionGroup*>(QStringLiteral("sameNames"))->setEnabled(names != nullptr);
    reports->setToolTipsVisible(true);
    menu->setToolTipsVisible(true);
    auto* const help = menus_->addMenu(QStringLiteral("&Help"));
    auto* const topic = addEntry(*help, "displayHelp", QStringLiteral("&PCM Format Display"),
                                 [this] { form_.help(toBytes(objectName())); });
    topic->setEnabled(static_cast<bool>(form_.help));
}

void MajorFrameWindow::makeMenus() {
    placeMenu_ = makeEditMenu();
    placeMenu_->setToolTipsVisible(true);
    makeStripMenus();
    makeSearchMenu();
    makeViewMenu();
    makeDatabaseMenu();
    makeOptionsMenu();
    updateMenus();
}

void MajorFrameWindow::updateMenus() {
    const auto at = areas_->view().selected();
    const auto name = [](QAction* action, const char* verb, bool can, const std::string& edit) {
        action->setEnabled(can);
        action->setText(toQString(edit.empty() || !can ? verb : verb + (" " + edit)));
    };
    name(undoAction_, "&Undo", undo_.canUndo(), undo_.undoName());
    name(redoAction_, "&Redo", undo_.canRedo(), undo_.redoName());
    for (auto* const action : blockActions_) {
        action->setEnabled(static_cast<bool>(at));
    }
    editAction_->setEnabled(static_cast<bool>(at));
    if (steps_.databaseIsOn) {
        findChild<QMenu*>(QStringLiteral("databaseMenu"))
            ->menuAction()
            ->setEnabled(steps_.databaseIsOn());
    }
    const auto block = areas_->view().block();
    deleteAction_->setEnabled(at && (!(block.first == block.last) ||
                                     !areas_->display().measurementsAt(at).empty() ||
                                     areas_->display().asyncAt(at) > 0));
}

}  // namespace kavu
