#include "core/command/CommandPath.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using namespace std::string_view_literals;

struct ViewCase {
    std::string_view command;
    std::string_view code;
    std::string_view head;
    std::string_view field;
    std::string_view value;
    std::string_view key;
};

TEST(CommandPathTest, ViewsThePartsOfACommand) {
    constexpr ViewCase kCases[] = {
        {"P-1\\MF1:8;", "P-1\\MF1", "P-1", "MF1", "8", "P-1\\MF1"},
        {"G\\DSI\\N:2;", "G\\DSI\\N", "G", "DSI\\N", "2", "G\\DSI\\N"},
        {"P-1\\MF1:a:b;", "P-1\\MF1", "P-1", "MF1", "a:b", "P-1\\MF1"},
        {"P-1\\MF1:a;;", "P-1\\MF1", "P-1", "MF1", "a;", "P-1\\MF1"},
        {"P-1\\MF1:8", "P-1\\MF1", "P-1", "MF1", "8", "P-1\\MF1"},
        {"P-1\\MF1 :;", "P-1\\MF1 ", "P-1", "MF1 ", "", "P-1\\MF1"},
        {"P-1\\TF:ONE;", "P-1\\TF", "P-1", "TF", "ONE", "P-1\\TF"},
        {"P-1\\SF\\N-1:2;", "P-1\\SF\\N-1", "P-1", "SF\\N-1", "2", "P-1\\SF\\N-1"},
        {"G\\COM:a:b\\c;", "G\\COM", "G", "COM", "a:b\\c", "G\\COM"},
        {"G\\COM:;", "G\\COM", "G", "COM", "", "G\\COM"},
        {"G:a\\b:c;", "G", "", "", "a\\b:c", "G"},
        {"P-1\\TF;", "", "", "", "", "P-1\\TF;"},
        {"COMMENT: x\\y;", "COMMENT", "", "", " x\\y", "COMMENT"},
        {"\\A:1;", "\\A", "", "A", "1", "\\A"},
        {"P-1\\:1;", "P-1\\", "P-1", "", "1", "P-1\\"},
        {":1;", "", "", "", "1", ""},
        {":;", "", "", "", "", ""},
        {"P-1\\MF1;", "", "", "", "", "P-1\\MF1;"},
        {"P-1\\MF1 \t", "", "", "", "", "P-1\\MF1"},
        {";", "", "", "", "", ";"},
        {"", "", "", "", "", ""},
    };
    for (const auto& each : kCases) {
        const auto view = viewCommand(each.command);
        EXPECT_EQ(view.text, each.command);
        EXPECT_EQ(view.code, each.code) << each.command;
        EXPECT_EQ(view.head, each.head) << each.command;
        EXPECT_EQ(view.field, each.field) << each.command;
        EXPECT_EQ(view.value, each.value) << each.command;
        EXPECT_EQ(view.hasColon, each.command.find(':') != std::string_view::npos) << each.command;
        EXPECT_EQ(keyOf(view), each.key) << each.command;
    }
}

struct PathCase {
    std::string_view code;
    char letter;
    int group;
    std::string_view stem;
    std::vector<int> at;
};

TEST(CommandPathTest, TakesCodesApart) {
    const PathCase cases[] = {
        {"R-1\\ADL-2-5", 'R', 1, "ADL", {2, 5}},
        {"d-12\\wp-1-2-1-3", 'D', 12, "wp", {1, 2, 1, 3}},
        {"S-1\\X-1-2-3-4-5-6", 'S', 1, "X", {1, 2, 3, 4, 5, 6}},
        {"G\\PN", 'G', 0, "PN", {}},
        {"M-3\\SI\\DLN-7", 'M', 3, "SI\\DLN", {7}},
        {"P-1\\TK1-4", 'P', 1, "TK1", {4}},
        // What no format writes is no index.
        {"P-1\\A-0", 'P', 1, "A-0", {}},
        {"P-1\\A-01", 'P', 1, "A-01", {}},
        {"P-1\\A-+1", 'P', 1, "A-+1", {}},
        {"P-1\\A--1", 'P', 1, "A-", {1}},
        {"P-1\\A-1-x-2", 'P', 1, "A-1-x", {2}},
        {"P-1\\A-999999999", 'P', 1, "A", {999999999}},
        {"P-1\\A-1000000000", 'P', 1, "A-1000000000", {}},
        {"P-1\\-1", 'P', 1, "-1", {}},
        {"P-999999999\\A", 'P', 999999999, "A", {}},
    };
    for (const auto& each : cases) {
        const auto path = parsePath(each.code);
        ASSERT_TRUE(path) << each.code;
        EXPECT_EQ(path->letter, each.letter) << each.code;
        EXPECT_EQ(path->group, each.group) << each.code;
        EXPECT_EQ(path->stem, each.stem) << each.code;
        EXPECT_EQ(std::vector(path->at.begin(), path->at.begin() + path->count), each.at)
            << each.code;
    }
}

TEST(CommandPathTest, RefusesWhatIsNoCode) {
    for (const auto code : {""sv, "P"sv, "P-1"sv, "P-1\\"sv, "\\A"sv, "1-1\\A"sv, "P-\\A"sv,
                            "P-0\\A"sv, "P-01\\A"sv, "P--1\\A"sv, "P-1x\\A"sv, "PP-1\\A"sv,
                            "P-1000000000\\A"sv, "COMMENT"sv, "S-1\\X-1-2-3-4-5-6-7"sv}) {
        EXPECT_FALSE(parsePath(code)) << code;
    }
}

TEST(CommandPathTest, SetsTheValueOfACommand) {
    const std::pair<std::string, std::string_view> kCases[] = {
        {"A:1;", "A:new;"}, {"A:1:2", "A:new;"}, {"A:", "A:new;"}, {":", ":new;"}, {"A;", "A;new;"},
    };
    for (auto [command, expected] : kCases) {
        setValue(command, "new");
        EXPECT_EQ(command, expected);
    }
}

TEST(CommandPathTest, WhatIsAfterTheHeadNeedNotBeAField) {
    EXPECT_EQ(afterHead("D-1\\SMF\\N:1;"), "SMF\\N:1;");
    EXPECT_EQ(afterHead("D-1\\SMF\\N;"), "SMF\\N;");
    EXPECT_EQ(afterHead("D-1:a\\b;"), "b;");
    EXPECT_EQ(afterHead("D-1:a;"), "");
}

TEST(CommandPathTest, TakesAnIndexFromTheFront) {
    std::string_view text = "12-x";
    EXPECT_EQ(takeIndex(text), 12);
    EXPECT_EQ(text, "-x");
    for (const auto other : {""sv, "-1"sv, "0"sv, "01"sv, " 1"sv, "+1"sv, "1234567890"sv}) {
        text = other;
        EXPECT_EQ(takeIndex(text), std::nullopt) << other;
        EXPECT_EQ(text, other) << "nothing is taken";
    }
}

TEST(CommandPathTest, ComposesHeads) {
    EXPECT_EQ(groupHead('G', 7), "G\\");
    EXPECT_EQ(groupHead('H', 0), "H\\");
    EXPECT_EQ(groupHead('T', 7), "T-7\\");
    EXPECT_EQ(groupHead('D', 99), "D-99\\");
}

TEST(CommandPathTest, ComposesFieldsOfAnyDepth) {
    EXPECT_EQ(fieldCode("PN", {}), "PN");
    EXPECT_EQ(fieldCode("PN", {1, 2}), "PN") << "what the pattern has no index for is left out";
    EXPECT_EQ(fieldCode("POC1-n", {12, 0}), "POC1-12");
    EXPECT_EQ(fieldCode("EV\\PM\\MN-n-m", {2, 34}), "EV\\PM\\MN-2-34");
    EXPECT_EQ(fieldCode("SF4-n-m-k", {1, 22, 333}), "SF4-1-22-333");
    EXPECT_EQ(fieldCode("X-a-b-c-d-e-f", {1, 2, 3, 4, 5, 6}), "X-1-2-3-4-5-6");
    EXPECT_EQ(fieldCode("AEF\\DLN-n", {18}), "AEF\\DLN-18");
    EXPECT_EQ(fieldCode("ISF\\N", {}), "ISF\\N");
}

TEST(CommandPathTest, ComposedCodesAreTakenApartAgain) {
    const int numbers[] = {1, 2, 1, 1};
    std::string code = "> ";
    appendCode(code, 'D', 1, "WP-n-m-k-f", numbers);
    EXPECT_EQ(code, "> D-1\\WP-1-2-1-1") << "it is appended";
    const auto path = parsePath(std::string_view(code).substr(2));
    ASSERT_TRUE(path);
    EXPECT_EQ(path->stem, "WP");
    EXPECT_EQ(path->count, 4);
    EXPECT_EQ(path->at, (std::array{1, 2, 1, 1, 0, 0}));
}

TEST(CommandPathTest, RowsHaveTheNumbersOfTheRowsAroundThem) {
    const RowNumbers outside;
    EXPECT_EQ(outside.count, 0);
    EXPECT_EQ(outside.last(), 0);
    const auto deep = outside.row(2).row(5).row(1).row(7);
    EXPECT_EQ(deep.count, 4);
    EXPECT_EQ(deep.last(), 7);
    EXPECT_EQ(fieldCode("WP-n-m-k-f", deep.at), "WP-2-5-1-7");
    EXPECT_EQ(fieldCode("MN\\N-n", deep.at), "MN\\N-2") << "further numbers are left out";
    const RowNumbers listed = {2, 5, 1, 7};
    EXPECT_EQ(listed.at, deep.at);
    EXPECT_EQ(listed.count, 4);
}

TEST(CommandPathTest, AFieldIsOfAPatternWhateverItsIndices) {
    for (const auto* const field : {"MN-1-2", "mn-1-2", "MN-x", "MN-", "MN-1-2-3"}) {
        EXPECT_TRUE(isOfPattern(field, "MN-n-m")) << field;
    }
    for (const auto* const field : {"MN", "MN1-1-2", "M", "", "MN\\N-1", "XMN-1-2"}) {
        EXPECT_FALSE(isOfPattern(field, "MN-n-m")) << field;
    }
    EXPECT_TRUE(isOfPattern("SMF\\N-1", "SMF\\N-n"));
    EXPECT_FALSE(isOfPattern("SMF\\N", "SMF\\N-n"));
    EXPECT_TRUE(isOfPattern("dln", "DLN"));
    EXPECT_FALSE(isOfPattern("DLN-1", "DLN"));
}

TEST(CommandPathTest, IndicesAreWrittenWithoutZerosAtTheirFront) {
    const std::pair<std::string, std::string> rows[] = {
        {"T-01\\RF1-002:07;", "T-1\\RF1-2:07;"},
        {"D-1\\WP-01-2-003-10:1;", "D-1\\WP-1-2-3-10:1;"},
        {"P-000\\A-00:1;", "P-0\\A-0:1;"},
        {"R-1\\SI\\DLN-01", "R-1\\SI\\DLN-1"},
        {"C-0010\\DCN:A-01;", "C-10\\DCN:A-01;"},
        {"V-01\\X-01:1;", "V-1\\X-01:1;"},
        {"G\\DSI-01:a:b-01;", "G\\DSI-1:a:b-01;"},
    };
    for (const auto& [given, written] : rows) {
        auto text = given;
        EXPECT_TRUE(shapeOfCode(given + ":").mayHoldLeadingZero) << given;
        EXPECT_TRUE(dropLeadingZeros(text)) << given;
        EXPECT_EQ(text, written);
        EXPECT_FALSE(dropLeadingZeros(text)) << given;
        const std::string first = "X-01\\A:1;";
        auto second = first + given;
        EXPECT_TRUE(dropLeadingZeros(second, first.size()));
        EXPECT_EQ(second, first + written);
    }
    for (const std::string given : {"P-1\\A-0:1;", "P-10\\A-20:01;", "P-1\\A-01B:1;", "H\\X-01:1;",
                                    "", "-", "P-0", "-0:01;"}) {
        auto text = given;
        EXPECT_FALSE(dropLeadingZeros(text)) << given;
        EXPECT_EQ(text, given);
    }
}

}  // namespace
}  // namespace kavu
