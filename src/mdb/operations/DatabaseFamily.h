// The database as the edit of a frame sees it: look-ups, roots and children, and the measurement
// that is stored there.
#pragma once

#include "mdb/operations/DatabaseWork.h"
#include "pcm/edit/MeasurementEditDatabase.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu {

/// What a place of the frame takes over. Empty fields are "DE", "D", "D" and "FW".
[[nodiscard]] DatabaseRecord frameRecord(const MdbRecord& record);

/// The steps of an edit over an open database. `added`, if given, gets the names for which a
/// conversion was added. `work` must outlive the steps.
[[nodiscard]] DatabaseSteps databaseSteps(DatabaseWork& work,
                                          std::vector<std::string>* added = nullptr);

/// Copies the conversion of a database record to the document: a new record, and all its fields.
bool addDatabaseConversion(DatabaseWork& work, UserInterface* parent, const MdbRecord& record);

/// Lets the user choose a record from a table, "Select Measurement From Database"; nothing if none
/// was chosen, and message 414 ("Unable to load all measurement names") after a cancel while they
/// are read.
[[nodiscard]] std::optional<MdbRecord> selectDatabaseRecord(DatabaseWork& work,
                                                            UserInterface* parent);

/// Stores one measurement of the stream in the database: the record of its name is replaced, and
/// keeps what the stream does not know (its root word and the 1553 fields).
bool storeMeasurementInDatabase(DatabaseWork& work, UserInterface* parent, const std::string& name);

}  // namespace kavu
