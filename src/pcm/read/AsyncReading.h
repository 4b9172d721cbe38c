// Reading async embedded formats and data merges of the P group.
#pragma once

namespace kavu {

class PcmLoad;

/// Messages 187, 191 to 197, 207, 214. False on a cancel.
bool readAsyncEmbedded(PcmLoad& load);
/// The same, and message 215.
bool readDataMerge(PcmLoad& load);

}  // namespace kavu
