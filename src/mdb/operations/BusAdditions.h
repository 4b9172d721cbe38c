// Measurements of a bus from the database: its records state by their 1553 fields in which message
// they are.
#pragma once

#include "bus/definition/BusDefinition.h"
#include "mdb/operations/DatabaseWork.h"

#include <string>
#include <vector>

namespace kavu {

class MeasurementNames;

/// The measurement of a record with its one location, as the edition has it. Without values in the
/// record its type is a data word, its mask the full word and its transfer order the default; the
/// parity "default" is no value of a bus.
[[nodiscard]] GroupRow busMeasurementOf(const MdbRecord& record, int edition);

struct BusAdditions {
    bool done = false;
    bool cancelled = false;            ///< what was done until then stays
    std::vector<std::string> added{};  ///< in the order of the database
    int newDefinitions = 0;            ///< conversions of measurements that had none
};

/// Adds each record with a bus number, both addresses and a word number to the first message of the
/// definition that has them, unless a measurement of its name, in any case, is there. Addresses
/// and numbers compare without leading zeros; the mode has to match where both have one. The
/// conversion of a measurement that has none is copied from the record, one transaction.
///
/// Message 417 ("Version 1 database") for a database without 1553 fields, and question 418 ("will
/// add new 1553 measurements") before anything is added: without a parent nothing is. A name that
/// is in another stream is left out with message 455 in the log, if `names` is given and checks.
/// Message 415 ("Update complete.") at the end. REQUIRES: the database is open.
BusAdditions addBusMeasurements(DatabaseWork& work, UserInterface* parent,
                                BusDefinition& definition, const MeasurementNames* names);

/// Adds one record to a message whatever its 1553 fields say, and copies its conversion. False if
/// a measurement of that name is there, which is reported, or for a name of another stream
/// (message 455).
bool addBusMeasurement(DatabaseWork& work, UserInterface* parent, BusDefinition& definition,
                       const BusPlace& message, const MdbRecord& record,
                       const MeasurementNames* names);

}  // namespace kavu
