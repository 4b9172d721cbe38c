#include "bus/BusStage.h"
#include "bus/definition/BusMessageType.h"
#include "bus/definition/BusUnpack.h"

namespace kavu {
namespace {

using test::BusStage;
using Terminals = std::vector<Terminal>;

TEST(BusUnpack, ReadsEveryLevelOfAGroup) {
    BusStage stage;
    const auto definition = stage.unpack(
        {"DLN:Bus 1", "TA:Plane", "BP:OD", "NBS\\N:1", "BID-1:001", "BNA-1:Left", "BT-1:1553",
         "TK\\N-1:2", "TS-1-1:7", "TS-1-2:8", "NMS\\N-1:1", "MID-1-1:1", "RTRN-1-1:RT9",
         "MN\\N-1-1:2", "MN-1-1-1:A", "NML\\N-1-1-1:1", "MWN-1-1-1-1:3", "MN-1-1-2:B", "COM:Hi"});
    EXPECT_EQ(definition.group.value("TA"), "Plane");
    EXPECT_EQ(definition.group.value("COM"), "Hi");
    const auto value = [&](const BusPlace& place, std::string_view stem) {
        return std::string(busValue(*busRowAt(definition, place), levelOf(place), stem));
    };
    EXPECT_EQ(value({1}, "BNA"), "Left");
    EXPECT_EQ(value({1, 1}, "MID"), "1");
    EXPECT_EQ(value({1, 1, 2}, "MN"), "B");
    EXPECT_EQ(value({1, 1, 1, 1}, "MWN"), "3");
    EXPECT_EQ(rowsOf(*busRowAt(definition, {1}), BusLevel::Track).size(), 2U);
    EXPECT_EQ(busValue(receiveOf(*busRowAt(definition, {1, 1})), BusLevel::Receive, "RTRN"), "RT9");
    for (const BusPlace& place : {BusPlace{2}, {0}, {1, 2}, {1, 1, 1, 2}, {1, 1, 1, 1, 1}}) {
        EXPECT_EQ(busRowAt(definition, place), nullptr);
    }
    EXPECT_TRUE(stage.t.ui.boxes.empty());
}

TEST(BusUnpack, MakesTheTwoProfileFilesAndTellsHowFarItIs) {
    BusStage stage;
    (void)stage.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1", "TRN-1-1:RT5", "TRA-1-1:101"});
    EXPECT_EQ(stage.t.read(kBusProfile),
              "[1553]\r\nDLN=Bus 1\r\nNBS\\N=1\r\nNMS\\N-1=1\r\nTRN-1-1=RT5\r\nTRA-1-1=101\r\n");
    EXPECT_EQ(stage.t.read(kTerminalProfile), "[1]\r\nRTN1=RT5\r\nRTA1=00101\r\n");
    const auto& texts = stage.t.ui.statusTexts;
    EXPECT_EQ(texts.front(), "Initializing Bus Information...");
    EXPECT_EQ(texts.at(1), "Initializing Bus Info. Parsing TMATS file line #1.");
    EXPECT_NE(std::find(texts.begin(), texts.end(),
                        "Initializing 1553 Info. Initalizing Remote/Sub Terminal Addresses"),
              texts.end());
    EXPECT_EQ(texts.back(), "Edit Bus Definition.");
    EXPECT_EQ(stage.t.ui.bars.back(), -1);
}

TEST(BusUnpack, AMissingGroupIsSuccessWithoutProfileFiles) {
    BusStage stage;
    BusDefinition definition{.link = "Bus 1", .index = 1};
    EXPECT_TRUE(unpackBusGroup(stage.t.context, &stage.t.ui, definition));
    EXPECT_TRUE(definition.buses().empty());
    EXPECT_FALSE(stage.t.has(kBusProfile));
    EXPECT_FALSE(stage.t.has(kTerminalProfile));
}

TEST(BusUnpack, ACancelDeletesTheProfileAndFails) {
    BusStage stage;
    stage.t.write(kBusGroupFile, test::busCommands({"NBS\\N:1"}));
    stage.t.write(kBusProfile, "[1553]\r\n");
    stage.t.ui.cancelAtPoll = 1;
    BusDefinition definition{.link = "Bus 1", .index = 1};
    EXPECT_FALSE(unpackBusGroup(stage.t.context, &stage.t.ui, definition));
    EXPECT_FALSE(stage.t.has(kBusProfile));
    EXPECT_EQ(stage.t.read(kBusGroupFile), test::busCommands({"NBS\\N:1"}));
}

TEST(BusUnpack, OfRepeatedCommandsTheLastHoldsWhateverTheirCaseAndTheirBlanks) {
    BusStage stage;
    const auto definition = stage.unpackText(
        "B-1\\NBS\\N:1;\r\nB-1\\BNA-1:first;\r\nB-1\\bna-1 : last ;\r\nB-1\\ BID-1:001;\r\n");
    const auto& bus = definition.buses().at(0);
    EXPECT_EQ(busValue(bus, BusLevel::Bus, "BNA"), "last");
    EXPECT_EQ(busValue(bus, BusLevel::Bus, "BID"), "001");
}

TEST(BusUnpack, CommandsThatNoProfileFileCanHoldAreReadByNoPage) {
    BusStage stage;
    const auto definition =
        stage.unpack({"DLN:Bus 1", "NBS\\N:1", "A=B-1:x", "[C-1:y", "BNA-1:Left"});
    EXPECT_EQ(busValue(definition.buses().at(0), BusLevel::Bus, "BNA"), "Left");
    const auto& commands = definition.kept.commands();
    EXPECT_FALSE(commands.isRead(2));
    EXPECT_FALSE(commands.isRead(3));
    EXPECT_TRUE(commands.isRead(4));
}

TEST(BusUnpack, AHighCountGoesAsFarAsTheFileHasSomething) {
    BusStage stage;
    auto definition = stage.unpack({"NBS\\N:2147483648", "BNA-3:C"});
    EXPECT_EQ(definition.buses().size(), 0U) << "three are more than the file has commands";
    definition = stage.unpack({"NBS\\N:99999", "BNA-2:B", "BNA-4000:D"});
    EXPECT_EQ(definition.buses().size(), 2U);
    definition = stage.unpack({"NBS\\N:9999"});
    EXPECT_EQ(definition.buses().size(), 9999U) << "the rest of a lower count is empty";
    for (const char* count : {"x", "-3", ""}) {
        EXPECT_TRUE(stage.unpack({std::string("NBS\\N:") + count}).buses().empty()) << count;
    }
    EXPECT_EQ(stage.unpack({"NBS\\N: 02 buses"}).buses().size(), 2U);
}

TEST(BusUnpack, ManyHighCountsDoNotFillTheMemory) {
    BusStage stage;
    std::vector<std::string> commands = {"NBS\\N:1", "NMS\\N-1:2000"};
    for (int m = 1; m <= 2000; ++m) {
        commands.push_back("MN\\N-1-" + std::to_string(m) + ":9999");
    }
    const auto definition = stage.unpack(commands);
    std::size_t rows = 0;
    for (const auto& message : rowsOf(definition.buses().at(0), BusLevel::Message)) {
        rows += rowsOf(message, BusLevel::Measurement).size();
    }
    EXPECT_LE(rows, 100'000U);
}

TEST(BusUnpack, TheReceiveCommandHasItsIndexBefore2011AndNoneFrom2011On) {
    for (const auto& [edition, code] :
         {std::pair{2009, "RTRN-1-2-1:RT9"}, {2011, "RTRN-1-2:RT9"}, {1999, "RTRN-1-2-1:RT9"}}) {
        BusStage stage(edition);
        const auto definition = stage.unpack({"NBS\\N:1", "NMS\\N-1:2", code});
        const auto& message = *busRowAt(definition, {1, 2});
        EXPECT_EQ(rowsOf(message, BusLevel::Receive).size(), 1U) << edition;
        EXPECT_EQ(busValue(receiveOf(message), BusLevel::Receive, "RTRN"), "RT9") << edition;
    }
    BusStage stage(1996);
    const auto definition =
        stage.unpack({"NBS\\N:1", "NMS\\N-1:1", "RNRT\\N-1-1:2", "RTRN-1-1-2:Second"});
    const auto& commands = rowsOf(*busRowAt(definition, {1, 1}), BusLevel::Receive);
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(busValue(commands[1], BusLevel::Receive, "RTRN"), "Second");
}

TEST(BusUnpack, FieldsOfLaterEditionsAreNotRead) {
    BusStage stage(1999);
    const auto definition =
        stage.unpack({"NBS\\N:1", "BT-1:1553", "UMN1-1:W", "NMS\\N-1:1", "CWE-1-1:W"});
    EXPECT_TRUE(definition.buses().at(0).values.empty());
    EXPECT_TRUE(busRowAt(definition, {1, 1})->values.empty());
}

// --- Terminal lists -----------------------------------------------------------------------------

TEST(TerminalLists, AShortAddressIsOfferedWithLeadingZeros) {
    BusStage stage;
    const auto definition =
        stage.unpack({"NBS\\N:1", "NMS\\N-1:1", "TRN-1-1:RT5", "TRA-1-1:101", "STA-1-1:1"});
    EXPECT_EQ(definition.listKnownTerminals(1).remote, (Terminals{{"RT5", "00101"}}));
    EXPECT_EQ(definition.listKnownTerminals(1).sub, (Terminals{{"", "00001"}}));
}

TEST(TerminalLists, ANameOrAddressThatIsThereAddsNothing) {
    BusStage stage;
    const auto definition = stage.unpack(
        {"NBS\\N:1", "NMS\\N-1:5", "TRN-1-1:A", "TRA-1-1:00001", "TRN-1-2:A", "TRA-1-2:00010",
         "TRN-1-3:B", "TRA-1-3:00001", "TRN-1-4:a", "TRA-1-4:00011", "TRN-1-5:C"});
    EXPECT_EQ(definition.listKnownTerminals(1).remote,
              (Terminals{{"A", "00001"}, {"a", "00011"}, {"C", "00000"}}))
        << "names are exact, and an empty address beside a name is five zeros";
}

TEST(TerminalLists, TwoUnnamedAddressesAreTwoTerminals) {
    BusStage stage;
    const auto definition =
        stage.unpack({"NBS\\N:1", "NMS\\N-1:2", "TRA-1-1:00001", "TRA-1-2:00010"});
    EXPECT_EQ(definition.listKnownTerminals(1).remote, (Terminals{{"", "00001"}, {"", "00010"}}));
}

TEST(TerminalLists, TheReceiveCommandsAreInThem) {
    const Terminals expected = {{"R", "00111"}};
    for (const auto& [edition, code] : {std::pair{2009, "-1-1-1"}, {2011, "-1-1"}}) {
        BusStage stage(edition);
        const auto definition =
            stage.unpack({"NBS\\N:1", "NMS\\N-1:1", std::string("RTRN") + code + ":R",
                          std::string("RTRA") + code + ":00111", std::string("RSTN") + code + ":R",
                          std::string("RSTA") + code + ":00111"});
        EXPECT_EQ(definition.listKnownTerminals(1).remote, expected) << edition;
        EXPECT_EQ(definition.listKnownTerminals(1).sub, expected) << edition;
    }
}

TEST(TerminalLists, TheSeventeenthBusHasNone) {
    BusStage stage;
    std::vector<std::string> commands = {"DLN:Bus 1", "NBS\\N:17"};
    for (int b = 1; b <= 17; ++b) {
        const auto n = std::to_string(b);
        commands.push_back("NMS\\N-" + n + ":1");
        commands.push_back("TRA-" + n + "-1:00001");
    }
    const auto definition = stage.unpack(commands);
    EXPECT_EQ(definition.buses().size(), 17U);
    EXPECT_EQ(definition.listKnownTerminals(16).remote.size(), 1U);
    EXPECT_TRUE(definition.listKnownTerminals(17).remote.empty());
    EXPECT_TRUE(definition.listKnownTerminals(18).remote.empty());
    EXPECT_EQ(stage.t.read(kTerminalProfile).find("[17]"), std::string::npos);
    EXPECT_NE(stage.pack(definition).find("B-1\\TRA-17-1:00001;"), std::string::npos)
        << "the file keeps all of them";
}

TEST(TerminalLists, BusesBehindTheCountHaveThemToo) {
    BusStage stage;
    const auto definition = stage.unpack({"NBS\\N:1", "NMS\\N-3:1", "TRA-3-1:00001"});
    EXPECT_EQ(definition.listKnownTerminals(3).remote.size(), 1U);
}

}  // namespace
}  // namespace kavu
