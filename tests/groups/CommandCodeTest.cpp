#include "groups/CommandCode.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(CommandCode, ACodeIsTakenApart) {
    struct Case {
        const char* code;
        char letter;
        int index;
        const char* field;
    };
    for (const auto& [code, letter, index, field] :
         {Case{"G\\PN", 'G', 0, "PN"}, Case{"g\\DSI-1", 'G', 0, "DSI-1"},
          Case{"T-1\\AP\\POC1", 'T', 1, "AP\\POC1"}, Case{"r-99\\ADL-2-5", 'R', 99, "ADL-2-5"},
          Case{"P-01\\D2", 'P', 1, "D2"}, Case{"T-001\\AN1-02", 'T', 1, "AN1-2"},
          Case{"v-01\\X-02", 'V', 1, "X-02"}, Case{"H\\X", 'H', 0, "X"}}) {
        const auto parsed = parseCommandCode(code);
        ASSERT_TRUE(parsed.has_value()) << code;
        EXPECT_EQ(parsed->letter, letter);
        EXPECT_EQ(parsed->index, index);
        EXPECT_EQ(parsed->field, field);
    }
    EXPECT_EQ(parseCommandCode("r-7\\ADL-2-5")->text(), "R-7\\ADL-2-5");
    EXPECT_EQ(parseCommandCode("g\\pn")->text(), "G\\pn");
}

TEST(CommandCode, WhatIsNoCodeIsRefused) {
    for (const char* code :
         {"", "PN", "\\PN", "G\\", "G-1\\PN", "T\\RF1", "T-\\RF1", "T-0\\RF1", "T-100\\RF1",
          "T-1x\\RF1", "Q-1\\X", "C-1\\DCN", "G\\PN:x", "G\\P;N", "G\\P N", "T1\\RF1"}) {
        EXPECT_FALSE(parseCommandCode(code).has_value()) << code;
    }
}

}  // namespace
}  // namespace kavu
