// Where the C commands are in their working file, noted while it is written, so that a load need
// not look for them in the file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct ConversionRuns {
    /// So many group indices are loaded as one chunk.
    static constexpr std::int64_t kIndicesOfChunk = 25;
    /// The chunk of a group index, counted from 0; a negative index counts to the first.
    [[nodiscard]] static std::int64_t chunkOf(std::int64_t index) {
        return index < 0 ? 0 : index / kIndicesOfChunk;
    }

    /// Commands of one chunk that are together in the file, each with its line end.
    struct Run {
        std::int64_t chunk = 0;
        std::uint64_t length = 0;
        [[nodiscard]] bool operator==(const Run&) const = default;
    };
    std::vector<Run> runs;  ///< all of the file, in its order
    std::string stamp;      ///< `fileStamp` of the file when it was complete; empty for no notes
};

/// Notes the runs of a file of commands.
class ConversionRunNotes {
  public:
    /// Where indices alternate, notes would be longer than what they save.
    static constexpr std::size_t kMostRuns = 100'000;

    /// Notes the next command, of so many bytes with its line end.
    void add(std::string_view command, std::uint64_t length);
    /// What was noted of the file that is complete now; without a stamp if it was too much.
    [[nodiscard]] ConversionRuns take(const std::string& path);

  private:
    ConversionRuns noted_;
    std::string head_;  ///< that the commands of the index in work have in common
};

}  // namespace kavu
