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
#include <QClipboard>
#include <QGuiApplication>
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
        editPlace(steps_.editMeasurementAt, word, fn, false);
        return;
    }
    if (areas_->display().asyncAt({word, fn}) > 0) {
        editPlace(steps_.editAsyncAt, word, fn, true);
        return;
    }
    std::optional<NewCell> choice = NewCell::Measurement;
    if (format_.edition() >= kAsyncAnywhere ||
        (format_.asyncCount() < kMostAsyncFormats && type == WordType::Minor)) {
        choice = chooseNewCell(form_, this, word, fn);
    }
    if (choice == NewCell::Measurement) {
        editPlace(steps_.editMeasurementAt, word, fn, false);
    } else if (choice == NewCell::Async) {
        editPlace(steps_.editAsyncAt, word, fn, true);
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
    editPlace(isThere ? steps_.editSubframeAt : steps_.createSubframeAt, word, 1, false);
}

void MajorFrameWindow::editPlace(const PcmFormSteps::EditPlace& step, int word, int frame,
                                 bool always) {
    if (!step) {
        form_.ui.beep();
        return;
    }
    const bool accepted = step(*this, word, frame);
    edited(accepted || always);
}

void MajorFrameWindow::deleteCell() {
    const auto at = areas_->view().selected();
    if (!at) {
        return;
    }
    const auto names = areas_->display().measurementsAt(at);
    const int record = areas_->display().asyncAt(at);
    if (names.empty()) {
        if (record > 0) {
            edited(deleteAsyncFormat(format_, &form_.ui, record));
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
    edited(deleteMeasurement(format_, &form_.ui, steps_.edit, names[index]));
}

// --- the stream -------------------------------------------------------------------------------

void MajorFrameWindow::runEdit(const PcmFormSteps::Edit& step) {
    if (step) {
        edited(step(*this));
    }
}

void MajorFrameWindow::edited(bool accepted) {
    // An operation that was left half way has changed something, too.
    if (undo_.commit(accepted) || accepted) {
        displayChanged_ = true;
    }
    streamChanged();
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

void MajorFrameWindow::copyBlock() {
    const auto text = areas_->view().blockText(areas_->view().block());
    if (!text.empty()) {
        QGuiApplication::clipboard()->setText(toQString(text));
    }
}

// --- searches ---------------------------------------------------------------------------------

void MajorFrameWindow::goToMeasurement() {
    const auto name =
        form_.ui.enterText({"Go To Measurement Name", "Find Measurement Name:", "", kLongestName});
    if (!name) {
        return;
    }
    if (const auto at = findMeasurement(format_, *name)) {
        areas_->goToCell(at.word, at.frame);
    } else {
        form_.messages.show(&form_.ui, 229, title::kError, kErrorBox, "Measurement");
    }
}

void MajorFrameWindow::goToSubframe() {
    const auto name =
        form_.ui.enterText({"Go To Subframe Name", "Enter Subframe Name", "", kLongestName});
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
        database_ = steps_.makeDatabasePane(*this);
        if (database_ != nullptr) {
            splitter_->addWidget(database_);
        }
    }
    if (database_ != nullptr) {
        database_->setVisible(shown);
    }
}

}  // namespace kavu
