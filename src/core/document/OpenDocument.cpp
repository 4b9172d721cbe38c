#include "core/document/OpenDocument.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/DocumentVersion.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupSplitter.h"
#include "core/files/FileIo.h"
#include "core/files/UserFile.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr const char* kDataSourceQuestion =
    "Which kind of TMATS Data Source would you like to create?\n\n"
    "RF: Creates a TMATS T-Group definition\n"
    "Tape: Creates a TMATS R-Group definition";

/// Runs an installed step; one that is not installed counts as done.
template <typename... Args>
bool runStep(const std::function<bool(Args...)>& step, Args... args) {
    return !step || step(args...);
}

/// While a document is loaded, over-long fields are reported in the log and not in boxes.
class LengthLog {
  public:
    LengthLog(TmatsReader& reader, const std::string& path) : reader_(reader) {
        reader_.setLogFile(path);
    }
    LengthLog(const LengthLog&) = delete;
    LengthLog& operator=(const LengthLog&) = delete;
    ~LengthLog() { reader_.setLogFile({}); }

  private:
    TmatsReader& reader_;
};

/// No half-open document can exist: what a failed load has made is deleted.
void abandonLoad(DocumentContext& context, UserInterface* parent) {
    const int edition = context.document.version;
    context.files.clear(parent, edition);
    context.history.markClosed(edition);
}

bool finishLoad(DocumentContext& context, UserInterface* parent) {
    setStatusText(parent, "Processing TMATS file");
    if (!runStep(context.steps.validateDataLinks, parent)) {
        return false;
    }
    context.history.markOpened();
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return true;
}

/// An empty document, or a part of one, is opened only with a word about it.
void remarkLoss(UserInterface* parent, const std::string& path) {
    std::uint64_t size = 0;
    if (parent == nullptr || !isPlainFile(path) || !probeSize(path, size).ok()) {
        return;
    }
    if (const auto store = UserFile::killedOwnerOf(path); !store.empty()) {
        parent->note(
            formatPrintf("'%s' was left cut short by a save that was not completed; the document "
                         "was in '%s'.",
                         path, store));
    } else if (size == 0) {
        parent->note(formatPrintf("'%s' is empty.", path));
    }
}

/// Reports that the store could not say what it holds.
bool isRecorded(const DocumentContext& context, UserInterface* parent, const IoStatus& status) {
    if (!status.ok()) {
        context.messages.showFailure(parent, status, 158, title::kErrorReading, kWarningBox,
                                     status.path());
    }
    return status.ok();
}

bool loadContents(DocumentContext& context, UserInterface* parent, const std::string& path,
                  const LoadOptions& options) {
    if (!options.create) {
        return readTmatsFile(context, parent, path, options.project);
    }
    if (!isRecorded(context, parent, context.files.beginRecord({}))) {
        return false;
    }
    if (createNewTmatsFile(context, parent, options.makeTemplate)) {
        context.history.markCorrected();
    }
    return true;
}

}  // namespace

bool openTmatsFileCommand(DocumentContext& context, UserInterface* parent) {
    std::string path;
    return askOpenTmatsFile(context, parent, path) != 0 && loadDocument(context, parent, path);
}

int askOpenTmatsFile(DocumentContext& context, UserInterface* parent, std::string& path,
                     const std::string& title) {
    if (parent == nullptr) {
        return 0;
    }
    auto prompt = openTmatsPrompt(context.document, context.settings, title);
    prompt.filterIndex = context.settings.get(setting::kOpenFilter);
    prompt.path = path;
    const auto choice = parent->chooseFile(prompt);
    if (!choice) {
        return 0;
    }
    context.settings.set(setting::kOpenFilter, choice->filterIndex);
    path = choice->path;
    return choice->filterIndex;
}

namespace {

/// The file of this name, or of the name with an extension; nothing if there is none.
std::optional<std::string> findFile(const std::string& name) {
    PathKind kind = PathKind::Missing;
    if (name.empty()) {
        return std::nullopt;
    }
    // A file that cannot be reached is no reason to open another one instead.
    if (!probePath(name, kind).ok() || kind != PathKind::Missing) {
        return name;
    }
    for (const char* const extension : {".tma", ".tmt"}) {
        if (fileExists(name + extension)) {
            return name + extension;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string fileOfName(const std::string& name) {
    // Quotes and blanks may be part of a file's name.
    if (auto found = findFile(name)) {
        return *found;
    }
    std::string bare(trim(replaceAll(name, "\"", "")));
    return findFile(bare).value_or(bare);
}

bool openFromName(DocumentContext& context, UserInterface* parent, const std::string& name) {
    return loadDocument(context, parent, fileOfName(name));
}

bool loadDocument(DocumentContext& context, UserInterface* parent, const std::string& path,
                  const LoadOptions& options) {
    auto& document = context.document;
    if (document.open && closeDocument(context, parent) == CloseResult::Cancelled) {
        return document.open;
    }
    if (!context.store.leaveKeptFolder(parent)) {
        return false;
    }
    const LoadScope scope(context.files);
    context.history.clear();
    document.created = options.create;  // closing has cleared it
    document.kind = DocumentKind::TmatsFile;
    document.readOnly = !options.create && fileExists(path) && !canWrite(path);
    if (context.steps.releasePcmFormat) {
        context.steps.releasePcmFormat();
    }
    resetVersionFromSettings(context);
    // The program may be started anywhere the next time, and the list of recent files stays.
    document.path = absolutePath(path);
    // Before the first byte is read: what changes from then on is not what is opened.
    document.diskStamp = fileStamp(document.path);
    // The close of a document too old for S groups leaves their files.
    (void)context.files.removeAll(groupKind('S').wildcard);

    const LengthLog log(context.reader, context.messages.logPath());
    const bool opened = loadContents(context, parent, path, options) &&
                        finishLoad(context, parent) &&
                        isRecorded(context, parent, context.files.recordState(document.version));
    // Once, when the tree is there to be gone to: with what the validation has reported.
    context.messages.showLog(parent, path);
    if (!opened) {
        abandonLoad(context, parent);
    }
    return opened;
}

bool splitIntoGroupFiles(DocumentContext& context, UserInterface* parent, const std::string& path) {
    return GroupSplitter(context, parent).run(path);
}

bool readTmatsFile(DocumentContext& context, UserInterface* parent, const std::string& path,
                   bool project) {
    const auto& steps = context.steps;
    const auto& document = context.document;
    // The log is emptied before the names are gathered, so that it holds what gathering
    // them reports.
    context.store.deleteFiles(nullptr, working::kMessageLog);
    remarkLoss(parent, path);
    ProgressScope progress(parent, ProgressMode::WithCancel);

    bool good = splitIntoGroupFiles(context, parent, path);
    good = good && runStep(steps.gatherMeasurementNames, parent);
    if (good) {
        int input = document.version;
        const int target = steps.detectVersions ? steps.detectVersions(parent, input) : input;
        good = target != 0 && isRecorded(context, parent, context.files.recordEdition(input));
        setStatusText(parent, "Pre-processing Data Conversion Information");
        if (good && !project && steps.loadConversions) {
            // The limits of a document are those of its own edition, until it has moved to another.
            good = steps.loadConversions(parent, input);
        }
        if (good && steps.migrate) {
            const auto migrated = steps.migrate(parent, input, target);
            good = migrated.has_value();
            if (migrated.value_or(false)) {
                context.history.markCorrected();
            }
        }
    }
    progress.close();
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return good;
}

namespace {

/// The G group of a new document with one data source.
std::string templateGeneral(const DocumentContext& context, bool radio) {
    const auto& document = context.document;
    std::string text;
    if (document.version >= 2009 && !document.path.empty()) {
        text += formatPrintf("G\\FN:%s;\r\n", fileNameOf(document.path));
    }
    if (document.version > 1996) {
        text += formatPrintf("G\\106:%2.2d;\r\n", editionNumber(document.version));
    }
    text += formatPrintf("G\\OD:%s;\r\n", tmatsDate(context.clock.now(), document.version));
    text += formatPrintf("G\\DSI\\N:1;\r\nG\\DSI-1:%s;\r\nG\\DST-1:%s;\r\n",
                         radio ? "RF Data Source" : "Tape Data Source", radio ? "RF" : "TAP");
    return text;
}

bool writeWorkingFile(DocumentContext& context, UserInterface* parent, const std::string& name,
                      const std::string& text) {
    const auto status = context.files.put(name, text);
    if (!status.ok()) {
        context.messages.showFailure(parent, status, 158, title::kErrorReading, kWarningBox,
                                     status.path());
    }
    return status.ok();
}

}  // namespace

bool createNewTmatsFile(DocumentContext& context, UserInterface* parent, bool makeTemplate) {
    const std::string general(working::kGeneral);
    const bool wanted =
        makeTemplate && context.messages.show(parent, -146, title::kNote, kYesNoBox) == Button::Yes;
    const int kind = wanted ? parent->chooseFromList(kDataSourceQuestion, {"RF", "Tape"}) : -1;
    if (kind < 0) {
        return writeWorkingFile(context, parent, general, {});
    }
    const bool radio = kind == 0;
    const std::string source = radio ? "RF Data Source" : "Tape Data Source";
    const bool made =
        writeWorkingFile(context, parent, general, templateGeneral(context, radio)) &&
        writeWorkingFile(context, parent, groupFile(radio ? 'T' : 'R', 1),
                         radio ? formatPrintf("T-1\\ID:%s;\r\nT-1\\SCO\\N:0;\r\n", source)
                               : formatPrintf("R-1\\ID:%s;\r\n", source));
    if (made && context.steps.createStream) {
        context.steps.createStream(parent, source);
    }
    return made;
}

}  // namespace kavu
