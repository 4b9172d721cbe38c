#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

namespace kavu {
namespace {

using test::plainCounter;
using test::StreamFixture;
using test::operator+;

using test::Commands;

TEST(IdCounterReading, TakesEveryFieldAsItStandsInTheFile) {
    StreamFixture f;
    ASSERT_TRUE(f.read({"ISF\\N:1", "ISF1-1:ABC", "ISF2-1:OT", "IDC1-1:7", "IDC2-1:12", "IDC3-1:3",
                        "IDC4-1:04", "IDC5-1:L", "IDC6-1:2", "IDC7-1:01", "IDC8-1:9", "IDC9-1:8",
                        "IDC10-1:INC"}));
    const auto& counter = f.counter(0);
    EXPECT_EQ(counter.name, "ABC");
    EXPECT_EQ(counter.type, "OT");
    EXPECT_EQ(counter.wordLength, "12");
    EXPECT_EQ(counter.msbStartBit, "3");
    EXPECT_EQ(counter.counterLength, "04");
    EXPECT_EQ(counter.transferOrder, "L");
    EXPECT_EQ(counter.initialValue, "2");
    EXPECT_EQ(counter.startFrame, "01");
    EXPECT_EQ(counter.endValue, "9");
    EXPECT_EQ(counter.endFrame, "8");
    EXPECT_EQ(counter.countDirection, "INC");
    EXPECT_EQ(f.format.wordType(7), WordType::IdCounter);
    EXPECT_EQ(f.format.word(7).idCounterIndex, 0);
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(IdCounterReading, AHundredAndTwentyCountersGiveNinetyNineAndReadingGoesOn) {
    StreamFixture f;
    ASSERT_TRUE(f.read({"ISF\\N:120", "AEF\\N:1", "AEF\\DLN-1:X", "AEF3-1-1:4"}));
    EXPECT_EQ(f.format.idCounters.size(), 99U);
    EXPECT_EQ(countIdCounters(f.format), 99);
    EXPECT_EQ(f.ui.countLogs(177), 1);
    EXPECT_EQ(f.ui.countLogs(203), 0);
    EXPECT_EQ(f.result(), 1);
    EXPECT_EQ(f.format.asyncCount(), 1);
}

TEST(IdCounterReading, ACountBeyondAllNumbersIsAsGoodAsANinetyNine) {
    StreamFixture f;
    ASSERT_TRUE(f.read({"ISF\\N:99999999999999999999"}));
    EXPECT_EQ(f.format.idCounters.size(), 99U);
    EXPECT_EQ(f.ui.countLogs(177), 1);
}

TEST(IdCounterReading, ACounterWithoutNameGetsTheFirstFreeOne) {
    StreamFixture f;
    ASSERT_TRUE(
        f.read(Commands{"ISF\\N:3", "ISF1-1:SFID", "IDC1-2:5", "ISF1-3:SFID3", "IDC1-3:6"}));
    EXPECT_EQ(f.counter(1).name, "SFID2");
    EXPECT_EQ(f.logText(202),
              "ID Counter Warning: Unable to locate ID Counter Name field (P-1\\ISF1-2) in TMATS "
              "file for ID counter definition #2. KAVU will generate the name 'SFID2' for this ID "
              "counter");
}

TEST(IdCounterReading, ANameInUseLeavesTheEntryEmptyWithItsSubframes) {
    StreamFixture f;
    ASSERT_TRUE(f.read(Commands{"ISF\\N:2"} + plainCounter(1, 3, 8, "A") +
                       plainCounter(2, 4, 8, "A") + Commands{"SF\\N-2:1", "SF1-2-1:S"}));
    EXPECT_TRUE(f.counter(1).name.empty());
    EXPECT_TRUE(f.counter(1).subframes.empty());
    EXPECT_EQ(f.format.wordType(4), WordType::Minor);
    EXPECT_EQ(f.ui.countLogs(204), 1);
    EXPECT_EQ(f.logText(203),
              "ERROR: Partial ID Counter definitions were found in this TMATS file. This TMATS "
              "file is supposed to have 2 ID Counters defined, but only 1 will be processed.");
    EXPECT_EQ(f.result(), 1);
}

TEST(IdCounterReading, NamesAreComparedExactly) {
    StreamFixture f;
    ASSERT_TRUE(
        f.read(Commands{"ISF\\N:2"} + plainCounter(1, 3, 8, "A") + plainCounter(2, 4, 8, "a")));
    EXPECT_EQ(countIdCounters(f.format), 2);
    EXPECT_EQ(f.ui.countLogs(204), 0);
}

TEST(IdCounterReading, AMissingTypeIsId) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands.erase(commands.begin() + 1);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).type, "ID");
    EXPECT_EQ(f.ui.countLogs(200), 1);
    EXPECT_EQ(f.result(), 1);
}

TEST(IdCounterReading, AWordOutsideTheFrameEndsTheCounterButKeepsItsName) {
    for (const int word : {0, 32, 33, 99999}) {
        StreamFixture f;
        ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, word, 8, "A") +
                           Commands{"SF\\N-1:1", "SF1-1-1:S"}));
        EXPECT_EQ(f.counter(0).name, "A") << word;
        EXPECT_TRUE(f.counter(0).wordLength.empty()) << word;
        EXPECT_TRUE(f.counter(0).subframes.empty()) << word;
        EXPECT_EQ(f.ui.countLogs(179), 1) << word;
        EXPECT_EQ(f.ui.countLogs(203), 0) << word;
        EXPECT_EQ(f.result(), 1) << word;
    }
}

TEST(IdCounterReading, ACounterWithoutWordSetsNone) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands.erase(commands.begin() + 2);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(wordOfIdCounter(f.format, 0), -1);
    EXPECT_EQ(f.counter(0).endFrame, "8");
    EXPECT_EQ(f.result(), 0);
}

TEST(IdCounterReading, AStartBitBelowOneIsDroppedAndReplaced) {
    for (const auto* const bit : {"0", "-3", "x"}) {
        StreamFixture f;
        auto commands = plainCounter(1, 3, 8, "A");
        commands[4] = std::string("IDC3-1:") + bit;
        ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
        EXPECT_EQ(f.counter(0).msbStartBit, "1");
        EXPECT_EQ(f.ui.countLogs(210), 1);
        EXPECT_EQ(f.result(), 1);
    }
}

TEST(IdCounterReading, AMissingStartBitIsOneWithoutAMessage) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands.erase(commands.begin() + 4);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).msbStartBit, "1");
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(IdCounterReading, AMissingCounterLengthTakesTheWordLengthAndIsNoCorrection) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands.erase(commands.begin() + 5);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).counterLength, "16");
    EXPECT_EQ(f.ui.countLogs(199), 1);
    EXPECT_EQ(f.result(), 0);
}

TEST(IdCounterReading, WithoutBothLengthsThereIsNone) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands.erase(commands.begin() + 5);
    commands.erase(commands.begin() + 3);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_TRUE(f.counter(0).counterLength.empty());
    EXPECT_EQ(f.ui.countLogs(199), 0);
}

TEST(IdCounterReading, AStartFrameOfZeroAndNoEndFrameSpanTheMajorFrame) {
    StreamFixture f;
    ASSERT_TRUE(f.read({"ISF\\N:1", "ISF1-1:A", "ISF2-1:ID", "IDC1-1:3", "IDC6-1:1", "IDC7-1:0",
                        "IDC8-1:3", "IDC10-1:INC"}));
    EXPECT_EQ(f.counter(0).startFrame, "1");
    EXPECT_EQ(f.counter(0).endFrame, "8");
    EXPECT_EQ(f.counter(0).endValue, "8");
    EXPECT_EQ(f.ui.countLogs(201), 2);
    EXPECT_EQ(f.logText(201),
              "Error: ID Counter 'A'. Invalid starting frame field (P-1\\IDC7-1) found in TMATS "
              "file. Value found: '0'. This value must be a number between 1 and 8. Setting to "
              "default value: 1"
              "Error: ID Counter 'A'. Invalid ending frame field (P-1\\IDC9-1) found in TMATS "
              "file. Value found: '<none>'. This value must be a number between 1 and 8. Setting "
              "to default value: 8");
    EXPECT_EQ(f.logText(209),
              "Invalid 'End Value' command (P-1\\IDC8-1) found in TMATS file for ID counter 'A'. "
              "Value found: 3. This value being changed to 8.");
    EXPECT_EQ(f.result(), 1);
}

TEST(IdCounterReading, AnEndFrameInFrontOfTheStartFrameIsTheLastOne) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands[8] = "IDC7-1:4";
    commands[10] = "IDC9-1:3";
    commands[9] = "IDC8-1:5";
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).startFrame, "4");
    EXPECT_EQ(f.counter(0).endFrame, "8");
    EXPECT_EQ(f.counter(0).depth(), 5);
    EXPECT_EQ(f.ui.countLogs(201), 1);
    EXPECT_EQ(f.ui.countLogs(209), 0);
}

TEST(IdCounterReading, ACounterThatCountsDownBelowOneEndsAtOne) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands[7] = "IDC6-1:3";
    commands[9] = "IDC8-1:-4";
    commands[11] = "IDC10-1:DEC";
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    // -4 is what is expected, and stays as long as nothing differs from it.
    EXPECT_EQ(f.counter(0).endValue, "-4");

    StreamFixture g;
    commands[9] = "IDC8-1:2";
    ASSERT_TRUE(g.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(g.counter(0).endValue, "1");
    EXPECT_EQ(g.ui.countLogs(209), 1);
    EXPECT_EQ(g.result(), 1);
}

TEST(IdCounterReading, ACounterDownwardsIsExpectedAtItsInitialValueLessItsSteps) {
    StreamFixture f;
    auto commands = plainCounter(1, 3, 8, "A");
    commands[7] = "IDC6-1:8";
    commands[9] = "IDC8-1:1";
    commands[11] = "IDC10-1:DEC";
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).endValue, "1");
    EXPECT_EQ(f.result(), 0);
}

// Oddity: with a direction that is neither up nor down the end value is compared with the
// word position of the counter, and takes it.
TEST(IdCounterReading, AnUnknownDirectionComparesTheEndValueWithTheWordPosition) {
    StreamFixture f;
    auto commands = plainCounter(1, 21, 8, "A");
    commands[11] = "IDC10-1:UPX";
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).endValue, "21");
    EXPECT_EQ(f.counter(0).countDirection, "UPX");
    EXPECT_EQ(f.ui.countLogs(209), 1);
    EXPECT_EQ(f.result(), 1);

    StreamFixture g;
    commands[9] = "IDC8-1:21";
    ASSERT_TRUE(g.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(g.result(), 0);
}

TEST(IdCounterReading, WithoutWordAnUnknownDirectionEndsAtOne) {
    StreamFixture f;
    auto commands = plainCounter(1, 21, 8, "A");
    commands[11] = "IDC10-1:UPX";
    commands.erase(commands.begin() + 2);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + commands));
    EXPECT_EQ(f.counter(0).endValue, "1");
}

TEST(IdCounterReading, AGapThatADeletedCounterLeftIsReportedAndTheLastCounterIsLost) {
    StreamFixture f;
    ASSERT_TRUE(f.read(Commands{"ISF\\N:3"} + plainCounter(1, 3, 8, "A") +
                       plainCounter(2, 4, 8, "B") + plainCounter(3, 5, 8, "C")));
    f.ui.byId[129] = Button::Yes;
    ASSERT_TRUE(deleteIdCounter(f.format, f.parent, 4));
    EXPECT_EQ(f.format.idCounters.size(), 3U);
    EXPECT_EQ(countIdCounters(f.format), 2);

    const auto lines = f.written();
    EXPECT_TRUE(StreamFixture::holds(lines, "ISF\\N:2"));
    EXPECT_TRUE(StreamFixture::holds(lines, "ISF1-1:A"));
    EXPECT_TRUE(StreamFixture::holds(lines, "ISF1-3:C"));
    EXPECT_EQ(StreamFixture::countStarting(lines, "ISF1-2"), 0);

    const auto text = f.writtenText();
    f.start(32, 8);
    ASSERT_TRUE(f.readText(text));
    EXPECT_EQ(f.format.idCounters.size(), 2U);
    EXPECT_EQ(countIdCounters(f.format), 1);
    EXPECT_EQ(f.format.wordType(5), WordType::Minor);
    EXPECT_EQ(f.ui.countLogs(203), 1);
    EXPECT_EQ(f.result(), 1);
}

TEST(IdCounterReading, ACancelEndsTheRead) {
    StreamFixture f;
    f.ui.cancelAtPoll = 2;
    EXPECT_FALSE(
        f.read(Commands{"ISF\\N:2"} + plainCounter(1, 3, 8, "A") + plainCounter(2, 4, 8, "B")));
}

TEST(IdCounterReading, FromTheLatestEditionOnPlainWordsGetHiddenSubframes) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read(Commands{"ISF\\N:1"} + plainCounter(1, 3, 8, "A") +
                       Commands{"SF\\N-1:1", "SF1-1-1:S", "SF4-1-1-1:9", "SF6-1-1:8"}));
    EXPECT_EQ(f.counter(0).subframes.size(), 30U);
    for (int fwp = 1; fwp < 32; ++fwp) {
        if (fwp == 3) {
            continue;
        }
        const auto* const record = f.format.subframeOfWord(fwp);
        ASSERT_NE(record, nullptr) << fwp;
        EXPECT_EQ(record->name.str(), "SF-" + std::to_string(fwp));
        EXPECT_TRUE(record->hidden);
        EXPECT_EQ(record->supercommutated, "NO");
        EXPECT_EQ(record->locationMode, "NA");
        EXPECT_EQ(record->interval, "0");
        EXPECT_EQ(record->depth, "8");
        EXPECT_EQ(f.format.cells().cellCount(fwp), 8);
    }
    EXPECT_EQ(f.format.wordType(0), WordType::Sync);
    EXPECT_EQ(f.result(), 0);
    EXPECT_FALSE(f.format.changed);
    // They are never written.
    EXPECT_EQ(StreamFixture::countStarting(f.written(), "SF"), 0);
}

TEST(IdCounterReading, TheQuestionForACounterIsAskedOncePerLoad) {
    StreamFixture f(2011);
    ASSERT_TRUE(f.read({}));
    EXPECT_EQ(f.ui.countBoxes(357), 1);
    EXPECT_TRUE(f.load->counterQuestion.refused);
    EXPECT_EQ(f.format.wordType(1), WordType::Minor);
    EXPECT_EQ(f.result(), 0);
}

TEST(IdCounterReading, ANullParentAnswersNoAndIsSilent) {
    StreamFixture f(2011);
    f.parent = nullptr;
    ASSERT_TRUE(f.read({}));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_EQ(countIdCounters(f.format), 0);
}

TEST(IdCounterReading, AYesMakesTheCounterAtTheChosenWord) {
    StreamFixture f(2011);
    f.ui.byId[357] = Button::Yes;
    f.ui.choices = {10};  // the word of the question, 1, is left out: 2 is the first
    ASSERT_TRUE(f.read({}));
    ASSERT_EQ(f.ui.listPrompts.size(), 1U);
    EXPECT_EQ(f.ui.listPrompts[0].first, "Enter ID Counter FWP");
    EXPECT_EQ(f.ui.listPrompts[0].second.size(), 30U);
    EXPECT_EQ(f.ui.listPrompts[0].second[10], "12");
    EXPECT_EQ(f.format.wordType(12), WordType::IdCounter);
    EXPECT_EQ(f.counter(0).name, "SFID");
    EXPECT_EQ(f.counter(0).endFrame, "8");
    EXPECT_EQ(f.counter(0).subframes.size(), 30U);
    EXPECT_TRUE(f.format.changed);
    EXPECT_EQ(f.result(), 1);
}

}  // namespace
}  // namespace kavu
