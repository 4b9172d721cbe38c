// A bus group in a working store: made of short texts, unpacked, edited and packed.
#pragma once

#include "bus/definition/BusEdit.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusPack.h"
#include "bus/definition/BusTerminalEdit.h"
#include "bus/definition/BusUnpack.h"
#include "core/document/GroupFiles.h"
#include "support/TestContext.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu::test {

/// The commands of a group, one on each line, each with the head of the first bus group.
inline std::string busCommands(const std::vector<std::string>& fields) {
    std::string text;
    for (const auto& field : fields) {
        text += "B-1\\" + field + ";\r\n";
    }
    return text;
}

struct BusStage {
    explicit BusStage(int edition = 2011) : t(edition) {}

    /// Unpacks a group of these commands.
    BusDefinition unpack(const std::vector<std::string>& fields) {
        return unpackText(busCommands(fields));
    }
    BusDefinition unpackText(std::string_view text) {
        t.write(kBusGroupFile, text);
        BusDefinition definition{.link = "Bus 1", .index = 1};
        EXPECT_TRUE(unpackBusGroup(t.context, &t.ui, definition));
        return definition;
    }
    /// The text of the group after packing.
    std::string pack(const BusDefinition& definition) {
        EXPECT_TRUE(packBusGroup(t.context, &t.ui, definition));
        return t.read(kBusGroupFile);
    }
    BusEdit edit(BusDefinition& definition) { return {t.context, &t.ui, definition}; }

    /// The numbers of the messages that were shown, in order.
    [[nodiscard]] std::vector<int> shown() const {
        std::vector<int> ids;
        for (const auto& box : t.ui.boxes) {
            ids.push_back(box.id);
        }
        return ids;
    }

    TestContext t;
};

/// A message that every check of its form accepts.
inline BusForm goodMessage() {
    return {
        .values = {{"MNA", "New"}, {"TRA", "00101"}, {"STA", "00010"}, {"TRM", "0"}, {"DWC", "4"}}};
}
inline BusForm goodLocation() {
    return {.values = {{"MWN", "1"}, {"MBM", "FW"}, {"MTO", "MSB"}, {"MFP", "1"}}};
}

}  // namespace kavu::test
