// Makes the numbers of the conversion chunks dense again after a load.
#pragma once

#include "core/files/IoStatus.h"

namespace kavu {

class StagedChunks;
struct DocumentContext;

/// Moves the last chunk to the first number that is missing or whose chunk is empty, until there
/// is no such number before a chunk, whether staged or in a file. The status names the file that
/// could not be moved; what was moved before it stays.
[[nodiscard]] IoStatus compactChunks(DocumentContext& context, StagedChunks& staged);

}  // namespace kavu
