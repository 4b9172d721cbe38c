#include "bus/packet/PacketGroup.h"
#include "bus/packet/PacketStage.h"
#include "vocabulary/Vocabularies.h"

namespace kavu {
namespace {

class PacketGroupTest : public test::PacketStage {};

TEST_F(PacketGroupTest, AWholeGroupIsWrittenAsItWasRead) {
    load(test::kWholePackets);
    ASSERT_TRUE(read);
    const auto before = t.read(groupFile('S', 1));
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(PacketGroupTest, TheLinesOfTheTreeAreBuiltFromPairs) {
    load(test::kWholePackets);
    const auto& packet = packets()[0];
    EXPECT_EQ(packetLabel(packet),
              "Secondary Header Flag:1, Process ID:42, Data Length:100, Secondary Header Length:4");
    const auto& header = packetFamily('H');
    const auto& measurement = rows('H', packet)[0];
    EXPECT_EQ(measurementLabel(header, measurement),
              "Measurement:H1, Parity:NO, Parity Transfer Order:T");
    EXPECT_EQ(locationLabel(header, measurement.rows(header.locationCount.code)[0]),
              "Position:1, Word Length:8, BitMask:FW, Transfer Order:LSB, Fragment:2");
    EXPECT_EQ(packetSheetTitle("Link"), "Edit Packet Attributes - Data Link: Link");
}

TEST_F(PacketGroupTest, TheLoadWorksOnACopyAndSaysSo) {
    load(test::kWholePackets);
    EXPECT_EQ(t.ui.statusTexts.front(), "Initializing Packet Information...");
    EXPECT_EQ(t.read(kPacketCopy), t.read(groupFile('S', 1)));
    EXPECT_FALSE(t.document.changed);
    ASSERT_TRUE(bringInPackets(t.context, &t.ui, "Nobody"));
    EXPECT_FALSE(t.has(kPacketCopy));
}

TEST_F(PacketGroupTest, APacketWithoutSecondaryHeaderStillHasItsLength) {
    load("SP\\N:1;PSHF-1:0;PSHL-1:6;");
    EXPECT_TRUE(writes("PSHF-1:0"));
    EXPECT_TRUE(writes("PSHL-1:6"));
}

TEST_F(PacketGroupTest, AMeasurementWithoutLocationsHasACountOfZero) {
    load("TNMS\\N:1;TMN-1:A;SP\\N:1;HNMS\\N-1:1;HMN-1-1:B;SNMS\\N-1:1;SMN-1-1:C;");
    const auto text = stored();
    for (const auto* const count : {"TNML\\N-1:0;", "HNML\\N-1-1:0;", "SNML\\N-1-1:0;"}) {
        EXPECT_NE(text.find(count), std::string::npos) << count;
    }
}

TEST_F(PacketGroupTest, TheCountsOfAnEmptyGroupAreWritten) {
    load("");
    EXPECT_EQ(stored(), "S-1\\DLN:Link;\r\nS-1\\TNMS\\N:0;\r\nS-1\\SP\\N:0;\r\n");
    load("SP\\N:1;");
    EXPECT_EQ(stored(),
              "S-1\\DLN:Link;\r\nS-1\\TNMS\\N:0;\r\nS-1\\SP\\N:1;\r\nS-1\\HNMS\\N-1:0;\r\n"
              "S-1\\SNMS\\N-1:0;\r\n");
}

TEST_F(PacketGroupTest, ARowOfTheTransferFrameWithoutANameIsNoneAndIsAskedAbout) {
    t.ui.otherwise = Button::Yes;
    load("TNMS\\N:3;TMN-1:A;TNML\\N-1:0;TPAR-2:EV;TMN-3:C;TPAR-3:OD;TNML\\N-3:0;");
    ASSERT_EQ(rows('T', group.record).size(), 2U);
    const auto text = stored();
    EXPECT_NE(text.find("S-1\\TNMS\\N:2;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\TMN-2:C;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\TPAR-2:OD;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\TPAR-4:EV;"), std::string::npos)
        << "what nobody reads is kept behind the rows";
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_NE(t.ui.boxes[0].text.find(":EV;"), std::string::npos);
}

TEST_F(PacketGroupTest, ANamelessMeasurementOfAPacketIsOne) {
    load("SP\\N:1;HNMS\\N-1:1;HPAR-1-1:EV;SNMS\\N-1:2;SMN-1-2:B;");
    EXPECT_EQ(rows('H', packets()[0]).size(), 1U);
    EXPECT_EQ(rows('S', packets()[0]).size(), 2U);
    EXPECT_TRUE(writes("HPAR-1-1:EV"));
}

TEST_F(PacketGroupTest, ColumnsOverTheirLimitAreReportedAndStay) {
    const std::string name(33, 'n');
    load("TNMS\\N:1;TMN-1:" + name +
         ";TPAR-1:EVEN;TPTO-1:LEAD;SP\\N:1;SNMS\\N-1:1;SMN-1-1:" + name + ";");
    EXPECT_TRUE(group.corrected);
    EXPECT_EQ(t.ui.logs.size(), 4U);
    ASSERT_EQ(t.ui.shown.size(), 1U);
    EXPECT_TRUE(writes("TMN-1:" + name));
    EXPECT_TRUE(writes("TPAR-1:EVEN"));
}

// --- Lists --------------------------------------------------------------------------------------

TEST_F(PacketGroupTest, AnAbsentFieldShowsTheFirstEntryAndWritesNothing) {
    load("TFL:8;");
    const std::map<std::string_view, std::string_view> first = {
        {"FEF", "1 - Frame Error Control Field is present"},
        {"CEF", "1 - Convolutional Error Correction/Detection used"},
        {"VID", "000 (0)"},
        {"OCF", "1 - Field Present"},
        {"SHF", "1 - Field Present"},
        {"OSF", "1 - Privately defined data are inserted"}};
    std::size_t lists = 0;
    for (const auto& each : PacketEdit::fieldsOf(PacketEdit::Node::Kind::Group)) {
        if (!each.field->choices.empty()) {
            ++lists;
            EXPECT_EQ(shownEntry(*each.field, ""), first.at(each.name)) << each.name;
        }
    }
    EXPECT_EQ(lists, first.size());
    EXPECT_EQ(stored(), "S-1\\DLN:Link;\r\nS-1\\TFL:8;\r\nS-1\\TNMS\\N:0;\r\nS-1\\SP\\N:0;\r\n");
}

TEST_F(PacketGroupTest, AValueShowsTheEntryThatBeginsWithItAndAnUnknownOneItself) {
    const auto field = [](std::string_view code) {
        return *matchVocabulary('S', code).front().field;
    };
    EXPECT_EQ(shownEntry(field("FEF"), "0"), "0 - Frame Error Control Field is not present");
    EXPECT_EQ(shownEntry(field("OSF"), "0"),
              "0 - Octet-synced, forward-ordered source packets, or idle data are inserted");
    EXPECT_EQ(shownEntry(field("VID"), "111"), "111 (7)");
    EXPECT_EQ(shownEntry(field("FEF"), "7"), "7");
    load("FEF:7;VID:9;TNMS\\N:1;TMN-1:A;TTO-1-1:X;TNML\\N-1:1;TFP-1-1:12;");
    const auto text = stored();
    for (const auto* const line : {"FEF:7;", "VID:9;", "TTO-1-1:X;", "TFP-1-1:12;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << " stays as it was read";
    }
    EXPECT_TRUE(t.ui.boxes.empty());
}

// --- Files --------------------------------------------------------------------------------------

TEST_F(PacketGroupTest, ALinkWithoutAGroupIsEmptyAndGetsTheFirstFreeIndex) {
    t.write(groupFile('S', 1), "S-1\\DLN:Other;\r\n");
    ASSERT_TRUE(loadPackets(t.context, &t.ui, "New", group));
    EXPECT_EQ(group.index, 0);
    EXPECT_EQ(stored(), "S-2\\DLN:New;\r\nS-2\\TNMS\\N:0;\r\nS-2\\SP\\N:0;\r\n");
    EXPECT_EQ(group.index, 2);
}

TEST_F(PacketGroupTest, CommandsThatNoPageReadsAreAskedAbout) {
    t.ui.otherwise = Button::Yes;
    load("FEF:1;XYZ:own;SP\\N:1;PSHF-1:0;PSHF-2:behind;");
    const auto text = stored();
    EXPECT_NE(text.find("S-1\\XYZ:own;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\PSHF-2:behind;"), std::string::npos);
    EXPECT_EQ(t.ui.boxes.size(), 1U);
}

TEST_F(PacketGroupTest, ACommentOfSeveralLinesStays) {
    load(
        "SP\\N:1;COM-1:a\x14\x15"
        "b;COM:c\x14\x15"
        "d;");
    EXPECT_TRUE(
        writes("COM-1:a\x14\x15"
               "b"));
    EXPECT_TRUE(
        writes("COM:c\x14\x15"
               "d"));
}

}  // namespace
}  // namespace kavu
