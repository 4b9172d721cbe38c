#include "mdb/operations/DatabaseEdit.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/record/DiscreteText.h"

#include <algorithm>
#include <cerrno>
#include <unordered_set>

namespace kavu {

namespace {

constexpr std::string_view kDiscreteType = "DIS";
constexpr std::size_t kMostSteps = 1000;
constexpr long kMostSamples = 100'000;
constexpr const char* kSampleTitle = "Create Sample Database?";
constexpr const char* kDeleteEntryTitle = "Delete Measurement Database Entry";
constexpr const char* kTakeOverTitle = "Measurement Database";
constexpr const char* kDiscreteFault =
    "There appears to be an error in the EU conversion data string for measurement '%s'. Strings "
    "must be in the form 0=\"Value0\" 1=\"Value1\" (etc). Each value must be placed inside "
    "double-quotes, and each pair must be separated by a space.";

template <typename Record>
bool isDiscrete(const Record& record) {
    return record[mdbfield::kType] == kDiscreteType;
}

/// As it is shown; and as it is stored.
MdbRecord shownRecord(MdbRecord record) {
    if (isDiscrete(record)) {
        record[mdbfield::kData] = quotedDiscrete(readDiscrete(record[mdbfield::kData]));
    }
    return record;
}
MdbRecord storedRecord(MdbRecord record) {
    if (isDiscrete(record)) {
        record[mdbfield::kData] = writeDiscrete(readDiscrete(record[mdbfield::kData]));
    }
    return record;
}

MdbRecord sampleRecord(long number) {
    MdbRecord record(formatPrintf("Measurement_%d", number));
    record[mdbfield::kDescription] = "Sample";
    record[mdbfield::kHighValue] = "65535.0";
    record[mdbfield::kHighWarning] = "65535.0";
    record[mdbfield::kData] = "1.0 0.01 0.02";
    return record;
}

/// Of a pass over all entries; false if it was cancelled.
bool showPass(UserInterface* parent, const std::string& text, std::size_t done, std::size_t all) {
    setProgressText(parent, text);
    setProgressBar(parent, 100.0 * static_cast<double>(done) / static_cast<double>(all));
    yieldToInterface(parent);
    return !cancelRequested(parent);
}

}  // namespace

DatabaseEdit::~DatabaseEdit() {
    if (hasBackup_) {
        (void)deleteFile(backupPath());
    }
}

std::string DatabaseEdit::backupPath() const {
    return context_.store.pathOf(kDatabaseBackup);
}

bool DatabaseEdit::makeBackup(UserInterface* parent) {
    const auto status = copyFile(database_.path(), backupPath());
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    hasBackup_ = hasBackup_ || status.ok();
    return status.ok();
}

bool DatabaseEdit::begin(UserInterface* parent) {
    if (!openDatabase(context_, parent, database_, IfMissing::Refuse, OnFailure::SwitchOff)) {
        return false;
    }
    if (!makeBackup(parent)) {
        return false;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Reading Database");
    const auto count = std::max<std::size_t>(database_.recordCount(), 1);
    rows_.reserve(count);
    bool complete = true;
    for (auto record = database_.first(); record && complete; record = database_.next()) {
        rows_.push_back({shownRecord(std::move(*record)), database_.lastEntry()});
        complete =
            rows_.size() % kPollEvery != 1 ||
            showPass(parent, formatPrintf("Reading Entry #%d", rows_.size()), rows_.size(), count);
    }
    setStatusText(parent, {});
    return complete;
}

// --- rows --------------------------------------------------------------------------------------

void DatabaseEdit::keep(Step step) {
    undo_.push_back(std::move(step));
    if (undo_.size() > kMostSteps) {
        undo_.pop_front();
    }
    isChanged_ = true;
}

void DatabaseEdit::set(std::size_t row, std::size_t index, std::string_view text) {
    (void)setCells({{row, index, std::string(text)}});
}

std::size_t DatabaseEdit::setCells(const std::vector<CellChange>& changes) {
    const auto former = rows_.size();
    Step step;
    std::unordered_set<std::size_t> kept;
    std::size_t count = 0;
    for (const auto& [row, index, text] : changes) {
        std::string stored(trimBlanks(text));
        toStoredForm(stored);
        while (row >= rows_.size()) {
            rows_.push_back({.record = {}, .isChanged = true});
        }
        auto& changed = rows_[row];
        if (changed.record[index] == stored) {
            continue;
        }
        if (row < former && kept.insert(row).second) {
            step.replaced.emplace_back(row, changed);
        }
        changed.record.set(index, stored);
        changed.isChanged = true;
        ++count;
    }
    step.added = rows_.size() - former;
    if (count > 0 || step.added > 0) {
        keep(std::move(step));
    }
    return count;
}

std::size_t DatabaseEdit::add(const MdbRecord& record) {
    rows_.push_back({.record = record, .isChanged = true});
    keep({.added = 1});
    return rows_.size() - 1;
}

std::size_t DatabaseEdit::duplicate(const std::vector<std::size_t>& rows) {
    const auto first = rows_.size();
    for (const auto row : rows) {
        rows_.push_back({.record = PackedRecord(rows_[row].record), .isChanged = true});
    }
    if (!rows.empty()) {
        keep({.added = rows.size()});
    }
    return first;
}

bool DatabaseEdit::isRemovalMeant(UserInterface* parent, std::size_t count) const {
    const bool isAll = count == rows_.size() && count > 1;
    const auto button =
        isAll ? context_.messages.showTitled(parent, 410, kDeleteDatabaseTitle, kYesNoBox)
              : context_.messages.showTitled(parent, -message::kAreYouSure, kDeleteEntryTitle,
                                             kYesNoBox);
    return button == Button::Yes;
}

bool DatabaseEdit::remove(UserInterface* parent, const std::vector<std::size_t>& rows) {
    if (rows.empty() || !isRemovalMeant(parent, rows.size())) {
        return false;
    }
    Step step;
    std::size_t kept = 0;
    auto next = rows.begin();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (next != rows.end() && *next == i) {
            ++next;
            step.removed.emplace_back(i, std::move(rows_[i]));
        } else if (kept++ != i) {
            rows_[kept - 1] = std::move(rows_[i]);
        }
    }
    rows_.resize(kept);
    keep(std::move(step));
    return true;
}

bool DatabaseEdit::createSamples(UserInterface* parent) {
    if (showBox(parent, "This function will create sample database entries.\n\nContinue?",
                kSampleTitle, Icon::Question, Buttons::YesNo) != Button::Yes) {
        return false;
    }
    int choice = 1;
    if (!rows_.empty()) {
        ChoicePrompt prompt;
        prompt.title = kSampleTitle;
        prompt.text =
            "This database already contains data.\n\nWould you like to overwrite this database, or "
            "append the sample entries to it?";
        prompt.choices = {"&Overwrite", "&Append"};
        choice = parent->choose(prompt);
    }
    const auto count = choice < 0 ? std::nullopt
                                  : parent->enterInteger({.title = kSampleTitle,
                                                          .prompt = "How Many Should I Create?",
                                                          .initial = 10,
                                                          .least = 1,
                                                          .most = kMostSamples});
    if (!count) {
        return false;
    }
    Step step;
    if (choice == 0) {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            step.removed.emplace_back(i, std::move(rows_[i]));
        }
        rows_.clear();
    }
    for (long i = 1; i <= *count; ++i) {
        rows_.push_back({.record = sampleRecord(i), .isChanged = true});
    }
    step.added = static_cast<std::size_t>(*count);
    keep(std::move(step));
    return true;
}

bool DatabaseEdit::undo() {
    if (undo_.empty()) {
        return false;
    }
    auto step = std::move(undo_.back());
    undo_.pop_back();
    rows_.resize(rows_.size() - step.added);
    for (auto& [row, former] : step.replaced) {
        rows_[row] = std::move(former);
    }
    if (!step.removed.empty()) {
        // The places rise: one merge from the front.
        std::vector<Row> merged;
        merged.reserve(rows_.size() + step.removed.size());
        auto kept = rows_.begin();
        for (auto& [row, former] : step.removed) {
            while (merged.size() < row) {
                merged.push_back(std::move(*kept++));
            }
            merged.push_back(std::move(former));
        }
        merged.insert(merged.end(), std::make_move_iterator(kept),
                      std::make_move_iterator(rows_.end()));
        rows_ = std::move(merged);
    }
    return true;
}

// --- end -----------------------------------------------------------------------------------------

std::vector<DatabaseEdit::Fault> DatabaseEdit::check(UserInterface* parent) const {
    const MdbFieldTable table(context_.document.version);
    std::vector<Fault> faults;
    std::vector<MdbFault> found;
    const ProgressScope progress(parent, ProgressMode::WithoutCancel);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const auto& record = rows_[i].record;
        if (i % kPollEvery == 0) {
            (void)showPass(parent,
                           formatPrintf("Validating Database (Entry #%d: %d%% complete)", i + 1,
                                        100 * i / rows_.size()),
                           i, rows_.size());
        }
        found.clear();
        for (std::size_t index = 0; index < mdbfield::kCount; ++index) {
            table.check(index, record[index], found);
        }
        for (const auto& fault : found) {
            faults.push_back({i, fault.index});
        }
        if (record.name().empty()) {
            faults.push_back({i, mdbfield::kName});
        }
        if (isDiscrete(record) && !isQuotedDiscrete(record[mdbfield::kData])) {
            showBox(parent, formatPrintf(runtimeFormat(kDiscreteFault), record.name()),
                    std::string(loadText(title::kError).value_or("")));
            faults.push_back({i, mdbfield::kData});
        }
    }
    return faults;
}

bool DatabaseEdit::store(UserInterface* parent, std::vector<Fault>* faults) {
    auto found = check(parent);
    const bool good = found.empty();
    if (faults != nullptr) {
        *faults = std::move(found);
    }
    if (!good) {
        context_.messages.show(parent, 427, title::kError, kErrorBox);
        return false;
    }
    if (isChanged_ && (isLost_ || database_.isOutdated())) {
        if (isTakeOverWanted(parent)) {
            takeOver(parent);
        }
        return false;
    }
    return !isChanged_ || write(parent);
}

std::vector<DatabaseEdit::Row> DatabaseEdit::readRows(MeasurementDatabase& database) const {
    std::vector<Row> rows;
    for (auto record = database.first(); record; record = database.next()) {
        rows.push_back({shownRecord(std::move(*record)), database.lastEntry()});
    }
    return rows;
}

bool DatabaseEdit::isTakeOverWanted(UserInterface* parent) const {
    return showBox(parent,
                   formatPrintf("The measurement database '%s' was changed by another program "
                                "after it was read here.\n\nShall it be read again, and your "
                                "changes be put on top of what is there now? You see the result "
                                "before it is written. Otherwise nothing is written.",
                                database_.path()),
                   kTakeOverTitle, Icon::Question, Buttons::YesNo) == Button::Yes;
}

bool DatabaseEdit::opens(MeasurementDatabase& database, UserInterface* parent) const {
    const bool good =
        database.open() == MeasurementDatabase::Opening::Ready && !database.isUnreadable();
    if (!good) {
        const auto& status = database.status();
        reportUnableToRead(parent, status.ok() ? IoStatus(database.path(), EINVAL) : status);
    }
    return good;
}

void DatabaseEdit::takeOver(UserInterface* parent) {
    // The backup is what the edit began with. A file that is gone, or is no database any more, must
    // not empty the rows.
    const auto rates = sampleRateOptions(context_.settings);
    MeasurementDatabase former(context_.messages, backupPath(), database_.version(), rates);
    MeasurementDatabase present(context_.messages, database_.path(), database_.version(), rates);
    if (!opens(former, parent) || !opens(present, parent)) {
        return;
    }
    isLost_ = !opens(database_, parent);
    if (isLost_) {
        return;
    }
    auto merge = mergeRecords(readRows(former), rows_, readRows(database_));
    isLost_ = !makeBackup(parent);
    if (isLost_) {
        return;
    }
    if (parent != nullptr && !merge.conflicts.empty()) {
        parent->showMessages(kTakeOverTitle, "Changed here and by another program",
                             merge.conflicts);
    }
    // A view of the rows may paint as long as anything is shown.
    rows_ = std::move(merge.rows);
    undo_.clear();
}

bool DatabaseEdit::write(UserInterface* parent) {
    MeasurementDatabase::Batch batch(database_, parent,
                                     MeasurementDatabase::Batch::IfChanged::Refuse);
    if (!batch.isOpen()) {
        return false;
    }
    const ProgressScope progress(parent, ProgressMode::WithoutCancel);
    // What is not among the rows any more goes; the places before it stay until then.
    bool good = true;
    std::vector<std::size_t> all;
    for (auto record = database_.first(); record; record = database_.next()) {
        all.push_back(database_.lastEntry());
    }
    std::vector<std::size_t> entries;
    for (std::size_t i = 0; i < rows_.size() && good; ++i) {
        if (i % kPollEvery == 0) {
            (void)showPass(parent,
                           formatPrintf("Saving Database (Entry #%d: %d%% complete)", i + 1,
                                        100 * i / rows_.size()),
                           i, rows_.size());
        }
        const auto& row = rows_[i];
        if (row.entry) {
            entries.push_back(*row.entry);
        }
        if (row.isChanged) {
            const auto record = storedRecord(row.record.unpacked());
            good = row.entry ? database_.replaceAt(parent, *row.entry, record)
                             : database_.add(parent, record);
        }
    }
    std::vector<std::size_t> removed;
    std::set_difference(all.begin(), all.end(), entries.begin(), entries.end(),
                        std::back_inserter(removed));
    good = good && database_.removeAt(parent, removed) && batch.commit(parent);
    hasWritten_ = hasWritten_ || good;
    isChanged_ = isChanged_ && !good;
    return good;
}

bool DatabaseEdit::cancel(UserInterface* parent) {
    if (!hasWritten_) {
        return true;
    }
    std::string bytes;
    auto status = readWholeFile(backupPath(), bytes);
    status = status.ok() ? replaceUserFile(database_.path(), bytes) : status;
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace kavu
