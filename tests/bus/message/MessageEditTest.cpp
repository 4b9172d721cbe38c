#include "bus/message/MessageEdit.h"
#include "bus/message/MessageStage.h"

namespace kavu {
namespace {

class MessageEditTest : public test::MessageStage {
  protected:
    MessageEditTest() { load(test::kWholeMessages); }

    /// A text form of the places of the whole tree.
    [[nodiscard]] std::string names() {
        std::string all;
        for (const auto& each : measurementsOf(message()).children) {
            all += each.row[0] + " ";
        }
        return all;
    }
};

// --- Adding -------------------------------------------------------------------------------------

TEST_F(MessageEditTest, ANodeOfEveryLevelIsAddedBehindTheOthers) {
    EXPECT_TRUE(add({}, {{"name", "S2"}, {"dataType", "ASCII"}, {"layout", "Delimited"}}));
    EXPECT_TRUE(add({2}, {{"id", "1"}, {"name", "Text"}}));
    EXPECT_TRUE(add({2, 1, 'F'}, {{"number", "1"}}));
    EXPECT_TRUE(add({2, 1, 'M'}, {{"name", "A"}, {"dataType", "Hex"}}));
    EXPECT_TRUE(add({2, 1, 'M', 1}, {{"number", "1"}, {"bitmask", "FW"}}));
    EXPECT_EQ(stored().substr(t.read(groupFile('S', 1)).find("S-1\\SNA-2")),
              "S-1\\SNA-2:S2;\r\nS-1\\MDT-2:ASCII;\r\nS-1\\MDL-2:DELIMITED;\r\n"
              "S-1\\NMS\\N-2:1;\r\nS-1\\MID-2-1:1;\r\nS-1\\MNA-2-1:Text;\r\n"
              "S-1\\NFLDS\\N-2-1:1;\r\nS-1\\FNUM-2-1-1:1;\r\nS-1\\MN\\N-2-1:1;\r\n"
              "S-1\\MN-2-1-1:A;\r\nS-1\\MN1-2-1-1:NO;\r\nS-1\\MN2-2-1-1:T;\r\n"
              "S-1\\MBFM-2-1-1:HEX;\r\nS-1\\NML\\N-2-1-1:1;\r\nS-1\\MFN-2-1-1-1:1;\r\n"
              "S-1\\MBM-2-1-1-1:FW;\r\nS-1\\COM:a;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(MessageEditTest, ANewStreamShowsTheFirstEntryOfEachList) {
    EXPECT_TRUE(add({}, {}));
    const auto& row = stream(2).row;
    EXPECT_EQ(row[stream_row::DataType], "Binary");
    EXPECT_EQ(row[stream_row::Layout], "Fixed");
    EXPECT_EQ(row[stream_row::Orientation], "Little Endian");
}

TEST_F(MessageEditTest, NothingIsAddedWhereANodeHasNoChildren) {
    for (const GroupPlace& place :
         {GroupPlace{1, 1}, GroupPlace{1, 1, 'F', 1}, GroupPlace{1, 1, 'M', 1, 1}}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(add(place, {}));
        EXPECT_TRUE(isRefused("Nothing can be added at the place")) << placeText(place);
    }
    for (const GroupPlace& place : {GroupPlace{2}, GroupPlace{1, 2}, GroupPlace{1, 'F'},
                                    GroupPlace{1, 1, 'H'}, GroupPlace{1, 1, 1}, GroupPlace{'T'}}) {
        t.ui.boxes.clear();
        EXPECT_FALSE(add(place, {}));
        EXPECT_TRUE(isRefused("There is nothing at the place")) << placeText(place);
    }
}

// --- Texts --------------------------------------------------------------------------------------

TEST_F(MessageEditTest, ASemicolonIsRefusedInEveryField) {
    const std::vector<std::pair<GroupPlace, std::string>> fields = {{{1}, "name"},
                                                                    {{1}, "elementSize"},
                                                                    {{1}, "idLocation"},
                                                                    {{1}, "length"},
                                                                    {{1, 1}, "id"},
                                                                    {{1, 1}, "name"},
                                                                    {{1, 1, 'F', 1}, "number"},
                                                                    {{1, 1, 'F', 1}, "position"},
                                                                    {{1, 1, 'F', 1}, "length"},
                                                                    {{1, 1, 'M', 1}, "name"},
                                                                    {{1, 1, 'M', 1, 1}, "number"},
                                                                    {{1, 1, 'M', 1, 1}, "bitmask"},
                                                                    {{1, 1, 'M', 1, 1}, "fragment"},
                                                                    {{}, "TA"},
                                                                    {{}, "COM"}};
    const auto before = stored();
    for (const auto& [place, name] : fields) {
        t.ui.boxes.clear();
        EXPECT_FALSE(set(place, {{name, "a;b"}})) << name;
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        EXPECT_EQ(t.ui.boxes[0].id, 402);
    }
    EXPECT_EQ(stored(), before);
}

TEST_F(MessageEditTest, ACommaIsRefusedInARowButNotInTheCommentAndTheTestArticle) {
    EXPECT_FALSE(set({1, 1}, {{"name", "a,b"}}));
    EXPECT_TRUE(isRefused("comma"));
    t.ui.boxes.clear();
    EXPECT_TRUE(set({}, {{"TA", "a,b"}, {"COM", "c,\r\nd"}}));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(group.testArticle, "a,b");
    EXPECT_TRUE(
        writes("COM:c,\x14\x15"
               "d"));
}

TEST_F(MessageEditTest, ACommaOfTheFileIsRefusedOnlyInAFieldThatWasChanged) {
    load("NS\\N:1;SNA-1:a,b;NMS\\N-1:1;MNA-1-1:c,d;");
    EXPECT_TRUE(set({1, 1}, {{"id", "5"}}));
    EXPECT_TRUE(set({1, 1}, {{"name", "c,d"}}));
    EXPECT_FALSE(set({1, 1}, {{"name", "c,e"}}));
    EXPECT_EQ(message().row, (std::vector<std::string>{"5", "c,d"}));
}

TEST_F(MessageEditTest, ARefusedStepChangesNothing) {
    EXPECT_FALSE(set({1, 1}, {{"id", "9"}, {"name", "a;b"}}));
    EXPECT_EQ(message().row, (std::vector<std::string>{"7", "Temp"}));
    EXPECT_FALSE(set({}, {{"TA", "new"}, {"COM", "a;b"}}));
    EXPECT_EQ(group.testArticle, "X1");
}

TEST_F(MessageEditTest, AFieldThatAFormDoesNotHaveIsRefused) {
    EXPECT_FALSE(set({1, 1}, {{"parity", "Even"}}));
    EXPECT_TRUE(isRefused("There is no field 'parity' here."));
    t.ui.boxes.clear();
    EXPECT_FALSE(set({}, {{"DLN", "X"}}));
    EXPECT_TRUE(isRefused("There is no field 'DLN' here."));
}

TEST_F(MessageEditTest, TheLimitsOfTheMiscPageAreThoseOfEntering) {
    EXPECT_FALSE(set({}, {{"TA", std::string(17, 'a')}}));
    EXPECT_TRUE(isRefused("This string must be no more than 16 characters long."));
    EXPECT_TRUE(set({}, {{"TA", std::string(16, 'a')}, {"COM", std::string(3200, 'c')}}));
    t.ui.boxes.clear();
    EXPECT_FALSE(set({}, {{"COM", std::string(3201, 'c')}}));
    EXPECT_TRUE(isRefused("no more than 3200"));
}

// --- Lists --------------------------------------------------------------------------------------

TEST_F(MessageEditTest, AListTakesItsEntriesInAnyCaseAndNothingElse) {
    EXPECT_TRUE(set({1, 1, 'M', 1}, {{"parity", "odd"},
                                     {"parityTransferOrder", "Trails Word"},
                                     {"dataType", "float"},
                                     {"floatingPointFormat", "DEC \"G\" Double Precision"},
                                     {"orientation", "Little Endian"}}));
    EXPECT_EQ(measurement().row,
              (std::vector<std::string>{"M1", "Odd", "Trails Word", "Float",
                                        "DEC \"G\" Double Precision", "Little Endian"}));
    EXPECT_TRUE(writes("MFPF-1-1-1:DEC_64G"));
    EXPECT_FALSE(set({1, 1, 'M', 1}, {{"parity", "Both"}}));
    EXPECT_TRUE(isRefused("'Both' is not one of: Even, Odd, None."));
    t.ui.boxes.clear();
    EXPECT_FALSE(set({1, 1, 'M', 1, 1}, {{"transferOrder", "M"}}));
    EXPECT_TRUE(isRefused("'M' is not one of: MSB, LSB."));
}

TEST_F(MessageEditTest, AListThatIsEmptiedIsAsOneWhoseValueIsMissing) {
    EXPECT_TRUE(set({1, 1, 'M', 1}, {{"parity", ""}, {"orientation", ""}, {"dataType", ""}}));
    EXPECT_EQ(measurement().row[measurement_row::Parity], "None");
    EXPECT_EQ(measurement().row[measurement_row::Orientation], "Big Endian");
    EXPECT_EQ(measurement().row[measurement_row::DataType], "");
    EXPECT_TRUE(set({1}, {{"dataType", ""}}));
    EXPECT_EQ(stream().row[stream_row::DataType], "Binary");
}

TEST_F(MessageEditTest, TheStreamDialogSelectsTheEntryThatBeginsWithTheText) {
    load("NS\\N:1;MDT-1:BINARY;DO-1:B;");
    EXPECT_TRUE(set({1}, {{"name", "X"}}));
    EXPECT_EQ(stream().row[stream_row::Orientation], "Big Endian");
    EXPECT_TRUE(writes("DO-1:BIG ENDIAN"));
    load("NS\\N:1;MDT-1:ascii;");
    EXPECT_TRUE(set({1}, {{"name", "X"}}));
    EXPECT_EQ(stream().row[stream_row::DataType], "ASCII");
}

TEST_F(MessageEditTest, AValueThatIsNotInAListOfTheStreamDialogIsItsFirstEntry) {
    load("NS\\N:1;MDT-1:Other;MDL-1:Other;DO-1:Other;");
    EXPECT_TRUE(set({1}, {{"name", "X"}}));
    EXPECT_EQ(stream().row, (std::vector<std::string>{"X", "Binary", "Fixed", "", "", "", "", "",
                                                      "", "Little Endian"}));
}

TEST_F(MessageEditTest, AValueThatIsNoEntryOfAMeasurementStaysUntilOneIsChosen) {
    load(
        "NS\\N:1;NMS\\N-1:1;MN\\N-1-1:1;MN-1-1-1:A;MBFM-1-1-1:PACKED;NML\\N-1-1-1:1;MTO-1-1-1-1:"
        "X;");
    EXPECT_TRUE(set({1, 1, 'M', 1}, {{"name", "B"}}));
    EXPECT_TRUE(set({1, 1, 'M', 1, 1}, {{"number", "4"}}));
    EXPECT_TRUE(writes("MBFM-1-1-1:PACKED"));
    EXPECT_TRUE(writes("MTO-1-1-1-1:X"));
}

// --- What applies -------------------------------------------------------------------------------

TEST_F(MessageEditTest, FieldsThatDoNotApplyAreDisabledAndChangeWithTheLists) {
    MessageEdit edit(t.context, group, nullptr);
    auto form = edit.formOf({1});
    EXPECT_EQ(form.title, "Edit Message Stream");
    const auto enabled = [&form] {
        std::string all;
        for (std::size_t i = 0; i < form.texts.size(); ++i) {
            all += form.isEnabled(i) ? '1' : '0';
        }
        return all;
    };
    EXPECT_EQ(enabled(), "1111110001");
    form.texts[stream_row::Layout] = "Delimited";
    EXPECT_EQ(enabled(), "1111101111");
    form.texts[stream_row::DataType] = "ASCII";
    EXPECT_EQ(enabled(), "1111101110");

    form = edit.formOf({1, 1, 'M', 1});
    EXPECT_EQ(form.title, "Edit Measurement");
    EXPECT_EQ(enabled(), "111111");
    form.texts[measurement_row::DataType] = "Hex";
    EXPECT_EQ(enabled(), "111101");
    form.stream.row[stream_row::DataType] = "ASCII";
    EXPECT_EQ(enabled(), "111100");

    form = edit.formOf({1, 1, 'F', 1});
    EXPECT_EQ(form.title, "Edit Field");
    EXPECT_EQ(enabled(), "111");
    form.stream.row[stream_row::Layout] = "Delimited";
    EXPECT_EQ(enabled(), "100");

    EXPECT_EQ(edit.formOf({1, 1}).title, "Edit Message");
    EXPECT_EQ(edit.formOf({1, 1, 'M', 1, 1}).title, "Edit Measurement Location");
    EXPECT_EQ(edit.formOf({1}).entries(stream_row::Orientation),
              (std::vector<std::string>{"Little Endian", "Big Endian"}));
    EXPECT_EQ(edit.formOf({1, 1, 'M', 1}).entries(measurement_row::Orientation),
              (std::vector<std::string>{"Big Endian", "Little Endian"}));
}

TEST_F(MessageEditTest, AFieldThatDoesNotApplyCannotBeFilled) {
    EXPECT_FALSE(set({1}, {{"delimiter", "0D"}}));
    EXPECT_TRUE(isRefused("'Delimiter' does not apply here."));
    t.ui.boxes.clear();
    EXPECT_TRUE(set({1}, {{"delimiter", "0D"}, {"layout", "Delimited"}}))
        << "the lists decide, wherever they are among the values";
    EXPECT_FALSE(set({1, 1, 'F', 1}, {{"position", "9"}}));
    EXPECT_FALSE(set({1, 1, 'M', 1},
                     {{"dataType", "Hex"}, {"floatingPointFormat", "IBM Single Precision"}}));
}

TEST_F(MessageEditTest, ARowCanBeEnteredAsItIsShown) {
    EXPECT_TRUE(set({1}, {{"layout", "Delimited"}, {"dataType", "ASCII"}}));
    for (const GroupPlace& place :
         {GroupPlace{1}, GroupPlace{1, 1, 'F', 1}, GroupPlace{1, 1, 'M', 1}}) {
        const auto& node = *MessageEdit(t.context, group, nullptr).find(place);
        const auto before = node.row;
        Values shown;
        for (std::size_t i = 0; i < node.row.size(); ++i) {
            shown.emplace_back(factsOf(node.kind).columns[i].name, shownText(node, i, stream()));
        }
        EXPECT_TRUE(set(place, shown)) << placeText(place);
        EXPECT_EQ(node.row, before) << placeText(place);
    }
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(MessageEditTest, AChangeOfLayoutKeepsTheTextsUntilTheTreeIsClosed) {
    EXPECT_TRUE(set({1}, {{"layout", "Delimited"}, {"dataType", "ASCII"}}));
    EXPECT_EQ(messageLabel(fieldsOf(message()).children[0], stream()),
              "Number:1, Position:, Length:");
    EXPECT_EQ(stored().find("FPOS"), std::string::npos);
    EXPECT_TRUE(set({1}, {{"layout", "Fixed"}, {"dataType", "Binary"}}));
    EXPECT_TRUE(writes("FPOS-1-1-1:8"));
    EXPECT_TRUE(writes("MLEN-1:64"));
    EXPECT_TRUE(writes("MDO-1-1-1:B"));
}

// --- Names --------------------------------------------------------------------------------------

TEST_F(MessageEditTest, ANameOfAnotherStreamIsRefusedWhereNamesAreChecked) {
    MeasurementNames names(t.context);
    gatherNames(names);
    MessageEdit edit(t.context, group, &names);
    const Values speed = {{"name", "SPEED"}};
    EXPECT_FALSE(edit.set(&t.ui, {1, 1, 'M', 1}, speed));
    EXPECT_FALSE(edit.add(&t.ui, {1, 1, 'M'}, speed));
    ASSERT_EQ(t.ui.boxes.size(), 2U);
    EXPECT_EQ(t.ui.boxes[0].id, 455);
    EXPECT_NE(t.ui.boxes[0].text.find("'SPEED' is already being used in stream #2"),
              std::string::npos);
    EXPECT_TRUE(edit.set(&t.ui, {1, 1, 'M', 1}, Values{{"name", "M1"}, {"parity", "Odd"}}));
    names.setChecking(false, false);
    EXPECT_TRUE(edit.set(&t.ui, {1, 1, 'M', 1}, speed));
}

TEST_F(MessageEditTest, ANameOfTheSameStreamMayBeUsedAgain) {
    MeasurementNames names(t.context);
    gatherNames(names);
    MessageEdit edit(t.context, group, &names);
    EXPECT_TRUE(edit.add(&t.ui, {1, 1, 'M'}, Values{{"name", "M1"}}));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(MessageEditTest, ANameHasAtMost32Characters) {
    EXPECT_FALSE(set({1, 1, 'M', 1}, {{"name", std::string(33, 'n')}}));
    EXPECT_TRUE(isRefused("no more than 32"));
    EXPECT_TRUE(set({1, 1, 'M', 1}, {{"name", std::string(32, 'n')}}));
}

// --- Deleting -----------------------------------------------------------------------------------

TEST_F(MessageEditTest, ADeleteAsksUnderTheWordOfItsKind) {
    const std::vector<std::pair<GroupPlace, std::string>> places = {
        {{1}, "Delete this Stream"},
        {{1, 1}, "Delete this Message"},
        {{1, 1, 'F', 1}, "Delete this Message Field"},
        {{1, 1, 'M', 1}, "Delete this Measurement"},
        {{1, 1, 'M', 1, 1}, "Delete this Measurement Location"}};
    const auto before = stored();
    for (const auto& [place, title] : places) {
        t.ui.boxes.clear();
        EXPECT_FALSE(remove(place));
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        EXPECT_EQ(t.ui.boxes[0].id, -82);
        EXPECT_EQ(t.ui.boxes[0].title, title);
        EXPECT_EQ(t.ui.boxes[0].text, "Are You Sure?");
    }
    EXPECT_EQ(stored(), before);
}

TEST_F(MessageEditTest, AFolderIsNotDeleted) {
    t.ui.otherwise = Button::Yes;
    EXPECT_FALSE(remove({1, 1, 'F'}));
    EXPECT_TRUE(isRefused("Nothing can be deleted at the place [1, 1, \"F\"]."));
    t.ui.boxes.clear();
    EXPECT_FALSE(remove({}));
    EXPECT_FALSE(remove({7}));
    EXPECT_EQ(t.ui.boxes.size(), 2U);
}

TEST_F(MessageEditTest, WhatIsBehindADeletedRowMovesWithTheCommandsThatNobodyKnows) {
    t.ui.otherwise = Button::Yes;
    load(
        "NS\\N:2;SNA-1:A;NMS\\N-1:0;SNA-2:B;NMS\\N-2:1;MID-2-1:5;NFLDS\\N-2-1:0;MN\\N-2-1:1;"
        "MN-2-1-1:X;MN1-2-1-1:NO;MN2-2-1-1:T;NML\\N-2-1-1:0;MNX-2-1-1:own;");
    EXPECT_TRUE(remove({1}));
    EXPECT_EQ(stored(),
              "S-1\\DLN:Link;\r\nS-1\\NS\\N:1;\r\nS-1\\SNA-1:B;\r\nS-1\\NMS\\N-1:1;\r\n"
              "S-1\\MID-1-1:5;\r\nS-1\\NFLDS\\N-1-1:0;\r\nS-1\\MN\\N-1-1:1;\r\n"
              "S-1\\MN-1-1-1:X;\r\nS-1\\MN1-1-1-1:NO;\r\nS-1\\MN2-1-1-1:T;\r\n"
              "S-1\\NML\\N-1-1-1:0;\r\nS-1\\MNX-1-1-1:own;\r\n");
}

TEST_F(MessageEditTest, AMiddleMeasurementGoesAndTheOthersKeepTheirOrder) {
    t.ui.otherwise = Button::Yes;
    for (const auto* const name : {"M2", "M3"}) {
        EXPECT_TRUE(add({1, 1, 'M'}, {{"name", name}}));
    }
    EXPECT_TRUE(remove({1, 1, 'M', 2}));
    EXPECT_EQ(names(), "M1 M3 ");
    EXPECT_TRUE(writes("MN\\N-1-1:2"));
    EXPECT_TRUE(writes("MN-1-1-2:M3"));
}

TEST_F(MessageEditTest, APastedRowIsNewAndLeavesTheCommandsOfTheFileWhereTheyAre) {
    load("NS\\N:1;SNA-1:A;NMS\\N-1:1;MID-1-1:5;MIX-1-1:own;NFLDS\\N-1-1:0;MN\\N-1-1:0;");
    t.ui.otherwise = Button::Yes;
    MessageEdit edit(t.context, group, nullptr);
    EXPECT_TRUE(edit.paste(&t.ui, {1}, *edit.find({1, 1})));
    const auto text = stored();
    EXPECT_NE(text.find("S-1\\MID-1-2:5;"), std::string::npos) << text;
    EXPECT_NE(text.find("S-1\\MIX-1-1:own;"), std::string::npos) << text;
    EXPECT_EQ(text.find("MIX-1-2"), std::string::npos) << text;
}

TEST_F(MessageEditTest, APasteIsRefusedWhereItsKindIsNotAndForNamesOfOtherStreams) {
    MeasurementNames names(t.context);
    gatherNames(names);
    MessageEdit edit(t.context, group, &names);
    auto node = *edit.find({1, 1, 'M', 1});
    EXPECT_FALSE(edit.paste(&t.ui, {1}, node));
    EXPECT_FALSE(edit.paste(&t.ui, {9}, node));
    EXPECT_TRUE(t.ui.boxes.empty());
    node.row[measurement_row::Name] = "a;b";
    EXPECT_FALSE(edit.paste(&t.ui, {1, 1, 'M'}, node));
    EXPECT_EQ(t.ui.boxes.back().id, 402);
    node.row[measurement_row::Name] = "SPEED";
    EXPECT_FALSE(edit.paste(&t.ui, {1, 1, 'M'}, node));
    EXPECT_EQ(t.ui.boxes.back().id, 455);
    const auto before = group;
    EXPECT_TRUE(group.holdsTheSame(before));
    node.row[measurement_row::Name] = "free";
    EXPECT_TRUE(edit.paste(&t.ui, {1, 1, 'M'}, node));
    EXPECT_FALSE(group.holdsTheSame(before));
}

}  // namespace
}  // namespace kavu
