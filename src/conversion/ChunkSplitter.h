// Splits raw chunks that are too large. What is left of such a chunk is one measurement;
// the others move to new chunks behind it.
#pragma once

#include <cstdint>
#include <set>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Splits every chunk of `raw` over 30000 bytes until each that is still larger holds one
/// measurement only. The commands of the index that is named first stay, those of all
/// other indices go to the next number above that is free, as often as it takes. New
/// chunks are added to `raw`; `single` gets those whose comment is to lie in a file of its
/// own. False if a file could not be read (314) or written (313); it has been reported.
bool splitOversizeChunks(DocumentContext& context, UserInterface* parent,
                         std::set<std::int64_t>& raw, std::set<std::int64_t>& single);

}  // namespace kavu
