#include "app/framework/QtText.h"
#include "app/pcm/MajorFrameNewCell.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/MeasurementList.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "groups/MeasurementNames.h"
#include "pcm/edit/MeasurementEdit.h"
#include "pcm/structure/AsyncEdit.h"

#include <QAction>
#include <QSplitter>

namespace kavu {

namespace {

constexpr int kSyncTitle = title::kError;
constexpr std::size_t kLongestName = 32;
/// From this edition on a place of any word may become an async stream.
constexpr int kAsyncAnywhere = 2011;

}  // namespace

// --- a place ----------------------------------------------------------------------------------

void MajorFrameWindow::editCell(int word, int frame) {
    const auto type = format_.wordType(word);
    if (type == WordType::Sync) {
        form_.messages.show(&form_.ui, 230, kSyncTitle, kErrorBox);
        return;
    }
    const int fn = type == WordType::IdCounter ? 1 : frame;
    if (!areas_->display().measurementsAt({word, fn}).empty()) {
        editPlace(steps_.editMeasurementAt, word, fn, false, "Edit Measurement");
        return;
    }
    if (areas_->display().asyncAt({word, fn}) > 0) {
        editPlace(steps_.editAsyncAt, word, fn, true, "Edit Async Stream");
        return;
    }
    std::optional<NewCell> choice = NewCell::Measurement;
    if (format_.edition() >= kAsyncAnywhere ||
        (format_.asyncCount() < kMostAsyncFormats && type == WordType::Minor)) {
        choice = chooseNewCell(form_, this, word, fn);
    }
    if (choice == NewCell::Measurement) {
        editPlace(steps_.editMeasurementAt, word, fn, false, "Edit Measurement");
    } else if (choice == NewCell::Async) {
        editPlace(steps_.editAsyncAt, word, fn, true, "Edit Async Stream");
    }
}

void MajorFrameWindow::editLabel(int word) {
    const auto type = format_.wordType(word);
    if (type == WordType::Sync) {
        form_.messages.show(&form_.ui, 230, kSyncTitle, kErrorBox);
        return;
    }
    const auto* const subframe = format_.subframeOfWord(word);
    // From the newest edition on every word has a hidden subframe, which is not to be edited.
    const bool isThere = type == WordType::IdCounter || (subframe != nullptr && !subframe->hidden);
    const char* const title = type == WordType::IdCounter ? "Edit ID Counter"
                              : isThere                   ? "Edit Subframe"
                                                          : "New Subframe";
    editPlace(isThere ? steps_.editSubframeAt : steps_.createSubframeAt, word, 1, false, title);
}

void MajorFrameWindow::editPlace(const PcmFormSteps::EditPlace& step, int word, int frame,
                                 bool always, const char* title) {
    if (!step) {
        form_.ui.beep();
        return;
    }
    const bool accepted = step(*this, word, frame);
    edited(accepted || always, title);
}

void MajorFrameWindow::deleteCell() {
    const auto at = areas_->view().selected();
    if (!at) {
        return;
    }
    if (const auto block = areas_->view().block(); !(block.first == block.last)) {
        edited(deleteBlock(format_, &form_.ui, steps_.edit, selectedArea()), "Delete Block");
        return;
    }
    const auto names = areas_->display().measurementsAt(at);
    const int record = areas_->display().asyncAt(at);
    if (names.empty()) {
        if (record > 0) {
            edited(deleteAsyncFormat(format_, &form_.ui, record), "Delete Async Stream");
        }
        return;
    }
    std::size_t index = 0;
    if (names.size() > 1) {
        const int choice = form_.ui.chooseFromList("Delete Measurement", names);
        if (choice < 0 || static_cast<std::size_t>(choice) >= names.size()) {
            return;
        }
        index = static_cast<std::size_t>(choice);
    }
    edited(deleteMeasurement(format_, &form_.ui, steps_.edit, names[index]), "Delete Measurement");
}

// --- the stream -------------------------------------------------------------------------------

void MajorFrameWindow::runEdit(const PcmFormSteps::Edit& step, const char* title) {
    if (step) {
        edited(step(*this), title);
    }
}

void MajorFrameWindow::runWords(const PcmFormSteps::EditWords& step, const char* title) {
    if (step) {
        const auto area = selectedArea();
        const bool isSelected = static_cast<bool>(areas_->view().selected());
        edited(step(*this,
                    isSelected ? SelectedWords{area.firstWord, area.lastWord} : SelectedWords{}),
               title);
    }
}

void MajorFrameWindow::edited(bool accepted, std::string_view title) {
    // An operation that was left half way has changed something, too.
    const bool changed = undo_.commit(accepted, title);
    displayChanged_ = displayChanged_ || changed || accepted;
    const auto cut = areas_->view().cut;
    streamChanged();
    if (!changed && !accepted) {
        areas_->markCut(cut);
    }
}

void MajorFrameWindow::streamChanged() {
    readConversions();
    list_->streamChanged();
    areas_->streamChanged();
    showSelection();
}

void MajorFrameWindow::undo() {
    if (undo_.canUndo()) {
        (void)undo_.undo(&form_.ui);
        displayChanged_ = true;
        streamChanged();
    }
}

void MajorFrameWindow::redo() {
    if (undo_.canRedo()) {
        (void)undo_.redo(&form_.ui);
        displayChanged_ = true;
        streamChanged();
    }
}

// --- searches ---------------------------------------------------------------------------------

void MajorFrameWindow::goToMeasurement() {
    const auto name = form_.ui.enterText(
        {"Go To Measurement Name", "Find Measurement Name:", list_->current(), kLongestName});
    if (!name) {
        return;
    }
    if (const auto at = findMeasurement(format_, *name)) {
        areas_->goToCell(at.word, at.frame);
    } else {
        form_.messages.show(&form_.ui, 229, title::kError, kErrorBox, "Measurement");
    }
}

/// The name of the subframe or the counter of the selected word.
std::string MajorFrameWindow::subframeHere() const {
    const int word = areas_->view().selected().word;
    const auto* const counter = format_.idCounterOfWord(word);
    const auto* const subframe = format_.subframeOfWord(word);
    if (subframe != nullptr) {
        return subframe->hidden ? std::string() : subframe->name.str();
    }
    return counter != nullptr && format_.wordType(word) == WordType::IdCounter ? counter->name.str()
                                                                               : std::string();
}

void MajorFrameWindow::goToSubframe() {
    const auto name = form_.ui.enterText(
        {"Go To Subframe Name", "Enter Subframe Name", subframeHere(), kLongestName});
    if (!name) {
        return;
    }
    if (const auto at = findSubframeWord(format_, *name)) {
        areas_->goToCell(at.word, at.frame);
    } else {
        form_.messages.show(&form_.ui, 229, title::kError, kErrorBox, "Subframe");
    }
}

// --- options ----------------------------------------------------------------------------------

void MajorFrameWindow::allowSameNames(bool allow) {
    if (steps_.edit.names != nullptr) {
        steps_.edit.names->setChecking(!allow, true);
    }
}

void MajorFrameWindow::showDatabase(bool shown) {
    if (shown && database_ == nullptr && steps_.makeDatabasePane) {
        database_ = steps_.makeDatabasePane(*splitter_);
    }
    if (database_ != nullptr) {
        database_->setVisible(shown);
    }
}

}  // namespace kavu
