#include "mdb/storage/MeasurementDatabase.h"

#include "core/files/FileIo.h"
#include "core/files/UserFile.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/QuestionNames.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

/// What is added to the path for the file that takes the place of the database.
constexpr std::string_view kNewFileEnding = ".tmp";

/// The wait for another program that is writing the file: the user sees for what, and may end it.
class LockWait {
  public:
    LockWait(UserInterface* parent, const std::string& path) : parent_(parent), path_(path) {}
    LockWait(const LockWait&) = delete;
    LockWait& operator=(const LockWait&) = delete;
    ~LockWait() {
        if (progress_) {
            setStatusText(parent_, {});
        }
    }

    /// Between two tries.
    bool goesOn() {
        if (!progress_) {
            progress_.emplace(parent_, ProgressMode::WithCancel, false);
            const auto text = formatPrintf(
                "Waiting for another program that is writing the measurement database '%s'", path_);
            setStatusText(parent_, text);
            setProgressText(parent_, text);
        }
        yieldToInterface(parent_);
        isCancelled_ = cancelRequested(parent_);
        return !isCancelled_;
    }
    [[nodiscard]] bool isCancelled() const { return isCancelled_; }

  private:
    UserInterface* parent_;
    const std::string& path_;
    std::optional<ProgressScope> progress_;
    bool isCancelled_ = false;
};

/// False if the file could not be locked; that was reported, or the user has ended the waiting.
bool claim(UserInterface* parent, UserFile& file, const std::string& path) {
    LockWait wait(parent, path);
    const auto status = file.claim(path, [&wait] { return wait.goesOn(); });
    if (status.code() == EBUSY && !wait.isCancelled()) {
        showBox(parent,
                formatPrintf("Another program is writing the measurement database '%s'. Nothing "
                             "was written here; try it again.",
                             path),
                std::string(loadText(title::kError).value_or("")));
    } else if (!status.ok() && !wait.isCancelled()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace

MeasurementDatabase::MeasurementDatabase(const Messages& messages, std::string path,
                                         MdbVersion version, const SampleRateOptions& rates)
    : messages_(messages),
      path_(std::move(path)),
      version_(version),
      rates_(rates),
      storage_(MdbStorage::make(version)) {}

MeasurementDatabase::~MeasurementDatabase() = default;

MeasurementDatabase::Opening MeasurementDatabase::open() {
    storage_ = MdbStorage::make(version_);
    forgetIndex();
    position_ = 0;
    isOpen_ = false;
    isUnreadable_ = false;
    hasChanged_ = false;
    PathKind kind = PathKind::Missing;
    status_ = path_.empty() ? IoStatus(path_, ENOENT) : probePath(path_, kind);
    if (!status_.ok()) {
        return Opening::Failed;
    }
    stamp_ = fileStamp(path_);
    if (kind == PathKind::Missing) {
        return Opening::Missing;
    }
    std::string bytes;
    if (kind == PathKind::Folder) {
        status_ = {path_, EISDIR};
    } else if (fileSize(path_) > kMostBytes) {
        status_ = {path_, EFBIG};
    } else {
        status_ = readWholeFile(path_, bytes);
    }
    if (!status_.ok()) {
        return Opening::Failed;
    }
    const auto reading = storage_->read(std::move(bytes));
    isUnreadable_ = reading == MdbStorage::Reading::Unreadable;
    isOpen_ = reading != MdbStorage::Reading::NoDatabase;
    return isOpen_ ? Opening::Ready : Opening::Failed;
}

// --- Reading ---------------------------------------------------------------------------------

MdbRecord MeasurementDatabase::recordAt(std::size_t entry) const {
    auto record = storage_->record(entry);
    trimSampleRate(record[mdbfield::kSampleRate], rates_);
    return record;
}

std::optional<MdbRecord> MeasurementDatabase::first() {
    rewind();
    return next();
}

std::optional<MdbRecord> MeasurementDatabase::next() {
    while (position_ < storage_->entryCount()) {
        const auto entry = position_++;
        if (isRecord(entry)) {
            return recordAt(entry);
        }
    }
    return std::nullopt;
}

std::optional<MdbRecord> MeasurementDatabase::find(std::string_view name, std::size_t* columns) {
    indexNames();
    const auto found = places_.find(std::string(name));
    if (name.empty() || found == places_.end()) {
        return std::nullopt;
    }
    const auto& entries = found->second;
    auto at = std::lower_bound(entries.begin(), entries.end(), position_);
    const auto entry = at == entries.end() ? entries.front() : *at;
    position_ = entry + 1;
    if (columns != nullptr) {
        *columns = storage_->columns(entry);
    }
    return recordAt(entry);
}

std::size_t MeasurementDatabase::recordCount() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < storage_->entryCount(); ++i) {
        count += isRecord(i) ? 1 : 0;
    }
    return count;
}

// --- The index of names ------------------------------------------------------------------------

void MeasurementDatabase::forgetIndex() {
    isIndexed_ = false;
    rootsIndexed_ = false;
    places_.clear();
    names_.clear();
    roots_.clear();
}

void MeasurementDatabase::indexNames() {
    if (!isIndexed_) {
        (void)loadNameIndex(nullptr);
    }
}

bool MeasurementDatabase::loadNameIndex(UserInterface* parent) {
    forgetIndex();
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Reading measusurement database contents");
    const auto count = storage_->entryCount();
    places_.reserve(count);
    names_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (i % kPollEvery == 0 && parent != nullptr) {
            setProgressText(
                parent,
                formatPrintf("Reading measusurement database contents. Measurement #%d", i + 1));
            setProgressBar(parent, 100.0 * static_cast<double>(i) / static_cast<double>(count));
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                forgetIndex();
                setStatusText(parent, {});
                return false;
            }
        }
        if (isRecord(i)) {
            names_.emplace(storage_->name(i));
            places_[std::string(storage_->readName(i))].push_back(i);
        }
    }
    setStatusText(parent, {});
    isIndexed_ = true;
    return true;
}

void MeasurementDatabase::noteAppended(const MdbRecord& record) {
    const auto entry = storage_->entryCount() - 1;
    if (isIndexed_ && isRecord(entry)) {
        names_.emplace(storage_->name(entry));
        places_[std::string(storage_->readName(entry))].push_back(entry);
    }
    if (rootsIndexed_ && isRecord(entry) && !record[mdbfield::kRoot].empty()) {
        roots_[record[mdbfield::kRoot]].push_back(entry);
    }
}

bool MeasurementDatabase::contains(std::string_view name) {
    indexNames();
    return names_.contains(std::string(name));
}

void MeasurementDatabase::indexRoots() {
    if (rootsIndexed_) {
        return;
    }
    rootsIndexed_ = true;
    for (std::size_t i = 0; i < storage_->entryCount(); ++i) {
        if (!isRecord(i)) {
            continue;
        }
        const auto record = storage_->record(i);
        if (!record[mdbfield::kRoot].empty()) {
            roots_[record[mdbfield::kRoot]].push_back(i);
        }
    }
}

std::optional<MdbRecord> MeasurementDatabase::lookUp(std::string_view name) {
    indexNames();
    const auto found = places_.find(std::string(name));
    return name.empty() || found == places_.end() ? std::nullopt
                                                  : std::optional(recordAt(found->second.front()));
}

std::vector<MdbRecord> MeasurementDatabase::childrenOf(std::string_view root) {
    indexRoots();
    std::vector<MdbRecord> records;
    if (const auto found = roots_.find(std::string(root)); found != roots_.end()) {
        for (const auto entry : found->second) {
            records.push_back(recordAt(entry));
        }
    }
    return records;
}

// --- Changes -----------------------------------------------------------------------------------

bool MeasurementDatabase::isOutdated() const {
    return fileStamp(path_) != stamp_;
}

/// False if another program has changed the file since it was read and it is to stay as it is. If
/// the change is to be made all the same, the file has been read again.
bool MeasurementDatabase::mayChange(UserInterface* parent, Batch::IfChanged ifChanged) {
    if (!isOutdated()) {
        return true;
    }
    if (ifChanged == Batch::IfChanged::Refuse) {
        showBox(
            parent,
            formatPrintf("The measurement database '%s' was changed by another program after it "
                         "was read here. Nothing is written.",
                         path_),
            std::string(loadText(title::kError).value_or("")));
        return false;
    }
    MessageBox box;
    box.title = loadText(title::kWarning).value_or("");
    box.titleId = title::kWarning;
    box.text = formatPrintf(
        "The measurement database '%s' was changed by another program after it was read here."
        "\n\nShall it be read again, and the change be made to what is there now? Otherwise "
        "nothing is written.",
        path_);
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    box.defaultButton = Button::No;
    box.name = question::kChangedDatabase;
    if (parent == nullptr || parent->message(box) != Button::Yes) {
        return false;
    }
    if (open() == Opening::Failed) {
        reportUnableToRead(parent, status_.ok() ? IoStatus(path_, EINVAL) : status_);
        return false;
    }
    return true;
}

bool MeasurementDatabase::begin(UserInterface* parent, Batch::IfChanged ifChanged) {
    auto file = std::make_unique<UserFile>();
    if (!claim(parent, *file, path_)) {
        return false;
    }
    if (!mayChange(parent, ifChanged)) {
        return false;
    }
    file_ = std::move(file);
    return true;
}

IoStatus MeasurementDatabase::write(UserInterface* parent) {
    if (isUnreadable_) {
        std::string kept;
        if (auto status = keepUnreadableFile(path_, kept); !status.ok()) {
            return status;
        }
        messages_.logText(
            parent, title::kWarning,
            formatPrintf("'%s' could not be read. It was kept as '%s'.", path_, kept));
    }
    auto status = file_->prepare(false, kNewFileEnding);
    status = status.ok() ? file_->open() : status;
    if (!status.ok()) {
        return status;
    }
    storage_->write(file_->writer());
    if (status = file_->finish(); !status.ok()) {
        return status;  // the new file is not whole, and must not take the place in any way
    }
    status = file_->commit();
    if (UserFile::isRefusedRename(status) && !file_->isInPlace()) {
        status = file_->commitInPlace({});
    }
    if (status.ok()) {
        stamp_ = fileStamp(path_);
        hasChanged_ = false;
        isUnreadable_ = false;
        isOpen_ = true;
    }
    return status;
}

MeasurementDatabase::Batch::Batch(MeasurementDatabase& database, UserInterface* parent,
                                  IfChanged ifChanged)
    : database_(database), isOpen_(database.begin(parent, ifChanged)) {}

MeasurementDatabase::Batch::~Batch() {
    if (!isOpen_) {
        return;
    }
    database_.file_.reset();
    if (database_.hasChanged_) {
        (void)database_.open();
    }
}

bool MeasurementDatabase::Batch::commit(UserInterface* parent) {
    if (!isOpen_) {
        return false;
    }
    if (database_.hasChanged_) {
        if (const auto status = database_.write(parent); !status.ok()) {
            reportUnableToWrite(parent, status);
            return false;  // and the destructor reads what is still there
        }
    }
    database_.file_.reset();
    isOpen_ = false;
    return true;
}

bool MeasurementDatabase::change(UserInterface* parent, const std::function<bool()>& work) {
    if (file_ != nullptr) {
        hasChanged_ = work() || hasChanged_;
        return true;
    }
    Batch batch(*this, parent);
    if (!batch.isOpen()) {
        return false;
    }
    hasChanged_ = work();
    return batch.commit(parent);
}

bool MeasurementDatabase::add(UserInterface* parent, const MdbRecord& record) {
    if (!canHold(record)) {
        messages_.show(parent, message::kNoSemicolon, title::kError, kErrorBox);
        return false;
    }
    return change(parent, [&] {
        storage_->append(record);
        noteAppended(record);
        return true;
    });
}

bool MeasurementDatabase::replace(UserInterface* parent, const MdbRecord& record, bool* replaced) {
    if (!canHold(record)) {
        messages_.show(parent, message::kNoSemicolon, title::kError, kErrorBox);
        return false;
    }
    return change(parent, [&] {
        const bool found = storage_->replace(record);
        if (found) {
            forgetIndex();
        } else {
            storage_->append(record);
            noteAppended(record);
        }
        if (replaced != nullptr) {
            *replaced = found;
        }
        return true;
    });
}

bool MeasurementDatabase::remove(UserInterface* parent, std::string_view name, bool* removed) {
    return change(parent, [&] {
        bool any = storage_->entryCount() > 0;
        if (name.empty()) {
            storage_->clear();
        } else {
            any = storage_->remove(name);
        }
        if (any) {
            forgetIndex();
            position_ = 0;
        }
        if (removed != nullptr) {
            *removed = any;
        }
        return any;
    });
}

bool MeasurementDatabase::replaceAt(UserInterface* parent, std::size_t entry,
                                    const MdbRecord& record) {
    if (!canHold(record)) {
        messages_.show(parent, message::kNoSemicolon, title::kError, kErrorBox);
        return false;
    }
    return change(parent, [&] {
        storage_->replaceAt(entry, record);
        forgetIndex();
        return true;
    });
}

bool MeasurementDatabase::removeAt(UserInterface* parent, const std::vector<std::size_t>& entries) {
    return change(parent, [&] {
        storage_->removeAt(entries);
        forgetIndex();
        position_ = 0;
        return !entries.empty();
    });
}

bool MeasurementDatabase::makeFile(UserInterface* parent) {
    return change(parent, [&] { return !fileExists(path_); });
}

// --- Validation ----------------------------------------------------------------------------------

/// What one pass over the lines has found so far.
struct MeasurementDatabase::Check {
    UserInterface* parent;
    MdbFieldTable table;
    std::unordered_set<std::string> names{};
    std::vector<MdbFault> faults{};
    std::size_t logged = 0;
    bool hasFaults = false;

    /// Endless reports are cut off. False once one last text has said so.
    bool mayLog(const Messages& messages) {
        constexpr std::size_t kMostLogged = 10'000;
        hasFaults = true;
        if (++logged == kMostLogged + 1) {
            messages.logText(parent, title::kError,
                             "There are more messages than can be shown. The rest of them is left "
                             "out.");
        }
        return logged <= kMostLogged;
    }
};

void MeasurementDatabase::checkEntry(Check& check, std::size_t entry) {
    const auto line = entry + 1;
    const std::string name(storage_->name(entry));
    const auto found = storage_->columns(entry);
    const auto expected = columnCount(version_);
    if (found != expected && check.mayLog(messages_)) {
        messages_.log(check.parent, 416, title::kError, line, name, found, expected);
    }
    if (name.empty()) {
        if (check.mayLog(messages_)) {
            messages_.log(check.parent, 426, title::kError, line);
        }
        return;
    }
    if (!check.names.insert(name).second && check.mayLog(messages_)) {
        messages_.log(check.parent, 413, title::kError, line, name);
    }
    const auto record = storage_->record(entry);
    for (std::size_t column = 0; column + 1 < expected; ++column) {
        const auto index = columnIndex(column, version_);
        const auto& value = record[index];
        check.faults.clear();
        check.table.check(index, value, check.faults);
        for (const auto& fault : check.faults) {
            if (!check.mayLog(messages_)) {
                continue;
            }
            const auto label = mdbFields()[index].label;
            if (fault.kind == MdbFault::Kind::TooLong) {
                messages_.log(check.parent, 408, title::kError, line, name, label, column + 1,
                              value, fault.limit);
            } else {
                messages_.log(check.parent, 409, title::kError, line, name, label, column + 1,
                              value, fault.allowed);
            }
        }
    }
}

MeasurementDatabase::Validation MeasurementDatabase::validate(UserInterface* parent, int edition) {
    Check check{parent, MdbFieldTable(edition)};
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    const auto count = storage_->entryCount();
    Validation found;
    for (std::size_t i = 0; i < count && !found.isCancelled; ++i) {
        if (i % kPollEvery == 0 && parent != nullptr) {
            const auto percent = 100 * i / count;
            setStatusText(parent,
                          formatPrintf("Validating Measurement Database (Line #%d)", i + 1));
            setProgressText(parent,
                            formatPrintf("Validating Measurement Database (%d%%)", percent));
            setProgressBar(parent, static_cast<double>(percent));
            yieldToInterface(parent);
            found.isCancelled = cancelRequested(parent);
        }
        checkEntry(check, i);
    }
    setStatusText(parent, {});
    found.hasFaults = check.hasFaults;
    return found;
}

}  // namespace kavu
