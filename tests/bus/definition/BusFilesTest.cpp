#include "bus/BusStage.h"
#include "bus/definition/BusFiles.h"

namespace kavu {
namespace {

using test::busCommands;
using test::BusStage;

constexpr const char* kMultiplex = "M-1\\ID:S;\r\nM-1\\BB\\DLN:Bus 1;\r\nM-1\\SI\\N:0;\r\n";

TEST(BusFiles, AGroupIsCopiedToItsEditorAndBack) {
    BusStage stage;
    stage.t.write(groupFile('B', 3), "B-3\\DLN:Bus 1;\r\nB-3\\TA:x;\r\n");
    ASSERT_TRUE(loadBusGroup(stage.t.context, &stage.t.ui, "Bus 1"));
    EXPECT_EQ(stage.t.read(kBusGroupFile), "B-3\\DLN:Bus 1;\r\nB-3\\TA:x;\r\n");
    stage.t.write(kBusGroupFile, "B-3\\DLN:Bus 1;\r\nB-3\\TA:new;\r\n");
    EXPECT_TRUE(storeBusGroup(stage.t.context, &stage.t.ui, "Bus 1"));
    EXPECT_EQ(stage.t.read(groupFile('B', 3)), "B-3\\DLN:Bus 1;\r\nB-3\\TA:new;\r\n");
    EXPECT_TRUE(stage.t.document.changed);
}

TEST(BusFiles, ALinkWithoutAGroupLeavesNoCopyOfAnotherOne) {
    BusStage stage;
    stage.t.write(kBusGroupFile, busCommands({"DLN:Other"}));
    ASSERT_TRUE(loadBusGroup(stage.t.context, &stage.t.ui, "Bus 1"));
    EXPECT_FALSE(stage.t.has(kBusGroupFile));
    EXPECT_TRUE(storeBusGroup(stage.t.context, &stage.t.ui, "Bus 1"));
    EXPECT_FALSE(stage.t.has(groupFile('B', 1)));
}

TEST(BusFiles, TheCopyOfAnotherStreamIsNotStored) {
    BusStage stage;
    stage.t.write(groupFile('B', 1), busCommands({"DLN:Bus 1"}));
    stage.t.write(kBusGroupFile, busCommands({"DLN:Other", "TA:x"}));
    EXPECT_TRUE(storeBusGroup(stage.t.context, &stage.t.ui, "Bus 1"));
    EXPECT_EQ(stage.t.read(groupFile('B', 1)), busCommands({"DLN:Bus 1"}));
    EXPECT_FALSE(stage.t.document.changed);
}

TEST(BusFiles, TheFirstFreeGroupIsTakenForALinkWithoutOne) {
    BusStage stage;
    stage.t.write(groupFile('B', 1), busCommands({"DLN:Other"}));
    auto definition = openBusDefinition(stage.t.context, &stage.t.ui, "Bus 1");
    ASSERT_TRUE(definition);
    EXPECT_EQ(definition->index, 2);
    ASSERT_TRUE(stage.edit(*definition).add({}, {.values = {{"BNA", "New"}}}));
    EXPECT_TRUE(storeBusDefinition(stage.t.context, &stage.t.ui, *definition));
    EXPECT_EQ(stage.t.read(groupFile('B', 2)),
              "B-2\\DLN:Bus 1;\r\nB-2\\NBS\\N:1;\r\nB-2\\BNA-1:New;\r\nB-2\\TK\\N-1:0;\r\n"
              "B-2\\NMS\\N-1:0;\r\n");
    EXPECT_TRUE(stage.t.history.canUndo());
}

TEST(BusFiles, WithAllGroupsInUseThereIsNone) {
    BusStage stage;
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        stage.t.write(groupFile('B', index), "B-1\\DLN:Other;\r\n");
    }
    EXPECT_FALSE(openBusDefinition(stage.t.context, &stage.t.ui, "Bus 1"));
    ASSERT_EQ(stage.t.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.t.ui.boxes[0].text, "All 99 bus groups of the document are in use.");
}

TEST(BusFiles, AnEditorThatIsLeftWithCancelLeavesTheGroupAsItWas) {
    BusStage stage;
    const auto text = busCommands({"DLN:Bus 1", "NBS\\N:1"});
    stage.t.write(groupFile('B', 1), text);
    auto definition = openBusDefinition(stage.t.context, &stage.t.ui, "Bus 1");
    ASSERT_TRUE(definition);
    EXPECT_TRUE(stage.t.has(kBusProfile));
    ASSERT_TRUE(stage.edit(*definition).set({1}, {.values = {{"BNA", "New"}}}));
    discardBusProfiles(stage.t.context);
    EXPECT_FALSE(stage.t.has(kBusProfile));
    EXPECT_FALSE(stage.t.has(kTerminalProfile));
    EXPECT_EQ(stage.t.read(kBusGroupFile), text);
    EXPECT_EQ(stage.t.read(groupFile('B', 1)), text);
    EXPECT_FALSE(stage.t.document.changed);
}

TEST(BusFiles, ALinkIsOneThatSomeGroupNames) {
    BusStage stage;
    stage.t.write(groupFile('G'), "G\\DSI\\N:1;\r\nG\\DSI-1:S;\r\nG\\DST-1:RF;\r\n");
    stage.t.write(groupFile('M', 1), kMultiplex);
    stage.t.write(groupFile('P', 1), "P-1\\DLN:Stream;\r\n");
    for (const char* link : {"Bus 1", "Stream"}) {
        EXPECT_TRUE(isDataLink(stage.t.context, &stage.t.ui, link)) << link;
    }
    EXPECT_FALSE(isDataLink(stage.t.context, &stage.t.ui, "bus 1"));
}

}  // namespace
}  // namespace kavu
