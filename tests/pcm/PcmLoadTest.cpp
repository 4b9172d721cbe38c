#include "bus/definition/BusFiles.h"
#include "pcm/LoadFixture.h"
#include "pcm/PcmLoad.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::operator+;

TEST(PcmLoad, TheStreamThatIsInMemoryIsNotLoadedAgain) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    f.format.setWordLength(3, 9);
    EXPECT_TRUE(loadPcmFormat(f.format, f.parent, {}, "PCM 1"));
    EXPECT_EQ(f.format.wordLength(3), 9);
}

TEST(PcmLoad, AnotherStreamTakesItsPlace) {
    LoadFixture f;
    f.writeGroup('P', plainFormat(12, 2), "PCM 2", 2);
    f.writeGroup('D', listOf({{"MN@:B", "LT@:MF", "MF@:3"}}), "PCM 2", 5);
    ASSERT_TRUE(f.load(plainFormat(8, 1), listOf({{"MN@:A", "LT@:MF", "MF@:3"}})));
    ASSERT_TRUE(loadPcmFormat(f.format, f.parent, {}, "PCM 2"));
    EXPECT_EQ(f.format.wordsPerMinorFrame, 12);
    EXPECT_EQ(f.format.pGroup, 2);
    EXPECT_EQ(f.format.dGroup, 5);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.hasMeasurement("B"));
}

TEST(PcmLoad, AStreamThatNobodyBearsIsNone) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    EXPECT_FALSE(loadPcmFormat(f.format, f.parent, {}, "PCM 9"));
    EXPECT_FALSE(loadPcmFormat(f.format, f.parent, {}, ""));
    EXPECT_FALSE(loadPcmFormat(f.format, f.parent, {}, std::nullopt));
    EXPECT_TRUE(f.format.loaded()) << "the stream in memory stays";
}

TEST(PcmLoad, AGroupBearsALinkOnlyIfItsNameIsEqualInEveryLetter) {
    LoadFixture f;
    f.writeGroup('P', plainFormat(8, 1), "pcm 1", 1);
    f.writeGroup('P', plainFormat(9, 1), "PCM 1", 3);
    f.writeGroup('P', plainFormat(10, 1), "PCM 1", 4);
    f.writeGroup('D', listOf({}), "PCM 1", 2);
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.format.pGroup, 3) << "the lowest number wins";
    EXPECT_EQ(f.format.wordsPerMinorFrame, 9);
    EXPECT_EQ(f.format.dGroup, 2);
}

TEST(PcmLoad, WithoutANameTheUserChooses) {
    LoadFixture f;
    f.writeGroup('P', plainFormat(8, 1));
    f.writeGroup('D', listOf({}));
    PcmSteps steps;
    steps.selectStream = [](UserInterface*) { return std::string("PCM 1"); };
    EXPECT_TRUE(loadPcmFormat(f.format, f.parent, steps, std::nullopt));
    EXPECT_EQ(f.format.streamName, "PCM 1");
}

TEST(PcmLoad, ALinkWithABusGroupOnlyIsABusStream) {
    LoadFixture f;
    f.write("[kavu]MULT.M01", "M-1\\BB\\DLN:BUS 1;\r\n");
    f.write("[kavu]PCM1553.B01", "B-1\\DLN:BUS 1;\r\n");
    int calls = 0;
    PcmSteps steps;
    steps.loadBusDefinitions = [&calls](UserInterface*, PcmFormat&) {
        ++calls;
        return true;
    };
    ASSERT_TRUE(loadPcmFormat(f.format, f.parent, steps, "BUS 1"));
    EXPECT_TRUE(f.format.isBusStream);
    EXPECT_EQ(calls, 1);
}

TEST(PcmLoad, ASaveCopiesTheBusGroupBackThatWasCopiedByTheLoad) {
    LoadFixture f;
    f.write("[kavu]MULT.M01", "M-1\\BB\\DLN:BUS 1;\r\n");
    f.write("[kavu]PCM1553.B02", "B-2\\DLN:BUS 1;\r\n");
    PcmSteps steps;
    steps.loadBusDefinitions = [](UserInterface* parent, PcmFormat& format) {
        return loadBusGroup(format.context(), parent, format.streamName.str());
    };
    ASSERT_TRUE(loadPcmFormat(f.format, f.parent, steps, "BUS 1"));
    EXPECT_EQ(f.read(kBusGroupFile), "B-2\\DLN:BUS 1;\r\n");
    f.write(kBusGroupFile, "B-2\\DLN:BUS 1;\r\nB-2\\TA:new;\r\n");
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read("[kavu]PCM1553.B02"), "B-2\\DLN:BUS 1;\r\nB-2\\TA:new;\r\n");
}

TEST(PcmLoad, MessagesAreShownOnceUnderTheNameOfTheStream) {
    LoadFixture f;
    ASSERT_TRUE(f.load({"F1:16"}));
    ASSERT_EQ(f.ui.shown.size(), 1U);
    EXPECT_EQ(f.ui.shown[0].title, "KAVU-9 Error Messages (Stream: PCM 1)");
    ASSERT_FALSE(f.ui.shown[0].lines.empty());
    EXPECT_EQ(f.ui.shown[0].lines[0], "Stream: PCM 1");
    EXPECT_FALSE(f.has("KAVU9TMP.TMP"));
    EXPECT_EQ(f.ui.progressOpened, f.ui.progressClosed);
}

TEST(PcmLoad, WithoutAParentALoadIsSilentAndQuestionsAreAnsweredNo) {
    LoadFixture f(2011);
    f.parent = nullptr;
    EXPECT_TRUE(f.load(plainFormat(8, 4),
                       listOf({{"MN@:A", "LT@:WDFR", "MML\\N@:1", "WP@-1-1:4", "FP@-1-1:2"},
                               {"MN@:B", "LT@:MF", "MF@:3"}})));
    EXPECT_FALSE(f.format.hasMeasurement("A")) << "it needs a counter, which nobody made";
    EXPECT_FALSE(f.load(plainFormat(8, 4), listOf({{"MN@:A", "MF@:3"}})))
        << "nobody takes a minor word for the missing location type";
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(PcmLoad, ALogWithoutEndIsCutShort) {
    LoadFixture f;
    Commands lines = {"ML\\N:1", "MLN-1:L", "MN\\N-1:20000"};
    for (int m = 100; m <= 20000; m += 100) {
        lines.push_back("XX-1-" + std::to_string(m) + ":1");
    }
    ASSERT_TRUE(f.load(plainFormat(8, 1), lines));
    EXPECT_EQ(f.ui.countLogs(278), PcmLoad::kMostMessages);
    EXPECT_EQ(f.ui.logs.size(), static_cast<std::size_t>(PcmLoad::kMostMessages) + 1);
    EXPECT_EQ(f.ui.logs.back().text,
              "There are more messages than can be shown. The rest of them "
              "is left out.");
}

TEST(PcmLoad, HiddenSubframesOfALoadAreNoChange) {
    LoadFixture f(2011);
    ASSERT_TRUE(f.load(plainFormat(8, 4) + counterAt(7, 4)));
    EXPECT_EQ(f.format.wordType(3), WordType::Subframe);
    EXPECT_TRUE(f.format.subframeOfWord(3)->hidden);
    EXPECT_FALSE(f.format.changed);
    EXPECT_EQ(f.result(), 0);
}

}  // namespace
}  // namespace kavu
