#include "core/document/GroupFiles.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/GroupSamples.h"
#include "groups/RGroup.h"
#include "support/TestContext.h"

#include <algorithm>
#include <array>
#include <set>

namespace kavu {
namespace {

using test::contains;
using test::TestContext;

std::vector<std::string> codesOf(const std::string& text) {
    std::vector<std::string> codes;
    for (const auto& line : splitLines(text)) {
        codes.push_back(line.substr(4, line.find(':') - 4));
    }
    return codes;
}

class RGroup : public ::testing::Test {
  protected:
    RecorderGroup read(int edition, const std::string& commands) {
        t.document.version = edition;
        t.write(groupFile('R', 1), "R-1\\ID:Deck;\r\n" + commands);
        auto group = readRecorder(t.context, &t.ui, "Deck");
        EXPECT_TRUE(group.has_value());
        return std::move(*group);
    }
    std::string rewritten(int edition, const std::string& commands) {
        return recorderText(read(edition, commands), edition);
    }

    TestContext t;
};

std::string valueFor(const Field& field, int edition) {
    if (field.kind == FieldKind::DateTime) {
        return edition <= 1996 ? "01-02-96-03-04-05" : "01-02-2003-04-05-06";
    }
    if (field.kind == FieldKind::Choice) {
        const auto it =
            std::find_if(field.choices.begin(), field.choices.end(), [&](const Choice& choice) {
                return !choice.text.empty() && isKnownIn(edition, choice);
            });
        return std::string(it->value);
    }
    return "1";
}

TEST(RecorderTables, NameEveryCodeOnceAndAllPagesThereAre) {
    std::set<std::string_view> pages;
    for (const auto& page : recorderPages()) {
        pages.insert(page.name);
        EXPECT_FALSE(page.title.empty());
    }
    EXPECT_EQ(pages.size(), 11u);
    std::set<std::string> codes;
    for (const auto& field : recorderVocabulary()) {
        EXPECT_TRUE(field.page.empty() || pages.contains(field.page)) << field.code;
        if (!field.bridgeOnly && field.code != "CDLN-n") {
            EXPECT_TRUE(codes.insert(std::string(field.code)).second) << field.code;
        }
        EXPECT_EQ(field.kind == FieldKind::Choice, !field.choices.empty()) << field.code;
    }
}

TEST(RecorderTables, GiveXmlItsOwnCodesForSerialNumberFirmwareAndMediaIdentifier) {
    for (const auto& field : recorderVocabulary()) {
        if (field.code == "RI6" && !field.bridgeOnly) {
            EXPECT_EQ(field.codeToXml, "RI9");
            EXPECT_EQ(field.codeFromXml, "RI9");
        } else if (field.code == "RI7" && !field.bridgeOnly) {
            EXPECT_EQ(field.codeToXml, "RI10");
            EXPECT_EQ(field.codeFromXml, "RI10");
        } else if (field.code == "RMMID-n") {
            EXPECT_EQ(field.codeToXml, "RIMMID-n");
            EXPECT_EQ(field.codeFromXml, "");
        }
    }
}

TEST(RecorderTables, KeepTheBrokenXmlTextOfTheFifteenInchReel) {
    const auto fields = recorderSingleFields();
    const auto reel = std::find_if(fields.begin(), fields.end(),
                                   [](const Field& field) { return field.code == "TC5"; });
    ASSERT_NE(reel, fields.end());
    EXPECT_EQ(reel->choices[3].value, "15.0");
    EXPECT_EQ(reel->choices[3].xml, "`5.0");
}

/// Every field that an edition knows, filled from a file and written again: the written order
/// is that of the tables, and what the edition does not know is not written.
TEST_F(RGroup, IsWrittenInTheOrderOfTheTablesFromBothSidesOfEachGate) {
    for (const int edition : {1996, 1999, 2000, 2001, 2004, 2005, 2007, 2009, 2011}) {
        std::string file;
        std::vector<std::string> expected = {"ID"};
        for (const auto table : {recorderFieldsBeforeTracks(), recorderFieldsBehindTracks()}) {
            for (const auto& field : table) {
                if (field.code == "ID") {
                    continue;
                }
                const auto code = fieldCode(field.code, {1, 1});
                const auto value = field.code == "N" ? "0" : valueFor(field, edition);
                file += "R-1\\" + code + ":" + value + ";\r\n";
                if (isKnownIn(edition, field)) {
                    expected.push_back(code);
                }
            }
        }
        EXPECT_EQ(codesOf(rewritten(edition, file)), expected) << edition;
        EXPECT_EQ(t.ui.boxes.size(), 0u) << edition;
    }
}

TEST_F(RGroup, ShowsTenEventsOfFifteen) {
    std::string file = "R-1\\EV\\N:15;\r\n";
    for (int n = 1; n <= 15; ++n) {
        file += "R-1\\EV\\ID-" + std::to_string(n) + ":E" + std::to_string(n) + ";\r\n";
    }
    const auto group = read(2011, file);
    EXPECT_EQ(group.record.rows("EV\\N").size(), 10u);
    const auto text = recorderText(group, 2011);
    EXPECT_TRUE(contains(text, "R-1\\EV\\N:10;"));
    EXPECT_EQ(recorderLeftovers(group).leftovers(text).size(), 5u);
}

TEST_F(RGroup, LeavesTheNumberOfTracksUntilATrackIsAddedOrDeleted) {
    auto group = read(2011, "R-1\\N:4;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-3:3;\r\n");
    ASSERT_EQ(group.tracks.size(), 2u);
    EXPECT_EQ(group.record.value("N"), "4");
    EXPECT_TRUE(contains(recorderText(group, 2011), "R-1\\N:4;"));
    Track track;
    setTrackValue(track, "TK1-n", "9");
    addTrack(group, track);
    EXPECT_EQ(group.record.value("N"), "3");
    deleteTrack(group, 0);
    EXPECT_EQ(group.record.value("N"), "2");
}

TEST_F(RGroup, RefusesANumberOfTracksBelowTheRowsWith312) {
    auto group = read(2011, "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\n");
    EXPECT_FALSE(setTrackCount(t.messages, &t.ui, group, "1"));
    ASSERT_EQ(t.ui.countBoxes(312), 1);
    EXPECT_EQ(t.ui.boxes[0].text.find("There are currently 2 Data Tracks defined. Please enter a "
                                      "number greater than or equal to 2,"),
              0u);
    EXPECT_EQ(group.record.value("N"), "2");
    EXPECT_TRUE(setTrackCount(t.messages, &t.ui, group, "7"));
    EXPECT_EQ(group.record.value("N"), "7");
    EXPECT_FALSE(setTrackCount(t.messages, nullptr, group, "0"));
}

TEST_F(RGroup, Of2004HasNoSerialNumberNoMediaLocationAndNoMeasurementsToProcess) {
    const std::string file =
        "R-1\\RML:I;\r\nR-1\\RI6:123;\r\nR-1\\EV\\N:1;\r\nR-1\\EV\\ID-1:E;\r\n"
        "R-1\\EV\\PM\\N-1:1;\r\nR-1\\EV\\PM\\MN-1-1:M;\r\n";
    const auto group = read(2004, file);
    EXPECT_EQ(group.record.value("RML"), "");
    EXPECT_EQ(group.record.value("RI6"), "");
    EXPECT_TRUE(group.record.rows("EV\\N").empty());
    EXPECT_EQ(recorderText(group, 2004), "R-1\\ID:Deck;\r\n");
    EXPECT_EQ(recorderLeftovers(group).leftovers(recorderText(group, 2004)).size(), 6u);
}

TEST_F(RGroup, RewritesSerialNumberAndFirmwareAsTheyWereRead) {
    const auto text = rewritten(2009, "R-1\\RI6:SN1;\r\nR-1\\RI7:FW2;\r\nR-1\\RI9:other;\r\n");
    EXPECT_TRUE(contains(text, "R-1\\RI6:SN1;\r\nR-1\\RI7:FW2;\r\n"));
    EXPECT_FALSE(contains(text, "RI9"));
}

TEST_F(RGroup, NamesAnEventWithoutAnIdByItsRow) {
    const auto text = rewritten(2005, "R-1\\EV\\N:2;\r\nR-1\\EV\\ID-1:A;\r\n");
    EXPECT_TRUE(contains(text, "R-1\\EV\\ID-1:A;\r\nR-1\\EV\\ID-2:ID2;\r\n"));
}

TEST_F(RGroup, IsNotEnabledWithoutAWordFrom2005On) {
    EXPECT_TRUE(contains(rewritten(2005, ""), "R-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\n"));
    EXPECT_EQ(rewritten(2004, ""), "R-1\\ID:Deck;\r\n");
}

TEST_F(RGroup, SkipsBlankMeasurementsToProcess) {
    const auto text = rewritten(
        2011,
        "R-1\\EV\\N:1;\r\nR-1\\EV\\ID-1:A;\r\nR-1\\EV\\PM\\N-1:3;\r\nR-1\\EV\\PM\\MN-1-1:M1;\r\n"
        "R-1\\EV\\PM\\PST-1-3:5;\r\n");
    EXPECT_TRUE(contains(text,
                         "R-1\\EV\\PM\\N-1:2;\r\nR-1\\EV\\PM\\MN-1-1:M1;\r\n"
                         "R-1\\EV\\PM\\PST-1-2:5;\r\n"));
}

TEST_F(RGroup, KeepsCountsThatAreZero) {
    const auto text =
        rewritten(2009, "R-1\\RIM\\N:0;\r\nR-1\\RMM\\N:0;\r\nR-1\\EV\\N:0;\r\nR-1\\RT\\N:0;\r\n");
    for (const auto* count : {"RIM\\N:0;", "RMM\\N:0;", "EV\\N:0;", "RT\\N:0;"}) {
        EXPECT_TRUE(contains(text, count)) << count;
    }
    EXPECT_FALSE(contains(rewritten(2009, ""), "RT\\N"));
}

TEST_F(RGroup, CutsListsToTheirMostRows) {
    const auto group = read(
        2009, "R-1\\RIM\\N:2000000000;\r\nR-1\\RMM\\N:101;\r\nR-1\\RT\\N:10;\r\nR-1\\N:100;\r\n");
    EXPECT_EQ(group.record.rows("RIM\\N").size(), 1000u);
    EXPECT_EQ(group.record.rows("RMM\\N").size(), 100u);
    EXPECT_EQ(group.record.rows("RT\\N").size(), 9u);
    EXPECT_EQ(group.record.value("N"), "99");
}

TEST_F(RGroup, HasShorterDatesAndLongerDensitiesIn1996) {
    const auto fields = knownFields(recorderSingleFields(), 1996);
    const auto limitOf = [&](std::string_view code) {
        return std::find_if(fields.begin(), fields.end(),
                            [&](const Field& field) { return field.code == code; })
            ->limit;
    };
    EXPECT_EQ(limitOf("RI4"), 17u);
    EXPECT_EQ(limitOf("RI5"), 17u);
    EXPECT_EQ(limitOf("TC7"), 3u);
    const auto text = rewritten(1996, "R-1\\TC7:OTH;\r\nR-1\\TC1:OTH;\r\nR-1\\TC5:12.65;\r\n");
    EXPECT_TRUE(contains(text, "TC7:OTH;"));
    EXPECT_TRUE(contains(text, "TC1:OTH;"));
    EXPECT_FALSE(contains(text, "TC5"));
}

TEST_F(RGroup, BeginsANewOneWith310AndThePresentTime) {
    t.document.version = 2009;
    const auto group = readRecorder(t.context, &t.ui, "Nowhere");
    ASSERT_TRUE(group.has_value());
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, -310);
    EXPECT_EQ(t.ui.boxes[0].shownText(),
              "Recorder/Reproducer Data Source definition not found. Creating new data source "
              "definition.");
    EXPECT_EQ(group->index, 1);
    EXPECT_EQ(group->record.value("RI4"), "01-02-2026-03-04-05");
    EXPECT_EQ(recorderText(*group, 2009),
              "R-1\\ID:Nowhere;\r\nR-1\\RI4:01-02-2026-03-04-05;\r\nR-1\\EV\\E:F;\r\n"
              "R-1\\IDX\\E:F;\r\n");
    t.document.version = 1996;
    EXPECT_EQ(readRecorder(t.context, nullptr, "Nowhere")->record.value("RI4"),
              "01-02-26-03-04-05");
}

TEST_F(RGroup, IsNotReadWhenAllNumbersAreTaken) {
    for (int index = 1; index <= 99; ++index) {
        t.write(groupFile('R', index), "R-" + std::to_string(index) + "\\ID:S;\r\n");
    }
    EXPECT_FALSE(readRecorder(t.context, &t.ui, "New").has_value());
    EXPECT_EQ(t.ui.countBoxes(85), 1);
}

TEST_F(RGroup, IsNotReadAfterACancel) {
    std::string file = "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\nR-1\\EV\\N:1;\r\n";
    t.write(groupFile('R', 1), "R-1\\ID:Deck;\r\n" + file);
    ASSERT_TRUE(readRecorder(t.context, &t.ui, "Deck").has_value());
    const int polls = t.ui.polls;
    EXPECT_GT(polls, 3);
    for (int at = 1; at <= polls; ++at) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = at;
        EXPECT_FALSE(readRecorder(t.context, &t.ui, "Deck").has_value()) << at;
    }
    EXPECT_EQ(t.ui.progressOpened, polls + 1) << "there is a button to cancel with";
    EXPECT_EQ(t.ui.progressClosed, t.ui.progressOpened);
}

TEST_F(RGroup, TellsWhatItDoesOnTheStatusLine) {
    (void)read(2011, "");
    EXPECT_EQ(t.ui.statusTexts,
              (std::vector<std::string>{"Initializing Tape Data Source Information...",
                                        "Edit Recorder/Reproducer Information."}));
}

TEST_F(RGroup, KeepsUnknownCommandsIfTheUserWants) {
    const std::string file = "R-1\\RSS:C;\r\nR-1\\CRE:F;\r\nR-1\\TC1:SSR;\r\nR-1\\RSS:R;\r\n";
    const auto group = read(2009, file);
    t.ui.queued = {Button::Yes};
    ASSERT_TRUE(storeRecorder(t.context, &t.ui, group));
    EXPECT_EQ(t.read(groupFile('R', 1)),
              "R-1\\ID:Deck;\r\nR-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\n" + file);
    EXPECT_TRUE(t.document.changed);
    t.ui.queued = {Button::No};
    ASSERT_TRUE(storeRecorder(t.context, &t.ui, group));
    EXPECT_EQ(t.read(groupFile('R', 1)), "R-1\\ID:Deck;\r\nR-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\n");
}

TEST_F(RGroup, DropsUnknownCommandsWithoutAParent) {
    const auto group = read(2004, "R-1\\CRE:F;\r\n");
    ASSERT_TRUE(storeRecorder(t.context, nullptr, group));
    EXPECT_EQ(t.read(groupFile('R', 1)), "R-1\\ID:Deck;\r\n");
}

TEST_F(RGroup, FollowsDataLinksThatAreRenamedMeanwhile) {
    std::string file =
        "R-1\\N:5;\r\nR-1\\TK1-1:1;\r\nR-1\\CDLN-1:Old;\r\nR-1\\TK1-2:2;\r\nR-1\\CDLN-2:Other;\r\n"
        "R-1\\EV\\N:1;\r\nR-1\\EV\\MS-1:Old;\r\n";
    const std::vector<std::array<const char*, 4>> named = {{"3", "UARTIN", "NUS\\N", "UCNM"},
                                                           {"4", "MSGIN", "NMS\\N", "MCNM"},
                                                           {"5", "ETHIN", "NNET\\N", "ENAM"}};
    for (const auto& [row, type, count, name] : named) {
        file += formatPrintf("R-1\\TK1-%s:%s;\r\nR-1\\CDT-%s:%s;\r\n", row, row, row, type) +
                formatPrintf("R-1\\%s-%s:1;\r\nR-1\\%s-%s-1:Old;\r\n", count, row, name, row);
    }
    auto group = read(2011, file);
    Track added;
    setTrackValue(added, "TK1-n", "3");
    setTrackValue(added, "CDLN-n", "Old");
    addTrack(group, added);
    deleteTrack(group, 1);
    const auto before = read(2011, file);
    followRenamedLinks(group, before, read(2011, replaceAll(file, ":Old;", ":New;")), 2011);
    const auto text = recorderText(group, 2011);
    for (const char* code : {"CDLN-1", "UCNM-2-1", "MCNM-3-1", "ENAM-4-1", "CDLN-5", "EV\\MS-1"}) {
        EXPECT_NE(text.find(formatPrintf("R-1\\%s:New;", code)), std::string::npos) << code;
    }
    EXPECT_EQ(text.find("Old"), std::string::npos) << text;
    EXPECT_EQ(group.tracks.size(), 5u);
}

TEST_F(RGroup, WhatWasNotReadOfARowGoesWhereTheRowGoes) {
    const std::string head =
        "R-1\\EV\\N:3;\r\nR-1\\EV\\ID-1:A;\r\nR-1\\EV\\ID-2:B;\r\n"
        "R-1\\EV\\ID-3:C;\r\nR-1\\RMM\\N:2;\r\nR-1\\RT\\N:1;\r\n"
        "R-1\\RT1-1:1;\r\n";
    auto group =
        read(2009, head +
                       "R-1\\EV\\EDP-1:F;\r\nR-1\\EV\\EDP-2:T;\r\nR-1\\EV\\PM\\N-2:2;\r\n"
                       "R-1\\EV\\PM\\MN-2-1:M1;\r\nR-1\\EV\\PM\\MN-2-2:M2;\r\n"
                       "R-1\\EV\\PM\\MN-1-1:gone;\r\nR-1\\RIMMID-2:b;\r\nR-1\\EV\\X-9:x;\r\n");
    auto& events = group.record.lists["EV\\N"];
    events.erase(events.begin());
    group.record.lists["RMM\\N"].erase(group.record.lists["RMM\\N"].begin());
    EXPECT_EQ(recorderLeftovers(group).leftovers(recorderText(group, 2009)),
              (std::vector<std::string>{"R-1\\EV\\EDP-1:T;", "R-1\\EV\\PM\\N-1:2;",
                                        "R-1\\EV\\PM\\MN-1-1:M1;", "R-1\\EV\\PM\\MN-1-2:M2;",
                                        "R-1\\RIMMID-1:b;", "R-1\\EV\\X-9:x;"}));
    events.erase(events.begin());
    EXPECT_EQ(recorderLeftovers(group).leftovers(recorderText(group, 2009)),
              (std::vector<std::string>{"R-1\\RIMMID-1:b;", "R-1\\EV\\X-9:x;"}));
}

/// A file that is cut off anywhere, and one with counts of any text, is read and written again
/// without harm.
TEST_F(RGroup, SurvivesAFileThatIsCutOffAnywhere) {
    std::string file = "R-1\\N:3;\r\nR-1\\RIM\\N:-1;\r\nR-1\\EV\\N:9999999999999999999999;\r\n";
    for (int n = 1; n <= 3; ++n) {
        const auto row = std::to_string(n);
        file += "R-1\\TK1-" + row + ":" + row + ";\r\nR-1\\CDT-" + row + ":ANAIN;\r\nR-1\\ACH\\N-" +
                row + ":x2;\r\nR-1\\AMN-" + row + "-1:;\r\nR-1\\EV\\PM\\N-" + row + ":77;\r\n";
    }
    for (std::size_t cut = 0; cut <= file.size(); cut += 3) {
        const auto group = read(2011, file.substr(0, cut));
        EXPECT_LE(group.tracks.size(), 3u);
        EXPECT_LE(group.record.rows("EV\\N").size(), 10u);
        EXPECT_TRUE(recorderText(group, 2011).starts_with("R-1\\ID:Deck;\r\n"));
    }
}

TEST_F(RGroup, IsStableFromTheSecondWritingOn) {
    const auto group = read(2011,
                            "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\PDP-1:ZZ;\r\n"
                            "R-1\\TK1-2:2;\r\nR-1\\CCF\\E-2:T;\r\nR-1\\COM:one\x14\x15two;\r\n");
    t.ui.queued = {Button::Yes, Button::Yes};
    ASSERT_TRUE(storeRecorder(t.context, &t.ui, group));
    const auto once = t.read(groupFile('R', 1));
    const auto again = readRecorder(t.context, &t.ui, "Deck");
    ASSERT_TRUE(again.has_value());
    ASSERT_TRUE(storeRecorder(t.context, &t.ui, *again));
    EXPECT_EQ(t.read(groupFile('R', 1)), once);
    EXPECT_TRUE(contains(once, "R-1\\COM:one\x14\x15two;"));
}

}  // namespace
}  // namespace kavu
