// What a look at the commands of one chunk finds out without the other chunks: the commands that a
// check has to decide on in their order, and which group indices there are.
#pragma once

#include "conversion/RawChunk.h"
#include "conversion/RecordUse.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kavu {

struct ChunkScan {
    /// A command that names its index, or one whose value is too long.
    struct Notable {
        RawCommand command;
        std::size_t at = 0;     ///< its place in the chunk, counted from 1
        std::size_t limit = 0;  ///< that the value exceeds; 0 for a command that names
    };
    /// The commands with a value, in their order. They are views into the bytes of the chunk.
    std::vector<Notable> notable;
    std::vector<std::int64_t> indices;         ///< those that have a field, each once
    std::vector<RecordUse::Finding> findings;  ///< of those that have something to tell
    std::size_t commands = 0;
    bool holdsKeysOfTheProgram = false;

    /// Looks at the commands of a chunk, whose bytes must outlive the scan. Line breaks within a
    /// command get their stored form. `edition` rules the limits, and is that of `use`. Chunks may
    /// be scanned at the same time, each thread with a `use` of its own.
    void run(std::string& bytes, bool severalLines, int edition, RecordUse& use);

  private:
    void noteField(const RawCommand& command, int edition, RecordUse& use);
};

}  // namespace kavu
