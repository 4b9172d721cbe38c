// Filling a stream, and the conversion records of its measurements, from the database.
#pragma once

#include "mdb/operations/DatabaseWork.h"
#include "pcm/edit/MeasurementEditDatabase.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kavu {

/// A field of one record, which counts from 0 in the order of the file.
using MdbRecordField = std::pair<std::size_t, std::size_t>;

/// What is updated.
struct StreamUpdateChoice {
    /// By the index of the field; only those of `isStreamField` count.
    std::bitset<mdbfield::kCount> fields;
    AutoAdd autoAdd{};
    /// Fields of single records that are not to change.
    std::set<MdbRecordField> without{};
    /// Records, by their number, that are only counted: their conversion is not even marked.
    std::set<std::size_t> withoutRecords{};

    /// True if nothing is to change, and only the matches are counted.
    [[nodiscard]] bool isIdle() const {
        return fields.none() && !autoAdd.root && !autoAdd.children;
    }
};

/// The choice that the settings keep: `MDBU%d` for each field by its index, `MDBAddRoot` and
/// `MDBAddChildren`.
[[nodiscard]] StreamUpdateChoice storedUpdateChoice(const ProfileSettings& settings);
void storeUpdateFields(ProfileSettings& settings, const StreamUpdateChoice& choice);

/// What an update will change at one place.
struct StreamUpdateRow {
    MdbRecordField place;
    std::string name;    ///< of the measurement, as the stream spells it
    std::string before;  ///< with line breaks in stored form
    std::string after;
};

/// Lists what an update would change; nothing is changed. Nothing if it was cancelled.
[[nodiscard]] std::optional<std::vector<StreamUpdateRow>> previewStreamUpdate(
    DatabaseWork& work, UserInterface* parent, const StreamUpdateChoice& choice);

struct StreamUpdateResult {
    bool done = false;
    bool cancelled = false;            ///< what was done until then stays
    int updated = 0;                   ///< records whose measurement is in the stream
    int newDefinitions = 0;            ///< made for measurements that had none
    std::vector<std::string> added{};  ///< root words and children
};

/// Updates the stream in memory and the conversion records, one transaction: of each record whose
/// measurement is in the stream the chosen fields that are not empty. A mask does not go to a
/// fragmented measurement. Each record that is updated is marked as changed, and is no template any
/// more; one that is missing is made. Message 412 ("Unable to add") is logged for measurements
/// that nothing can be added to. Without any field only the matches are counted. What cannot be
/// written is reported, and nothing is changed then. REQUIRES: the database is open.
[[nodiscard]] StreamUpdateResult updateStream(DatabaseWork& work, UserInterface* parent,
                                              const StreamUpdateChoice& choice);
/// The same, and message 415 ("Update complete.") at its end.
StreamUpdateResult updateStreamFromDatabase(DatabaseWork& work, UserInterface* parent,
                                            const StreamUpdateChoice& choice);

}  // namespace kavu
