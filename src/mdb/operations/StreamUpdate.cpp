#include "mdb/operations/StreamUpdate.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/operations/DatabaseFamily.h"
#include "mdb/operations/EuDataString.h"
#include "pcm/PcmFormat.h"

#include <algorithm>
#include <functional>
#include <map>
#include <unordered_set>

namespace kavu {

namespace {

constexpr const char* kFieldKey = "MDBU%d";
constexpr std::string_view kUpdateOperation = "Update From Database";

/// The first cell of a measurement.
struct FirstPlace {
    CellRef cell;
    int fwp = 0;
    int fn = 0;
};
FirstPlace firstPlaceOf(const PcmFormat& format, std::string_view name) {
    const auto places = format.cells().places(name);
    if (places.empty()) {
        return {};
    }
    const auto [word, index] = places.front();
    return {format.cells().firstAt(word, index, name), word, index};
}

bool isFragmentedInFact(const PcmFormat& format, const Measurement& measurement) {
    if (!isWordFrame(measurement)) {
        return isFragmented(measurement.locationType);
    }
    const auto* const definition = format.wordFrameDefinition(measurement.wordFrameIndex);
    return definition != nullptr && definition->mostFragments() > 1;
}

std::string wordField(const Measurement& measurement, std::size_t index) {
    switch (index) {
        case mdbfield::kMask:
            return measurement.mask.str();
        case mdbfield::kTransferOrder:
            return measurement.transferOrder.str();
        case mdbfield::kParityTransferOrder:
            return measurement.parityTransferOrder.str();
        default:
            return measurement.parity.str();
    }
}

void setWordField(Measurement& measurement, std::size_t index, const std::string& value) {
    switch (index) {
        case mdbfield::kMask:
            measurement.mask = value;
            break;
        case mdbfield::kTransferOrder:
            measurement.transferOrder = value;
            break;
        case mdbfield::kParityTransferOrder:
            measurement.parityTransferOrder = value;
            break;
        default:
            measurement.parity = value;
            break;
    }
}

/// One walk over the records of the database whose measurement is in the stream.
class MatchWalk {
  public:
    MatchWalk(DatabaseWork& work, UserInterface* parent) : work_(work), parent_(parent) {}

    struct Match {
        std::size_t number = 0;  ///< of the record
        MdbRecord record;
        FirstPlace place;
        std::string name;  ///< as the stream spells it
    };
    /// False if it was cancelled.
    bool run(const std::function<void(Match&)>& visit) {
        auto record = work_.database.first();
        for (std::size_t number = 0; record; ++number, record = work_.database.next()) {
            if (number % kPollEvery == 0) {
                setProgressText(parent_, formatPrintf("Updating Measurements #%d", number + 1));
                yieldToInterface(parent_);
                if (cancelRequested(parent_)) {
                    return false;
                }
            }
            const auto place = firstPlaceOf(work_.format, record->name());
            if (place.cell) {
                Match match{number, std::move(*record), place,
                            work_.format.cells().measurement(place.cell).name.str()};
                visit(match);
            }
        }
        return true;
    }

  private:
    DatabaseWork& work_;
    UserInterface* parent_;
};

/// The fields of a record that an update takes over: chosen, not empty, and not excluded.
class Taken {
  public:
    explicit Taken(const StreamUpdateChoice& choice) : choice_(choice) {
        for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
            if (isStreamField(i) && choice.fields.test(i)) {
                fields_.push_back(i);
            }
        }
    }

    [[nodiscard]] bool isEmpty() const { return fields_.empty(); }
    [[nodiscard]] const std::vector<std::size_t>& fields() const { return fields_; }
    [[nodiscard]] bool takes(const MatchWalk::Match& match, std::size_t index) const {
        return !match.record[index].empty() && !choice_.without.contains({match.number, index});
    }

  private:
    const StreamUpdateChoice& choice_;
    std::vector<std::size_t> fields_;
};

bool isWordField(std::size_t index) {
    return index < mdbfield::kFirstConversion;
}

// --- the words -------------------------------------------------------------------------------

void setFragmentMasks(PcmFormat& format, int definition, const std::string& mask) {
    if (auto* const found = format.wordFrameDefinition(definition); found != nullptr) {
        for (auto& location : found->locations) {
            for (auto& fragment : location.fragments) {
                fragment.mask = mask;
            }
        }
    }
}

void updateWord(PcmFormat& format, const MatchWalk::Match& match, const Taken& taken) {
    const auto first = format.cells().measurement(match.place.cell);
    auto changed = first;
    for (const auto index : taken.fields()) {
        const bool isKept = index == mdbfield::kMask && isFragmentedInFact(format, first);
        if (isWordField(index) && !isKept && taken.takes(match, index)) {
            setWordField(changed, index, match.record[index]);
            format.cells().updateAll(match.name, [&](Measurement& measurement) {
                setWordField(measurement, index, match.record[index]);
            });
            format.changed = true;
        }
    }
    if (changed.mask != first.mask.view() && isWordFrame(first)) {
        setFragmentMasks(format, first.wordFrameIndex, changed.mask.str());
    }
}

// --- the conversions ---------------------------------------------------------------------------

/// What a record of the database gives to a conversion record.
struct ConversionChange {
    std::string section;
    MatchWalk::Match match;
};

/// The changes of the conversion records, which are written chunk by chunk: the records of a
/// database come in any order, and a chunk that is read for each of them would cost its size.
class ConversionChanges {
  public:
    ConversionChanges(DatabaseWork& work, UserInterface* parent, const Taken& taken)
        : work_(work), parent_(parent), taken_(taken) {}

    /// Makes the record if there is none. False if that failed, which is reported.
    bool add(MatchWalk::Match match, int& newDefinitions) {
        auto place = work_.conversions.locateDefinition(match.name);
        if (!place.found) {
            if (!work_.conversions.createDefaultDefinition(parent_, match.name, false)) {
                return false;
            }
            ++newDefinitions;
            place = work_.conversions.locateDefinition(match.name);
        }
        chunks_[place.chunk].push_back({place.section, std::move(match)});
        return true;
    }

    bool write() {
        for (const auto& [number, changes] : chunks_) {
            if (!writeChunk(number, changes)) {
                return false;
            }
        }
        return true;
    }

  private:
    bool writeChunk(std::int64_t number, const std::vector<ConversionChange>& changes) {
        const auto chunk = work_.conversions.chunk(number);
        std::vector<const ConversionChange*> comments;
        for (const auto& change : changes) {
            for (const auto index : taken_.fields()) {
                if (!isWordField(index) && taken_.takes(change.match, index)) {
                    put(*chunk, change, index, comments);
                }
            }
            chunk->setValue(change.section, recordkey::kChanged, "1");
            chunk->removeKey(change.section, recordkey::kTemplate);
        }
        if (const auto status = work_.conversions.store(number, *chunk); !status.ok()) {
            reportUnableToWrite(parent_, status, title::kErrorReadingConversion);
            return false;
        }
        return std::all_of(comments.begin(), comments.end(), [this](const auto* change) {
            return applyEuDataString(work_.conversions, parent_, change->section, kCommentType,
                                     change->match.record[mdbfield::kData]);
        });
    }

    static void put(ProfileFile& chunk, const ConversionChange& change, std::size_t index,
                    std::vector<const ConversionChange*>& comments) {
        const auto& record = change.match.record;
        if (index != mdbfield::kData) {
            chunk.setValue(change.section, mdbFields()[index].key, record[index]);
        } else if (equalsIgnoreCase(record[mdbfield::kType], kCommentType)) {
            comments.push_back(&change);
        } else {
            (void)putEuData(chunk, change.section, record[mdbfield::kType], record[index]);
        }
    }

    DatabaseWork& work_;
    UserInterface* parent_;
    const Taken& taken_;
    std::map<std::int64_t, std::vector<ConversionChange>> chunks_;
};

// --- roots and children --------------------------------------------------------------------------

void addFamily(DatabaseWork& work, UserInterface* parent, AutoAdd wanted,
               const MatchWalk::Match& match, StreamUpdateResult& result) {
    wanted.isLogged = true;
    // An addition before may have changed places with it.
    const auto place = firstPlaceOf(work.format, match.name);
    if (!place.cell) {
        return;
    }
    const auto measurement = work.format.cells().measurement(place.cell);
    const auto steps = databaseSteps(work, &result.added);
    (void)addRootAndChildren(work.format, parent, steps, wanted, match.record.name(),
                             measurement.locationType.view(), place.fwp, place.fn);
}

/// False if something could not be written.
bool update(DatabaseWork& work, UserInterface* parent, const StreamUpdateChoice& choice,
            StreamUpdateResult& result) {
    const Taken taken(choice);
    ConversionStore::Batch batch(work.conversions);
    ConversionChanges conversions(work, parent, taken);
    std::vector<MatchWalk::Match> families;
    std::unordered_set<std::string> seen;
    bool good = true;
    MatchWalk walk(work, parent);
    const bool complete = walk.run([&](MatchWalk::Match& match) {
        ++result.updated;
        const bool hasFamily = (choice.autoAdd.root || choice.autoAdd.children) &&
                               seen.insert(lowerAscii(match.name)).second;
        if (hasFamily) {
            families.push_back(match);
        }
        if (!taken.isEmpty() && good && !choice.withoutRecords.contains(match.number)) {
            updateWord(work.format, match, taken);
            good = conversions.add(std::move(match), result.newDefinitions);
        }
    });
    result.cancelled = !complete;
    good = good && conversions.write();
    for (const auto& match : families) {
        if (!good || result.cancelled || cancelRequested(parent)) {
            break;
        }
        addFamily(work, parent, choice.autoAdd, match, result);
    }
    return batch.write(parent) && good;
}

}  // namespace

StreamUpdateChoice storedUpdateChoice(const ProfileSettings& settings) {
    StreamUpdateChoice choice;
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        choice.fields.set(i,
                          isStreamField(i) && settings.integer(formatPrintf(kFieldKey, i), 0) != 0);
    }
    choice.autoAdd.root = settings.get(setting::kDatabaseAddsRoot) != 0;
    choice.autoAdd.children = settings.get(setting::kDatabaseAddsChildren) != 0;
    return choice;
}

void storeUpdateFields(ProfileSettings& settings, const StreamUpdateChoice& choice) {
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        if (isStreamField(i)) {
            settings.writeInteger(formatPrintf(kFieldKey, i), choice.fields.test(i) ? 1 : 0);
        }
    }
}

std::optional<std::vector<StreamUpdateRow>> previewStreamUpdate(DatabaseWork& work,
                                                                UserInterface* parent,
                                                                const StreamUpdateChoice& choice) {
    const Taken taken(choice);
    std::vector<StreamUpdateRow> rows;
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    MatchWalk walk(work, parent);
    const bool complete = walk.run([&](MatchWalk::Match& match) {
        const auto& measurement = work.format.cells().measurement(match.place.cell);
        const auto place = work.conversions.locateDefinition(match.name);
        const auto chunk = place.found ? work.conversions.chunk(place.chunk) : nullptr;
        for (const auto index : taken.fields()) {
            const bool isKept =
                index == mdbfield::kMask && isFragmentedInFact(work.format, measurement);
            if (isKept || !taken.takes(match, index)) {
                continue;
            }
            std::string before;
            if (isWordField(index)) {
                before = wordField(measurement, index);
            } else if (index == mdbfield::kData) {
                before = euDataString(work.conversions, match.name, match.record[mdbfield::kType]);
            } else if (chunk != nullptr) {
                before = chunk->value(place.section, mdbFields()[index].key, "");
            }
            if (before != match.record[index]) {
                rows.push_back({{match.number, index}, match.name, before, match.record[index]});
            }
        }
    });
    return complete ? std::optional(std::move(rows)) : std::nullopt;
}

StreamUpdateResult updateStream(DatabaseWork& work, UserInterface* parent,
                                const StreamUpdateChoice& choice) {
    StreamUpdateResult result;
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    result.done = inTransaction(work.context, parent, std::string(kUpdateOperation),
                                [&] { return update(work, parent, choice, result); });
    work.context.messages.showLog(parent, work.context.document.path);
    return result;
}

StreamUpdateResult updateStreamFromDatabase(DatabaseWork& work, UserInterface* parent,
                                            const StreamUpdateChoice& choice) {
    auto result = updateStream(work, parent, choice);
    if (result.done) {
        work.context.messages.show(parent, -415, title::kNote, kNoteBox, work.database.path(),
                                   result.updated, "updated", result.newDefinitions);
    }
    return result;
}

}  // namespace kavu
