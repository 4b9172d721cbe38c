#include "core/document/DocumentHistory.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace kavu {

namespace {

const std::string kNoName;

std::vector<DocumentFile> describe(const std::vector<std::string>& names) {
    std::vector<DocumentFile> files;
    files.reserve(names.size());
    for (const auto& name : names) {
        auto file = describeDocumentFile(name);
        if (file.kind != DocumentFile::Record) {
            files.push_back(std::move(file));
        }
    }
    return files;
}

void releaseAll(KeptFiles& files, DocumentFile::Kind kind) {
    for (const auto& name : files.names()) {
        if (describeDocumentFile(name).kind == kind) {
            files.release(name);
        }
    }
}

/// The record of the store alone is nothing that a user could want back.
bool holdsNoDocumentFile(const KeptFiles& files) {
    const auto names = files.names();
    return std::all_of(names.begin(), names.end(), [](const std::string& name) {
        return describeDocumentFile(name).kind == DocumentFile::Record;
    });
}

}  // namespace

bool DocumentChange::touches(char letter) const {
    return std::any_of(files.begin(), files.end(),
                       [letter](const DocumentFile& file) { return file.letter == letter; });
}

DocumentHistory::DocumentHistory(DocumentFiles& files, TmatsDocument& document)
    : files_(files), document_(document) {
    files_.setKeeper(this);
    files_.setRoomMaker(this);
}

DocumentHistory::~DocumentHistory() {
    files_.setKeeper(nullptr);
    files_.setRoomMaker(nullptr);
}

void DocumentHistory::setLimits(std::size_t levels, std::uint64_t bytes) {
    maxLevels_ = levels;
    maxBytes_ = bytes;
}

const std::string& DocumentHistory::undoName() const {
    return undo_.empty() ? kNoName : undo_.back().name;
}

const std::string& DocumentHistory::redoName() const {
    return redo_.empty() ? kNoName : redo_.back().name;
}

// --- listeners ----------------------------------------------------------------------------

void DocumentHistory::addListener(DocumentListener& listener) {
    listeners_.push_back(&listener);
}

void DocumentHistory::removeListener(DocumentListener& listener) {
    std::erase(listeners_, &listener);
}

void DocumentHistory::tell(const DocumentChange& change) const {
    // A listener may remove itself, or another one.
    const auto listeners = listeners_;
    for (auto* const listener : listeners) {
        if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) {
            listener->documentChanged(change);
        }
    }
}

IoStatus DocumentHistory::writePending() const {
    for (auto* const listener : listeners_) {
        if (auto status = listener->writePending(); !status.ok()) {
            return status;
        }
    }
    return {};
}

void DocumentHistory::addJournal(FileJournal& journal) {
    journals_.push_back(&journal);
}

void DocumentHistory::removeJournal(FileJournal& journal) {
    std::erase(journals_, &journal);
}

IoStatus DocumentHistory::beforeChange(std::string_view name) {
    if (files_.isLoading()) {
        return {};
    }
    if (isFrozen_) {
        return {files_.path(name), ENOTRECOVERABLE};
    }
    for (auto* const journal : journals_) {
        if (auto status = journal->beforeChange(name); !status.ok()) {
            return status;
        }
    }
    return {};
}

// --- levels -------------------------------------------------------------------------------

std::string DocumentHistory::folderFor(std::string_view kind) {
    return formatPrintf("%s/%6.6d", kind, ++folders_);
}

bool DocumentHistory::dropFarthest(const Level* except) {
    for (auto* const levels : {&undo_, &redo_}) {
        if (!levels->empty() && &levels->front() != except) {
            levels->pop_front();
            return true;
        }
    }
    return false;
}

void DocumentHistory::keepToLimits(const Level* except) {
    const auto bytes = [this] {
        std::uint64_t sum = 0;
        for (const auto* const levels : {&undo_, &redo_}) {
            for (const auto& level : *levels) {
                sum += level.files.bytes();
            }
        }
        return sum;
    };
    while ((levels() > maxLevels_ || bytes() > maxBytes_) && dropFarthest(except)) {
    }
}

IoStatus DocumentHistory::addLevel(KeptFiles& files, const std::string& name, int version) {
    // What an editor keeps next to the groups comes and goes with the editor.
    releaseAll(files, DocumentFile::Side);
    files.dropUnchanged();
    if (holdsNoDocumentFile(files)) {
        return {};
    }
    if (auto status = files.moveTo(folderFor(working::kUndoLevels)); !status.ok()) {
        return status;
    }
    redo_.clear();
    undo_.push_back({std::move(files), name, state_, version});
    state_ = ++states_;
    keepToLimits(&undo_.back());
    return {};
}

IoStatus DocumentHistory::joinNeighbours(KeptFiles& files) {
    files.dropUnchanged();
    if (files.empty()) {
        return {};
    }
    // The recovery would put back a folder that keeps its name, in part if it is being
    // deleted.
    if (auto status = files.moveTo(folderFor(working::kUndoLevels)); !status.ok()) {
        return status;
    }
    for (auto* const levels : {&undo_, &redo_}) {
        // A neighbour that cannot take it over no longer fits the files.
        if (!levels->empty() && !levels->back().files.join(files).ok()) {
            levels->clear();
        }
    }
    keepToLimits(undo_.empty() ? nullptr : &undo_.back());
    return {};
}

IoStatus DocumentHistory::putBackAll(KeptFiles& files) {
    auto status = files.putBackAll();
    if (status.ok()) {
        files.drop();
        return status;
    }
    isFrozen_ = true;
    files_.keepForRecovery();
    if (!working::isOpenOperation(files.folder())) {
        // Recovery takes back what is in folders of this name.
        (void)files.moveTo(formatPrintf("%s%d", working::kOpenOperation, std::max(depth_ - 1, 0)));
    }
    files.leave();
    return status;
}

// --- back and forth -----------------------------------------------------------------------

IoStatus DocumentHistory::exchange(const Level& wanted, KeptFiles& held) {
    FileJournal journal(files_, formatPrintf("%s%d", working::kOpenOperation, depth_));
    journal.kept().setNote(wanted.name);
    const ChangeScope scope(files_);
    ++depth_;
    addJournal(journal);
    IoStatus status;
    for (const auto& name : wanted.files.names()) {
        status = status.ok() ? wanted.files.putBackCopy(name) : status;
    }
    removeJournal(journal);
    --depth_;
    if (status.ok()) {
        held = std::move(journal.kept());
    } else {
        (void)putBackAll(journal.kept());
    }
    return status;
}

bool DocumentHistory::go(Levels& from, Levels& to, DocumentChange::Kind kind,
                         UserInterface* parent) {
    if (depth_ > 0 || from.empty()) {
        return false;
    }
    DocumentChange change{kind, from.back().name, describe(from.back().files.names())};
    KeptFiles held;
    auto status = exchange(from.back(), held);
    if (status.ok()) {
        // From here on the exchange has happened.
        status =
            held.moveTo(folderFor(&to == &undo_ ? working::kUndoLevels : working::kRedoLevels));
        if (!status.ok()) {
            (void)putBackAll(held);
        }
    }
    if (!status.ok()) {
        change.kind = DocumentChange::TakenBack;
        tell(change);
        reportUnableToWrite(parent, status);
        return false;
    }
    auto level = std::move(from.back());
    from.pop_back();
    to.push_back({std::move(held), std::move(level.name), state_, document_.version});
    state_ = level.state;
    document_.version = level.version;
    level.files.drop();
    document_.changed = corrected_ || state_ != saved_;
    keepToLimits(&to.back());
    tell(change);
    return true;
}

bool DocumentHistory::undo(UserInterface* parent) {
    return go(undo_, redo_, DocumentChange::Undone, parent);
}

bool DocumentHistory::redo(UserInterface* parent) {
    return go(redo_, undo_, DocumentChange::Redone, parent);
}

void DocumentHistory::markOpened() {
    document_.open = true;
    // A path that was given to a new document leads to no file yet.
    tell({DocumentChange::Opened, {}, {}, document_.created ? std::string() : document_.path});
}

void DocumentHistory::markSaved() {
    saved_ = state_;
    corrected_ = false;
    document_.changed = false;
    document_.created = false;
    document_.readOnly = false;
    document_.diskStamp = fileStamp(document_.path);
    tell({DocumentChange::Saved, {}, {}, document_.path});
}

void DocumentHistory::markCutShort(const std::string& path) {
    bool same = path == document_.path;
    (void)(same || probeSameFile(path, document_.path, same).ok());
    if (same) {
        // That was us, and no other program.
        document_.diskStamp = fileStamp(document_.path);
        markCorrected();
    }
    tell({DocumentChange::CutShort, {}, {}, path});
}

void DocumentHistory::markClosed(int nextEdition) {
    clear();
    const auto path = document_.open ? document_.path : std::string();
    document_ = TmatsDocument();
    document_.version = nextEdition;
    tell({DocumentChange::Closed, {}, {}, path});
}

void DocumentHistory::markCorrected() {
    corrected_ = corrected_ || depth_ == 0;
    document_.changed = true;
}

void DocumentHistory::clear() {
    undo_.clear();
    redo_.clear();
    state_ = ++states_;
    saved_ = state_;
    corrected_ = false;
    document_.changed = false;
    isFrozen_ = false;
}

}  // namespace kavu
