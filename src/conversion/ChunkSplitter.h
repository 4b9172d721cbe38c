// Splits raw chunks that are too large. What is left of such a chunk is one measurement;
// the others move to new chunks behind it.
#pragma once

#include <cstdint>
#include <set>

namespace kavu {

class RawGroup;

/// Splits every chunk of the group over 30000 bytes until each that is still larger holds
/// one measurement only. The commands of the index that is named first stay, those of all
/// other indices go to the next number above that is free, as often as it takes. `single`
/// gets the chunks whose comment is to lie in a file of its own. False if the group could
/// not be read; that has been reported.
bool splitOversizeChunks(RawGroup& group, std::set<std::int64_t>& single);

}  // namespace kavu
