#include "mdb/operations/StreamSave.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/operations/EuDataString.h"
#include "pcm/PcmFormat.h"

#include <algorithm>
#include <numeric>

namespace kavu {

namespace {

constexpr const char* kSaveTitle = "Save Measurements To DataBase";
constexpr const char* kSaveText =
    "This function will save all measurements defined in this TMATS stream, to the measurement "
    "database. If you select Append, only measurements that did not previously exist in the "
    "measurement database will be saved.\n\nDo you wish to Overwrite, or Append to the existing "
    "database?";
constexpr const char* kDoneTitle = "Done";

MdbRecord wordRecord(const PcmFormat& format, CellRef cell, int fwp) {
    const auto& measurement = format.cells().measurement(cell);
    MdbRecord record(measurement.name.str());
    record[mdbfield::kWordLength] = std::to_string(format.wordLength(fwp));
    record[mdbfield::kMask] = measurement.mask.str();
    record[mdbfield::kTransferOrder] = measurement.transferOrder.str();
    record[mdbfield::kParityTransferOrder] = measurement.parityTransferOrder.str();
    record[mdbfield::kParity] = measurement.parity.str();
    return record;
}

/// Fills in what the conversion record of a measurement has.
void addConversion(ConversionStore& store, MdbRecord& record) {
    const auto place = store.locateDefinition(record.name());
    if (!place.found) {
        return;
    }
    const auto chunk = store.chunk(place.chunk);
    for (auto i = mdbfield::kFirstConversion; i < mdbfield::kData; ++i) {
        record[i] = chunk->value(place.section, mdbFields()[i].key, "");
    }
    const auto& type = record[mdbfield::kType];
    record[mdbfield::kData] = equalsIgnoreCase(type, kCommentType)
                                  ? euDataString(store, place.section, type)
                                  : euDataOf(*chunk, place.section, type);
}

/// The conversions chunk by chunk, so that each is read once whatever the order of the records.
void addConversions(ConversionStore& store, UserInterface* parent,
                    std::vector<MdbRecord>& records) {
    std::vector<std::pair<std::int64_t, std::size_t>> order;
    order.reserve(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        order.emplace_back(store.locateDefinition(records[i].name()).chunk, i);
    }
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i % kPollEvery == 0) {
            yieldToInterface(parent);
        }
        addConversion(store, records[order[i].second]);
    }
}

/// The measurements as the stream writes them, each once; nothing after a cancel.
std::optional<std::vector<MdbRecord>> collect(DatabaseWork& work, UserInterface* parent,
                                              bool onlyNew) {
    std::vector<MdbRecord> records;
    bool cancelled = false;
    int shown = 0;
    work.format.forEachMeasurement([&](CellRef cell, int fwp, int) {
        if (fwp != shown) {
            shown = fwp;
            setProgressText(parent, formatPrintf("Saving Measurements at FWP:%d", fwp));
            setProgressBar(parent, 100.0 * fwp / std::max(work.format.wordsPerMinorFrame, 1));
            yieldToInterface(parent);
            cancelled = cancelRequested(parent);
        }
        const auto name = work.format.cells().measurement(cell).name;
        if (!cancelled && !(onlyNew && work.database.contains(name.view()))) {
            records.push_back(wordRecord(work.format, cell, fwp));
        }
        return !cancelled;
    });
    // An append has nothing to lose: what was met so far is saved.
    if (cancelled && !onlyNew) {
        return std::nullopt;
    }
    return records;
}

}  // namespace

std::vector<MdbRecord> streamRecords(DatabaseWork& work, UserInterface* parent,
                                     const std::vector<std::string>& names) {
    std::vector<MdbRecord> records;
    const auto& cells = work.format.cells();
    for (const auto& name : names) {
        const auto places = cells.places(name);
        if (places.empty()) {
            continue;
        }
        const auto cell = cells.firstAt(places.front().word, places.front().index, name);
        records.push_back(wordRecord(work.format, cell, places.front().word));
    }
    addConversions(work.conversions, parent, records);
    return records;
}

StreamSaveResult saveStream(DatabaseWork& work, UserInterface* parent, StreamSaveMode mode) {
    const bool onlyNew = mode == StreamSaveMode::Append;
    if (!onlyNew && showBox(parent, kEraseDatabaseText, kDeleteDatabaseTitle, Icon::Warning,
                            Buttons::YesNo, Button::No) != Button::Yes) {
        return {};
    }
    if (onlyNew && !work.database.loadNameIndex(parent)) {
        work.context.messages.show(parent, 411, title::kError, kErrorBox);
        return {};
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Saving Measurements");
    StreamSaveResult result;
    MeasurementDatabase::Batch batch(work.database, parent);
    auto records = batch.isOpen() ? collect(work, parent, onlyNew) : std::nullopt;
    if (records) {
        addConversions(work.conversions, parent, *records);
        result.done = onlyNew || work.database.remove(parent, {});
        for (const auto& record : *records) {
            if (work.database.add(parent, record)) {
                result.added.push_back(record.name());
            }
        }
        result.done = result.done && batch.commit(parent);
    }
    setStatusText(parent, {});
    if (!result.done) {
        return {};
    }
    showBox(parent,
            formatPrintf("%d measurements were added to the database.", result.added.size()),
            kDoneTitle, Icon::Information);
    return result;
}

StreamSaveResult saveStreamToDatabase(DatabaseWork& work, UserInterface* parent) {
    if (parent == nullptr) {
        return {};
    }
    ChoicePrompt prompt;
    prompt.title = kSaveTitle;
    prompt.text = kSaveText;
    prompt.choices = {"&Overwrite", "&Append"};
    const int choice = parent->choose(prompt);
    return choice < 0
               ? StreamSaveResult{}
               : saveStream(work, parent,
                            choice == 0 ? StreamSaveMode::Overwrite : StreamSaveMode::Append);
}

}  // namespace kavu
