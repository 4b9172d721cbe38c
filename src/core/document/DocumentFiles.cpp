#include "core/document/DocumentFiles.h"

#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr std::string_view kBeside = ".new";
constexpr std::string_view kHead = "[kavu]";
constexpr std::size_t kMaxChunks = std::size_t{1} << 20U;

std::string besideOf(const std::string& path) {
    return path + std::string(kBeside);
}

/// The number that all of `digits` forms, or -1.
std::int64_t wholeNumber(std::string_view digits) {
    std::int64_t number = -1;
    const auto* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? number : -1;
}

/// The part between the head of all names and a tail; nothing if the name does not have
/// both.
std::string_view between(std::string_view name, std::string_view tail) {
    return name.starts_with(kHead) && name.ends_with(tail) &&
                   name.size() > kHead.size() + tail.size()
               ? name.substr(kHead.size(), name.size() - kHead.size() - tail.size())
               : std::string_view();
}

[[noreturn]] void endOutsideScopes(std::string_view name) {
    std::cerr << "The file '" << name << "' of the document changes in no scope\n";
    std::abort();
}

}  // namespace

DocumentFile describeDocumentFile(std::string_view name) {
    DocumentFile file;
    file.name = name;
    if (name == working::kStoreRecord) {
        file.kind = DocumentFile::Record;
        return file;
    }
    for (const std::string_view tail : {".C_O", ".C_RAW"}) {
        if (const auto number = wholeNumber(between(name, tail)); number >= 0) {
            file.kind = DocumentFile::Chunk;
            file.letter = 'C';
            file.number = number;
            return file;
        }
    }
    if (!between(name, ".C_COM").empty()) {
        file.kind = DocumentFile::Comment;
        file.letter = 'C';
        return file;
    }
    for (const auto& kind : groupKinds()) {
        const auto head = kind.wildcard.substr(0, kind.wildcard.find('*'));
        if (!name.starts_with(head)) {
            continue;
        }
        // The name has to be the one that the number gives: "D1" is not the name of a
        // group.
        const auto number = kind.indexed ? leadingInteger(name.substr(head.size())) : 0;
        if (groupFile(kind.letter, number) == name) {
            file.kind = DocumentFile::Group;
            file.letter = kind.letter;
            file.number = number;
            return file;
        }
    }
    return file;
}

// --- a file that is written piece by piece ------------------------------------------------

DocumentWriter::DocumentWriter(DocumentFiles& files, std::string_view name)
    : files_(&files), name_(name) {
    out_.setRoomMaker(files.roomMaker_);
    status_ = files.check(name_);
    open_ = status_.ok();
    if (open_) {
        status_ = out_.open(besideOf(files.path(name_)), WriteMode::Truncate);
    }
}

DocumentWriter::DocumentWriter(DocumentWriter&& other) noexcept
    : files_(other.files_),
      name_(std::move(other.name_)),
      out_(std::move(other.out_)),
      status_(std::move(other.status_)),
      open_(std::exchange(other.open_, false)) {}

DocumentWriter::~DocumentWriter() {
    drop();
}

IoStatus DocumentWriter::close(bool isDurable) {
    if (!open_) {
        return status();
    }
    auto closed = out_.close(isDurable);
    if (status_.ok()) {
        status_ = std::move(closed);
    }
    if (status_.ok()) {
        open_ = false;
        status_ = files_->replace(besideOf(files_->path(name_)), name_);
    }
    drop();
    return status_;
}

void DocumentWriter::drop() {
    if (std::exchange(open_, false)) {
        (void)out_.close();
        (void)deleteFile(besideOf(files_->path(name_)));
    }
}

// --- the gate -----------------------------------------------------------------------------

std::string DocumentFiles::path(std::string_view name) const {
    return store_.pathOf(name);
}

IoStatus DocumentFiles::check(std::string_view name) const {
    const bool plain = !name.empty() && name != "." && name != ".." &&
                       name.find('/') == std::string_view::npos &&
                       name.find('\0') == std::string_view::npos && !name.ends_with(kBeside);
    return plain ? IoStatus() : IoStatus(path(name), EINVAL);
}

IoStatus DocumentFiles::announce(std::string_view name) const {
    if (scopes_ == 0 && scopesDemanded_) {
        endOutsideScopes(name);
    }
    if (auto status = check(name); !status.ok()) {
        return status;
    }
    return keeper_ == nullptr ? IoStatus() : keeper_->beforeChange(name);
}

/// Replaces the file by the one next to it, which is deleted after a failure.
IoStatus DocumentFiles::replace(const std::string& beside, std::string_view name) {
    auto status = announce(name);
    if (status.ok()) {
        status = renameFile(beside, path(name));
    }
    if (status.ok()) {
        remember(name);
    } else {
        (void)deleteFile(beside);
    }
    return status;
}

IoStatus DocumentFiles::put(std::string_view name, std::string_view bytes) {
    auto file = writer(name);
    file.write(bytes);
    return file.close();
}

DocumentWriter DocumentFiles::writer(std::string_view name) {
    return {*this, name};
}

IoStatus DocumentFiles::append(std::string_view name, std::string_view bytes) {
    if (auto status = announce(name); !status.ok()) {
        return status;
    }
    const auto full = path(name);
    struct stat info {};
    const bool exists = ::stat(full.c_str(), &info) == 0;
    const bool linked = exists && info.st_nlink > 1;
    const auto to = linked ? besideOf(full) : full;
    auto status = linked ? copyFile(full, to) : IoStatus();
    if (status.ok()) {
        status = appendTo(to, bytes, exists);
    }
    if (status.ok() && linked) {
        status = renameFile(to, full);
    }
    if (status.ok()) {
        remember(name);
    } else if (linked) {
        (void)deleteFile(to);
    }
    return status;
}

/// Appends to a file that has no other link, whole or not at all.
IoStatus DocumentFiles::appendTo(const std::string& path, std::string_view bytes, bool exists) {
    FileWriter writer;
    writer.setRoomMaker(roomMaker_);
    if (auto status = writer.open(path, WriteMode::Append); !status.ok()) {
        return status;
    }
    const auto before = writer.position();
    writer.write(bytes);
    auto status = writer.close();
    if (!status.ok()) {
        // If this fails as well, the first failure says more.
        [[maybe_unused]] const int result =
            exists ? ::truncate(path.c_str(), static_cast<off_t>(before)) : ::unlink(path.c_str());
    }
    return status;
}

IoStatus DocumentFiles::copyIn(const std::string& from, std::string_view name) {
    ByteSource source;
    if (auto status = source.open(from); !status.ok()) {
        return status;
    }
    auto file = writer(name);
    for (auto window = source.window(); !window.empty() && file.status().ok();
         window = source.window()) {
        file.write(window);
        source.take(window.size());
    }
    return source.status().ok() ? file.close() : source.status();
}

IoStatus DocumentFiles::adopt(const std::string& from, std::string_view name) {
    const auto to = path(name);
    auto status = from == to ? IoStatus(to, EEXIST) : announce(name);
    if (status.ok()) {
        status = renameFile(from, to);
    }
    if (status.ok()) {
        // rename() leaves both of two links to one file.
        (void)::unlink(from.c_str());
        remember(name);
    }
    return status;
}

IoStatus DocumentFiles::remove(std::string_view name) {
    if (auto status = announce(name); !status.ok()) {
        return status;
    }
    auto status = deleteFile(path(name));
    if (status.ok() || status.code() == ENOENT) {
        forget(name);
    }
    return status;
}

IoStatus DocumentFiles::removeIfThere(std::string_view name) {
    auto status = check(name);
    PathKind kind = PathKind::Missing;
    if (status.ok()) {
        status = probePath(path(name), kind);
    }
    if (status.ok() && kind == PathKind::Missing) {
        forget(name);
        return {};
    }
    return status.ok() ? remove(name) : status;
}

IoStatus DocumentFiles::removeAll(std::string_view pattern) {
    std::vector<FolderEntry> entries;
    auto first = listFolder(store_.folder(), entries);
    for (const auto& entry : entries) {
        if (!entry.isFolder && matchesWildcard(entry.name, pattern)) {
            auto status = remove(entry.name);
            first = first.ok() ? std::move(status) : first;
        }
    }
    return first;
}

IoStatus DocumentFiles::move(std::string_view from, std::string_view to) {
    auto status = announce(from);
    if (status.ok()) {
        status = announce(to);
    }
    if (status.ok() && from != to) {
        status = renameFile(path(from), path(to));
        if (status.ok()) {
            forget(from);
            remember(to);
        }
    }
    return status;
}

// --- what there is ------------------------------------------------------------------------

void DocumentFiles::remember(std::string_view name) {
    if (name == working::kStoreRecord) {
        // An undo may have put a former one back.
        writtenRecord_.clear();
    }
    if (made_.contains(name)) {
        return;
    }
    const auto file = describeDocumentFile(name);
    // A group of another index is not saved.
    if (file.kind == DocumentFile::Group &&
        (!groupKind(file.letter).indexed ||
         (file.number >= kLeastGroupIndex && file.number <= kMostGroupIndex))) {
        made_.emplace(name);
    }
    noteChunk(file, true);
}

/// A document has thousands of these files, so that only their numbers are kept.
void DocumentFiles::noteChunk(const DocumentFile& file, bool isThere) {
    const auto number = static_cast<std::size_t>(file.number);
    if (file.kind != DocumentFile::Chunk) {
        return;
    }
    if (file.name.ends_with(".C_RAW")) {
        if (isThere) {
            rawGroups_.insert(file.name);
        } else {
            rawGroups_.erase(file.name);
        }
    } else if (isThere && number < kMaxChunks) {
        chunks_.resize(std::max(chunks_.size(), number + 1));
        chunks_[number] = true;
    } else if (number < chunks_.size()) {
        chunks_[number] = false;
    }
}

void DocumentFiles::forget(std::string_view name) {
    if (const auto found = made_.find(name); found != made_.end()) {
        made_.erase(found);
    }
    noteChunk(describeDocumentFile(name), false);
}

std::vector<std::string> DocumentFiles::missing() const {
    std::vector<std::string> gone;
    for (const auto& name : made_) {
        PathKind kind = PathKind::Missing;
        if (probePath(path(name), kind).ok() && kind == PathKind::Missing) {
            gone.push_back(name);
        }
    }
    return gone;
}

void DocumentFiles::recordFiles() {
    std::vector<std::string> names(made_.begin(), made_.end());
    names.insert(names.end(), rawGroups_.begin(), rawGroups_.end());
    if (!record_->isLoaded) {
        names.emplace_back(working::kData1);
    }
    record_->files.clear();
    for (const auto& name : names) {
        struct stat info {};
        if (::stat(path(name).c_str(), &info) == 0) {
            record_->files.push_back({name, static_cast<std::uint64_t>(info.st_size),
                                      static_cast<std::uint64_t>(info.st_ino)});
        }
    }
    record_->chunks.clear();
    for (std::size_t i = 0; i < chunks_.size(); ++i) {
        if (chunks_[i] && (i == 0 || !chunks_[i - 1])) {
            record_->chunks.emplace_back(i, i);
        } else if (chunks_[i]) {
            record_->chunks.back().second = static_cast<std::int64_t>(i);
        }
    }
}

IoStatus DocumentFiles::writeRecord(bool isDurable) {
    recordFiles();
    auto text = storeRecordText(*record_);
    if (text == writtenRecord_) {
        return {};
    }
    auto file = writer(working::kStoreRecord);
    file.write(text);
    auto status = file.close(isDurable);
    if (status.ok() && isDurable) {
        status = syncFolder(store_.folder());
    }
    if (status.ok()) {
        writtenRecord_ = std::move(text);
    }
    return status;
}

IoStatus DocumentFiles::beginRecord(DocumentSource source) {
    record_.emplace();
    record_->source = std::move(source);
    return writeRecord(false);
}

IoStatus DocumentFiles::recordSplit() {
    record_->isSplit = true;
    // The edition follows at once, and takes it to the disk.
    return writeRecord(false);
}

IoStatus DocumentFiles::recordEdition(int edition) {
    if (!record_) {
        return {};
    }
    record_->edition = edition;
    return writeRecord(true);
}

IoStatus DocumentFiles::recordState(int edition) {
    if (!record_) {
        return {};
    }
    record_->isSplit = true;
    record_->isLoaded = true;
    record_->edition = edition;
    return writeRecord(false);
}

IoStatus DocumentFiles::recordState(int edition, DocumentSource source) {
    if (record_) {
        record_->source = std::move(source);
    }
    return recordState(edition);
}

void DocumentFiles::keepForRecovery() {
    store_.keepForRecovery();
}

void DocumentFiles::clear(UserInterface* parent, int edition) {
    made_.clear();
    rawGroups_.clear();
    chunks_.clear();
    record_.reset();
    writtenRecord_.clear();
    store_.clearDocumentFiles(parent, edition);
}

FormerFileKeeper* DocumentFiles::setKeeper(FormerFileKeeper* keeper) {
    return std::exchange(keeper_, keeper);
}

}  // namespace kavu
