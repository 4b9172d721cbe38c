#include "bus/BusStage.h"
#include "bus/definition/BusEdit.h"
#include "bus/definition/BusMessageType.h"
#include "groups/MeasurementNames.h"

namespace kavu {
namespace {

using test::BusStage;
using test::goodLocation;
using test::goodMessage;

BusForm with(BusForm form, const std::string& code, const std::string& value) {
    for (auto& [known, text] : form.values) {
        if (known == code) {
            text = value;
            return form;
        }
    }
    form.values.emplace_back(code, value);
    return form;
}

struct EditedBus : BusStage {
    explicit EditedBus(int edition = 2011, const std::string& type = "1553") : BusStage(edition) {
        definition = unpack({"DLN:Bus 1", "NBS\\N:1", "BID-1:000", "BNA-1:Left", "BT-1:" + type});
    }
    bool add(const BusPlace& owner, const BusForm& form) {
        return edit(definition).add(owner, form);
    }
    bool set(const BusPlace& place, const BusForm& form) {
        return edit(definition).set(place, form);
    }
    [[nodiscard]] std::string value(const BusPlace& place, std::string_view stem) const {
        return std::string(busValue(*busRowAt(definition, place), levelOf(place), stem));
    }
    [[nodiscard]] std::string received(const BusPlace& place, std::string_view stem) const {
        return std::string(
            busValue(receiveOf(*busRowAt(definition, place)), BusLevel::Receive, stem));
    }
    [[nodiscard]] std::string type(const BusPlace& place) const {
        return std::string(
            messageTypeText(messageTypeOf(*busRowAt(definition, place), definition.edition)));
    }
    BusDefinition definition;
};

/// The message is refused with this number, and nothing has changed.
void expectRefused(EditedBus& bus, const BusForm& form, int id, int titleId) {
    const auto before = bus.definition.group;
    bus.t.ui.boxes.clear();
    EXPECT_FALSE(bus.add({1}, form)) << id;
    ASSERT_FALSE(bus.t.ui.boxes.empty()) << id;
    EXPECT_EQ(bus.t.ui.boxes.back().id, id);
    EXPECT_EQ(bus.t.ui.boxes.back().titleId, titleId) << id;
    EXPECT_EQ(bus.definition.group, before) << id;
}

TEST(BusEditing, EveryLevelIsAddedFilledAndPacked) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({}, {.values = {{"BID", "001"}, {"BNA", "Right"}, {"BT", "1553"}},
                             .tracks = {{"7", "8"}}}));
    ASSERT_TRUE(bus.add({2}, goodMessage()));
    ASSERT_TRUE(bus.add({2, 1}, {.values = {{"MN", "A"}, {"MT", "D"}, {"MN1", "EV"}}}));
    ASSERT_TRUE(bus.add({2, 1, 1}, goodLocation()));
    EXPECT_TRUE(bus.t.ui.boxes.empty());
    EXPECT_EQ(bus.type({2, 1}), "Controller To RT");
    EXPECT_EQ(
        bus.pack(bus.definition),
        test::busCommands({"DLN:Bus 1",     "NBS\\N:2",       "BID-1:000",       "BNA-1:Left",
                           "BT-1:1553",     "TK\\N-1:0",      "NMS\\N-1:0",      "BID-2:001",
                           "BNA-2:Right",   "BT-2:1553",      "TK\\N-2:2",       "TS-2-1:7",
                           "TS-2-2:8",      "NMS\\N-2:1",     "MNA-2-1:New",     "TRA-2-1:00101",
                           "STA-2-1:00010", "TRM-2-1:0",      "DWC-2-1:4",       "MN\\N-2-1:1",
                           "MN-2-1-1:A",    "MT-2-1-1:D",     "MN1-2-1-1:EV",    "NML\\N-2-1-1:1",
                           "MWN-2-1-1-1:1", "MBM-2-1-1-1:FW", "MTO-2-1-1-1:MSB", "MFP-2-1-1-1:1"}));
}

TEST(BusEditing, ARowThatIsNotThereIsNamed) {
    EditedBus bus;
    for (const auto& [place, text] :
         {std::pair{BusPlace{3}, "There is no bus 3."},
          {{1, 4}, "There is no bus 1, message 4."},
          {{1, 1, 1, 1}, "There is no bus 1, message 1, measurement 1, location 1."}}) {
        EXPECT_FALSE(bus.set(place, {}));
        EXPECT_EQ(bus.t.ui.boxes.back().text, text);
        EXPECT_FALSE(bus.edit(bus.definition).remove(place));
    }
    EXPECT_FALSE(bus.add({1, 1, 1, 1}, goodLocation()));
    EXPECT_FALSE(bus.edit(bus.definition).remove({}));
}

TEST(BusEditing, WhatTheFormDoesNotHaveIsRefused) {
    EditedBus bus(1999);
    for (const auto& [code, part] : {std::pair{"XYZ", "no such field"},
                                     {"BT", "known from IRIG 106-04"},
                                     {"BID", "000, 001"},
                                     {"BNA", "32 characters"}}) {
        const std::string value(40, 'x');
        EXPECT_FALSE(bus.set({1}, {.values = {{code, value}}})) << code;
        EXPECT_NE(bus.t.ui.boxes.back().text.find(part), std::string::npos)
            << bus.t.ui.boxes.back().text;
    }
    EXPECT_FALSE(bus.set({}, {.values = {{"DLN", "Other"}}}));
    EXPECT_TRUE(bus.t.ui.hasText("link rename"));
    EXPECT_FALSE(bus.set({1}, {.type = "RT To RT"}));
    EXPECT_FALSE(bus.set({}, {.tracks = {{"1"}}}));
    EXPECT_FALSE(bus.set({1}, {.values = {{"BNA", "a\nb"}}}));
}

TEST(BusEditing, ASemicolonIsRefusedEverywhere) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    ASSERT_TRUE(bus.add({1, 1}, {}));
    ASSERT_TRUE(bus.add({1, 1, 1}, goodLocation()));
    const std::vector<std::pair<BusPlace, std::string>> fields = {
        {{}, "COM"},      {{1}, "BNA"},      {{1}, "UMN1"},        {{1, 1}, "MNA"},
        {{1, 1}, "RTRN"}, {{1, 1, 1}, "MN"}, {{1, 1, 1, 1}, "MWN"}};
    for (const auto& [place, code] : fields) {
        bus.t.ui.boxes.clear();
        EXPECT_FALSE(bus.set(place, {.values = {{code, "a;b"}}})) << code;
        EXPECT_EQ(bus.shown(), std::vector<int>{402}) << code;
    }
    bus.t.ui.boxes.clear();
    EXPECT_FALSE(bus.set({1}, {.tracks = {{";"}}}));
    EXPECT_EQ(bus.shown(), std::vector<int>{402});
}

TEST(BusEditing, LimitsAreLimitsOfWhatIsEntered) {
    EditedBus bus;
    const std::string name(60, 'N');
    bus.definition = bus.unpack({"DLN:Bus 1", "NBS\\N:1", "BID-1:00000000", "BNA-1:" + name});
    EXPECT_TRUE(bus.set({1}, {.values = {{"BNA", name}, {"BID", "00000000"}, {"BT", "1553"}}}));
    EXPECT_EQ(bus.value({1}, "BNA"), name);
    EXPECT_FALSE(bus.set({1}, {.values = {{"BNA", name + "x"}}}));
}

TEST(BusEditing, LineBreaksOfTextsAreKept) {
    EditedBus bus;
    ASSERT_TRUE(bus.set({}, {.values = {{"COM", "one\ntwo"}}}));
    EXPECT_NE(bus.pack(bus.definition).find("B-1\\COM:one\x14\x15two;"), std::string::npos);
}

// --- Addresses, words and masks -----------------------------------------------------------------

TEST(BusEditing, AnAddressHasFiveDigitsAndShorterOnesGetZerosInFront) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, with(with(goodMessage(), "TRA", "1X1"), "STA", "1")));
    EXPECT_EQ(bus.value({1, 1}, "TRA"), "001X1");
    EXPECT_EQ(bus.value({1, 1}, "STA"), "00001");
    for (const char* code : {"TRA", "STA", "RTRA", "RSTA"}) {
        for (const char* wrong : {"00x01", "2", "0000A", " 1"}) {
            bus.t.ui.boxes.clear();
            EXPECT_FALSE(bus.set({1, 1}, {.values = {{code, wrong}}})) << code << wrong;
            ASSERT_EQ(bus.shown(), std::vector<int>{376}) << code << wrong;
            EXPECT_EQ(bus.t.ui.boxes[0].title, "Invalid Address Entered");
        }
        EXPECT_FALSE(bus.set({1, 1}, {.values = {{code, "00000000001"}}})) << "older form";
    }
    EXPECT_TRUE(bus.set({1, 1}, {.values = {{"TRA", ""}, {"TRN", "Named"}}}));
    EXPECT_EQ(bus.value({1, 1}, "TRA"), "");
}

TEST(BusEditing, ACommandWordIsHexadecimal) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, {.values = {{"CWE", "W"}, {"CMD", "1A2B"}}}));
    for (const char* code : {"CMD", "RCMD"}) {
        bus.t.ui.boxes.clear();
        EXPECT_FALSE(bus.set({1, 1}, {.values = {{code, "12G4"}}}));
        EXPECT_EQ(bus.shown(), std::vector<int>{392}) << code;
    }
    EXPECT_FALSE(bus.set({1, 1}, {.values = {{"CMD", "12345"}}})) << "more than four digits";
    EXPECT_EQ(bus.value({1, 1}, "CMD"), "1A2B");
}

TEST(BusEditing, DeriveFromOtherFieldsDeletesTheWordAndOnlyWhenItIsChosen) {
    EditedBus bus;
    bus.definition = bus.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1", "CWE-1-1:F", "CMD-1-1:1234",
                                 "TRA-1-1:1", "STA-1-1:1", "DWC-1-1:1"});
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"MNA", "Name"}}}));
    EXPECT_EQ(bus.value({1, 1}, "CMD"), "1234");
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"CWE", "F"}}}));
    EXPECT_EQ(bus.value({1, 1}, "CMD"), "");
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"CMD", "FFFF"}, {"CWE", "W"}}}));
    EXPECT_EQ(bus.value({1, 1}, "CMD"), "FFFF") << "whatever the order";
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"RCWE", "W"}, {"RCMD", "AA"}}}));
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"RCWE", "F"}}}));
    EXPECT_EQ(bus.value({1, 1}, "RCMD"), "");
}

TEST(BusEditing, AMaskIsTheFullWordOrBinary) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    ASSERT_TRUE(bus.add({1, 1}, {}));
    for (const char* mask : {"FW", "1", "0101"}) {
        EXPECT_TRUE(bus.add({1, 1, 1}, with(goodLocation(), "MBM", mask))) << mask;
    }
    for (const std::string& mask :
         {std::string("fw"), std::string("012"), std::string("FF"), std::string(65, '1')}) {
        bus.t.ui.boxes.clear();
        EXPECT_FALSE(bus.add({1, 1, 1}, with(goodLocation(), "MBM", mask))) << mask;
        ASSERT_EQ(bus.shown(), std::vector<int>{142}) << mask;
        EXPECT_EQ(bus.t.ui.boxes[0].title, "Invalid BitMask Entered");
    }
    bus.t.ui.boxes.clear();
    EXPECT_FALSE(bus.set({1}, {.values = {{"U2M", "2"}}}));
    EXPECT_EQ(bus.shown(), std::vector<int>{142});
}

TEST(BusEditing, ALocationNeedsAllOfItsFour) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    ASSERT_TRUE(bus.add({1, 1}, {}));
    int id = 388;
    for (const char* code : {"MWN", "MBM", "MTO", "MFP"}) {
        bus.t.ui.boxes.clear();
        EXPECT_FALSE(bus.add({1, 1, 1}, with(goodLocation(), code, ""))) << code;
        ASSERT_EQ(bus.shown(), std::vector<int>{id++}) << code;
        EXPECT_EQ(bus.t.ui.boxes[0].titleId, 116);
    }
    EXPECT_TRUE(rowsOf(*busRowAt(bus.definition, {1, 1, 1}), BusLevel::Location).empty());
}

TEST(BusEditing, ANameOfAnotherStreamIsRefused) {
    EditedBus bus;
    bus.t.write(groupFile('M', 1),
                "M-1\\BB\\DLN:Bus 1;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:PCM;\r\n");
    bus.t.write(groupFile('D', 1), "D-1\\DLN:PCM;\r\nD-1\\MN\\N-1:1;\r\nD-1\\MN-1-1:Taken;\r\n");
    bus.t.write(groupFile('B', 1), "B-1\\DLN:Bus 1;\r\nB-1\\MN-1-1-1:Own;\r\n");
    MeasurementNames names(bus.t.context);
    ASSERT_TRUE(names.checkForDuplicates(&bus.t.ui));
    names.setChecking(true, false);
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    BusEdit edit(bus.t.context, &bus.t.ui, bus.definition, &names);
    EXPECT_FALSE(edit.add({1, 1}, {.values = {{"MN", "Taken"}}}));
    ASSERT_EQ(bus.shown(), std::vector<int>{455});
    EXPECT_NE(bus.t.ui.boxes[0].text.find("'Taken' is already being used in stream #2"),
              std::string::npos);
    EXPECT_TRUE(rowsOf(*busRowAt(bus.definition, {1, 1}), BusLevel::Measurement).empty());
    EXPECT_TRUE(edit.add({1, 1}, {.values = {{"MN", "Own"}}}));
}

TEST(BusEditing, ARowThatIsAppendedIsEmptyAndCanBeTakenBack) {
    EditedBus bus;
    const auto before = bus.definition.group;
    auto edit = bus.edit(bus.definition);
    const auto place = edit.append({1});
    ASSERT_EQ(place, (BusPlace{1, 1}));
    EXPECT_TRUE(busRowAt(bus.definition, *place)->values.empty());
    edit.takeBack({1});
    EXPECT_EQ(bus.definition.group, before);
    const auto terminals = bus.definition.terminals.size();
    ASSERT_TRUE(edit.append({}));
    edit.takeBack({});
    EXPECT_EQ(bus.definition.group, before);
    EXPECT_EQ(bus.definition.terminals.size(), terminals);
    EXPECT_FALSE(edit.append({7}));
    EXPECT_FALSE(edit.append({1, 1, 1, 1}));
}

// --- The message sheet --------------------------------------------------------------------------

TEST(BusMessageSheet, WhatIsMissingIsToldInOrder) {
    EditedBus bus;
    expectRefused(bus, {}, 383, 115);
    EXPECT_NE(bus.t.ui.boxes.back().text.find("Remote"), std::string::npos);
    expectRefused(bus, {.values = {{"TRN", "RT"}}}, 383, 115);
    EXPECT_NE(bus.t.ui.boxes.back().text.find("Sub"), std::string::npos);
    expectRefused(bus, {.values = {{"TRN", "RT"}, {"STA", "00010"}}}, 384, 115);
}

TEST(BusMessageSheet, AnArincBusAndACommandWordNeedNone) {
    EditedBus arinc(2011, "a429");
    EXPECT_TRUE(arinc.add({1}, {.values = {{"LBL", "017"}, {"SDI", "ALL"}}}));
    EditedBus bus;
    EXPECT_TRUE(bus.add({1}, {.values = {{"CWE", "W"}, {"CMD", "1234"}}}));
    expectRefused(bus, {.values = {{"CWE", "F"}}}, 383, 115);
    bus.t.ui.boxes.clear();
    EXPECT_FALSE(bus.set({1, 1}, {.values = {{"LBL", "017"}}}));
    EXPECT_TRUE(bus.t.ui.hasText("ARINC 429"));
}

TEST(BusMessageSheet, AChosenTypeSetsTheModeAndTheBroadcastAddress) {
    struct Case {
        const char* type;
        const char* mode;
        const char* address;
        std::vector<int> told;
    };
    for (const auto& [type, mode, address, told] :
         {Case{"Controller To RT", "0", "00101", {382}},
          {"RT To Controller", "1", "00101", {}},
          {"Transmit Mode Command", "1", "00101", {}},
          {"Receive Mode Command", "0", "00101", {382}},
          {"Broadcast Mode Command", "1", "11111", {380}},
          {"Controller To RT(s) Broadcast", "0", "11111", {382, 380}},
          {"RT To RT", "1", "00101", {}},
          {"RT To RT(s) Broadcast", "1", "00101", {386}}}) {
        EditedBus bus;
        auto form = with(with(goodMessage(), "TRM", "1"), "RSTA", "00011");
        form = with(form, "STA",
                    std::string(type).find("Mode") != std::string::npos ? "11111" : "00010");
        form.type = type;
        EXPECT_TRUE(bus.add({1}, form)) << type;
        EXPECT_EQ(bus.shown(), told) << type;
        EXPECT_EQ(bus.value({1, 1}, "TRM"), mode) << type;
        EXPECT_EQ(bus.value({1, 1}, "TRA"), address) << type;
        if (std::string(type) != "RT To Controller") {
            EXPECT_EQ(bus.type({1, 1}), type);
        }
    }
}

TEST(BusMessageSheet, TheTitlesOfWhatATypeChanges) {
    EditedBus bus;
    auto form = goodMessage();
    form.type = "RT To Controller";
    ASSERT_TRUE(bus.add({1}, form));
    EXPECT_EQ(bus.t.ui.boxes.at(0).titleId, 114);
    EXPECT_NE(bus.t.ui.boxes[0].text.find("T/R Mode has been changed to Transmit"),
              std::string::npos);
    bus.t.ui.boxes.clear();
    form.type = "Controller To RT(s) Broadcast";
    ASSERT_TRUE(bus.add({1}, form));
    EXPECT_EQ(bus.t.ui.boxes.at(0).titleId, 113);
}

TEST(BusMessageSheet, OtherTypesRefuseTheAddressOfAllTerminals) {
    EditedBus bus;
    for (const auto& [type, id] : {std::pair{"Controller To RT", 377},
                                   {"RT To Controller", 377},
                                   {"Receive Mode Command", 377},
                                   {"Transmit Mode Command", 377},
                                   {"RT To RT", 385},
                                   {"RT To RT(s) Broadcast", 385}}) {
        auto form = with(goodMessage(), "TRA", "11111");
        form.type = type;
        expectRefused(bus, form, id, 113);
    }
}

TEST(BusMessageSheet, ModeCommandsNeedASubTerminalOf0Or31) {
    EditedBus bus;
    for (const char* type :
         {"Receive Mode Command", "Transmit Mode Command", "Broadcast Mode Command"}) {
        auto form = goodMessage();
        form.type = type;
        expectRefused(bus, form, 378, 112);
        EXPECT_TRUE(bus.add({1}, [&] {
            auto good = with(goodMessage(), "STA", "00000");
            good.type = type;
            return good;
        }()));
    }
}

TEST(BusMessageSheet, ASubTerminal31IsAcceptedForRtToControllerAndRefusedForRtToRt) {
    EditedBus bus;
    auto form = with(with(goodMessage(), "STA", "11111"), "RSTA", "00011");
    form.type = "RT To Controller";
    EXPECT_TRUE(bus.add({1}, form));
    form.type = "RT To RT";
    expectRefused(bus, form, 387, 112);
    form.type = "RT To RT(s) Broadcast";
    expectRefused(bus, form, 387, 112);
}

TEST(BusMessageSheet, TheReceiveCommandOfARtToRtMessageIsChecked) {
    EditedBus bus;
    auto form = with(goodMessage(), "RTRA", "00111");
    form.type = "RT To RT";
    expectRefused(bus, form, 387, 112);  // an empty sub terminal is 0
    expectRefused(bus, with(form, "RSTA", "11111"), 387, 112);
    expectRefused(bus, with(with(form, "RSTA", "00011"), "RTRA", "11111"), 385, 113);
    EXPECT_TRUE(bus.add({1}, with(form, "RSTA", "00011")));
    form.type = "RT To RT(s) Broadcast";
    bus.t.ui.boxes.clear();
    EXPECT_TRUE(bus.add({1}, with(form, "RSTA", "00011")));
    EXPECT_EQ(bus.received({1, 2}, "RTRA"), "11111");
}

TEST(BusMessageSheet, WithoutAChoiceTheTypeBeforeTheFormIsInForce) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    EXPECT_FALSE(bus.set({1, 1}, {.values = {{"TRA", "11111"}}}));
    EXPECT_EQ(bus.shown(), std::vector<int>{377});
    EXPECT_EQ(bus.value({1, 1}, "TRA"), "00101");
    bus.t.ui.boxes.clear();
    EXPECT_TRUE(bus.set({1, 1}, {.values = {{"STA", "00000"}}})) << "379 is not used";
    EXPECT_TRUE(bus.t.ui.boxes.empty());
    EXPECT_EQ(bus.type({1, 1}), "Receive Mode Command");
    EXPECT_FALSE(bus.set({1, 1}, {.values = {{"STA", "00010"}}}));
    EXPECT_EQ(bus.shown(), std::vector<int>{378});
    EXPECT_FALSE(bus.set({1, 1}, {.type = "Nonsense"}));
    EXPECT_TRUE(bus.t.ui.hasText("'Nonsense'"));
}

TEST(BusMessageSheet, BeforeThe1999EditionAReceiveCommandIsMade) {
    EditedBus bus(1996);
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    EXPECT_TRUE(rowsOf(*busRowAt(bus.definition, {1, 1}), BusLevel::Receive).empty());
    ASSERT_TRUE(bus.set({1, 1}, {.values = {{"RTRN", "RT9"}}}));
    EXPECT_NE(bus.pack(bus.definition).find("B-1\\RNRT\\N-1-1:1;\r\nB-1\\RTRN-1-1-1:RT9;"),
              std::string::npos);
}

// --- Deletes ------------------------------------------------------------------------------------

TEST(BusDeleting, EachLevelAsksUnderItsTitleAndTheRestMovesUp) {
    BusStage stage;
    const auto make = [&] {
        return stage.unpack({"DLN:Bus 1", "NBS\\N:2", "BNA-1:Left", "BNA-2:Right", "TK\\N-2:3",
                             "TS-2-1:7", "TS-2-2:8", "TS-2-3:9", "NMS\\N-2:3", "MNA-2-1:A",
                             "MNA-2-2:B", "MNA-2-3:C", "MN\\N-2-3:2", "MN-2-3-1:X", "MN-2-3-2:Y",
                             "RTRN-2-3:RT", "NML\\N-2-3-2:2", "MWN-2-3-2-1:1", "MWN-2-3-2-2:2"});
    };
    struct Case {
        BusPlace place;
        const char* title;
        const char* left;
        const char* gone;
    };
    for (const auto& [place, title, left, gone] :
         {Case{{1}, "Delete 1553 Bus Definition", "B-1\\MN-1-3-2:Y;", "Left"},
          {{2, 1}, "Delete This Message", "B-1\\MN-2-2-2:Y;", "MNA-2-1:A"},
          {{2, 3, 1}, "Delete This Measurement", "B-1\\MWN-2-3-1-2:2;", "MN-2-3-1:X"},
          {{2, 3, 2, 1},
           "Delete This Measurement Location",
           "B-1\\MWN-2-3-2-1:2;",
           "MWN-2-3-2-2"}}) {
        auto definition = make();
        stage.t.ui.boxes.clear();
        stage.t.ui.otherwise = Button::No;
        const auto before = definition.group;
        EXPECT_FALSE(stage.edit(definition).remove(place));
        EXPECT_EQ(definition.group, before);
        stage.t.ui.otherwise = Button::Yes;
        EXPECT_TRUE(stage.edit(definition).remove(place));
        ASSERT_EQ(stage.shown(), (std::vector<int>{-82, -82}));
        EXPECT_EQ(stage.t.ui.boxes[1].title, title);
        const auto text = stage.pack(definition);
        EXPECT_NE(text.find(left), std::string::npos) << text;
        EXPECT_EQ(text.find(gone), std::string::npos) << text;
    }
}

TEST(BusDeleting, OnlyWhatBelongsToTheRowsMoves) {
    BusStage stage;
    stage.t.ui.otherwise = Button::Yes;
    auto definition = stage.unpack({"DLN:Bus 1", "NBS\\N:1", "TK\\N-1:3", "TS-1-1:7", "TS-1-2:8",
                                    "TS-1-3:9", "NMS\\N-1:3", "MID-1-1:1", "MID-1-2:2", "MID-1-3:3",
                                    "RTRN-1-3:RT", "MN\\N-1-3:2", "MN-1-3-1:X", "MN-1-3-2:Y"});
    ASSERT_TRUE(stage.edit(definition).remove({1, 2}));
    ASSERT_TRUE(stage.edit(definition).remove({1, 2, 1}));
    const auto text = stage.pack(definition);
    for (const char* line : {"TS-1-3:9", "MID-1-2:3", "RTRN-1-2:RT", "MN-1-2-1:Y"}) {
        EXPECT_NE(text.find(std::string("B-1\\") + line), std::string::npos) << text;
    }
    EXPECT_EQ(text.find("MID-1-3"), std::string::npos);
}

TEST(BusDeleting, OfSeventeenBusesTheListsMoveAndTheLastKeepsItsEmptyOne) {
    BusStage stage;
    stage.t.ui.otherwise = Button::Yes;
    std::vector<std::string> commands = {"DLN:Bus 1", "NBS\\N:17"};
    for (int b = 1; b <= 17; ++b) {
        const auto n = std::to_string(b);
        commands.push_back("BNA-" + n + ":Bus" + n);
        commands.push_back("NMS\\N-" + n + ":1");
        commands.push_back("TRN-" + n + "-1:RT" + n);
    }
    auto definition = stage.unpack(commands);
    ASSERT_TRUE(stage.edit(definition).remove({3}));
    ASSERT_EQ(definition.buses().size(), 16U);
    EXPECT_EQ(definition.listKnownTerminals(2).remote.at(0).name, "RT2");
    EXPECT_EQ(definition.listKnownTerminals(3).remote.at(0).name, "RT4");
    EXPECT_EQ(definition.listKnownTerminals(15).remote.at(0).name, "RT16");
    EXPECT_TRUE(definition.listKnownTerminals(16).remote.empty());
}

TEST(BusDeleting, TracksAndUserDefinedWordsMoveUp) {
    BusStage stage;
    stage.t.ui.otherwise = Button::Yes;
    auto definition =
        stage.unpack({"DLN:Bus 1", "NBS\\N:1", "UMN1-1:One", "U1P-1:EV", "UMN2-1:Two", "U2T-1:MSB",
                      "UMN3-1:Three", "TK\\N-1:2", "TS-1-1:7", "TS-1-2:8"});
    ASSERT_TRUE(stage.edit(definition).removeUserWord(1, 1));
    ASSERT_TRUE(stage.edit(definition).removeTrack(1, 1));
    EXPECT_EQ(stage.t.ui.boxes[0].title, "Delete This User Defined Word?");
    EXPECT_EQ(stage.t.ui.boxes[1].title, "Delete Track Sequence");
    EXPECT_EQ(stage.pack(definition),
              test::busCommands({"DLN:Bus 1", "NBS\\N:1", "UMN1-1:Two", "U1T-1:MSB", "UMN2-1:Three",
                                 "TK\\N-1:1", "TS-1-1:8", "NMS\\N-1:0"}));
    EXPECT_FALSE(stage.edit(definition).removeTrack(1, 9));
    EXPECT_FALSE(stage.edit(definition).removeUserWord(1, 4));
}

TEST(BusPasting, ACopyStandsAtTheEndWithAllThatIsInIt) {
    EditedBus bus;
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    ASSERT_TRUE(bus.add({1, 1}, {.values = {{"MN", "A"}}}));
    ASSERT_TRUE(bus.add({}, {.values = {{"BNA", "Right"}}}));
    const auto message = *busRowAt(bus.definition, {1, 1});
    EXPECT_TRUE(bus.edit(bus.definition).paste({2}, BusLevel::Message, message));
    EXPECT_EQ(bus.value({2, 1, 1}, "MN"), "A");
    EXPECT_FALSE(bus.edit(bus.definition).paste({2}, BusLevel::Location, message));
    EXPECT_FALSE(bus.edit(bus.definition).paste({9}, BusLevel::Message, message));
}

TEST(BusPasting, AMeasurementNameOfAnotherStreamIsRefusedAtEveryDepth) {
    EditedBus bus;
    bus.t.write(groupFile('M', 1),
                "M-1\\BB\\DLN:Bus 1;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:PCM;\r\n");
    bus.t.write(groupFile('D', 1), "D-1\\DLN:PCM;\r\nD-1\\MN\\N-1:1;\r\nD-1\\MN-1-1:Taken;\r\n");
    MeasurementNames names(bus.t.context);
    ASSERT_TRUE(names.checkForDuplicates(&bus.t.ui));
    ASSERT_TRUE(bus.add({1}, goodMessage()));
    ASSERT_TRUE(bus.add({1, 1}, {.values = {{"MN", "Taken"}}}));
    const auto group = bus.definition.group;
    const auto whole = *busRowAt(bus.definition, {1});
    const auto message = *busRowAt(bus.definition, {1, 1});
    const auto measurement = *busRowAt(bus.definition, {1, 1, 1});
    BusEdit edit(bus.t.context, &bus.t.ui, bus.definition, &names);
    EXPECT_FALSE(edit.paste({1, 1}, BusLevel::Measurement, measurement));
    EXPECT_FALSE(edit.paste({1}, BusLevel::Message, message));
    EXPECT_FALSE(edit.paste({}, BusLevel::Bus, whole));
    EXPECT_EQ(bus.shown(), (std::vector<int>{455, 455, 455}));
    EXPECT_EQ(bus.definition.group, group);
    names.setChecking(false, false);
    EXPECT_TRUE(edit.paste({1}, BusLevel::Message, message));
}

}  // namespace
}  // namespace kavu
