// What the stages of message data and packets share.
#pragma once

#include "core/document/GroupFiles.h"
#include "groups/MeasurementNames.h"
#include "support/TestContext.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kavu::test {

class DataStage : public ::testing::Test {
  protected:
    explicit DataStage(int edition) : t(edition) {}

    /// Makes the commands, each without its head, the S group of "Link".
    void writeGroup(std::string_view commands) {
        std::string text = "S-1\\DLN:Link;\r\n";
        for (auto rest = commands; !rest.empty();) {
            const auto end = rest.find(';');
            text.append("S-1\\").append(rest.substr(0, end)).append(";\r\n");
            rest.remove_prefix(std::min(rest.size(), end + 1));
        }
        t.write(groupFile('S', 1), text);
    }
    /// True if the only box has this text in it.
    [[nodiscard]] bool isRefused(const std::string& text) const {
        return t.ui.boxes.size() == 1 && t.ui.boxes[0].text.find(text) != std::string::npos;
    }
    /// Names that are checked: "Link" is stream 1, and "SPEED" is one of stream 2.
    void gatherNames(MeasurementNames& names) {
        t.write(groupFile('M', 1),
                "M-1\\ID:S;\r\nM-1\\BB\\DLN:Link;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:PCM;\r\n");
        t.write(groupFile('D', 1), "D-1\\DLN:PCM;\r\nD-1\\MN-1-1:SPEED;\r\n");
        ASSERT_TRUE(names.checkForDuplicates(&t.ui));
        names.setChecking(true, false);
    }

    using Values = std::vector<std::pair<std::string, std::string>>;

    TestContext t;
};

}  // namespace kavu::test
