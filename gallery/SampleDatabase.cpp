#include "gallery/SampleDatabase.h"

#include "mdb/storage/MeasurementDatabase.h"

namespace kavu {

namespace {

MdbRecord wordRecord(const std::string& name, const std::string& description,
                     const std::string& type, const std::string& data) {
    MdbRecord record(name);
    record[mdbfield::kWordLength] = "16";
    record[mdbfield::kMask] = "FW";
    record[mdbfield::kTransferOrder] = "M";
    record[mdbfield::kParity] = "DE";
    record[mdbfield::kDescription] = description;
    record[mdbfield::kInputFormat] = "UNS";
    record[mdbfield::kType] = type;
    record[mdbfield::kData] = data;
    return record;
}

}  // namespace

void fillSampleDatabase(MeasurementDatabase& database) {
    (void)database.open();
    MeasurementDatabase::Batch batch(database, nullptr);
    (void)database.remove(nullptr, {});
    for (const auto& record :
         {wordRecord("IMU-NX", "Longitudinal acceleration", "COE", "-10 0.000305"),
          wordRecord("ENG1-N1", "Engine 1 fan speed", "COE", "0.0 0.00167912"),
          wordRecord("ENG1-N2", "Engine 1 core speed", "COE", "0.0 0.00175"),
          wordRecord("ENG1-EGT", "Engine 1 exhaust gas temperature", "PRS",
                     "0 -40 32768 560 65535 1200"),
          wordRecord("EVENT-PILOT", "Event mark of the pilot", "DIS", "0 No_mark 1 Mark")}) {
        (void)database.add(nullptr, record);
    }
    auto faulty = wordRecord("OIL-PRESS", "Oil pressure", "COE", "0.0 1.0");
    faulty[mdbfield::kParity] = "XX";
    (void)database.add(nullptr, faulty);
    (void)batch.commit(nullptr);
}

}  // namespace kavu
