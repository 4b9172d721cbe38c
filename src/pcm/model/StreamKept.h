// What the group files of a stream hold and its model has no place for: attributes of another
// edition or of another program, rows after the end of a list, measurements that a load has left
// out. A load gathers it; a save asks whether it is to be kept, and appends it to the groups, with
// the numbers that the rows have then.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kavu {

/// One command of a P or D group without its head: "XYZ-1-3:5;".
struct KeptCommand {
    std::string text;
    /// The index, from 0, with the number of a row that the model does not have; -1 if the model
    /// has all rows that the command belongs to. It is the outermost one.
    int missingRow = -1;
    /// The load has read another command of this code.
    bool isRepeat = false;
};

/// The commands of a row of a measurement list that is no measurement of the model, all of them.
struct KeptRow {
    int list = 0;
    int number = 0;
    /// The count of the list includes it.
    bool isCounted = false;
    std::vector<std::string> commands;
};

struct StreamKept {
    std::vector<KeptCommand> ofFormat;  ///< of the P group
    /// By `Measurement::kept`, less 1.
    std::vector<std::vector<KeptCommand>> ofMeasurements;
    /// Of tagged data, by their list and name.
    std::map<std::pair<int, std::string>, std::vector<KeptCommand>> ofTagged;
    std::vector<KeptCommand> ofLists;  ///< of the D group and its lists
    std::vector<KeptRow> rows;         ///< by list and number

    [[nodiscard]] bool empty() const {
        return ofFormat.empty() && ofMeasurements.empty() && ofTagged.empty() && rows.empty() &&
               ofLists.empty();
    }
};

}  // namespace kavu
