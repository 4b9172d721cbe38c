// Reading ID counters and subframes of the P group.
#pragma once

namespace kavu {

class PcmLoad;
class SubframeNumbers;

/// Reads ISF, IDC and, before 106-11, SF; from 106-11 on plain words get hidden subframes.
/// False on a cancel or if memory runs out. Messages 177 to 186, 199 to 213.
bool readIdCounters(PcmLoad& load);
/// Reads the subframes of the counter with this index (from 0).
bool readSubframes(PcmLoad& load, int counter);
/// The same, with what is known of the commands of all counters.
bool readSubframes(PcmLoad& load, int counter, const SubframeNumbers& numbers);

}  // namespace kavu
