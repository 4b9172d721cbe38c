#include "pcm/LoadFixture.h"
#include "pcm/PcmFormat.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

TEST(PcmFormatAttributes, TheCommonWordLengthTakesEqualLengthsAlong) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(8, 1) + Commands{"MFW1-1:3", "MFW2-1:12", "MFW1-2:4", "MFW2-2:16"}));
    f.format.changed = false;
    ASSERT_TRUE(f.format.setCommonWordLength(f.parent, 20));
    EXPECT_EQ(f.format.wordLength(3), 12);
    EXPECT_EQ(f.format.wordLength(4), 20) << "a variable length that was the common one follows";
    EXPECT_EQ(f.format.wordLength(1), 20);
    EXPECT_EQ(f.format.wordLength(0), 24);
    EXPECT_EQ(f.format.bitsPerMinorFrame, 24 + 6 * 20 + 12);
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(f.format.formatEdited);
}

TEST(PcmFormatAttributes, TheCommonWordLengthIsNotThatOfASyncWordOfTheSameLength) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByLength(f.parent, 16));
    ASSERT_TRUE(f.format.setCommonWordLength(f.parent, 20));
    EXPECT_EQ(f.format.wordLength(0), 16);
    EXPECT_EQ(f.format.syncLength, 16);
    EXPECT_EQ(f.format.bitsPerMinorFrame, 16 + 7 * 20);
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.logText(176), "") << "the bits of the file are those of its words";
}

TEST(PcmFormatAttributes, TheCommonWordLengthDependsOnTheFormat) {
    struct Row {
        int edition;
        const char* type;
        int length;
        int message;
    };
    for (const auto& row :
         {Row{2005, "ONE", 32, 0}, Row{2005, "ONE", 33, 219}, Row{2004, "ONE", 16, 0},
          Row{2004, "ONE", 17, 219}, Row{2005, "ONE", 3, 219}, Row{2005, "TWO", 64, 0},
          Row{2005, "1553", 24, 0}, Row{2005, "1553", 16, 220}, Row{2005, "", 16, 218}}) {
        LoadFixture f(row.edition);
        f.format.raiseNumberOfFrames({}, 1);
        ASSERT_TRUE(f.format.allocateWords({}, 4));
        f.format.typeFormat = row.type;
        EXPECT_EQ(f.format.setCommonWordLength(f.parent, row.length), row.message == 0);
        EXPECT_EQ(f.ui.boxes.size(), row.message == 0 ? 0U : 1U);
        EXPECT_EQ(f.ui.countBoxes(row.message), row.message == 0 ? 0 : 1);
        EXPECT_FALSE(f.format.setCommonWordLength(nullptr, 0) && row.message == 219);
    }
    LoadFixture f(2004);
    f.format.typeFormat = "ONE";
    f.format.setCommonWordLength(f.parent, 20);
    EXPECT_EQ(f.boxText(219),
              "You have selected an illegal word length. Word lengths for Class "
              "One PCM Streams must be between 4 and 16 bits.\n\n(Reference IRIG "
              "106 paragraph: 4.3.1.1)");
}

TEST(PcmFormatAttributes, TheNumberOfFramesIs1To256) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 4)));
    for (const int frames : {0, -1, 257}) {
        EXPECT_FALSE(f.format.setNumberOfFrames(f.parent, frames));
    }
    EXPECT_EQ(f.ui.countBoxes(216), 3);
    EXPECT_TRUE(f.format.setNumberOfFrames(f.parent, 256));
    EXPECT_EQ(f.format.numberOfFrames, 256);
    EXPECT_TRUE(f.format.changed);
    EXPECT_TRUE(f.format.formatEdited);
}

TEST(PcmFormatAttributes, FewerFramesLowerCountersAndSubframes) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(8, 8) + counterAt(7, 8,
                                             Commands{"SF\\N-1:2"} + subframeAt(1, "S8", 3, 8) +
                                                 subframeAt(2, "S2", 4, 2)),
               listOf({{"MN@:A", "LT@:SF", "SF1@:S8", "SF2@:2"},
                       {"MN@:B", "LT@:SF", "SF1@:S8", "SF2@:7"}})));
    ASSERT_TRUE(f.format.setNumberOfFrames(f.parent, 4));
    EXPECT_EQ(f.format.idCounters[0].endFrame, "4");
    EXPECT_EQ(f.format.idCounters[0].subframes[0].depth, "4");
    EXPECT_EQ(f.format.idCounters[0].subframes[1].depth, "2");
    EXPECT_EQ(f.format.cells().cellCount(3), 4);
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_FALSE(f.format.hasMeasurement("B"));
}

TEST(PcmFormatAttributes, TheNumberOfWordsDependsOnTheFormat) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1, "ONE")));
    EXPECT_FALSE(f.format.setWordsPerMinorFrame(f.parent, 0));
    EXPECT_EQ(f.boxText(161), "You must enter a number greater than 0.");
    EXPECT_FALSE(f.format.setWordsPerMinorFrame(f.parent, 1025));
    EXPECT_TRUE(f.ui.hasBox(223));
    EXPECT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 1024));
    f.format.typeFormat = "TWO";
    EXPECT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 3000));
    EXPECT_EQ(f.format.wordsPerMinorFrame, 2048);
    EXPECT_EQ(f.boxText(189),
              "PCM format too big. This program only allows up to 2048 words per "
              "minor frame. Minor frame length truncated to 2048.");
    f.format.isBusStream = true;
    for (const int words : {127, 257}) {
        EXPECT_FALSE(f.format.setWordsPerMinorFrame(f.parent, words));
    }
    EXPECT_EQ(f.ui.countBoxes(222), 2);
    EXPECT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 128));
    EXPECT_EQ(f.format.bitsPerMinorFrame, 24 + 127 * 16);
}

TEST(PcmFormatAttributes, WordsThatGoTakeTheirSubframesAndCountersAlongSilently) {
    LoadFixture f;
    ASSERT_TRUE(f.load(
        plainFormat(16, 8) + counterAt(15, 8, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 12, 8)),
        listOf({{"MN@:A", "LT@:SF", "SF1@:S", "SF2@:2"}, {"MN@:B", "LT@:MF", "MF@:3"}})));
    ASSERT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 10));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_FALSE(f.format.findSubframe("S"));
    EXPECT_TRUE(f.format.idCounters.empty() || f.format.idCounters[0].name.empty());
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.hasMeasurement("B"));
    ASSERT_TRUE(f.format.setWordsPerMinorFrame(f.parent, 16));
    EXPECT_EQ(f.format.wordType(12), WordType::Minor);
    EXPECT_EQ(f.format.wordLength(12), 16);
    EXPECT_EQ(f.format.countMeasurementsAt(12, 1, false), 0);
}

TEST(PcmFormatAttributes, APatternIsBinaryOrHexadecimalAndHasAtMost33Bits) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    EXPECT_FALSE(f.format.setFrameSyncPatternByValue(f.parent, "12"));
    EXPECT_TRUE(f.ui.hasBox(439));
    EXPECT_FALSE(f.format.setFrameSyncPatternByValue(f.parent, std::string(34, '1')));
    EXPECT_EQ(f.boxText(440), "ERROR: Frame Sync Pattern can not be any longer than 33 characters");
    EXPECT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, "111 01"));
    EXPECT_EQ(f.format.syncPattern, "111 01") << "stored as entered";
    EXPECT_EQ(f.format.syncLength, 5);
    EXPECT_EQ(f.format.wordLength(0), 5);
    EXPECT_EQ(f.format.bitsPerMinorFrame, 5 + 7 * 16);
    f.format.hexFsp = true;
    EXPECT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, "eb 90"));
    EXPECT_EQ(f.format.syncLength, 16);
    EXPECT_FALSE(f.format.setFrameSyncPatternByValue(f.parent, "EB9G"));
    EXPECT_FALSE(f.format.setFrameSyncPatternByValue(f.parent, "3FFFFFFFF"));
    EXPECT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, "1FFFFFFFF"));
    EXPECT_EQ(f.format.syncLength, 33);
}

TEST(PcmFormatAttributes, APatternWithVeryManyBlanksKeepsAllItsDigits) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    std::string spaced;
    for (int i = 0; i < kMostSyncBits; ++i) {
        spaced += i % 2 == 0 ? "1   " : "0   ";
    }
    ASSERT_TRUE(f.format.setFrameSyncPatternByValue(nullptr, spaced));
    EXPECT_EQ(f.format.syncLength, kMostSyncBits);
    EXPECT_EQ(f.format.syncPattern, "101 010 101 010 101 010 101 010 101 010 101");
}

TEST(PcmFormatAttributes, ALengthTakesItsRecommendedPattern) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByLength(f.parent, 16));
    EXPECT_EQ(f.format.syncPattern, "111 010 111 001 000 0");
    EXPECT_EQ(f.format.syncLength, 16);
    EXPECT_FALSE(f.format.setFrameSyncPatternByLength(f.parent, 34));
    EXPECT_TRUE(f.ui.hasBox(440));
}

TEST(PcmFormatAttributes, ALengthBelow7GivesOnesInBinaryAndTheLengthItselfInHex) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByLength(f.parent, 5));
    EXPECT_EQ(f.format.syncPattern, "111 11");
    EXPECT_EQ(f.format.syncLength, 5);
    f.format.hexFsp = true;
    ASSERT_TRUE(f.format.setFrameSyncPatternByLength(f.parent, 5));
    EXPECT_EQ(f.format.syncPattern, "5");
    EXPECT_EQ(f.format.syncLength, 3);
}

TEST(PcmFormatAttributes, TheFormOfThePatternIsSwitchedAndKept) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    f.format.setHexFsp(true);
    EXPECT_EQ(f.format.syncPattern, "FA F320");
    EXPECT_EQ(f.settings.integer("HexFSP", 0), 1);
    f.format.setHexFsp(false);
    EXPECT_EQ(f.format.syncPattern, "111 110 101 111 001 100 100 000");
    EXPECT_EQ(f.settings.integer("HexFSP", 1), 0);
}

TEST(PcmFormatAttributes, TheBitRateKeepsNineCharacters) {
    LoadFixture f;
    f.format.setBitRate("1234567890");
    EXPECT_EQ(f.format.bitRate, "123456789");
    EXPECT_TRUE(f.format.formatEdited);
}

TEST(PcmFormatAttributes, TheFirstClassTwoAttributeIsNamed) {
    LoadFixture f(2007);
    auto& format = f.format;
    format.raiseNumberOfFrames({}, 1);
    format.commonWordLength = 16;
    ASSERT_TRUE(format.allocateWords({}, 16));
    format.recalculateBitsPerMinorFrame();
    format.typeFormat = "ONE";
    EXPECT_FALSE(format.classTwoAttribute());
    format.setWordLength(3, 33);
    EXPECT_EQ(format.classTwoAttribute(), "word lengths greater than 32");
    format.commonWordLength = 33;
    EXPECT_EQ(format.classTwoAttribute(), "a common word length greater than 32");
    Measurement measurement;
    measurement.name = "A";
    measurement.locationType = "mffr";
    format.cells().store(format.cellAt(1, 1), measurement);
    EXPECT_EQ(format.classTwoAttribute(), "measurements defined as fragments");
    format.asyncFormats.emplace_back();
    EXPECT_EQ(format.classTwoAttribute(), "Async Embedded Formats");
    ASSERT_TRUE(format.allocateWords({}, 1025));
    EXPECT_EQ(format.classTwoAttribute(), "more than 1024 words per minor frame");
    format.recalculateBitsPerMinorFrame();
    EXPECT_EQ(format.classTwoAttribute(), "more than 8192 bits per minor frame");
    format.bitRate = "10000001";
    EXPECT_EQ(format.classTwoAttribute(), "a bitrate greater than 10,000,000");
    f.document.version = 2004;
    EXPECT_EQ(format.classTwoAttribute(), "a bitrate greater than 5,000,000");
    format.typeFormat = "TWO";
    EXPECT_FALSE(format.classTwoAttribute());
}

TEST(PcmFormatAttributes, TheClassLimitIsAlways32BitsAlsoBefore10605) {
    for (const int edition : {1996, 2001, 2004, 2005, 2011}) {
        LoadFixture f(edition);
        auto& format = f.format;
        format.typeFormat = "ONE";
        format.commonWordLength = 32;
        ASSERT_TRUE(format.allocateWords({}, 8));
        EXPECT_FALSE(format.classTwoAttribute()) << edition;
        format.setWordLength(2, 17);
        EXPECT_FALSE(format.classTwoAttribute()) << edition;
        format.commonWordLength = 33;
        EXPECT_EQ(format.classTwoAttribute(), "a common word length greater than 32") << edition;
    }
}

}  // namespace
}  // namespace kavu
