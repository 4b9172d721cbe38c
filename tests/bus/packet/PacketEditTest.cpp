#include "bus/packet/PacketEdit.h"
#include "bus/packet/PacketStage.h"

namespace kavu {
namespace {

using Kind = PacketEdit::Node::Kind;

class PacketEditTest : public test::PacketStage {
  protected:
    PacketEditTest() { load(test::kWholePackets); }
};

TEST_F(PacketEditTest, NewNodesHaveTheirTexts) {
    EXPECT_TRUE(add({}, {}));
    EXPECT_EQ(packetLabel(packets()[1]),
              "Secondary Header Flag:0, Process ID:0, Data Length:0, Secondary Header Length:0");
    for (const char letter : {'H', 'S'}) {
        const auto& family = packetFamily(letter);
        EXPECT_TRUE(add({2, letter}, {}));
        const auto measurements = rows(letter, packets()[1]);
        ASSERT_EQ(measurements.size(), 1U);
        EXPECT_EQ(measurementLabel(family, measurements[0]),
                  "Measurement:NewName, Parity:NO, Parity Transfer Order:L");
        EXPECT_TRUE(add({2, letter, 1}, {}));
        EXPECT_EQ(
            locationLabel(family, rows(letter, packets()[1])[0].rows(family.locationCount.code)[0]),
            "Position:1, Word Length:1, BitMask:FW, Transfer Order:MSB, Fragment:1");
    }
    EXPECT_TRUE(add({'T'}, {{"MN", "T2"}}));
    EXPECT_TRUE(add({'T', 2}, {{"WP", "5"}}));
    const auto text = stored();
    for (const auto* const line :
         {"TNMS\\N:2;", "TMN-2:T2;", "TPAR-2:NO;", "TWP-2-1:5;", "SP\\N:2;", "APID-2:0;",
          "HMN-2-1:NewName;", "HFP-2-1-1:1;", "SNML\\N-2-1:1;", "SBM-2-1-1:FW;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
}

TEST_F(PacketEditTest, EveryFieldOfEveryFormIsSet) {
    EXPECT_TRUE(set({}, {{"ASM", "1"},
                         {"FEF", "0"},
                         {"CEF", "1"},
                         {"TFL", "2"},
                         {"TA", "3"},
                         {"VID", "111"},
                         {"OCF", "0"},
                         {"SHF", "0"},
                         {"OSF", "1"},
                         {"SHL", "4"},
                         {"DFL", "5"},
                         {"COM", "6"}}));
    EXPECT_TRUE(
        set({1}, {{"PSHF", "0"}, {"APID", "7"}, {"PDL", "8"}, {"PSHL", ""}, {"COM", "a\nb"}}));
    EXPECT_TRUE(set({1, 'H', 1}, {{"MN", "H2"}, {"PAR", "EV"}, {"PTO", "L"}}));
    EXPECT_TRUE(
        set({1, 'H', 1, 1}, {{"WP", "3"}, {"WL", "4"}, {"BM", "0F"}, {"TO", "MSB"}, {"FP", "9"}}));
    const auto text = stored();
    for (const auto* const line : {"ASM:1;",
                                   "FEF:0;",
                                   "CEF:1;",
                                   "TFL:2;",
                                   "TA:3;",
                                   "VID:111;",
                                   "OCF:0;",
                                   "SHF:0;",
                                   "OSF:1;",
                                   "SHL:4;",
                                   "DFL:5;",
                                   "COM:6;",
                                   "PSHF-1:0;",
                                   "APID-1:7;",
                                   "PDL-1:8;",
                                   "COM-1:a\x14\x15"
                                   "b;",
                                   "HMN-1-1:H2;",
                                   "HPAR-1-1:EV;",
                                   "HPTO-1-1:L;",
                                   "HWP-1-1-1:3;",
                                   "HWL-1-1-1:4;",
                                   "HBM-1-1-1:0F;",
                                   "HTO-1-1-1:MSB;",
                                   "HFP-1-1-1:9;"}) {
        EXPECT_NE(text.find(std::string("S-1\\") + line), std::string::npos) << line;
    }
    EXPECT_EQ(text.find("PSHL-1"), std::string::npos);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(PacketEditTest, ListsTakeTheirEntriesAsStoredOrAsShownAndNothingElse) {
    EXPECT_TRUE(set({'T', 1}, {{"PAR", "odd"}, {"PTO", "Trails Word"}}));
    EXPECT_TRUE(writes("TPAR-1:OD"));
    EXPECT_TRUE(writes("TPTO-1:T"));
    const std::vector<std::tuple<GroupPlace, std::string, std::string>> wrong = {
        {{}, "FEF", "2"},
        {{}, "VID", "1"},
        {{}, "OSF", "yes"},
        {{'T', 1}, "PAR", "XX"},
        {{'T', 1, 1}, "TO", "M"},
        {{1, 'H', 1, 1}, "FP", "0"},
        {{1, 'H', 1, 1}, "FP", "10"}};
    for (const auto& [place, name, value] : wrong) {
        t.ui.boxes.clear();
        EXPECT_FALSE(set(place, {{name, value}})) << name;
        EXPECT_TRUE(isRefused("'" + value + "' is not one of: ")) << name;
    }
}

TEST_F(PacketEditTest, AnUnknownValueStaysUntilAnEntryIsChosen) {
    load("FEF:7;");
    EXPECT_TRUE(set({}, {{"FEF", "7"}, {"TFL", "1"}}));
    EXPECT_TRUE(writes("FEF:7"));
    EXPECT_TRUE(set({}, {{"FEF", "0"}}));
    EXPECT_TRUE(writes("FEF:0"));
}

TEST_F(PacketEditTest, ASemicolonIsRefusedEverywhere) {
    for (const auto& [place, kind, family] : {std::tuple{GroupPlace{}, Kind::Group, 'T'},
                                              {GroupPlace{1}, Kind::Packet, 'T'},
                                              {GroupPlace{'T', 1}, Kind::Measurement, 'T'},
                                              {GroupPlace{'T', 1, 1}, Kind::Location, 'T'}}) {
        for (const auto& each : PacketEdit::fieldsOf(kind, &packetFamily(family))) {
            t.ui.boxes.clear();
            EXPECT_FALSE(set(place, {{std::string(each.name), "a;b"}})) << each.name;
            ASSERT_EQ(t.ui.boxes.size(), 1U);
            EXPECT_EQ(t.ui.boxes[0].id, 402) << each.name;
        }
    }
}

TEST_F(PacketEditTest, LimitsAreThoseOfEntering) {
    EXPECT_FALSE(set({1, 'S', 1}, {{"MN", std::string(33, 'n')}}));
    EXPECT_TRUE(isRefused("This string must be no more than 32 characters long."));
    EXPECT_TRUE(set({1, 'S', 1}, {{"MN", std::string(32, 'n')}}));
}

TEST_F(PacketEditTest, ANameOfAnotherStreamIsRefusedWhereNamesAreChecked) {
    MeasurementNames names(t.context);
    gatherNames(names);
    PacketEdit edit(t.context, group, &names);
    EXPECT_FALSE(edit.set(&t.ui, {'T', 1}, Values{{"MN", "SPEED"}}));
    EXPECT_FALSE(edit.add(&t.ui, {1, 'S'}, Values{{"MN", "SPEED"}}));
    EXPECT_EQ(t.ui.countBoxes(455), 2);
    EXPECT_EQ(rows('S', packets()[0]).size(), 1U);
}

TEST_F(PacketEditTest, ARefusedStepChangesNothing) {
    const auto before = stored();
    EXPECT_FALSE(set({}, {{"TFL", "9"}, {"FEF", "2"}}));
    EXPECT_FALSE(set({1}, {{"APID", "9"}, {"MN", "x"}}));
    EXPECT_FALSE(add({1, 'H'}, {{"PAR", "??"}}));
    EXPECT_EQ(stored(), before);
}

TEST_F(PacketEditTest, PlacesThatAreNotThereAreRefused) {
    for (const GroupPlace& place :
         {GroupPlace{2}, GroupPlace{1, 'T'}, GroupPlace{'H'}, GroupPlace{1, 1}, GroupPlace{'T', 2},
          GroupPlace{'T', 1, 2}, GroupPlace{'T', 1, 1, 1}}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(set(place, {}));
        EXPECT_TRUE(isRefused("There is nothing at the place")) << placeText(place);
        EXPECT_FALSE(add(place, {}));
        EXPECT_FALSE(remove(place));
    }
    for (const GroupPlace& place : {GroupPlace{'T'}, GroupPlace{1, 'H'}}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(set(place, {}));
        EXPECT_TRUE(isRefused("Nothing can be edited")) << placeText(place);
        EXPECT_FALSE(remove(place));
    }
    for (const GroupPlace& place : {GroupPlace{1}, GroupPlace{'T', 1, 1}}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(add(place, {}));
        EXPECT_TRUE(isRefused("Nothing can be added")) << placeText(place);
    }
}

TEST_F(PacketEditTest, ADeleteAsksUnderTheWordOfItsKind) {
    const std::vector<std::pair<GroupPlace, std::string>> places = {
        {{1}, "Delete this Source Packet"},
        {{1, 'H', 1}, "Delete this Measurement"},
        {{1, 'H', 1, 1}, "Delete this Measurement Location"},
        {{'T', 1}, "Delete this Measurement"}};
    for (const auto& [place, title] : places) {
        t.ui.boxes.clear();
        EXPECT_FALSE(remove(place));
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        EXPECT_EQ(t.ui.boxes[0].id, -82);
        EXPECT_EQ(t.ui.boxes[0].title, title);
    }
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(remove({1, 'H', 1, 1}));
    EXPECT_TRUE(writes("HNML\\N-1-1:0"));
    EXPECT_TRUE(remove({1, 'S', 1}));
    EXPECT_TRUE(writes("SNMS\\N-1:0"));
    EXPECT_TRUE(remove({1}));
    EXPECT_TRUE(remove({'T', 1}));
    EXPECT_EQ(stored().find("H1"), std::string::npos);
}

TEST_F(PacketEditTest, WhatIsBehindADeletedPacketMoves) {
    t.ui.otherwise = Button::Yes;
    load("SP\\N:3;APID-1:1;APID-2:2;APID-3:3;SNMS\\N-3:1;SMN-3-1:A;");
    EXPECT_TRUE(remove({2}));
    const auto text = stored();
    for (const auto* const line : {"SP\\N:2;", "APID-1:1;", "APID-2:3;", "SMN-2-1:A;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(text.find("-3"), std::string::npos);
}

TEST_F(PacketEditTest, ATransferMeasurementThatLosesItsNameIsNotWritten) {
    EXPECT_TRUE(set({'T', 1}, {{"MN", ""}}));
    EXPECT_TRUE(writes("TNMS\\N:0"));
    EXPECT_EQ(t.read(groupFile('S', 1)).find("TWP"), std::string::npos);
}

TEST_F(PacketEditTest, APastedMeasurementGetsTheCodesOfItsNewList) {
    PacketEdit edit(t.context, group, nullptr);
    const auto before = group;
    const auto row = *edit.find({1, 'H', 1}).row;
    EXPECT_TRUE(edit.paste(&t.ui, {'T'}, Kind::Measurement, &packetFamily('H'), row));
    EXPECT_TRUE(edit.paste(&t.ui, {1, 'S', 1}, Kind::Location, &packetFamily('T'),
                           *edit.find({'T', 1, 1}).row));
    EXPECT_TRUE(edit.paste(&t.ui, {}, Kind::Packet, nullptr, *edit.find({1}).row));
    EXPECT_FALSE(group.holdsTheSame(before));
    const auto text = stored();
    for (const auto* const line : {"TNMS\\N:2;", "TMN-2:H1;", "TTO-2-1:LSB;", "SWP-1-1-1:1;",
                                   "SP\\N:2;", "HMN-2-1:H1;", "SMN-2-1:D1;", "COM-2:packet;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
}

TEST_F(PacketEditTest, APasteIsRefusedWhereItsKindIsNotAndForNamesOfOtherStreams) {
    MeasurementNames names(t.context);
    gatherNames(names);
    PacketEdit edit(t.context, group, &names);
    const auto before = group;
    auto row = *edit.find({1, 'H', 1}).row;
    EXPECT_FALSE(edit.paste(&t.ui, {}, Kind::Measurement, &packetFamily('H'), row));
    EXPECT_FALSE(edit.paste(&t.ui, {'T'}, Kind::Measurement, nullptr, row));
    EXPECT_TRUE(t.ui.boxes.empty());
    row.set(packetFamily('H').name.code, "SPEED");
    EXPECT_FALSE(edit.paste(&t.ui, {'T'}, Kind::Measurement, &packetFamily('H'), row));
    EXPECT_EQ(t.ui.boxes.back().id, 455);
    EXPECT_TRUE(group.holdsTheSame(before));
}

TEST_F(PacketEditTest, TheCommentOfAPacketIsRemovedAfterAQuestion) {
    PacketEdit edit(t.context, group, nullptr);
    EXPECT_FALSE(edit.removeComment(nullptr, {1}));
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit.removeComment(&t.ui, {1}));
    EXPECT_EQ(t.ui.boxes.back().title, "Delete this Comment");
    EXPECT_EQ(stored().find("COM-1"), std::string::npos);
    EXPECT_FALSE(edit.removeComment(&t.ui, {1, 'H'}));
}

}  // namespace
}  // namespace kavu
