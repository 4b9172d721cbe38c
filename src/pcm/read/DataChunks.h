// The commands of a D group, cut into working files of a hundred measurements each, so that
// a look-up goes through the commands of a few measurements. Each file is read once.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class PcmLoad;
class TmatsReader;

/// The commands of one chunk by their codes. A look-up answers as a search of the open file
/// would: from behind the command found last, once around.
class ChunkFields {
  public:
    ChunkFields(TmatsReader& reader, std::string_view bytes);

    /// The value, never empty, and the code as the file spells it. Both live as long as this.
    struct Found {
        std::string_view code;
        std::string_view value;
    };
    [[nodiscard]] std::optional<Found> find(std::string_view code);
    [[nodiscard]] std::size_t memory() const { return text_.size() + 32 * entries_.size(); }

  private:
    struct Entry {
        std::uint32_t start;
        std::uint32_t codeSize;
        std::uint32_t valueSize;
        std::uint32_t next;  ///< the next entry of the same slot, in file order; 0 is none
    };
    [[nodiscard]] std::string_view codeOf(const Entry& entry) const {
        return std::string_view(text_).substr(entry.start, entry.codeSize);
    }
    [[nodiscard]] std::size_t slotOf(std::string_view code) const;

    std::string text_;            ///< code and value of each command, one behind the other
    std::vector<Entry> entries_;  ///< 0 is none
    struct Slot {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };
    std::vector<Slot> slots_;  ///< a power of two
    std::uint32_t position_ = 1;
};

class DataChunks {
  public:
    static constexpr int kMeasurementsInChunk = 100;
    /// Measurements with a higher number are not read.

    DataChunks(PcmLoad& load, int group) : load_(load), group_(group) {}
    DataChunks(const DataChunks&) = delete;
    DataChunks& operator=(const DataChunks&) = delete;
    /// Deletes the chunk files.
    ~DataChunks();

    /// Cuts the group's file. From 106-09 on its "SMF\" commands go to a file of their own. False
    /// on a cancel or a failure, which is reported.
    bool split();

    /// The chunk of a measurement number, or null if no command of one of its measurements is
    /// there. Valid until another one is asked for.
    [[nodiscard]] ChunkFields* chunkOf(int measurement);
    /// The commands that name no measurement.
    [[nodiscard]] ChunkFields& lists();
    /// The numbers of the lists that tell how many measurements they have.
    [[nodiscard]] const std::set<int>& countedLists() const { return countedLists_; }
    /// The first measurement number from `number` on whose chunk is there, or one that is too
    /// high.
    [[nodiscard]] int nextPresent(int number) const;

    // What location types there are.
    [[nodiscard]] bool hasWordFrame() const { return hasWordFrame_; }
    [[nodiscard]] bool hasOtherTypes() const { return hasOtherTypes_; }

  private:
    void add(std::string_view command);
    IoStatus writeOut();
    [[nodiscard]] std::string pathOf(int chunk) const;

    PcmLoad& load_;
    int group_;
    /// What waits for its file; an empty text once all of it is there.
    std::map<int, std::string> waiting_;
    std::size_t waitingBytes_ = 0;
    std::string smf_;
    std::unordered_map<int, std::unique_ptr<ChunkFields>> read_;
    std::size_t readBytes_ = 0;
    std::unique_ptr<ChunkFields> none_;
    std::set<int> countedLists_;
    bool hasWordFrame_ = false;
    bool hasOtherTypes_ = false;
};

}  // namespace kavu
