// Gathers at the end of a load what the groups of the stream hold and the load has not read (see
// StreamKept.h). Comments, and commands that cannot be taken apart, are not among it: a save
// carries them along (see CarriedCommands.h).
#pragma once

#include "core/document/CommandIndex.h"
#include "pcm/model/StreamKept.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kavu {

class DataChunks;
class PcmLoad;

/// Gathers the commands of the P group that is read.
void gatherKeptOfFormat(PcmLoad& load);
/// Gathers a D group of the stream's name that is not read at all, as of a bus: a stream that
/// becomes another type would write an empty one in its place.
void gatherUnreadMeasurements(PcmLoad& load);

/// Gathers those of the D group. It is told what becomes of each row of the lists while they are
/// read; a row of which it was told nothing is left out of the model.
class KeptMeasurements {
  public:
    explicit KeptMeasurements(PcmLoad& load) : load_(load) {}

    /// The rows of the list with numbers up to `count` are counted.
    void noteCount(int list, int count) { counts_[list] = count; }
    /// The row is a measurement of the frame.
    void notePlaced(int list, int number, std::string_view name);
    /// The row is tagged data.
    void noteTagged(int list, int number);
    /// The row has the name of a measurement of the frame (message 281, "already defined"). A save
    /// writes each measurement to all lists, so one that says the same in another list is not kept.
    void noteSecond(int list, int number, std::string_view name);

    void gather(DataChunks& chunks);

  private:
    using Row = std::pair<int, int>;
    /// What is written of a command whatever its row is.
    using Lines = std::unordered_set<std::string>;
    struct Second {
        std::string name;
        Row first;
        std::vector<std::string> commands{};
    };

    void markPlaced(int list, int number);
    [[nodiscard]] bool isPlaced(const Row& row) const;
    void gatherChunk(const CommandIndex& commands);
    void takeUnread(const CommandIndex& commands, std::size_t place,
                    std::map<Row, std::vector<std::size_t>>& ofPlaced);
    /// Notes what was read of measurements that another list has as well.
    void noteFirstLines(const CommandIndex& commands);
    void keepOfPlaced(const CommandIndex& commands,
                      const std::map<Row, std::vector<std::size_t>>& ofPlaced);
    [[nodiscard]] std::vector<KeptCommand>& keptOf(const Row& row, const std::string& name);
    void settleSeconds();
    void keepRow(const Row& row, std::vector<std::string> commands);

    PcmLoad& load_;
    std::map<int, int> counts_;
    std::map<int, std::vector<bool>> placed_;  ///< by list, then by number
    std::set<Row> tagged_;
    std::unordered_map<std::string, Row> firstRows_;  ///< by the lower-case name
    std::map<Row, Second> seconds_;
    std::set<std::pair<int, std::string>> secondNames_;
    std::map<Row, Lines> firstLines_;  ///< of the rows that `seconds_` is compared with
    std::map<Row, std::vector<std::string>> leftOut_;
    std::unordered_map<std::string, int> numbers_;  ///< `Measurement::kept` by the lower-case name
};

}  // namespace kavu
