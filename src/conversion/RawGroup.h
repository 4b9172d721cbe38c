// The C group as it came from the file: one working file of raw commands, with the places
// of the commands of each chunk. Chunks are read from it in batches, each in one sweep
// over the file, so that neither a large group nor one whose indices alternate costs a
// file, a buffer or a pass for each chunk.
#pragma once

#include "core/files/FileIo.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

class RawGroup {
  public:
    /// A run of whole commands in the file.
    struct Extent {
        std::uint64_t at = 0;
        std::uint64_t length = 0;
    };
    struct Chunk {
        std::uint64_t size = 0;  ///< bytes of its commands, one per line
        std::vector<Extent> extents;

        /// Adds a run after the others.
        void add(const Extent& extent);
    };
    using Chunks = std::map<std::int64_t, Chunk>;

    RawGroup(DocumentContext& context, UserInterface* parent, std::string path)
        : context_(context), parent_(parent), path_(std::move(path)) {}

    /// Sorts the commands: 25 group indices to a chunk, from number `base` on; a negative
    /// index counts to the first chunk. False if it was cancelled or the file could not be
    /// read, which has been reported with message 314 ("Unable to read").
    bool sort(std::int64_t base);

    [[nodiscard]] const Chunks& chunks() const { return chunks_; }
    /// Replaces the chunks, after a split.
    void setChunks(Chunks chunks);

    /// The commands of a chunk, or null for a file that could not be read (314). Valid
    /// until the next call. Cheap if chunks are asked for in ascending order.
    std::string* bytes(std::int64_t number);

  private:
    bool fetch(Chunks::const_iterator first);
    bool report();

    DocumentContext& context_;
    UserInterface* parent_;
    std::string path_;
    ByteSource source_;
    Chunks chunks_;
    std::unordered_map<std::int64_t, std::string> batch_;
};

}  // namespace kavu
