// Splits raw chunks that are too large. One measurement stays in such a chunk; the others
// move to new chunks after it.
#pragma once

#include <cstdint>
#include <set>

namespace kavu {

class RawGroup;

/// Splits every chunk of the group over 30000 bytes until each that is still larger holds
/// only one measurement. The commands of the index that is named first stay, those of all
/// other indices go to the next free number above, repeatedly if necessary. `single` gets
/// the chunks whose comment gets a file of its own. False if the group could not be read,
/// which has been reported.
bool splitOversizeChunks(RawGroup& group, std::set<std::int64_t>& single);

}  // namespace kavu
