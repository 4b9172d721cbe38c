// An edit of a database that another program has changed meanwhile: what was edited is put on top
// of what is there now.
#pragma once

#include "mdb/record/PackedRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

/// A record of an edit, with the form of its data that is shown.
struct EditedRecord {
    PackedRecord record{};
    std::optional<std::size_t> entry{};  ///< of the database; nothing for a new one
    bool isChanged = false;
};

struct RecordMerge {
    std::vector<EditedRecord> rows{};  ///< their entries are those of the present records
    /// One line for each record that both have changed: its name, and what happens to it.
    std::vector<std::string> conflicts{};
};

/// Puts the changes that lead from `former` to `edited` onto `present`. A record is known again by
/// its name, of several records of one name by their order. Fields are merged one by one: one that
/// both have changed takes the edited value, a record that was removed in the edit stays if it
/// was changed by the other, and one that was changed in the edit comes back if the other removed
/// it; each of these is a conflict. Records of `former` and `present` have their entries.
[[nodiscard]] RecordMerge mergeRecords(const std::vector<EditedRecord>& former,
                                       const std::vector<EditedRecord>& edited,
                                       const std::vector<EditedRecord>& present);

}  // namespace kavu
