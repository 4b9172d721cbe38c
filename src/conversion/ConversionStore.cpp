#include "conversion/ConversionStore.h"

#include "conversion/ConversionFields.h"
#include "conversion/SampleRate.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/ConversionComments.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <utility>

namespace kavu {

namespace {

constexpr std::size_t kChunksAtHand = 8;

/// A setting that becomes a key of a new record.
struct DefaultKey {
    std::string_view code;
    TextKey setting;
};
constexpr DefaultKey kContactDefaults[] = {{c::kPoc1.code, setting::kContactName},
                                           {c::kPoc2.code, setting::kContactAgency},
                                           {c::kPoc3.code, setting::kContactAddress},
                                           {c::kPoc4.code, setting::kContactTelephone},
                                           {c::kMn4.code, setting::kConversionLinkType}};

}  // namespace

ConversionStore::ConversionStore(DocumentContext& context) : context_(context) {
    context_.history.addListener(*this);
}

ConversionStore::~ConversionStore() {
    context_.history.removeListener(*this);
}

// --- What is known of the files ----------------------------------------------------------

void ConversionStore::forget() {
    listed_ = false;
    indexed_ = false;
    remembered_ = 0;
    sizes_.clear();
    roomy_.clear();
    firstMissing_ = 0;
    commentFiles_.clear();
    names_.clear();
    namesOfChunk_.clear();
    recent_.clear();
    waiting_.clear();
    untouched_.reset();
    staged_.clear();
    stagedInOperation_ = false;
}

void ConversionStore::hold(UntouchedRecords&& records) {
    forget();
    untouched_ = std::move(records);
    stagedInOperation_ = !context_.files.isLoading() && context_.history.isInOperation();
}

UntouchedRecords* ConversionStore::untouched() {
    return untouched_ && untouched_->canBeWritten() ? &*untouched_ : nullptr;
}

/// Makes the sections of records that are still raw commands.
IoStatus ConversionStore::touch() {
    if (!untouched_) {
        return {};
    }
    // The document has had these records since it was loaded: see `writeOut`.
    std::optional<LoadScope> scope;
    if (!stagedInOperation_) {
        scope.emplace(context_.files);
    }
    StagedChunks chunks(stagingLimit);
    auto status = untouched_->makeSections(context_.files, chunks);
    if (status.ok()) {
        untouched_.reset();
        staged_ = std::move(chunks);
    }
    return status;
}

IoStatus ConversionStore::writeOut() {
    auto status = writeStaged();
    return status.ok() ? writeWaiting() : status;
}

IoStatus ConversionStore::writeStaged() {
    if (auto status = touch(); !status.ok()) {
        return status;
    }
    if (stagedInOperation_) {
        auto status = staged_.writeOut(context_.files);
        stagedInOperation_ = !status.ok();
        return status;
    }
    // These records of the load are only written late: they were always part of the document,
    // and no operation that is open now may take them back.
    const LoadScope scope(context_.files);
    return staged_.writeOut(context_.files);
}

IoStatus ConversionStore::writePending() {
    return stagedInOperation_ ? writeOut() : IoStatus();
}

void ConversionStore::documentChanged(const DocumentChange& change) {
    if (change.kind == DocumentChange::Closed ||
        (change.kind == DocumentChange::TakenBack && stagedInOperation_)) {
        forget();
    } else if (change.kind == DocumentChange::TakenBack || change.kind == DocumentChange::Undone ||
               change.kind == DocumentChange::Redone) {
        follow(change.files);
    }
}

void ConversionStore::follow(const std::vector<DocumentFile>& files) {
    for (const auto& file : files) {
        if (file.kind == DocumentFile::Chunk && file.name == chunkName(file.number)) {
            followChunk(file.number);
        } else if (file.kind == DocumentFile::Comment && listed_) {
            fileExists(context_.files.path(file.name)) ? (void)commentFiles_.insert(file.name)
                                                       : (void)commentFiles_.erase(file.name);
        }
    }
}

void ConversionStore::followChunk(std::int64_t number) {
    waiting_.erase(number);
    forgetChunk(number);
    if (!listed_) {
        return;
    }
    const auto path = chunkPath(context_.store, number);
    const bool there = fileExists(path);
    if (there) {
        setSize(number, fileSize(path));
    } else {
        sizes_.erase(number);
        roomy_.erase(number);
        firstMissing_ = std::min(firstMissing_, number);
    }
    if (indexed_) {
        unindexChunk(number);
        if (there) {
            indexChunk(number, *chunk(number));
        }
    }
}

IoStatus ConversionStore::list() {
    if (listed_) {
        return {};
    }
    if (auto status = touch(); !status.ok()) {
        return status;
    }
    ConversionFiles files;
    if (auto status = listConversionFiles(context_.store, files); !status.ok()) {
        return status;
    }
    commentFiles_ = std::move(files.commentFiles);
    for (const auto& chunk : files.chunks) {
        setSize(chunk.number, chunk.size);
    }
    for (const auto& [number, bytes] : staged_.all()) {
        setSize(number, bytes.size());
    }
    listed_ = true;
    return {};
}

void ConversionStore::index() {
    if (indexed_ || !list().ok()) {
        return;
    }
    indexed_ = true;
    for (const auto& [number, size] : sizes_) {
        indexChunk(number, *chunk(number));
    }
}

void ConversionStore::indexChunk(std::int64_t number, const ProfileFile& chunk, std::size_t first) {
    auto& names = namesOfChunk_[number];
    const auto& sections = chunk.sections();
    for (auto i = first; i < sections.size(); ++i) {
        if (sections[i].hasKeys()) {
            names.push_back(sections[i].name());
            names_[lowerAscii(sections[i].name())].push_back({sections[i].name(), number});
        }
    }
}

void ConversionStore::unindexChunk(std::int64_t number) {
    for (const auto& name : namesOfChunk_[number]) {
        const auto found = names_.find(lowerAscii(name));
        if (found == names_.end()) {
            continue;
        }
        std::erase_if(found->second, [number](const Holder& h) { return h.chunk == number; });
        if (found->second.empty()) {
            names_.erase(found);
        }
    }
    namesOfChunk_.erase(number);
}

/// Mostly a record has been added at the end.
void ConversionStore::indexAgain(std::int64_t number, const ProfileFile& chunk) {
    auto& names = namesOfChunk_[number];
    const auto& sections = chunk.sections();
    std::size_t known = 0;
    std::size_t next = 1;
    for (; next < sections.size() && known < names.size(); ++next) {
        if (!sections[next].hasKeys()) {
            continue;
        }
        if (sections[next].name() != names[known]) {
            break;
        }
        ++known;
    }
    if (known < names.size()) {
        unindexChunk(number);
        next = 1;
    }
    indexChunk(number, chunk, next);
}

void ConversionStore::setSize(std::int64_t number, std::uint64_t size) {
    sizes_[number] = size;
    if (size < kFullChunk) {
        roomy_.insert(number);
    } else {
        roomy_.erase(number);
    }
    while (sizes_.contains(firstMissing_)) {
        ++firstMissing_;
    }
}

std::vector<std::int64_t> ConversionStore::chunkNumbers(IoStatus* status) {
    if (auto listed = list(); status != nullptr) {
        *status = std::move(listed);
    }
    std::vector<std::int64_t> numbers;
    numbers.reserve(sizes_.size());
    for (const auto& [number, size] : sizes_) {
        numbers.push_back(number);
    }
    return numbers;
}

std::shared_ptr<ProfileFile> ConversionStore::chunk(std::int64_t number) {
    for (auto it = recent_.begin(); it != recent_.end(); ++it) {
        if (it->number == number) {
            recent_.splice(recent_.begin(), recent_, it);
            return it->file;
        }
    }
    (void)touch();  // if it fails, so does whatever is to be done with the chunk
    auto file = std::make_shared<ProfileFile>(chunkPath(context_.store, number));
    if (const auto* const bytes = staged_.find(number)) {
        file->adopt(*bytes);
    }
    recent_.push_front({number, file});
    // A chunk still in use stays, so that there is never a second copy.
    for (auto it = recent_.end(); recent_.size() > kChunksAtHand && it != recent_.begin();) {
        --it;
        if (it->file.use_count() == 1) {
            it = recent_.erase(it);
        }
    }
    return file;
}

void ConversionStore::forgetChunk(std::int64_t number) {
    recent_.remove_if([number](const Recent& recent) { return recent.number == number; });
}

IoStatus ConversionStore::store(std::int64_t number, ProfileFile& chunk) {
    if (!chunk.changed()) {
        return {};
    }
    if (!isBatch_) {
        return flush(number, chunk);
    }
    waiting_.insert_or_assign(number, this->chunk(number));
    setSize(number, chunk.serialisedSize());
    if (indexed_) {
        indexAgain(number, chunk);
    }
    return waiting_.size() > kChunksAtHand ? writeWaiting() : IoStatus();
}

IoStatus ConversionStore::flush(std::int64_t number, ProfileFile& chunk) {
    auto status = writeStaged();
    const auto replace = [&](std::string_view bytes) {
        return context_.files.put(chunkName(number), bytes);
    };
    status = status.ok() ? chunk.flush(replace) : status;
    if (!status.ok()) {
        // Memory differs from the disk: the chunk is read again.
        discardChanges(number, chunk);
    }
    setSize(number, chunk.serialisedSize());
    if (indexed_) {
        indexAgain(number, chunk);
    }
    return status;
}

/// Those that can be written are written; the first failure is returned.
IoStatus ConversionStore::writeWaiting() {
    IoStatus first;
    for (const auto& [number, file] : std::exchange(waiting_, {})) {
        if (auto status = flush(number, *file); !status.ok() && first.ok()) {
            first = std::move(status);
        }
    }
    return first;
}

bool ConversionStore::Batch::write(UserInterface* parent) {
    if (!std::exchange(store_.isBatch_, false)) {
        return true;
    }
    return store_.report(parent, store_.writeWaiting(), "Write/Create");
}

void ConversionStore::discardChanges(std::int64_t number, ProfileFile& chunk) {
    chunk.discard();
    if (const auto* const bytes = staged_.find(number)) {
        chunk.adopt(*bytes);
    }
}

// --- Finding -----------------------------------------------------------------------------

const ConversionStore::Holder* ConversionStore::nearest(const std::vector<Holder>& holders,
                                                        std::string_view name, bool exact) const {
    const Holder* best = nullptr;
    // From the remembered chunk upward, then those before it.
    const auto comesFirst = [this](std::int64_t a, std::int64_t b) {
        return (a >= remembered_) != (b >= remembered_) ? a >= remembered_ : a < b;
    };
    for (const auto& holder : holders) {
        if ((!exact || holder.name == name) &&
            (best == nullptr || comesFirst(holder.chunk, best->chunk))) {
            best = &holder;
        }
    }
    return best;
}

std::int64_t ConversionStore::chunkForNewRecord() const {
    if (!roomy_.empty() && *roomy_.begin() < firstMissing_) {
        return *roomy_.begin();
    }
    return firstMissing_;
}

RecordPlace ConversionStore::locateDefinition(std::string_view name) {
    index();
    RecordPlace place;
    const Holder* holder = nullptr;
    if (const auto found = names_.find(lowerAscii(name)); found != names_.end()) {
        holder = nearest(found->second, name, true);
        holder = holder != nullptr ? holder : nearest(found->second, name, false);
    }
    place.found = holder != nullptr;
    place.chunk = place.found ? holder->chunk : chunkForNewRecord();
    place.section = place.found ? holder->name : std::string(name);
    place.path = chunkPath(context_.store, place.chunk);
    if (place.found) {
        remembered_ = place.chunk;
    }
    return place;
}

std::optional<std::vector<std::string>> ConversionStore::definitionNames(std::int64_t chunkNumber) {
    index();
    std::vector<std::string> names;
    if (chunkNumber >= 0) {
        const auto found = namesOfChunk_.find(chunkNumber);
        return found == namesOfChunk_.end() ? std::nullopt : std::optional(found->second);
    }
    for (const auto& [number, size] : sizes_) {
        const auto& some = namesOfChunk_[number];
        names.insert(names.end(), some.begin(), some.end());
    }
    return names;
}

// --- Making, renaming, deleting ----------------------------------------------------------

bool ConversionStore::report(UserInterface* parent, const IoStatus& status,
                             std::string_view action) const {
    if (!status.ok()) {
        reportFailedAction(context_.messages, parent, status, title::kErrorReadingConversion,
                           action);
    }
    return status.ok();
}

bool ConversionStore::createDefaultDefinition(UserInterface* parent, const std::string& name,
                                              bool asTemplate) {
    const auto place = locateDefinition(name);
    if (place.found) {
        return true;
    }
    const auto file = chunk(place.chunk);
    if (!report(parent, file->load(), "Read")) {
        return false;
    }
    fillDefaults(*file, name, asTemplate);
    if (!report(parent, store(place.chunk, *file), "Write/Create")) {
        return false;
    }
    // A name that no section can have does not make a record.
    if (!locateDefinition(name).found) {
        return false;
    }
    if (defaultCommentStep) {
        defaultCommentStep(parent, name);
    }
    return true;
}

void ConversionStore::fillDefaults(ProfileFile& chunk, const std::string& name,
                                   bool asTemplate) const {
    const auto& settings = context_.settings;
    const int edition = context_.document.version;
    const auto now = context_.clock.now();
    const auto put = [&](std::string_view key, const std::string& value) {
        if (!value.empty()) {
            chunk.setValue(name, key, value);
        }
    };
    put(recordkey::kTemplate, asTemplate ? "1" : "");
    put(c::kTrd4.code, settings.get(setting::kConversionClassification));
    put(c::kTrd5.code, tmatsDate(now, edition));
    for (const auto& row : kContactDefaults) {
        put(row.code, settings.get(row.setting));
    }
    put(c::kBfm.code, settings.get(setting::kBinaryFormat));
    if (sampleRateOptions(settings).check && sampleRateStep) {
        put(c::kSr.code, sampleRateStep(name));
    }
    put(c::kCrt.code, tmatsDateTime(now, edition));
    const auto type = settings.get(setting::kConversionType);
    put(kTypeCode, type);
    if (equalsIgnoreCase(type, "COE")) {
        // The identity line.
        put(c::kCo1.code, std::string(c::kCo1.missing));
        put(c::kCoN.code, "1");
        put(c::kCo.code, "0.0");
        put(fieldCode(c::kCoTerm.code, {1}), "1.0");
    }
}

bool ConversionStore::removeComment(UserInterface* parent, const std::string& measurement) {
    if (!report(parent, list(), "Read")) {
        return false;
    }
    const auto name = commentName(measurement);
    if (commentFiles_.erase(name) == 0 && !fileExists(context_.files.path(name))) {
        return true;
    }
    return report(parent, context_.files.remove(name), "Delete");
}

bool ConversionStore::renameDefinition(UserInterface* parent, const std::string& newName,
                                       const std::string& oldName) {
    if (newName == oldName) {
        return true;
    }
    const auto place = locateDefinition(oldName);
    if (!place.found) {
        return false;
    }
    // Of two sections of one name one could never be found again.
    if (const auto other = locateDefinition(newName); other.found && other.section == newName) {
        return false;
    }
    const auto from = context_.files.path(commentName(place.section));
    const auto to = commentName(newName);
    const bool hasComment = fileExists(from) && from != context_.files.path(to);
    if (hasComment) {
        if (!report(parent, context_.files.copyIn(from, to), "Copy")) {
            return false;
        }
    }
    const auto file = chunk(place.chunk);
    if (!file->renameSection(place.section, newName) ||
        !report(parent, store(place.chunk, *file), "Write/Create") ||
        !report(parent,
                renameConversionComments(context_.files, context_.reader, place.section, newName),
                "Write/Create")) {
        return false;
    }
    if (hasComment) {
        commentFiles_.insert(to);
        return removeComment(parent, place.section);
    }
    return true;
}

bool ConversionStore::deleteDefinition(UserInterface* parent, const std::string& name) {
    const auto place = locateDefinition(name);
    if (!place.found) {
        return false;
    }
    const auto file = chunk(place.chunk);
    file->removeSection(place.section);
    return report(parent, store(place.chunk, *file), "Write/Create") &&
           removeComment(parent, place.section);
}

// --- Choices -----------------------------------------------------------------------------

namespace {

std::vector<std::string_view> textsOf(std::span<const Choice> choices, int edition) {
    std::vector<std::string_view> texts;
    for (const auto& choice : choices) {
        if (isKnownIn(edition, choice)) {
            texts.push_back(choice.text);
        }
    }
    return texts;
}

}  // namespace

std::vector<std::string_view> ConversionStore::binaryFormatList(int edition) {
    return textsOf(c::choice::kBinaryFormats, edition);
}

std::vector<std::string_view> ConversionStore::conversionTypeList(int edition) {
    return textsOf(c::choice::kTypes, edition);
}

}  // namespace kavu
