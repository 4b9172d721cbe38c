// A few records for the pictures, most of them of measurements that the sample document has.
#pragma once

namespace kavu {

class MeasurementDatabase;

/// Replaces whatever the database holds.
void fillSampleDatabase(MeasurementDatabase& database);

}  // namespace kavu
