// Splits raw chunks that are too large. One measurement stays in such a chunk; the others
// move to new chunks after it.
#pragma once

namespace kavu {

class RawGroup;

/// Splits every chunk of the group over 30000 bytes until each that is still larger holds
/// only one measurement. The commands of the index that is named first stay, those of all
/// other indices go to the next free number above, repeatedly if necessary. Comments of what was
/// split off go to files of their own. False if the group could not be read: its status says why.
bool splitOversizeChunks(RawGroup& group);

}  // namespace kavu
