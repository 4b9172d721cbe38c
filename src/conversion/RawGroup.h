// The C group as it came from the file: one working file of raw commands, with the places
// where the commands of each chunk are. Chunks are read from it a batch at a time,
// in one sweep over the file, so that neither a large group nor one whose indices
// alternate costs a file, a buffer or a pass for each chunk.
#pragma once

#include "core/files/FileIo.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kavu {

struct ConversionRuns;
class TmatsReader;
class UserInterface;

class RawGroup {
  public:
    /// A run of whole commands in the file.
    struct Extent {
        std::uint64_t at = 0;
        std::uint64_t length = 0;
    };
    struct Chunk {
        std::uint64_t size = 0;  ///< bytes of its commands, one on a line
        std::vector<Extent> extents;
        bool severalLines = false;     ///< a command may hold line breaks
        bool commentsOutside = false;  ///< its comments go to files of their own
        /// What the load has found out: whether it holds a record, and the commands whose names
        /// belong to other records, by their places in the chunk, counted from 1.
        bool hasRecords = false;
        std::vector<std::size_t> refused;

        /// Adds a run after the others.
        void add(const Extent& extent);
    };
    using Chunks = std::map<std::int64_t, Chunk>;

    explicit RawGroup(std::string path) : path_(std::move(path)) {}

    /// Sorts the commands: 25 group indices to a chunk, from number `base` on; a negative
    /// index counts to the first chunk. False if it was cancelled or the file could not be
    /// read, which `status` tells apart.
    bool sort(TmatsReader& reader, UserInterface* parent, std::int64_t base);

    /// Does the same by what was noted while the file was written. False, without an effect, if it
    /// was not noted of this file.
    bool sortAsNoted(const ConversionRuns& noted, std::int64_t base);

    [[nodiscard]] Chunks& chunks() { return chunks_; }
    [[nodiscard]] const Chunks& chunks() const { return chunks_; }
    /// Replaces the chunks, after a split or a renumbering.
    void setChunks(Chunks chunks);

    /// The commands of a chunk, or null for a file that could not be read. Valid
    /// until the next call. Cheap when chunks are asked for in rising order.
    std::string* bytes(std::int64_t number);
    /// A chunk whose commands have been read.
    struct Read {
        std::int64_t number = 0;
        Chunk* chunk = nullptr;
        std::string bytes;
    };
    using Batch = std::vector<Read>;  ///< in the order of their numbers
    /// The commands of the chunks from `next` on, as many as are read at a time, and `next` goes on
    /// to the chunk behind them. None if there is no chunk left, or the file could not be read.
    [[nodiscard]] Batch readSome(Chunks::iterator& next);
    /// Closes the file and forgets what was read of it; the places of the chunks stay.
    void release();

    /// The failure to read the file, if there was one; a file that is not as long any more as
    /// it was when it was sorted counts as stale (ESTALE).
    [[nodiscard]] const IoStatus& status() const { return status_; }
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    bool open();
    bool copy(const Extent& extent, std::string& to);

    std::string path_;
    std::uint64_t size_ = 0;
    IoStatus status_;
    ByteSource source_;
    Chunks chunks_;
    Batch batch_;  ///< that `bytes` has read last
};

}  // namespace kavu
