// The import of a data source from another TMATS file.
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "groups/SourceConversions.h"
#include "groups/SourceEdit.h"
#include "groups/SourceImportFile.h"
#include "groups/SourceList.h"
#include "groups/SourceNames.h"
#include "groups/SourceTransfer.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr const char* kImportTitle = "Import Data Source";
constexpr const char* kFileTitle = "Import Data Source/Stream From TMATS File:";

/// What the user wants to import.
struct ImportPlan {
    ImportOffer offer;
    bool conversions = false;
    NameAffixes affixes;
};

class SourceImporter {
  public:
    SourceImporter(SourceParts& parts, UserInterface* parent, SourceImportFile& file,
                   ImportPlan plan)
        : parts_(parts),
          parent_(parent),
          file_(file),
          plan_(std::move(plan)),
          transaction_(parts.context, OperationId::ImportSource) {}

    /// All new files are complete before the first of them is moved in.
    bool run() {
        if (endTransaction(transaction_, parent_,
                           chooseNames() && takeGroups() && mayTake() && takeConversions() &&
                               moveIn() && loadConversions())) {
            return true;
        }
        parts_.context.store.deleteFiles(nullptr, working::kData1);
        return false;
    }

  private:
    void tell(const char* text) {
        setProgressText(parent_, text);
        setStatusText(parent_, text);
    }
    bool report(const IoStatus& status) {
        if (!status.ok()) {
            reportUnableToWrite(parent_, status);
        }
        return status.ok();
    }

    bool chooseNames() {
        tell("Updating General Information");
        auto& context = parts_.context;
        LinkNames sources;
        LinkNames links;
        if (!gatherSourceNames(context, parent_, sources) ||
            !gatherLinkNames(context, parent_, links)) {
            return false;
        }
        rows_ = listDataSources(context, nullptr);
        if (rows_ >= kMostListRows) {
            context.messages.show(parent_, 303, title::kError, kErrorBox, "data source");
            return false;
        }
        tell("Copying Data Source");
        const auto& offer = plan_.offer;
        newSource_ = uniqueName(offer.name, sources);
        logRenamed("Source", offer.name, newSource_);
        transfer_.emplace(context, newSource_, plan_.affixes);
        if (!offer.link.empty()) {
            const auto newLink = uniqueName(offer.link, links);
            logRenamed("Link", offer.link, newLink);
            transfer_->renameLink(offer.link, newLink);
        }
        return true;
    }
    void logRenamed(const char* what, const std::string& before, const std::string& now) {
        if (before != now) {
            parts_.context.messages.log(parent_, 458, title::kWarning, what, before, now);
        }
    }

    /// The second pass over the file: the commands of the chosen groups.
    bool takeGroups() {
        tell("Importing Other Data Into TMATS File");
        const auto& offer = plan_.offer;
        const std::pair<char, int> chosen[] = {{offer.letter, offer.index},
                                               {'M', offer.multiplex},
                                               {'P', offer.format},
                                               {offer.dataLetter, offer.data}};
        for (const auto& [letter, index] : chosen) {
            if (index > 0 && !transfer_->expect(parent_, letter, index)) {
                return false;
            }
        }
        return file_.forEach(
            parent_,
            [&](char letter, std::int64_t index, const std::string& command) {
                if (index >= kLeastGroupIndex && index <= kMostGroupIndex) {
                    transfer_->take(letter, static_cast<int>(index), command);
                }
                return true;
            },
            [&](double percent) { setProgressBar(parent_, percent); });
    }

    /// Names must not be too long, and with checking on, none may be in another stream.
    bool mayTake() {
        if (transfer_->tellTooLong(parent_)) {
            return false;
        }
        if (!parts_.measurements.checking()) {
            return true;
        }
        for (const auto& [oldName, newName] : transfer_->measurements()) {
            if (const auto stream = parts_.measurements.otherStream(newName, 0)) {
                parts_.context.messages.show(parent_, 455, title::kError, kErrorBox, newName,
                                             std::to_string(*stream));
                return false;
            }
        }
        return true;
    }

    /// The third pass: the records of the imported measurements, as raw commands.
    bool takeConversions() {
        if (!plan_.conversions) {
            return true;
        }
        if (!recordsAreKnown(parts_, parent_)) {
            return false;
        }
        setProgressText(parent_, "Importing EU Conversion Information");
        setStatusText(parent_, "Importing EU Conversion Information");
        std::unordered_map<std::int64_t, Record> wanted;
        auto number = static_cast<std::int64_t>(
            parts_.conversions.definitionNames(-1).value_or(std::vector<std::string>()).size());
        const auto& names = transfer_->measurements();
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto& [oldName, newName] = names[i];
            if (i % kTellEvery == 0) {
                setStatusText(parent_, formatPrintf("Importing EU Conversion Information (%.0f%%)",
                                                    100.0 * static_cast<double>(i) /
                                                        static_cast<double>(names.size())));
            }
            const auto index = file_.conversionOf(oldName);
            if (index == 0) {
                continue;
            }
            if (parts_.conversions.locateDefinition(newName).found) {
                parts_.context.messages.log(parent_, 459, title::kWarning, newName);
            } else if (!wanted.contains(index)) {
                wanted[index] = {++number, newName};
            }
        }
        return wanted.empty() || writeRaw(wanted);
    }

    struct Record {
        std::int64_t number = 0;
        std::string name;
    };
    bool writeRaw(const std::unordered_map<std::int64_t, Record>& wanted) {
        // From here on recovery knows that the raw commands belong to an unfinished import.
        if (!report(transaction_.keepAll({}))) {
            return false;
        }
        FileWriter raw;
        if (!report(raw.open(parts_.context.store.pathOf(working::kData1), WriteMode::Truncate))) {
            return false;
        }
        setProgressText(parent_, "Adding EU Conversion Information");
        const bool complete = file_.forEach(
            parent_,
            [&](char letter, std::int64_t index, const std::string& command) {
                const auto record = letter == 'C' ? wanted.find(index) : wanted.end();
                if (record != wanted.end()) {
                    const auto view = viewCommand(command);
                    const bool name = startsWithIgnoreCase(view.field, c::kDcn.code);
                    raw.write(formatPrintf(
                        "C-%s\\%s:%s;\r\n", std::to_string(record->second.number), view.field,
                        name ? std::string_view(record->second.name) : view.value));
                }
                return true;
            },
            [&](double percent) {
                setStatusText(parent_,
                              formatPrintf("Adding EU Conversion Information (%.0f%%)", percent));
                setProgressBar(parent_, percent);
            });
        const auto closed = raw.close();
        rawWritten_ = true;
        return complete && report(closed);
    }

    bool moveIn() {
        tell("Updating Data Source Pointers");
        // The load of the new records replaces those that are only in memory.
        if (rawWritten_ && !report(parts_.conversions.writeOut())) {
            return false;
        }
        const auto& offer = plan_.offer;
        const bool radio = offer.letter == 'T';
        const bool fits = !offer.type.empty() && dataSourceClass(offer.type) == (radio ? 'R' : 'T');
        return report(appendSource(parts_.context, rows_, newSource_,
                                   fits    ? std::string_view(offer.type)
                                   : radio ? "RF"
                                           : "TAP")) &&
               transfer_->moveIn(parent_);
    }

    bool loadConversions() {
        const auto& context = parts_.context;
        if (!rawWritten_) {
            return true;
        }
        tell("Renumbering EU Conversion Information");
        return !context.steps.loadConversions ||
               context.steps.loadConversions(parent_, context.document.version);
    }

    SourceParts& parts_;
    UserInterface* parent_;
    SourceImportFile& file_;
    ImportPlan plan_;
    Transaction transaction_;
    std::optional<SourceTransfer> transfer_;
    int rows_ = 0;
    std::string newSource_;
    bool rawWritten_ = false;
};

/// Lets the user choose; nothing if it was cancelled or there is nothing to choose from.
std::optional<ImportOffer> chooseOffer(UserInterface* parent, std::vector<ImportOffer> offers,
                                       char kind) {
    const char* const what = kind == 'R' ? "RF" : "Recorder/Reproducer";
    if (offers.empty()) {
        showBox(parent, formatPrintf("This file has no %s data source that can be imported.", what),
                kImportTitle, Icon::Information);
        return std::nullopt;
    }
    TablePrompt prompt;
    prompt.title = formatPrintf("Select Which %s Stream To Import", what);
    prompt.columns = {"Data Source Name", "Data Link Name", "Stream Type"};
    for (const auto& offer : offers) {
        prompt.rows.push_back({offer.name, offer.link, offer.streamType});
    }
    const int row = parent->selectFromTable(prompt);
    return row < 0 || row >= static_cast<int>(offers.size())
               ? std::nullopt
               : std::optional(std::move(offers[static_cast<std::size_t>(row)]));
}

std::optional<ImportPlan> askPlan(DocumentContext& context, UserInterface* parent,
                                  SourceImportFile& file, char kind) {
    std::vector<ImportOffer> offers;
    {
        const ProgressScope progress(parent, ProgressMode::WithCancel);
        setProgressText(parent, "Searching for Data Sources");
        if (!file.open(parent)) {
            return std::nullopt;
        }
        offers = file.offers(parent, kind);
    }
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    auto offer = chooseOffer(parent, std::move(offers), kind);
    if (!offer) {
        return std::nullopt;
    }
    ImportPlan plan;
    plan.offer = std::move(*offer);
    const auto answer = showBox(parent, "Would you also like to import EU conversions?",
                                kImportTitle, Icon::Question, Buttons::YesNoCancel, Button::Yes);
    plan.conversions = answer == Button::Yes;
    if ((answer != Button::Yes && answer != Button::No) ||
        !askPrefixSuffix(context, parent, plan.affixes)) {
        return std::nullopt;
    }
    return plan;
}

/// While a file is imported, over-long names are reported in the log.
class ImportLog {
  public:
    explicit ImportLog(DocumentContext& context) : context_(context) {
        context.store.deleteFiles(nullptr, working::kMessageLog);
        context.reader.setLogFile(context.messages.logPath());
    }
    ImportLog(const ImportLog&) = delete;
    ImportLog& operator=(const ImportLog&) = delete;
    ~ImportLog() { context_.reader.setLogFile({}); }

  private:
    DocumentContext& context_;
};

bool importFrom(SourceParts& parts, UserInterface* parent, const std::string& path, char kind) {
    const ImportLog log(parts.context);
    SourceImportFile file(parts.context, path);
    auto plan = askPlan(parts.context, parent, file, kind);
    if (!plan) {
        return false;
    }
    ProgressScope progress(parent, ProgressMode::WithCancel);
    return SourceImporter(parts, parent, file, std::move(*plan)).run();
}

}  // namespace

bool importDataSource(SourceParts& parts, UserInterface* parent, char kind) {
    auto& context = parts.context;
    std::string path;
    if (askOpenTmatsFile(context, parent, path, kFileTitle) == 0) {
        return false;
    }
    const bool done = importFrom(parts, parent, path, kind);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    context.messages.showLog(parent, context.document.path);
    if (done) {
        parts.measurements.checkForDuplicates(parent);
        releaseStream(context);
    }
    return done;
}

bool createOrImportDataSource(SourceParts& parts, UserInterface* parent, char letter) {
    if (parent == nullptr) {
        return false;
    }
    const int choice = parent->chooseFromList(
        "Would you like to create a new, blank, data source template, or import an existing data "
        "source",
        {"Template", "Import"});
    if (choice < 0) {
        return false;
    }
    return choice == 0 ? createDataSource(parts, parent)
                       : importDataSource(parts, parent, letter == 'T' ? 'R' : 'T');
}

}  // namespace kavu
