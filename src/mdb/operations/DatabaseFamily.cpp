#include "mdb/operations/DatabaseFamily.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/files/ProfileFile.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "mdb/operations/EuDataString.h"
#include "mdb/operations/StreamSave.h"
#include "pcm/PcmFormat.h"

namespace kavu {

namespace {

constexpr const char* kSelectTitle = "Select Measurement From Database";

std::string orElse(const std::string& text, std::string_view otherwise) {
    return text.empty() ? std::string(otherwise) : text;
}

bool putConversion(ConversionStore& store, UserInterface* parent, const std::string& name,
                   const MdbRecord& record) {
    const auto place = store.locateDefinition(name);
    if (!place.found) {
        return false;
    }
    const auto chunk = store.chunk(place.chunk);
    for (auto i = mdbfield::kFirstConversion; i < mdbfield::kData; ++i) {
        if (!record[i].empty()) {
            chunk->setValue(place.section, mdbFields()[i].key, record[i]);
        }
    }
    chunk->setValue(place.section, recordkey::kChanged, "1");
    chunk->removeKey(place.section, recordkey::kTemplate);
    const auto& type = record[mdbfield::kType];
    const bool isComment = equalsIgnoreCase(type, kCommentType);
    if (!isComment) {
        (void)putEuData(*chunk, place.section, type, record[mdbfield::kData]);
    }
    if (const auto status = store.store(place.chunk, *chunk); !status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorReadingConversion);
        return false;
    }
    return !isComment || record[mdbfield::kData].empty() ||
           applyEuDataString(store, parent, name, type, record[mdbfield::kData]);
}

}  // namespace

DatabaseRecord frameRecord(const MdbRecord& record) {
    return {.name = record.name(),
            .root = record[mdbfield::kRoot],
            .mask = orElse(record[mdbfield::kMask], "FW"),
            .transferOrder = orElse(record[mdbfield::kTransferOrder], "D"),
            .parityTransferOrder = orElse(record[mdbfield::kParityTransferOrder], "D"),
            .parity = orElse(record[mdbfield::kParity], "DE")};
}

bool addDatabaseConversion(DatabaseWork& work, UserInterface* parent, const MdbRecord& record) {
    return work.conversions.createDefaultDefinition(parent, record.name(), false) &&
           putConversion(work.conversions, parent, record.name(), record);
}

DatabaseSteps databaseSteps(DatabaseWork& work, std::vector<std::string>* added) {
    DatabaseSteps steps;
    steps.find = [&work](UserInterface*, std::string_view name) -> std::optional<DatabaseRecord> {
        const auto record = work.database.lookUp(name);
        return record ? std::optional(frameRecord(*record)) : std::nullopt;
    };
    steps.forEachChild = [&work](UserInterface*, std::string_view root,
                                 const std::function<bool(const DatabaseRecord&)>& visit) {
        for (const auto& record : work.database.childrenOf(root)) {
            if (!visit(frameRecord(record))) {
                break;
            }
        }
        return true;
    };
    steps.addConversion = [&work, added](UserInterface* parent, std::string_view name) {
        const auto record = work.database.lookUp(name);
        if (record) {
            (void)addDatabaseConversion(work, parent, *record);
        }
        if (added != nullptr) {
            added->emplace_back(name);
        }
    };
    steps.select = [&work](UserInterface* parent) -> std::optional<DatabaseRecord> {
        const auto record = selectDatabaseRecord(work, parent);
        return record ? std::optional(frameRecord(*record)) : std::nullopt;
    };
    return steps;
}

std::optional<MdbRecord> selectDatabaseRecord(DatabaseWork& work, UserInterface* parent) {
    if (parent == nullptr) {
        return std::nullopt;
    }
    TablePrompt prompt;
    prompt.title = kSelectTitle;
    prompt.columns = {std::string(mdbFields()[mdbfield::kName].label),
                      std::string(mdbFields()[mdbfield::kDescription].label)};
    bool isCancelled = false;
    {
        const ProgressScope progress(parent, ProgressMode::WithCancel);
        setStatusText(parent, "Reading Database");
        for (auto record = work.database.first(); record && !isCancelled;
             record = work.database.next()) {
            auto description = (*record)[mdbfield::kDescription];
            fromStoredForm(description);
            prompt.rows.push_back({record->name(), std::move(description)});
            if (prompt.rows.size() % kPollEvery == 0) {
                yieldToInterface(parent);
                isCancelled = cancelRequested(parent);
            }
        }
        setStatusText(parent, {});
    }
    if (isCancelled) {
        work.context.messages.show(parent, 414, title::kError, kErrorBox);
        return std::nullopt;
    }
    const int row = parent->selectFromTable(prompt);
    if (row < 0 || static_cast<std::size_t>(row) >= prompt.rows.size()) {
        return std::nullopt;
    }
    // By its place: several records may have the name.
    auto record = work.database.first();
    for (int i = 0; i < row && record; ++i) {
        record = work.database.next();
    }
    return record;
}

bool storeMeasurementInDatabase(DatabaseWork& work, UserInterface* parent,
                                const std::string& name) {
    const auto records = streamRecords(work, parent, {name});
    if (records.empty()) {
        return false;
    }
    auto record = records.front();
    if (const auto former = work.database.lookUp(name)) {
        record[mdbfield::kRoot] = (*former)[mdbfield::kRoot];
        for (auto i = mdbfield::kBusName; i < mdbfield::kFirstConversion; ++i) {
            record[i] = (*former)[i];
        }
    }
    return work.database.replace(parent, record);
}

}  // namespace kavu
