#include "core/document/GroupFiles.h"
#include "groups/AGroup.h"
#include "groups/GGroup.h"
#include "groups/GroupLists.h"
#include "groups/LinkValidation.h"
#include "groups/MGroup.h"
#include "groups/RGroup.h"
#include "groups/SourceList.h"
#include "groups/TGroup.h"
#include "support/TestContext.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/TGroupFields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string countOf(std::span<const Field> table, std::string_view stem) {
    const GroupLists lists(table);
    const auto* const list = lists.listOf(stem);
    return list == nullptr ? std::string() : std::string(list->count.code);
}

TEST(ListOfACommand, IsTheOneWhoseCodesShareItsStem) {
    for (const auto& [stem, count] :
         std::initializer_list<std::pair<const char*, const char*>>{{"EV\\ID", "EV\\N"},
                                                                    {"ev\\x", "EV\\N"},
                                                                    {"EV\\PM\\MN", "EV\\PM\\N-n"},
                                                                    {"EV\\PM\\X", "EV\\PM\\N-n"},
                                                                    {"EV\\PM\\N", "EV\\N"},
                                                                    {"RMMID", "RMM\\N"},
                                                                    {"RMMX", "RMM\\N"},
                                                                    {"RIMMID", "RMM\\N"},
                                                                    {"RIMX", "RIM\\N"},
                                                                    {"RT7", "RT\\N"},
                                                                    {"RI9", ""},
                                                                    {"XYZ", ""},
                                                                    {"E", ""},
                                                                    {"", ""}}) {
        EXPECT_EQ(countOf(recorderVocabulary(), stem), count) << stem;
    }
    EXPECT_EQ(countOf(multiplexFields(), "SI9"), "SI\\N");
    EXPECT_EQ(countOf(multiplexFields(), "SI\\X"), "SI\\N");
    EXPECT_EQ(countOf(multiplexFields(), "BB\\X"), "");
    EXPECT_EQ(countOf(generalFields(), "POC5"), "POC\\N");
    EXPECT_EQ(countOf(generalFields(), "DSIX"), "DSI\\N");
    EXPECT_EQ(countOf(generalFields(), "DST"), "DSI\\N");
    EXPECT_EQ(countOf(transmissionFields(), "SCO3"), "SCO\\N");
}

class RowsOfAFile : public ::testing::Test {
  protected:
    EditedGroup general(const std::string& commands) {
        t.write(working::kGeneral, commands);
        auto group = readGeneral(t.context, &t.ui);
        EXPECT_TRUE(group.has_value());
        return std::move(*group);
    }
    RecorderGroup recorder(const std::string& commands) {
        t.write(groupFile('R', 1), "R-1\\ID:Deck;\r\n" + commands);
        auto group = readRecorder(t.context, &t.ui, "Deck");
        EXPECT_TRUE(group.has_value());
        return std::move(*group);
    }
    static void add(GroupRow& record, std::string_view list, const char* code, const char* value) {
        record.lists[std::string(list)].emplace_back().set(code, value);
    }
    /// Stores with Yes and gives the file.
    std::string stored(const EditedGroup& group) {
        t.ui.queued = {Button::Yes};
        EXPECT_TRUE(storeGeneral(t.context, &t.ui, group));
        return t.read(working::kGeneral);
    }
    std::string stored(const RecorderGroup& group) {
        t.ui.queued = {Button::Yes};
        EXPECT_TRUE(storeRecorder(t.context, &t.ui, group));
        return t.read(groupFile('R', 1));
    }

    test::TestContext t;
};

TEST_F(RowsOfAFile, BehindTheCountKeepTheirNumberAndNewOnesComeBehindThem) {
    auto group = general(
        "G\\POC\\N:1;\r\nG\\POC1-1:Ann;\r\nG\\POC1-2:Bob;\r\nG\\POC2-2:Lab;\r\nG\\POC9-2:x;\r\n"
        "G\\POC1-4:Dan;\r\n");
    add(group.record, kContactCount, "POC1-n", "New");
    const auto file = stored(group);
    for (const auto* const line :
         {"G\\POC\\N:3;", "G\\POC1-1:Ann;", "G\\POC1-2:Bob;", "G\\POC2-2:Lab;", "G\\POC9-2:x;",
          "G\\POC1-3:New;", "G\\POC1-4:Dan;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
    EXPECT_THAT(file, Not(HasSubstr("POC2-3")));
}

TEST_F(RowsOfAFile, BehindTheCountAreListedInTheQuestionUntilANewOneShowsThem) {
    const auto group = general("G\\POC\\N:1;\r\nG\\POC1-1:Ann;\r\nG\\POC1-2:Bob;\r\n");
    t.ui.queued = {Button::No};
    ASSERT_TRUE(storeGeneral(t.context, &t.ui, group));
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("G\\POC1-2:Bob;"));
    EXPECT_THAT(t.read(working::kGeneral), Not(HasSubstr("Bob")));
}

TEST_F(RowsOfAFile, WithoutACountTheyAreShownBeforeANewOne) {
    auto group = general("G\\POC1-1:Ann;\r\nG\\POC3-1:Road;\r\n");
    add(group.record, kContactCount, "POC1-n", "New");
    const auto file = stored(group);
    EXPECT_THAT(file, HasSubstr("G\\POC\\N:2;"));
    EXPECT_THAT(file, HasSubstr("G\\POC1-1:Ann;\r\n"));
    EXPECT_THAT(file, HasSubstr("G\\POC3-1:Road;\r\n"));
    EXPECT_THAT(file, HasSubstr("G\\POC1-2:New;\r\n"));
}

TEST_F(RowsOfAFile, MoveBehindTheOthersWhereTheListIsFull) {
    std::string commands = "G\\POC\\N:0;\r\n";
    for (int n = 1; n <= static_cast<int>(kMostContacts); ++n) {
        commands += "G\\POC1-" + std::to_string(n) + ":Old" + std::to_string(n) + ";\r\n";
    }
    auto group = general(commands);
    for (std::size_t n = 0; n < kMostContacts; ++n) {
        add(group.record, kContactCount, "POC1-n", "New");
    }
    const auto file = stored(group);
    for (std::size_t n = 1; n <= kMostContacts; ++n) {
        EXPECT_THAT(file, HasSubstr("G\\POC1-" + std::to_string(n) + ":New;"));
        EXPECT_THAT(file, HasSubstr("G\\POC1-" + std::to_string(n + kMostContacts) + ":Old" +
                                    std::to_string(n) + ";"));
    }
}

TEST_F(RowsOfAFile, OfAnotherListStayWhenATrackIsDeleted) {
    auto group = recorder(
        "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\nR-1\\TK9-2:nine;\r\n"
        "R-1\\EV\\N:2;\r\nR-1\\EV\\ID-1:A;\r\nR-1\\EV\\ID-2:B;\r\nR-1\\EV\\X-1:ex1;\r\n"
        "R-1\\EV\\X-2:ex2;\r\nR-1\\RMMX-1:rm1;\r\nR-1\\RIMX-1:ri1;\r\nR-1\\RT9-1:rt1;\r\n"
        "R-1\\XYZ-1:free1;\r\nR-1\\XYZ-2:free2;\r\n");
    deleteTrack(group, 0);
    const auto file = stored(group);
    for (const auto* const line :
         {"R-1\\TK9-1:nine;", "R-1\\EV\\X-1:ex1;", "R-1\\EV\\X-2:ex2;", "R-1\\RMMX-1:rm1;",
          "R-1\\RIMX-1:ri1;", "R-1\\RT9-1:rt1;", "R-1\\XYZ-1:free1;", "R-1\\XYZ-2:free2;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
}

TEST_F(RowsOfAFile, OfAnEventGoWithItAndWithItsMeasurements) {
    auto group = recorder(
        "R-1\\EV\\N:2;\r\nR-1\\EV\\ID-1:A;\r\nR-1\\EV\\ID-2:B;\r\nR-1\\EV\\X-2:ex2;\r\n"
        "R-1\\EV\\PM\\N-2:2;\r\nR-1\\EV\\PM\\MN-2-1:M1;\r\nR-1\\EV\\PM\\MN-2-2:M2;\r\n"
        "R-1\\EV\\PM\\X-2-1:one;\r\nR-1\\EV\\PM\\X-2-2:two;\r\nR-1\\TK9-1:track;\r\n");
    auto& events = group.record.lists["EV\\N"];
    events.erase(events.begin());
    auto& measurements = events[0].lists["EV\\PM\\N-n"];
    measurements.erase(measurements.begin());
    const auto file = stored(group);
    for (const auto* const line :
         {"R-1\\EV\\X-1:ex2;", "R-1\\EV\\PM\\N-1:1;", "R-1\\EV\\PM\\MN-1-1:M2;",
          "R-1\\EV\\PM\\X-1-1:two;", "R-1\\TK9-1:track;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
    EXPECT_THAT(file, Not(HasSubstr(":one;")));
}

TEST_F(RowsOfAFile, WithoutATrackNumberKeepTheirPlaceBetweenTheTracks) {
    auto group = recorder(
        "R-1\\N:3;\r\nR-1\\TK1-1:1;\r\nR-1\\DSI-2:lost;\r\nR-1\\TK2-2:HDDR;\r\nR-1\\TK1-3:3;\r\n"
        "R-1\\TK1-4:4;\r\nR-1\\DSI-4:behind;\r\n");
    ASSERT_EQ(group.tracks.size(), 2u);
    const auto same = stored(group);
    EXPECT_THAT(same, HasSubstr("R-1\\TK1-3:3;"));
    EXPECT_THAT(same, HasSubstr("R-1\\N:3;"));
    Track track;
    setTrackValue(track, "TK1-n", "9");
    addTrack(group, track);
    const auto file = stored(group);
    for (const auto* const line :
         {"R-1\\N:5;", "R-1\\TK1-1:1;", "R-1\\DSI-2:lost;", "R-1\\TK2-2:HDDR;", "R-1\\TK1-3:3;",
          "R-1\\TK1-4:4;", "R-1\\DSI-4:behind;", "R-1\\TK1-5:9;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
    EXPECT_THAT(file, Not(HasSubstr("TK1-2")));
}

TEST_F(RowsOfAFile, OfASubcarrierBehindTheCountAreNotTheNextOnes) {
    t.write(
        groupFile('M', 1),
        "M-1\\ID:Radio;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:0;\r\nM-1\\SI1-1:7;\r\n"
        "M-1\\SI2-1:PCM;\r\nM-1\\SI\\DLN-1:Hidden;\r\nM-1\\SI\\MN-1:Other;\r\nM-1\\SI9-1:x;\r\n");
    MultiplexGroup group;
    loadMultiplex(t.context, &t.ui, "Radio", 1, group);
    auto& row = group.record.lists["SI\\N"].emplace_back();
    row.set("SI1-n", "8");
    row.set(kSubcarrierType, "OTH");
    t.ui.queued = {Button::Yes};
    ASSERT_TRUE(storeMultiplex(t.context, &t.ui, group));
    const auto file = t.read(groupFile('M', 1));
    for (const auto* const line :
         {"M-1\\SI\\N:2;", "M-1\\SI1-1:7;", "M-1\\SI2-1:PCM;", "M-1\\SI\\DLN-1:Hidden;",
          "M-1\\SI\\MN-1:Other;", "M-1\\SI9-1:x;", "M-1\\SI1-2:8;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
    EXPECT_THAT(file, Not(HasSubstr("SI\\DLN-2")));
}

TEST_F(RowsOfAFile, OfADataSourceMoveWithItWhenAnotherIsDeleted) {
    t.write(working::kGeneral,
            "G\\DSI\\N:2;\r\nG\\DSI-1:A;\r\nG\\DST-1:RF;\r\nG\\DSI-2:B;\r\nG\\DST-2:TAP;\r\n"
            "G\\DSIX-1:a;\r\nG\\DSIX-2:b;\r\nG\\DSIX-4:d;\r\nG\\DST-3:STO;\r\nG\\XYZ-2:free;\r\n");
    std::vector<DataSource> rows;
    std::vector<DataSource> uncounted;
    ASSERT_TRUE(readDataSources(t.context, &t.ui, rows));
    ASSERT_TRUE(readUncountedSources(t.context, 2, uncounted).ok());
    rows.erase(rows.begin());
    ASSERT_TRUE(rewriteSources(t.context, rows, uncounted).ok());
    const auto file = t.read(working::kGeneral);
    for (const auto* const line : {"G\\DSI\\N:1;", "G\\DSI-1:B;", "G\\DST-1:TAP;", "G\\DSIX-1:b;",
                                   "G\\DST-2:STO;", "G\\XYZ-2:free;", "G\\DSIX-3:d;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
    EXPECT_THAT(file, Not(HasSubstr("DSIX-1:a")));
}

TEST_F(RowsOfAFile, OfASourceBehindTheCountAreNotTheNextSources) {
    t.write(working::kGeneral,
            "G\\DSI\\N:1;\r\nG\\DSI-1:A;\r\nG\\DSI-2:Ghost;\r\nG\\DSIX-2:g;\r\nG\\DSIX-3:h;\r\n");
    ASSERT_TRUE(appendSource(t.context, 1, "New", "RF").ok());
    const auto file = t.read(working::kGeneral);
    for (const auto* const line : {"G\\DSI\\N:2;", "G\\DSI-2:New;", "G\\DST-2:RF;",
                                   "G\\DSI-4:Ghost;", "G\\DSIX-4:g;", "G\\DSIX-3:h;"}) {
        EXPECT_THAT(file, HasSubstr(line));
    }
}

TEST_F(RowsOfAFile, OfASourceBehindTheCountAreNotTheHomeOfALink) {
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:A;\r\nG\\DSI-2:Ghost;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Orphan;\r\n");
    t.ui.queued = {Button::Yes};
    ASSERT_TRUE(validateDataLinks(t.context, &t.ui));
    const auto file = t.read(working::kGeneral);
    EXPECT_THAT(file, HasSubstr("G\\DSI-2:Data Source #2;"));
    EXPECT_THAT(file, HasSubstr("G\\DSI-3:Ghost;"));
}

}  // namespace
}  // namespace kavu
