#include "bus/message/MessageGroup.h"
#include "bus/message/MessageStage.h"

namespace kavu {
namespace {

class MessageGroupTest : public test::MessageStage {
  protected:
    [[nodiscard]] std::string label(const MessageStream& node) {
        return messageLabel(node, stream());
    }
};

TEST_F(MessageGroupTest, AWholeGroupIsWrittenAsItWasRead) {
    load(test::kWholeMessages);
    ASSERT_TRUE(read);
    const auto before = t.read(groupFile('S', 1));
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_FALSE(group.corrected);
}

TEST_F(MessageGroupTest, TheTreeHasEveryLevelWithItsTextsAndItsLine) {
    load(test::kWholeMessages);
    EXPECT_EQ(group.testArticle, "X1");
    EXPECT_EQ(group.comment, "a");
    EXPECT_EQ(label(group.root), "Streams");
    EXPECT_EQ(stream().row, (std::vector<std::string>{"S1", "Binary", "Fixed", "16", "1", "64", "",
                                                      "", "", "Big Endian"}));
    EXPECT_EQ(label(stream()),
              "Stream:S1, Type:Binary, Layout:Fixed, Element Size:16, ID Location:1, Length:64, "
              "Delimiter:, Delimiter Length:, Field Delimiter:, Orientation:Big Endian");
    EXPECT_EQ(label(message()), "Message:7, Description:Temp");
    EXPECT_EQ(label(fieldsOf(message())), "Fields");
    EXPECT_EQ(label(fieldsOf(message()).children[0]), "Number:1, Position:8, Length:8");
    EXPECT_EQ(label(measurementsOf(message())), "Measurements");
    EXPECT_EQ(label(measurement()),
              "Name:M1, Parity:Even, Parity Transfer Order:Leads Word, Data Type:Float, Floating "
              "Point Format:IEEE 754 Single Precision, Orientation:Big Endian");
    EXPECT_EQ(label(measurement().children[0]),
              "Message Field Number:1, Bitmask:FW, Transfer Order:MSB, Fragment:1");
    EXPECT_EQ(t.ui.statusTexts.front(), "Initializing Message Information...");
    EXPECT_EQ(t.ui.statusTexts.back(), "Edit Message Information.");
}

TEST_F(MessageGroupTest, KindsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(MessageKind::Root), 5000);
    EXPECT_EQ(static_cast<int>(MessageKind::Fields), 5003);
    EXPECT_EQ(static_cast<int>(MessageKind::Location), 5007);
}

// --- Values -------------------------------------------------------------------------------------

TEST_F(MessageGroupTest, ALayoutInAnyCaseIsShownWithOneCapitalAndStoredInCapitals) {
    for (const auto* const layout : {"FIXED", "fixed", "fIxEd"}) {
        load("NS\\N:1;MDL-1:" + std::string(layout) + ";");
        EXPECT_EQ(stream().row[stream_row::Layout], "Fixed");
        EXPECT_TRUE(writes("MDL-1:FIXED"));
    }
    load("NS\\N:1;MDL-1:delimited;");
    EXPECT_EQ(stream().row[stream_row::Layout], "Delimited");
    EXPECT_TRUE(writes("MDL-1:DELIMITED"));
}

TEST_F(MessageGroupTest, TypeAsciiStaysAsItWasReadButBinaryIsKnownInAnyCase) {
    load("NS\\N:1;MDT-1:ascii;");
    EXPECT_EQ(stream().row[stream_row::DataType], "ascii");
    EXPECT_TRUE(writes("MDT-1:ascii"));
    load("NS\\N:1;MDT-1:binary;");
    EXPECT_EQ(stream().row[stream_row::DataType], "Binary");
    EXPECT_TRUE(writes("MDT-1:BINARY"));
}

TEST_F(MessageGroupTest, AnOrientationThatIsNoneStaysAsItWasRead) {
    load("NS\\N:1;MDT-1:BINARY;DO-1:B;");
    EXPECT_EQ(stream().row[stream_row::Orientation], "B");
    EXPECT_TRUE(writes("DO-1:B"));
    load("NS\\N:1;MDT-1:BINARY;DO-1:little endian;");
    EXPECT_EQ(stream().row[stream_row::Orientation], "Little Endian");
    EXPECT_TRUE(writes("DO-1:LITTLE ENDIAN"));
}

TEST_F(MessageGroupTest, AnUnknownDataTypeIsStoredInCapitalsAndAnUnknownFormatAsItIs) {
    load("NS\\N:1;NMS\\N-1:1;MN\\N-1-1:2;MBFM-1-1-1:float;MFPF-1-1-1:ieee_32;MBFM-1-1-2:packed;");
    EXPECT_EQ(measurement(1).row[measurement_row::DataType], "Float");
    EXPECT_EQ(measurement(1).row[measurement_row::FloatingPoint], "ieee_32");
    EXPECT_EQ(measurement(2).row[measurement_row::DataType], "packed");
    const auto text = stored();
    for (const auto* const line :
         {"MBFM-1-1-1:FLOAT;", "MFPF-1-1-1:ieee_32;", "MBFM-1-1-2:PACKED;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
}

TEST_F(MessageGroupTest, WhatAMeasurementDoesNotSayIsNoParityTrailingAndBigEndian) {
    load("NS\\N:1;MDT-1:BINARY;NMS\\N-1:1;MN\\N-1-1:2;MN1-1-1-2:XX;MN2-1-1-2:Q;MDO-1-1-2:?;");
    for (const std::size_t number : {1U, 2U}) {
        EXPECT_EQ(measurement(number).row,
                  (std::vector<std::string>{"", "None", "Trails Word", "", "", "Big Endian"}));
    }
    EXPECT_EQ(label(measurement()),
              "Name:, Parity:None, Parity Transfer Order:Trails Word, Data Type:, Floating Point "
              "Format:, Orientation:Big Endian");
    EXPECT_TRUE(writes("MN1-1-1-1:NO"));
    EXPECT_TRUE(writes("MN2-1-1-1:T"));
    EXPECT_TRUE(writes("MDO-1-1-1:B"));
}

TEST_F(MessageGroupTest, EveryFloatingPointFormatIsShownByItsTextAndStoredByItsCode) {
    for (const auto& format : kFloatingPointFormats) {
        EXPECT_EQ(shownValue(message_field::kFloatingPoint, format.value), format.text);
        EXPECT_EQ(storedValue(message_field::kFloatingPoint, format.text), format.value);
    }
}

// --- What applies -------------------------------------------------------------------------------

TEST_F(MessageGroupTest, ADelimitedStreamHasFieldsWithoutPlacesOnReadingAndWriting) {
    load(
        "NS\\N:1;MDL-1:DELIMITED;MLEN-1:9;MDEL-1:0D;NMS\\N-1:1;NFLDS\\N-1-1:1;FNUM-1-1-1:1;"
        "FPOS-1-1-1:8;FLEN-1-1-1:8;");
    EXPECT_EQ(stream().row[stream_row::Length], "");
    EXPECT_EQ(stream().row[stream_row::Delimiter], "0D");
    EXPECT_EQ(fieldsOf(message()).children[0].row, (std::vector<std::string>{"1", "", ""}));
    const auto text = stored();
    for (const auto* const code : {"FPOS", "FLEN", "MLEN"}) {
        EXPECT_EQ(text.find(code), std::string::npos) << code;
    }
}

TEST_F(MessageGroupTest, WhatDoesNotApplyIsAskedAboutBeforeItIsDropped) {
    t.ui.otherwise = Button::Yes;
    load("NS\\N:1;MDL-1:DELIMITED;MLEN-1:9;");
    EXPECT_TRUE(writes("MLEN-1:9"));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_NE(t.ui.boxes[0].text.find("S-1\\MLEN-1:9;"), std::string::npos);
}

TEST_F(MessageGroupTest, AMeasurementOfAnAsciiStreamHasNoOrientation) {
    load("NS\\N:1;MDT-1:ASCII;NMS\\N-1:1;MN\\N-1-1:1;MN-1-1-1:A;MDO-1-1-1:L;");
    EXPECT_EQ(measurement().row[measurement_row::Orientation], "");
    EXPECT_EQ(stored().find("MDO"), std::string::npos);
}

TEST_F(MessageGroupTest, ALabelHoldsAllItsKeywordsWithoutAnyValue) {
    load("NS\\N:1;NMS\\N-1:1;NFLDS\\N-1-1:1;MN\\N-1-1:1;NML\\N-1-1-1:1;");
    EXPECT_EQ(
        label(stream()),
        "Stream:, Type:, Layout:, Element Size:, ID Location:, Length:, Delimiter:, Delimiter "
        "Length:, Field Delimiter:, Orientation:");
    EXPECT_EQ(label(message()), "Message:, Description:");
    EXPECT_EQ(label(fieldsOf(message()).children[0]), "Number:, Position:, Length:");
    EXPECT_EQ(label(measurement().children[0]),
              "Message Field Number:, Bitmask:, Transfer Order:, Fragment:");
}

// --- Counts -------------------------------------------------------------------------------------

TEST_F(MessageGroupTest, CountsAreWrittenWhenTheyAreZeroAndNothingElseIsThatIsEmpty) {
    load("NS\\N:1;NMS\\N-1:1;MN\\N-1-1:1;");
    EXPECT_EQ(stored(),
              "S-1\\DLN:Link;\r\nS-1\\NS\\N:1;\r\nS-1\\NMS\\N-1:1;\r\nS-1\\NFLDS\\N-1-1:0;\r\n"
              "S-1\\MN\\N-1-1:1;\r\nS-1\\MN1-1-1-1:NO;\r\nS-1\\MN2-1-1-1:T;\r\n"
              "S-1\\NML\\N-1-1-1:0;\r\n");
}

TEST_F(MessageGroupTest, ACountIsReadAsANumberInFrontAndWrittenAsOne) {
    load("NS\\N: 02x;");
    EXPECT_EQ(group.root.children.size(), 2U);
    EXPECT_TRUE(writes("NS\\N:2"));
    load("NS\\N:-4;");
    EXPECT_TRUE(group.root.children.empty());
    load("NS\\N:many;");
    EXPECT_TRUE(group.root.children.empty());
}

TEST_F(MessageGroupTest, ALowerCountHasEmptyRowsAndAHugeOneGoesAsFarAsTheFileDoes) {
    load("NS\\N:9999;SNA-2:B;");
    EXPECT_EQ(group.root.children.size(), 9999U);
    load("NS\\N:10000;SNA-2:B;");
    EXPECT_EQ(group.root.children.size(), 2U);
    load("NS\\N:2000000000;SNA-2:B;SNA-77:C;");
    EXPECT_EQ(group.root.children.size(), 2U) << "77 is above the number of commands";
}

TEST_F(MessageGroupTest, AFileThatStatesMillionsOfRowsIsReadWithoutThem) {
    std::string commands = "NS\\N:2000;";
    for (int stream = 1; stream <= 2000; ++stream) {
        commands += "NMS\\N-" + std::to_string(stream) + ":9999;";
    }
    load(commands);
    ASSERT_TRUE(read);
    std::size_t messages = 0;
    for (const auto& each : group.root.children) {
        messages += each.children.size();
    }
    EXPECT_LE(messages, 110'000U);
}

TEST_F(MessageGroupTest, RowsBehindTheCountAreAskedAbout) {
    t.ui.otherwise = Button::Yes;
    load("NS\\N:1;SNA-1:A;SNA-2:B;NMS\\N-1:0;");
    EXPECT_TRUE(writes("SNA-2:B"));
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_NE(t.ui.boxes[0].text.find("S-1\\SNA-2:B;"), std::string::npos);
}

TEST_F(MessageGroupTest, ANewRowDoesNotTakeUpCommandsOfItsNumber) {
    t.ui.otherwise = Button::Yes;
    load("NS\\N:1;SNA-1:A;NMS\\N-1:0;SNA-2:stray;MES-2:16;");
    EXPECT_TRUE(add({}, {{"name", "B"}}));
    const auto text = stored();
    EXPECT_NE(text.find("S-1\\SNA-2:B;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\SNA-3:stray;"), std::string::npos);
    EXPECT_NE(text.find("S-1\\MES-3:16;"), std::string::npos);
    ASSERT_TRUE(loadMessages(t.context, &t.ui, "Link", group));
    EXPECT_EQ(stream(2).row[stream_row::ElementSize], "");
}

// --- Limits -------------------------------------------------------------------------------------

TEST_F(MessageGroupTest, AValueOverItsLimitIsReportedInTheLogAndStays) {
    const std::string article(17, 'A');
    const std::string comment(3201, 'c');
    load("TA:" + article + ";NS\\N:0;COM:" + comment + ";");
    EXPECT_EQ(group.testArticle, article);
    EXPECT_EQ(group.comment, comment);
    EXPECT_TRUE(group.corrected);
    EXPECT_EQ(t.ui.logs.size(), 2U);
    ASSERT_EQ(t.ui.shown.size(), 1U);
    EXPECT_NE(t.ui.shown[0].subtitle.find("KAVU9TMP.TMP"), std::string::npos);
    EXPECT_FALSE(fileExists(t.messages.logPath()));
    EXPECT_TRUE(writes("TA:" + article));
}

TEST_F(MessageGroupTest, OtherValuesHaveNoLimit) {
    const std::string name(100, 'N');
    load("NS\\N:1;SNA-1:" + name + ";NMS\\N-1:1;MN\\N-1-1:1;MN-1-1-1:" + name + ";");
    EXPECT_EQ(measurement().row[measurement_row::Name], name);
    EXPECT_TRUE(t.ui.logs.empty());
}

// --- Files --------------------------------------------------------------------------------------

TEST_F(MessageGroupTest, ALinkWithoutAGroupIsEmptyAndGetsTheFirstFreeIndex) {
    t.write(groupFile('S', 1), "S-1\\DLN:Other;\r\n");
    ASSERT_TRUE(loadMessages(t.context, &t.ui, "New", group));
    EXPECT_EQ(group.index, 0);
    EXPECT_TRUE(group.root.children.empty());
    EXPECT_EQ(stored(), "S-2\\DLN:New;\r\nS-2\\NS\\N:0;\r\n");
    EXPECT_EQ(group.index, 2);
}

TEST_F(MessageGroupTest, NoFreeIndexIsReported) {
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        t.write(groupFile('S', index), "S-1\\X:1;\r\n");
    }
    ASSERT_TRUE(loadMessages(t.context, &t.ui, "New", group));
    EXPECT_FALSE(storeMessages(t.context, &t.ui, group));
    EXPECT_TRUE(t.ui.hasBox(303));
}

TEST_F(MessageGroupTest, APacketGroupIsAnEmptyTreeAndItsCommandsAreAskedAbout) {
    load("FEF:1;SP\\N:1;PSHF-1:0;SNMS\\N-1:1;SMN-1-1:A;");
    EXPECT_TRUE(group.root.children.empty());
    t.ui.otherwise = Button::Yes;
    const auto text = stored();
    EXPECT_NE(text.find("S-1\\SMN-1-1:A;"), std::string::npos);
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_NE(t.ui.boxes[0].text.find("S-1\\FEF:1;"), std::string::npos);
}

TEST_F(MessageGroupTest, CancelEndsTheLoad) {
    std::string commands = "NS\\N:500;";
    t.ui.cancelAtPoll = 1;
    load(commands);
    EXPECT_FALSE(read);
}

TEST_F(MessageGroupTest, CommentsOfTheFileStayInTheirPlace) {
    t.write(groupFile('S', 1),
            "S-1\\DLN:Link;\r\nCOMMENT: of streams;\r\nS-1\\NS\\N:1;\r\nS-1\\NMS\\N-1:0;\r\n");
    ASSERT_TRUE(loadMessages(t.context, &t.ui, "Link", group));
    EXPECT_EQ(stored(),
              "S-1\\DLN:Link;\r\nCOMMENT: of streams;\r\nS-1\\NS\\N:1;\r\nS-1\\NMS\\N-1:0;\r\n");
}

TEST_F(MessageGroupTest, TheSheetNamesTheLink) {
    EXPECT_EQ(messageSheetTitle("Link"), "Edit Message Attributes - Data Link: Link");
}

}  // namespace
}  // namespace kavu
