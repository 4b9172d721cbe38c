// The commands of a D group, cut into working files of a hundred measurements each, so that
// a look-up goes through the commands of a few measurements. Each file is read once.
#pragma once

#include "core/document/CommandIndex.h"
#include "core/files/IoStatus.h"
#include "groups/CountCheck.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class PcmLoad;

class DataChunks {
  public:
    static constexpr int kMeasurementsInChunk = 100;

    DataChunks(PcmLoad& load, int group);
    DataChunks(const DataChunks&) = delete;
    DataChunks& operator=(const DataChunks&) = delete;
    /// Deletes the chunk files.
    ~DataChunks();

    /// Splits the group's file. From 106-09 on its "SMF\" commands go to a file of their own.
    /// False on a cancel or a failure, which is reported.
    bool split();

    /// The chunk of a measurement number, or null if the file has no command of its
    /// measurements. Valid until the next call.
    [[nodiscard]] CommandIndex* chunkOf(int measurement);
    /// The commands that name no measurement.
    [[nodiscard]] CommandIndex& lists();
    /// The numbers of the lists that state how many measurements they have.
    [[nodiscard]] const std::set<int>& countedLists() const { return countedLists_; }
    /// Logs each count that is smaller than what is there.
    void reportCounts();
    /// The first measurement number from `number` on whose chunk exists, or one that is too
    /// high.
    [[nodiscard]] int nextPresent(int number) const;
    /// Visits all commands, with the marks of those that were read. Nothing may be read after it.
    void forEachChunk(const std::function<void(const CommandIndex&)>& visit);

    // The location types in the file.
    [[nodiscard]] bool hasWordFrame() const { return hasWordFrame_; }
    [[nodiscard]] bool hasOtherTypes() const { return hasOtherTypes_; }

  private:
    void add(std::string_view command);
    IoStatus writeOut();
    [[nodiscard]] std::string pathOf(int chunk) const;
    /// Reads the commands of a chunk again, with their marks.
    [[nodiscard]] bool readChunk(int number, CommandIndex& commands) const;
    void dropRead();

    PcmLoad& load_;
    int group_;
    /// Commands that are not in their file yet; an empty text once all are.
    std::map<int, std::string> waiting_;
    std::size_t waitingBytes_ = 0;
    std::string smf_;
    std::unordered_map<int, CommandIndex> read_;
    std::size_t readBytes_ = 0;
    std::unordered_map<int, std::vector<bool>> marks_;  ///< of chunks that were read and dropped
    CommandIndex none_;
    std::set<int> countedLists_;
    CountCheck counts_;
    bool hasWordFrame_ = false;
    bool hasOtherTypes_ = false;
};

}  // namespace kavu
