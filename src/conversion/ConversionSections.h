// A walk over the conversion records of a document, chunk by chunk, for the passes over
// all of them: the change of edition, reports, the sample rates.
#pragma once

#include "core/files/IoStatus.h"
#include "core/files/ProfileFile.h"

#include <functional>
#include <string_view>

namespace kavu {

struct DocumentContext;
class ConversionStore;

/// What is called for a chunk; false ends the walk. The profile's sections are the records
/// (the nameless first one holds what precedes them and is not a record). It may be read
/// and changed freely through its own operations; the walk writes it afterwards.
using ChunkVisitor = std::function<bool(ProfileFile& chunk)>;

/// Visits every chunk in the order of their numbers. A chunk that was changed is flushed
/// right after its visit. Returns the first failure to read or write a chunk, with its
/// path; the walk ends there, because what was visited is no longer what is on the disk.
///
/// A section may be renamed or removed by the visitor: the store's look-ups see it.
[[nodiscard]] IoStatus forEachChunk(DocumentContext& context, ConversionStore& store,
                                    const ChunkVisitor& visit);

/// The same for every record: the chunk and the name of a section of it. The names are
/// collected before the first record of a chunk is visited.
using RecordVisitor = std::function<bool(ProfileFile& chunk, std::string_view name)>;
[[nodiscard]] IoStatus forEachRecord(DocumentContext& context, ConversionStore& store,
                                     const RecordVisitor& visit);

}  // namespace kavu
