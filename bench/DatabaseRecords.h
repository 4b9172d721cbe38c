// The records of a large measurement database.
#pragma once

#include "mdb/record/MdbFields.h"
#include "mdb/record/MdbRecord.h"

#include <string>

namespace kavu::bench {

inline MdbRecord recordOf(long number) {
    MdbRecord record("MEASUREMENT-" + std::to_string(number));
    record[mdbfield::kWordLength] = "16";
    record[mdbfield::kMask] = "FW";
    record[mdbfield::kTransferOrder] = "M";
    record[mdbfield::kParityTransferOrder] = "D";
    record[mdbfield::kParity] = "DE";
    record[mdbfield::kFirstConversion] = "Strain gauge";
    record[mdbfield::kDescription] = "Left wing, station " + std::to_string(number);
    record[28] = "-100";
    record[29] = "100";
    record[mdbfield::kInputFormat] = "TWO";
    record[mdbfield::kSampleRate] = "1000";
    record[mdbfield::kType] = "PRS";
    record[mdbfield::kData] = "0 -100 16384 -50 32768 0 49152 50 65535 100";
    return record;
}

}  // namespace kavu::bench
