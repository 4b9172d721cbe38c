// The measurements of a stream as records of the database.
#pragma once

#include "mdb/operations/DatabaseWork.h"

#include <string>
#include <vector>

namespace kavu {

enum class StreamSaveMode {
    Overwrite,  ///< all former records go
    Append,     ///< only names that the database does not have
};

/// The record of a measurement: its word at this position, and its conversion. Nothing for a name
/// that the stream does not have.
[[nodiscard]] std::vector<MdbRecord> streamRecords(DatabaseWork& work, UserInterface* parent,
                                                   const std::vector<std::string>& names);

/// What is asked before all records are overwritten.
inline constexpr const char* kEraseDatabaseText =
    "If you continue, you will permanently erase the previous contents of the measurement "
    "database.\n\nAre you sure?";

struct StreamSaveResult {
    bool done = false;
    std::vector<std::string> added{};  ///< in the order of the stream
};

/// Asks for the mode and saves every measurement of the stream in memory, each once: message "%d
/// measurements were added to the database." Overwriting asks once more. With a cancel an append
/// keeps what it has, and overwriting leaves the database as it was. Message 411 ("Unable to load
/// all measurement names") for a cancel while names are read. REQUIRES: the database is open.
StreamSaveResult saveStreamToDatabase(DatabaseWork& work, UserInterface* parent);
/// The same in a mode.
StreamSaveResult saveStream(DatabaseWork& work, UserInterface* parent, StreamSaveMode mode);

}  // namespace kavu
