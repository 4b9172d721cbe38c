#include "application/Recovery.h"

#include "application/Application.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/FileJournal.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

constexpr const char* kTitle = "Unable To Recover Working Store";

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

/// True for the files of a document; scratch files that end in "tmp" are incomplete.
bool belongsToDocument(const std::string& name) {
    return name.starts_with("[kavu]") && !name.ends_with("tmp") && !name.ends_with(".new");
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
        return status;
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
    std::vector<std::string> raw_;
    /// From this number on the chunks were made from raw commands that still exist.
    std::int64_t firstUnfinished_ = std::numeric_limits<std::int64_t>::max();
    int copied_ = 0;
};

bool isAbandoned(const std::string& folder, AbandonedStore& found) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct stat info {};
    // A running program holds a lock on its folder, which the system releases when it
    // ends.
    const bool abandoned = ::fstat(descriptor, &info) == 0 && info.st_uid == ::geteuid() &&
                           ::flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    ::close(descriptor);
    found = {folder, info.st_mtim.tv_sec};
    return abandoned;
}

}  // namespace

std::vector<AbandonedStore> findAbandonedStores(const std::string& temporaryRoot,
                                                IoStatus* failure) {
    std::vector<FolderEntry> entries;
    std::vector<AbandonedStore> stores;
    if (auto status = listFolder(temporaryRoot, entries); failure != nullptr) {
        *failure = std::move(status);
    }
    for (const auto& entry : entries) {
        AbandonedStore store;
        if (entry.isFolder && entry.name.starts_with(kApplicationName) &&
            isAbandoned(temporaryRoot + "/" + entry.name, store)) {
            stores.push_back(std::move(store));
        }
    }
    std::sort(stores.begin(), stores.end(),
              [](const auto& a, const auto& b) { return a.modified > b.modified; });
    return stores;
}

bool recoverStore(Application& application, UserInterface* parent, const std::string& folder,
                  const std::string& output) {
    auto& context = application.context();
    auto& document = context.document;
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
    int input = document.version;
    if (context.steps.detectVersions(parent, input) == 0) {
        return false;
    }
    document.version = input;
    document.kind = DocumentKind::TmatsFile;
    context.history.markCorrected();
    const bool converted = !copy.needsConversion() || context.steps.loadConversions(parent, input);
    context.messages.showLog(parent, folder);
    load.reset();
    context.history.markOpened();
    return converted && saveDocumentTo(context, parent, output);
}

}  // namespace kavu
