#include "bus/BusStage.h"
#include "bus/definition/BusPack.h"
#include "bus/definition/BusText.h"
#include "groups/GroupSamples.h"

#include <filesystem>
#include <new>

namespace kavu {
namespace {

using test::busCommands;
using test::BusStage;

/// A group with every field of an edition on an ARINC bus and on one of 1553, in file order.
std::vector<std::string> fullGroup(int edition) {
    const bool is2004 = edition >= 2004;
    const bool is2007 = edition >= 2007;
    const bool is2009 = edition >= 2009;
    const bool is2011 = edition >= 2011;
    std::vector<std::string> all = {"DLN:Bus 1", "TA:Plane"};
    const auto add = [&](bool isThere, const std::string& field) {
        if (isThere) {
            all.push_back(field);
        }
    };
    add(is2007, "BP:OD");
    add(true, "NBS\\N:2");
    for (const std::string b : {"1", "2"}) {
        const bool isArinc = is2004 && b == "2";
        add(true, "BID-" + b + ":00" + b);
        add(true, "BNA-" + b + ":Bus");
        add(is2004, "BT-" + b + (isArinc ? ":a429" : ":1553"));
        for (const std::string i : {"1", "2", "3"}) {
            add(is2007, "UMN" + i + "-" + b + ":Word" + i);
            add(is2009, "U" + i + "P-" + b + ":EV");
            add(is2009, "U" + i + "PT-" + b + ":T");
            add(is2009, "U" + i + "M-" + b + ":FW");
            add(is2009, "U" + i + "T-" + b + ":DEF");
        }
        add(true, "TK\\N-" + b + ":2");
        add(true, "TS-" + b + "-1:7");
        add(true, "TS-" + b + "-2:8");
        add(true, "NMS\\N-" + b + ":1");
        const auto m = "-" + b + "-1";
        add(true, "MID" + m + ":1");
        add(true, "MNA" + m + ":Name");
        add(is2011, "CWE" + m + ":W");
        add(is2011, "CMD" + m + ":1A2B");
        for (const char* field : {"TRN", "TRA", "STN", "STA", "TRM", "DWC", "SPR"}) {
            add(true, field + m + ":1");
        }
        add(is2009, "BMG\\FOT" + m + ":T");
        add(isArinc, "LBL" + m + ":001");
        add(isArinc, "SDI" + m + ":ALL");
        add(is2011, "RCWE" + m + ":F");
        add(is2011, "RCMD" + m + ":00FF");
        add(edition < 1999, "RNRT\\N" + m + ":1");
        const auto r = is2011 ? m : m + "-1";
        for (const char* field : {"RTRN", "RTRA", "RSTN", "RSTA", "RDWC"}) {
            add(true, field + r + ":1");
        }
        add(true, "MCD" + m + ":Text");
        add(true, "MCW" + m + ":Text");
        add(true, "MN\\N" + m + ":1");
        add(true, "MN" + m + "-1:A");
        add(is2007, "MT" + m + "-1:D");
        add(true, "MN1" + m + "-1:EV");
        add(true, "MN2" + m + "-1:L");
        add(is2009, "BME\\FOT" + m + "-1:F");
        add(true, "NML\\N" + m + "-1:1");
        add(true, "MWN" + m + "-1-1:1");
        add(true, "MBM" + m + "-1-1:FW");
        add(true, "MTO" + m + "-1-1:MSB");
        add(true, "MFP" + m + "-1-1:1");
    }
    add(true, "COM:Text");
    return all;
}

TEST(BusPack, EveryFieldOfEveryEditionComesBackInTheOrderOfTheFile) {
    for (const int edition : {1996, 1999, 2000, 2001, 2004, 2005, 2007, 2009, 2011}) {
        BusStage stage(edition);
        const auto definition = stage.unpack(fullGroup(edition));
        EXPECT_EQ(stage.pack(definition), busCommands(fullGroup(edition))) << edition;
        EXPECT_TRUE(stage.t.ui.boxes.empty()) << edition;
        EXPECT_FALSE(stage.t.has(kBusProfile));
        EXPECT_FALSE(stage.t.has(kTerminalProfile));
    }
}

TEST(BusPack, AnArincBusOf2004HasLabelsAndABusOf1553HasNone) {
    BusStage stage(2004);
    const auto text = stage.pack(stage.unpack(fullGroup(2004)));
    EXPECT_NE(text.find("B-1\\LBL-2-1:001;\r\nB-1\\SDI-2-1:ALL;"), std::string::npos);
    EXPECT_EQ(text.find("LBL-1-1"), std::string::npos);
}

TEST(BusPack, CountsAreWrittenEvenWhenTheyAreZeroAndNothingElseThatIsEmpty) {
    BusStage stage;
    auto definition = stage.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1", "MN\\N-1-1:1"});
    EXPECT_EQ(stage.pack(definition), busCommands({"DLN:Bus 1", "NBS\\N:1", "TK\\N-1:0",
                                                   "NMS\\N-1:1", "MN\\N-1-1:1", "NML\\N-1-1-1:0"}));
    BusStage old(1996);
    definition = old.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1"});
    EXPECT_EQ(old.pack(definition), busCommands({"DLN:Bus 1", "NBS\\N:1", "TK\\N-1:0", "NMS\\N-1:1",
                                                 "RNRT\\N-1-1:0", "MN\\N-1-1:0"}));
}

TEST(BusPack, TheNameOfTheLinkIsWrittenWhateverTheFileSays) {
    BusStage stage;
    BusDefinition definition{.link = "Bus 1", .index = 7, .edition = 2011};
    EXPECT_EQ(stage.pack(definition), "B-7\\DLN:Bus 1;\r\nB-7\\NBS\\N:0;\r\n");
}

TEST(BusPack, CommandWordsAreCutAndNotWrittenBefore2011) {
    BusStage stage;
    auto definition = stage.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1", "CWE-1-1:Word",
                                    "CMD-1-1:1A2B3", "RCWE-1-1:Fx", "RCMD-1-1:12345"});
    const auto text = stage.pack(definition);
    EXPECT_NE(text.find("CWE-1-1:W;\r\nB-1\\CMD-1-1:1A2B;"), std::string::npos);
    EXPECT_NE(text.find("RCWE-1-1:F;\r\nB-1\\RCMD-1-1:1234;"), std::string::npos);
    definition.edition = 2009;
    EXPECT_EQ(busText(definition, nullptr).text.find("CMD"), std::string::npos);
}

TEST(BusPack, NothingElseIsCut) {
    BusStage stage;
    const std::string name(80, 'N');
    const auto definition = stage.unpack(
        {"DLN:Bus 1", "NBS\\N:1", "BID-1:00000000", "BNA-1:" + name, "TK\\N-1:0", "NMS\\N-1:0"});
    EXPECT_EQ(stage.pack(definition), busCommands({"DLN:Bus 1", "NBS\\N:1", "BID-1:00000000",
                                                   "BNA-1:" + name, "TK\\N-1:0", "NMS\\N-1:0"}));
}

TEST(BusPack, TheParityIsTheFirstEntryThatBeginsWithIt) {
    for (const auto& [stored, written] :
         {std::pair{"n", "NO"}, {"Odd", "OD"}, {"EVE", "EV"}, {"XX", "XX"}}) {
        BusStage stage;
        const auto definition = stage.unpack({"DLN:Bus 1", std::string("BP:") + stored});
        EXPECT_NE(stage.pack(definition).find(std::string("B-1\\BP:") + written + ";"),
                  std::string::npos)
            << stored;
    }
    BusStage stage;
    EXPECT_EQ(stage.pack(stage.unpack({"DLN:Bus 1"})).find("BP"), std::string::npos);
}

TEST(BusPack, ProgressNamesEachBus) {
    BusStage stage;
    const auto definition = stage.unpack({"NBS\\N:2", "BNA-1:Left", "BNA-2:Right"});
    stage.t.ui.statusTexts.clear();
    (void)stage.pack(definition);
    EXPECT_EQ(stage.t.ui.statusTexts,
              (std::vector<std::string>{"Saving Bus Information...",
                                        "Saving Bus Information. Bus: #1 (Left)",
                                        "Saving Bus Information. Bus: #2 (Right)", ""}));
}

TEST(BusPack, AFileThatCannotBeWrittenIsReported) {
    BusStage stage;
    const auto definition = stage.unpack({"NBS\\N:1"});
    std::filesystem::remove(stage.t.store.pathOf(kBusGroupFile));
    std::filesystem::create_directory(stage.t.store.pathOf(kBusGroupFile));
    EXPECT_FALSE(packBusGroup(stage.t.context, &stage.t.ui, definition));
    ASSERT_EQ(stage.shown(), std::vector<int>{322});
    EXPECT_EQ(stage.t.ui.boxes[0].titleId, 80);
}

/// Runs out of memory while the group is composed.
class ShortOfMemory : public test::RecordingInterface {
  public:
    void setProgressBar(double percent) override {
        if (percent > 0) {
            throw std::bad_alloc();
        }
    }
};

TEST(BusPack, WithoutMemoryTheGroupStaysAsItWas) {
    BusStage stage;
    const auto definition = stage.unpack({"NBS\\N:1", "BNA-1:Left"});
    const auto before = stage.t.read(kBusGroupFile);
    ShortOfMemory parent;
    EXPECT_FALSE(packBusGroup(stage.t.context, &parent, definition));
    ASSERT_EQ(parent.boxes.size(), 1U);
    EXPECT_EQ(parent.boxes[0].id, 77);
    EXPECT_EQ(parent.boxes[0].titleId, 111);
    EXPECT_EQ(parent.boxes[0].title, "Unable To Save Bus Information");
    EXPECT_EQ(stage.t.read(kBusGroupFile), before);
}

// --- What would be dropped ----------------------------------------------------------------------

std::string packedWith(BusStage& stage, const std::vector<std::string>& fields, Button reply) {
    stage.t.ui.otherwise = reply;
    return stage.pack(stage.unpack(fields));
}

const std::vector<std::string> kSmall = {"DLN:Bus 1", "NBS\\N:1", "BNA-1:Left", "TK\\N-1:0",
                                         "NMS\\N-1:0"};

std::vector<std::string> with(std::vector<std::string> fields, const std::string& more) {
    fields.push_back(more);
    return fields;
}

TEST(BusPackKeeping, UnknownCommandsAreAskedAboutAndKeptAtTheEnd) {
    BusStage stage;
    auto fields = kSmall;
    fields.insert(fields.begin() + 1, "XYZ-1:mine");
    EXPECT_EQ(packedWith(stage, fields, Button::Yes), busCommands(with(kSmall, "XYZ-1:mine")));
    ASSERT_EQ(stage.t.ui.boxes.size(), 1U);
    EXPECT_NE(stage.t.ui.boxes[0].text.find("B-1\\XYZ-1:mine;"), std::string::npos);
    BusStage other;
    EXPECT_EQ(packedWith(other, fields, Button::No), busCommands(kSmall));
}

TEST(BusPackKeeping, WithoutAParentTheyAreDropped) {
    BusStage stage;
    auto definition = stage.unpack(with(kSmall, "XYZ-1:mine"));
    EXPECT_TRUE(packBusGroup(stage.t.context, nullptr, definition));
    EXPECT_EQ(stage.t.read(kBusGroupFile), busCommands(kSmall));
}

TEST(BusPackKeeping, RepeatsStandInFrontSoThatTheLastStillHoldsAndThoseOfTheLinkAtTheEnd) {
    BusStage stage;
    auto fields = kSmall;
    fields.insert(fields.begin() + 2, "BNA-1:Former");
    fields.push_back("DLN:Other");
    auto expected = with(kSmall, "DLN:Other");
    expected.insert(expected.begin(), "BNA-1:Former");
    const auto text = packedWith(stage, fields, Button::Yes);
    EXPECT_EQ(text, busCommands(expected));
    EXPECT_EQ(busValue(stage.unpackText(text).buses().at(0), BusLevel::Bus, "BNA"), "Left");
}

TEST(BusPackKeeping, WhatIsReadIsWhatPackingTheUntouchedGroupWouldWrite) {
    BusStage stage;
    (void)packedWith(stage, with(with(kSmall, "LBL-1-1:001"), "BNA-2:Behind"), Button::Yes);
    ASSERT_EQ(stage.t.ui.boxes.size(), 1U);
    const auto& text = stage.t.ui.boxes[0].text;
    EXPECT_NE(text.find("B-1\\LBL-1-1:001;"), std::string::npos);
    EXPECT_NE(text.find("B-1\\BNA-2:Behind;"), std::string::npos);
}

TEST(BusPackKeeping, StrayCommandsOfTheNumberOfANewRowAreNotTakenUp) {
    BusStage stage;
    stage.t.ui.otherwise = Button::Yes;
    auto definition = stage.unpack(with(kSmall, "BNA-2:Behind"));
    ASSERT_TRUE(stage.edit(definition).add({}, {.values = {{"BID", "010"}}}));
    EXPECT_EQ(busValue(definition.buses().at(1), BusLevel::Bus, "BNA"), "");
    const auto text = stage.pack(definition);
    EXPECT_NE(text.find("BNA-3:Behind"), std::string::npos) << text;
    const auto again = stage.unpackText(text);
    EXPECT_EQ(busValue(again.buses().at(1), BusLevel::Bus, "BNA"), "");
}

TEST(BusPackKeeping, UnknownCommandsFollowTheRowThatTheyBelongTo) {
    BusStage stage;
    stage.t.ui.otherwise = Button::Yes;
    auto definition = stage.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:3", "MNA-1-1:A", "MNA-1-2:B",
                                    "MNA-1-3:C", "MNAX-1-2:of B", "MNAX-1-3:of C"});
    ASSERT_TRUE(stage.edit(definition).remove({1, 2}));
    const auto text = stage.pack(definition);
    EXPECT_NE(text.find("B-1\\MNAX-1-2:of C;"), std::string::npos) << text;
    EXPECT_EQ(text.find("of B"), std::string::npos);
}

TEST(BusPackKeeping, LabelsOfABusThatIsNoArincBusAnyMoreAreAskedAbout) {
    const std::vector<std::string> arinc = {"DLN:Bus 1",  "NBS\\N:1",    "BT-1:A429",  "TK\\N-1:0",
                                            "NMS\\N-1:1", "LBL-1-1:007", "MN\\N-1-1:0"};
    BusStage stage;
    auto definition = stage.unpack(arinc);
    ASSERT_TRUE(stage.edit(definition).set({1}, {.values = {{"BT", "1553"}}}));
    stage.t.ui.otherwise = Button::Yes;
    const auto text = stage.pack(definition);
    ASSERT_EQ(stage.t.ui.boxes.size(), 1U);
    EXPECT_NE(text.find("B-1\\LBL-1-1:007;"), std::string::npos);
    // And it is there again when the bus becomes one.
    definition = stage.unpackText(text);
    ASSERT_TRUE(stage.edit(definition).set({1}, {.values = {{"BT", "A429"}}}));
    stage.t.ui.boxes.clear();
    EXPECT_EQ(stage.pack(definition), busCommands(arinc));
    EXPECT_TRUE(stage.t.ui.boxes.empty());
}

TEST(BusPackKeeping, CommentsStayInTheirPlace) {
    BusStage stage;
    auto text = busCommands(kSmall);
    text.insert(text.find("B-1\\BNA"), "COMMENT: the left one;\r\n");
    EXPECT_EQ(stage.pack(stage.unpackText(text)), text);
}

}  // namespace
}  // namespace kavu
