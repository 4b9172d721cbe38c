#include "application/Recovery.h"

#include "application/Application.h"
#include "application/StoreFacts.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/FileJournal.h"
#include "core/document/StoreRecord.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>

namespace kavu {

namespace {

constexpr const char* kTitle = "Unable To Recover Working Store";
constexpr const char* kDamagedTitle = "Recover Working Store";
constexpr std::size_t kMaxFaults = 20;  ///< that are shown
constexpr std::size_t kMaxNamed = 100000;
constexpr std::int64_t kLastChunk = std::int64_t{1} << 20U;
constexpr std::uint64_t kLongestPath = 64 * 1024;

void reportFailure(UserInterface* parent, PrintfFormat<std::string, std::string> format,
                   const IoStatus& status) {
    showBox(parent, formatPrintf(format, status.path(), status.reason()), kTitle);
}

bool isChunk(const std::string& name) {
    return matchesWildcard(name, "[kavu]*.C_O");
}
/// True for the file with the raw C commands of an unfinished load.
bool isRawGroup(const std::string& name) {
    return matchesWildcard(name, "[kavu]*.C_RAW");
}
std::int64_t numberIn(const std::string& name) {
    return leadingInteger(std::string_view(name).substr(std::string_view("[kavu]").size()));
}

/// True for a file of commands or of records, each of which has an end.
bool holdsCommands(std::string_view name) {
    const auto kind = describeDocumentFile(name).kind;
    return kind == DocumentFile::Group || kind == DocumentFile::Chunk || name == working::kData1;
}

/// True for the files of a document; scratch files that end in "tmp" are incomplete.
bool belongsToDocument(const std::string& name) {
    return name.starts_with("[kavu]") && !name.ends_with("tmp") && !name.ends_with(".new");
}

/// What is wrong with a file of the store, in the words of a sentence; empty if nothing is.
std::string faultText(FileState state) {
    switch (state) {
        case FileState::Missing:
            return "is missing";
        case FileState::NoFile:
            return "is no file";
        case FileState::Cut:
            return "is cut off";
        case FileState::Whole:
            break;
    }
    return {};
}

/// Finds whether the first command of a working file is a raw C command: the crash came
/// before it was converted. A file that cannot be read is a failure: taken for a
/// converted one, its commands would be lost.
IoStatus probeRawCommands(const std::string& path, bool& raw) {
    raw = false;
    PathKind kind = PathKind::Missing;
    if (auto status = probePath(path, kind); !status.ok() || kind != PathKind::PlainFile) {
        return status;
    }
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    raw = source.window().substr(0, 2) == "C-";
    return source.status();
}

/// Gathers the raw C commands of several files in one. A command may be in more than one
/// of them, as a crash can come in the middle of moving it; a second definition of the
/// same name by the same index would count as a duplicate, so it is left out.
class RawCommands {
  public:
    explicit RawCommands(FileWriter& writer) : writer_(writer) {}

    IoStatus add(const std::string& path) {
        ByteSource source;
        if (auto status = source.open(path); !status.ok()) {
            return status;
        }
        std::string command;
        while (reader_.nextCommand(source, command)) {
            const bool names = afterHead(command).starts_with("DCN:");
            if (!names || named_.insert(command).second) {
                writer_.write(command + "\r\n");
            }
        }
        return source.status();
    }

  private:
    FileWriter& writer_;
    TmatsReader reader_;
    std::set<std::string> named_;
};

/// Copies the document files of `folder` into the application's own store, and gathers what
/// was not converted yet in "DATA1.TMP". The files of an unfinished operation are copied as
/// they were before it.
class StoreCopy {
  public:
    StoreCopy(DocumentContext& context, const std::string& folder)
        : context_(context), folder_(folder) {}

    IoStatus run() {
        if (auto status = findFiles(); !status.ok()) {
            return status;
        }
        if (auto status = findFaults(); !status.ok()) {
            return status;
        }
        if (const auto data = files_.find(working::kData1); data != files_.end()) {
            bool raw = false;
            if (auto status = probeRawCommands(data->second, raw); !status.ok()) {
                return status;
            }
            if (raw) {
                raw_.push_back(data->second);
            }
        }
        for (const auto& [name, path] : files_) {
            if (auto status = takeRawGroup(name, path); !status.ok()) {
                return status;
            }
        }
        for (const auto& [name, path] : files_) {
            if (auto status = copyOne(name, path); !status.ok()) {
                return status;
            }
        }
        return writeRawCommands();
    }
    /// The names of the unfinished operations, the outermost first.
    [[nodiscard]] const std::vector<std::string>& takenBack() const { return takenBack_; }

    /// What the store said of itself before those operations.
    [[nodiscard]] const std::optional<StoreRecord>& record() const { return record_; }
    /// A sentence for each file that is not as it was left.
    [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }

    [[nodiscard]] bool foundAnything() const { return copied_ > 0 || !raw_.empty(); }
    [[nodiscard]] bool needsConversion() const { return !raw_.empty(); }

  private:
    /// Finds where the contents of each file are, by its name.
    IoStatus findFiles() {
        std::vector<FolderEntry> entries;
        OpenChanges changes;
        auto status = listFolder(folder_, entries);
        if (status.ok()) {
            status = filesBeforeOpenChanges(folder_, changes);
        }
        for (const auto& entry : entries) {
            if (!entry.isFolder) {
                files_[entry.name] = folder_ + "/" + entry.name;
            }
        }
        for (const auto& [name, path] : changes.former) {
            if (path.empty()) {
                files_.erase(name);
            } else {
                files_[name] = path;
            }
        }
        if (!changes.operations.empty()) {
            // These are raw commands gathered by an operation, not those of the load.
            files_.erase(std::string(working::kData1));
        }
        takenBack_ = std::move(changes.operations);
        const auto record = files_.find(working::kStoreRecord);
        return status.ok() && record != files_.end() ? readStoreRecord(record->second, record_)
                                                     : status;
    }

    /// Compares the files with the record, and those that it does not know with themselves.
    IoStatus findFaults() {
        IoStatus status;
        std::set<std::string_view> known;
        const StoreRecord none;
        const auto& record = record_ ? *record_ : none;
        for (const auto& file : record.files) {
            if (status.ok() && holdsCommands(file.name) && known.insert(file.name).second) {
                const auto found = files_.find(file.name);
                status =
                    probe(file.name,
                          found == files_.end() ? folder_ + "/" + file.name : found->second, &file);
            }
        }
        findMissingChunks(record);
        for (const auto& [name, path] : files_) {
            if (status.ok() && (belongsToDocument(name) || name == working::kData1) &&
                !known.contains(name)) {
                status = probe(name, path, nullptr);
            }
        }
        return status;
    }

    IoStatus probe(const std::string& name, const std::string& path, const RecordedFile* recorded) {
        FileState state = FileState::Whole;
        auto status = probeStoreFile(path, recorded, state);
        if (status.ok() && state == FileState::Cut && name == working::kData1) {
            // The parser of the conversion records uses the same name for its scratch file.
            bool isRaw = false;
            status = probeRawCommands(path, isRaw);
            state = isRaw ? state : FileState::Whole;
        }
        const bool isFault =
            state == FileState::NoFile || (state != FileState::Whole && holdsCommands(name));
        if (status.ok() && isFault && !(state == FileState::Missing && isConverted(name))) {
            faults_.push_back(formatPrintf("'%s' %s.", name, faultText(state)));
        }
        return status;
    }

    /// True for raw C commands that have become conversion records since.
    [[nodiscard]] bool isConverted(const std::string& name) const {
        const bool isScratch = name == working::kData1;
        const auto base = isRawGroup(name) ? numberIn(name) : 0;
        return (isScratch || isRawGroup(name)) &&
               std::any_of(files_.begin(), files_.end(), [&](const auto& file) {
                   return (isChunk(file.first) && numberIn(file.first) >= base) ||
                          (isScratch && isRawGroup(file.first));
               });
    }

    void findMissingChunks(const StoreRecord& record) {
        auto firstRaw = std::numeric_limits<std::int64_t>::max();
        for (const auto& [name, path] : files_) {
            firstRaw = isRawGroup(name) ? std::min(firstRaw, numberIn(name)) : firstRaw;
        }
        // Each number once, whatever the record says.
        std::int64_t number = 0;
        for (const auto& [first, last] : record.chunks) {
            const auto end = std::min({last, firstRaw - 1, kLastChunk});
            for (number = std::max(first, number); number <= end; ++number) {
                const auto name = formatPrintf(working::kChunkFormat, number);
                if (!files_.contains(name) && faults_.size() < kMaxNamed) {
                    faults_.push_back(
                        formatPrintf("'%s' %s.", name, faultText(FileState::Missing)));
                }
            }
        }
    }

    /// Takes the commands of an unfinished load; what it has made of them so far is left
    /// out.
    IoStatus takeRawGroup(const std::string& name, const std::string& path) {
        if (!isRawGroup(name)) {
            return {};
        }
        bool plain = false;
        if (auto status = probeOwnFile(path, plain); !status.ok() || !plain) {
            return status;
        }
        raw_.push_back(path);
        firstUnfinished_ = std::min(firstUnfinished_, numberIn(name));
        return {};
    }

    IoStatus copyOne(const std::string& name, const std::string& path) {
        // A link could lead anywhere; a working store never holds one.
        if (!belongsToDocument(name) || isRawGroup(name) ||
            (isChunk(name) && numberIn(name) >= firstUnfinished_)) {
            return {};
        }
        bool plain = false;
        if (auto status = probeOwnFile(path, plain); !status.ok() || !plain) {
            return status;
        }
        bool raw = false;
        if (isChunk(name)) {
            if (auto status = probeRawCommands(path, raw); !status.ok()) {
                return status;
            }
        }
        if (raw) {
            raw_.push_back(path);
            return {};
        }
        ++copied_;
        return context_.files.copyIn(path, name);
    }

    IoStatus writeRawCommands() {
        if (raw_.empty()) {
            return {};
        }
        FileWriter writer;
        if (auto status = writer.open(context_.store.pathOf(working::kData1), WriteMode::Truncate);
            !status.ok()) {
            return status;
        }
        RawCommands commands(writer);
        for (const auto& path : raw_) {
            if (auto status = commands.add(path); !status.ok()) {
                return status;
            }
        }
        return writer.close();
    }

    static IoStatus probeOwnFile(const std::string& path, bool& plain) {
        struct stat info {};
        if (::lstat(path.c_str(), &info) != 0) {
            return {path, errno};
        }
        plain = S_ISREG(info.st_mode);
        return {};
    }

    DocumentContext& context_;
    std::string folder_;
    std::map<std::string, std::string, std::less<>> files_;
    std::vector<std::string> takenBack_;
    std::optional<StoreRecord> record_;
    std::vector<std::string> faults_;
    std::vector<std::string> raw_;
    /// From this number on the chunks were made from raw commands that still exist.
    std::int64_t firstUnfinished_ = std::numeric_limits<std::int64_t>::max();
    int copied_ = 0;
};

void reportFaults(UserInterface* parent, const std::string& folder,
                  const std::vector<std::string>& faults) {
    if (faults.empty()) {
        return;
    }
    auto text = formatPrintf(
        "Not every file in '%s' is as the run has left it. What was lost with one of "
        "these files is not in the recovered document:\n",
        folder);
    for (std::size_t i = 0; i < faults.size() && i < kMaxFaults; ++i) {
        text += "\n" + faults[i];
    }
    if (faults.size() > kMaxFaults) {
        text += formatPrintf("\nand %d more", faults.size() - kMaxFaults);
    }
    showBox(parent, text, kDamagedTitle, Icon::Warning);
}

/// Contents of files of the user that a save could not put back, or of which the run died.
void reportFormerContents(UserInterface* parent, const std::string& folder) {
    std::vector<FolderEntry> entries;
    (void)listFolder(folder, entries);
    for (const auto& entry : entries) {
        const auto path = folder + "/" + entry.name;
        const auto note = path + std::string(working::kFormerOf);
        std::string target;
        if (entry.isFolder || !matchesWildcard(entry.name, working::kFormerFiles) ||
            !isOwnPlainFile(path) || !isOwnPlainFile(note) || fileSize(note) > kLongestPath ||
            !readWholeFile(note, target).ok()) {
            continue;
        }
        showBox(parent,
                formatPrintf("The file '%s' may not have been written completely. What it held "
                             "before is in '%s'.",
                             target, path),
                kDamagedTitle, Icon::Warning);
    }
}

/// The edition of the group files: what they say, unless the record knows it better.
bool findEdition(DocumentContext& context, UserInterface* parent,
                 const std::optional<StoreRecord>& record) {
    int edition = context.document.version;
    if (context.steps.detectVersions(parent, edition) == 0) {
        return false;
    }
    if (record && record->isLoaded &&
        std::find(kEditions.begin(), kEditions.end(), record->edition) != kEditions.end()) {
        edition = record->edition;
    }
    context.document.version = edition;
    return true;
}

/// True if a store may be recovered; else it has been said why not.
bool mayRecover(UserInterface* parent, const std::string& folder, const StoreFacts& facts,
                bool isPartial) {
    if (facts.isIncomplete()) {
        showBox(parent, incompleteText(folder, facts), kTitle, Icon::Warning);
        return isPartial;
    }
    if (parent != nullptr && !facts.record) {
        parent->note(formatPrintf(
            "The folder '%s' does not say whether its file was read to the end.", folder));
    }
    if (parent != nullptr && facts.record && !facts.record->isLoaded) {
        parent->note(
            formatPrintf("The run that left '%s' behind was still opening its file.", folder));
    }
    return true;
}

}  // namespace

bool recoverStore(Application& application, UserInterface* parent, const std::string& folder,
                  const std::string& output, bool isPartial) {
    auto& context = application.context();
    auto& document = context.document;
    const StoreClaim claim(folder);
    if (claim.isInUse()) {
        showBox(parent,
                formatPrintf("The folder '%s' belongs to a run that has not ended.", folder),
                kTitle);
        return false;
    }
    if (!mayRecover(parent, folder, describeStore(folder), isPartial) ||
        !context.store.leaveKeptFolder(parent)) {
        return false;
    }
    std::optional<LoadScope> load(std::in_place, context.files);
    StoreCopy copy(context, folder);
    if (const auto status = copy.run(); !status.ok()) {
        reportFailure(parent, "Unable to read '%s'\n\nReason: %s", status);
        return false;
    }
    if (!copy.foundAnything()) {
        showBox(parent, formatPrintf("The folder '%s' holds no files of a TMATS document.", folder),
                kTitle);
        return false;
    }
    for (const auto& operation : copy.takenBack()) {
        if (parent != nullptr) {
            parent->note(formatPrintf("'%s' had not ended: it is taken back.", operation));
        }
    }
    reportFaults(parent, folder, copy.faults());
    if (!findEdition(context, parent, copy.record())) {
        return false;
    }
    document.kind = DocumentKind::TmatsFile;
    context.history.markCorrected();
    const bool converted =
        !copy.needsConversion() || context.steps.loadConversions(parent, document.version);
    context.messages.showLog(parent, folder);
    load.reset();
    context.history.markOpened();
    if (!converted || !saveDocumentTo(context, parent, output)) {
        return false;
    }
    reportFormerContents(parent, folder);
    if (const auto status = markRecovered(folder, output, context.clock);
        !status.ok() && parent != nullptr) {
        parent->note(formatPrintf("The folder could not be marked as recovered: '%s': %s",
                                  status.path(), status.reason()));
    }
    return true;
}

}  // namespace kavu
