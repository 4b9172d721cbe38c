#include "core/talk/BoxLines.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(BoxLines, TenLinesAreShownAndNoDetails) {
    MessageBox box;
    box.text = "These:\n";
    addLines(box, std::vector<std::string>(10, "x"));
    EXPECT_EQ(box.text, "These:\nx\nx\nx\nx\nx\nx\nx\nx\nx\nx\n");
    EXPECT_EQ(box.details, "");
}

TEST(BoxLines, OfMoreTheRestIsCountedAndTheDetailsHaveAll) {
    std::vector<std::string> lines;
    for (int i = 1; i <= 12; ++i) {
        lines.push_back("line " + std::to_string(i));
    }
    MessageBox box;
    addLines(box, lines);
    EXPECT_NE(box.text.find("line 10\n... and 2 more\n"), std::string::npos) << box.text;
    EXPECT_EQ(box.text.find("line 11"), std::string::npos);
    EXPECT_NE(box.details.find("line 1\n"), std::string::npos);
    EXPECT_NE(box.details.find("line 12\n"), std::string::npos);
}

}  // namespace
}  // namespace kavu
