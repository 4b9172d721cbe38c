#include "mdb/import/ImportFile.h"

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/operations/DatabaseWork.h"

#include <unordered_set>

namespace kavu {

namespace {

constexpr const char* kCreating = "Creating KAVU Measurement Database";
constexpr const char* kResults = "Import Results";
constexpr const char* kSkippedText =
    "The following measurements were not imported into the database, because they already existed "
    "in the KAVU database,";
constexpr const char* kRefusedText =
    "The following measurements were not imported into the database, because one of their fields "
    "holds a semi-colon,";

/// One import, from the opened file to the changed database.
class Import {
  public:
    Import(const DocumentContext& context, UserInterface* parent, MeasurementDatabase& database)
        : messages_(context.messages), parent_(parent), database_(database) {}

    /// False if the file could not be written, or the source not read.
    bool run(ImportSource& source, bool overwrites) {
        MeasurementDatabase::Batch batch(database_, parent_);
        if (!batch.isOpen() || (overwrites && !database_.remove(parent_, {}))) {
            return false;
        }
        takeRows(source);
        if (const auto status = source.status(); !status.ok()) {
            reportUnableToRead(parent_, status);
            return false;
        }
        return batch.commit(parent_);
    }

    void report() {
        if (isTooShort_) {
            messages_.show(parent_, 422, title::kWarning, kWarningBox);
        }
        if (result.skipped.empty() && result.refused.empty()) {
            messages_.show(parent_, -424, title::kNote, kNoteBox, result.converted);
            return;
        }
        (void)deleteFile(messages_.logPath());
        messages_.log(parent_, 424, title::kNote, result.converted);
        FileWriter log;
        auto status = log.open(messages_.logPath(), WriteMode::Append);
        writeNames(log, kSkippedText, result.skipped);
        writeNames(log, kRefusedText, result.refused);
        status = status.ok() ? log.close() : status;
        if (!status.ok()) {
            reportUnableToWrite(parent_, status);
        }
        messages_.showDialog(parent_, kResults, "Measurement Database: " + database_.path(),
                             messages_.logPath());
    }

    ImportResult result;

  private:
    void takeRows(ImportSource& source) {
        ImportRow row;
        auto shown = -1.0;
        while (!cancelRequested(parent_) && source.next(row)) {
            const auto percent = source.percent();
            if (percent - shown >= 1) {
                shown = percent;
                setProgressText(parent_, formatPrintf("Importing File - (%.0f%%)", percent));
                setProgressBar(parent_, percent);
            }
            takeRow(row);
        }
    }

    void takeRow(const ImportRow& row) {
        isTooShort_ |= row.skip == ImportSkip::TooShort;
        const auto& name = row.record.name();
        if (row.skip != ImportSkip::None || name.empty()) {
            return;
        }
        if (database_.contains(name)) {
            result.skipped.push_back(name);
        } else if (!database_.canHold(row.record)) {
            if (result.refused.empty()) {
                messages_.show(parent_, 402, title::kError, kErrorBox);
            }
            result.refused.push_back(name);
        } else if (database_.add(parent_, row.record)) {
            ++result.converted;
        }
    }

    static void writeNames(FileWriter& log, const char* text,
                           const std::vector<std::string>& names) {
        if (names.empty()) {
            return;
        }
        log.write("\n");
        log.write(text);
        log.write("\n");
        for (const auto& name : names) {
            log.write("\t" + name + "\n");
        }
    }

    const Messages& messages_;
    UserInterface* parent_;
    MeasurementDatabase& database_;
    bool isTooShort_ = false;
};

std::string skipText(const ImportRow& row, bool isThere, bool isHeld) {
    switch (row.skip) {
        case ImportSkip::Deleted:
            return "The row is marked as deleted";
        case ImportSkip::TooShort:
            return "The line ends before a field";
        case ImportSkip::Blank:
            return "The line is blank";
        case ImportSkip::None:
            break;
    }
    if (row.record.name().empty()) {
        return "There is no measurement name";
    }
    return isThere   ? "The measurement is in the database already"
           : !isHeld ? "A field holds a semi-colon"
                     : "";
}

/// What has come into the database that the editor works with is checked as it is at the start.
void validateIfInUse(DocumentContext& context, UserInterface* parent,
                     MeasurementDatabase& database) {
    const auto& settings = context.settings;
    bool isSame = false;
    if (settings.get(setting::kDatabaseEnabled) &&
        probeSameFile(settings.get(setting::kDatabasePath), database.path(), isSame).ok() &&
        isSame && databaseVersion(settings) == database.version()) {
        (void)validateDatabase(context, parent, database, context.document.version,
                               OnFailure::SwitchOff);
    }
}

}  // namespace

std::optional<ImportResult> importFile(DocumentContext& context, UserInterface* parent,
                                       const ImportInput& input, MeasurementDatabase& database,
                                       bool overwrites) {
    const auto source = openImport(context.messages, parent, input);
    if (!source || !openDatabase(context, parent, database, IfMissing::Start, OnFailure::Report)) {
        return std::nullopt;
    }
    Import import(context, parent, database);
    {
        const ProgressScope progress(parent, ProgressMode::WithCancel);
        setStatusText(parent, kCreating);
        setProgressText(parent, kCreating);
        const bool isIndexed = database.loadNameIndex(parent);
        if (!isIndexed) {
            context.messages.show(parent, 411, title::kNote, kErrorBox);
        }
        const bool isDone = isIndexed && import.run(*source, overwrites);
        setStatusText(parent, {});
        if (!isDone) {
            return std::nullopt;
        }
    }
    import.report();
    validateIfInUse(context, parent, database);
    return std::move(import.result);
}

std::vector<ImportPreviewRow> previewImport(DocumentContext& context, const ImportInput& input,
                                            MeasurementDatabase* database, bool overwrites,
                                            std::size_t count) {
    std::vector<ImportPreviewRow> rows;
    const auto source = openImportQuietly(context.messages, input);
    ImportRow row;
    std::unordered_set<std::string> taken;
    while (source && rows.size() < count && source->next(row)) {
        const auto& name = row.record.name();
        const bool isThere =
            taken.count(name) > 0 ||
            (database != nullptr && !overwrites && database->isOpen() && database->contains(name));
        const bool isHeld = database == nullptr || database->canHold(row.record);
        auto skipped = skipText(row, isThere, isHeld);
        if (skipped.empty()) {
            taken.insert(name);
        }
        rows.push_back({row.number, row.record, std::move(skipped)});
    }
    return rows;
}

}  // namespace kavu
