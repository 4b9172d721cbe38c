#include "conversion/ConversionStore.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/LoadFixture.h"
#include "pcm/model/SampleRateCheck.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// 16 words of 16 bits, 4 frames, a sync word of 24 bits: w = 16 + 24 / 16 - 1 = 16 words, and
/// so 64000 / 16 / 16 / 4 = 62.5 major frames a second.
Commands formatAt(const std::string& bitRate) {
    auto commands =
        plainFormat(16, 4) + counterAt(1, 4, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 3, 4));
    return bitRate.empty() ? commands : commands + Commands{"D2:" + bitRate};
}
const auto kMeasurements = listOf({
    Commands{"MN@:EVERY", "LT@:MF", "MF@:2"},
    Commands{"MN@:ONCE", "LT@:SF", "SF1@:S", "SF2@:2"},
    Commands{"MN@:TWICE", "LT@:MFSC", "MFS\\N@:2", "MFS1@:I", "MFS2@:4", "MFS3@:FW", "MFS4@:8"},
});

class Rates : public LoadFixture {
  public:
    Rates() : LoadFixture(2009) { settings.write("ChkSR", "1"); }
    bool loadAt(const std::string& bitRate) { return load(formatAt(bitRate), kMeasurements); }
    [[nodiscard]] std::string rate(const std::string& name) const {
        return calculateSampleRate(format, name);
    }
    void writeRecords(const std::string& text) { write("[kavu]00000001.C_O", text); }
    [[nodiscard]] std::string record(const std::string& name) {
        const auto place = conversions.locateDefinition(name);
        return place.found ? conversions.chunk(place.chunk)->value(name, "SR", "") : "";
    }

    ConversionStore conversions{context};
};

TEST(SampleRate, CountsTheOccurrencesInTheMajorFrame) {
    Rates rates;
    ASSERT_TRUE(rates.loadAt("64000"));
    EXPECT_EQ(rates.rate("EVERY"), "250");
    EXPECT_EQ(rates.rate("every"), "250");
    EXPECT_EQ(rates.rate("ONCE"), "62.5");
    EXPECT_EQ(rates.rate("TWICE"), "500");
    EXPECT_EQ(rates.rate("NOBODY"), "0");
}

TEST(SampleRate, AFormatWithoutABitRateGivesAnEmptyRate) {
    for (const char* const rate : {"", "0", "none"}) {
        Rates rates;
        ASSERT_TRUE(rates.loadAt(rate));
        EXPECT_EQ(rates.rate("EVERY"), "") << rate;
    }
}

TEST(SampleRate, AFormatWithoutWordsFramesOrALengthGivesAnEmptyRate) {
    Rates rates;
    ASSERT_TRUE(rates.loadAt("64000"));
    rates.format.commonWordLength = 0;
    EXPECT_EQ(rates.rate("EVERY"), "");
    rates.format.commonWordLength = 16;
    rates.format.syncLength = 0;
    rates.format.wordsPerMinorFrame = 1;
    EXPECT_EQ(rates.rate("EVERY"), "");
    rates.format.clear();
    EXPECT_EQ(rates.rate("EVERY"), "");
}

TEST(SampleRate, WithoutTheOptionNoTextIsTrimmed) {
    Rates rates;
    rates.settings.write("ChkSR", "0");
    ASSERT_TRUE(rates.loadAt("64000"));
    EXPECT_EQ(rates.rate("EVERY"), "250.000000");
}

TEST(SampleRate, IsCutToThePrecisionOfTheSettings) {
    struct Row {
        const char* precision;
        const char* bitRate;
        const char* expected;
    };
    for (const auto& row : {Row{"2", "12800", "12.5"}, Row{"2", "102400", "100"},
                            Row{"0", "12800", "12"}, Row{"5", "12345", "12.05566"}}) {
        Rates rates;
        rates.settings.write("SRPrec", row.precision);
        ASSERT_TRUE(rates.loadAt(row.bitRate));
        EXPECT_EQ(rates.rate("ONCE"), row.expected) << row.precision << " " << row.bitRate;
    }
}

TEST(SampleRate, AVeryLargeRateIsCutTo32Characters) {
    Rates rates;
    rates.settings.write("ChkSR", "0");
    ASSERT_TRUE(rates.loadAt("1e300"));
    EXPECT_EQ(rates.rate("EVERY").size(), 32U);
}

TEST(SampleRateCheck, BringsTheRecordsOfTheStreamUpToDate) {
    Rates rates;
    rates.writeRecords("[EVERY]\r\nSR=1\r\n[once]\r\nDCT=NON\r\n[OTHER]\r\nSR=7\r\n");
    rates.steps_.conversions = &rates.conversions;
    ASSERT_TRUE(rates.loadAt("64000"));
    EXPECT_TRUE(rates.format.changed) << "a change makes the format a changed one";
    EXPECT_EQ(rates.record("EVERY"), "250");
    EXPECT_EQ(rates.record("once"), "62.5");
    EXPECT_EQ(rates.record("OTHER"), "7");
    EXPECT_FALSE(checkSampleRates(rates.format, rates.parent, rates.conversions))
        << "they are up to date now";
}

TEST(SampleRateCheck, DoesNothingWithoutTheOptionOrTheBitRate) {
    Rates rates;
    rates.writeRecords("[EVERY]\r\nSR=1\r\n");
    ASSERT_TRUE(rates.loadAt(""));
    EXPECT_FALSE(checkSampleRates(rates.format, rates.parent, rates.conversions));
    ASSERT_TRUE(rates.loadAt("64000"));
    rates.settings.write("ChkSR", "0");
    EXPECT_FALSE(checkSampleRates(rates.format, rates.parent, rates.conversions));
    EXPECT_EQ(rates.record("EVERY"), "1");
}

TEST(SampleRateCheck, ACancelEndsIt) {
    Rates rates;
    rates.writeRecords("[EVERY]\r\nSR=1\r\n");
    ASSERT_TRUE(rates.loadAt("64000"));
    rates.ui.cancelAtPoll = 1;
    EXPECT_FALSE(checkSampleRates(rates.format, rates.parent, rates.conversions));
    EXPECT_EQ(rates.record("EVERY"), "1");
    EXPECT_EQ(rates.ui.countLogs(433), 1) << "some rates were not calculated";
}

TEST(SampleRate, ABitRateThatIsNoFiniteNumberGivesAnEmptyRate) {
    for (const auto* const rate : {"inf", "nan", "INFINITY", "fast", "-5"}) {
        Rates rates;
        ASSERT_TRUE(rates.loadAt(rate));
        EXPECT_EQ(rates.rate("EVERY"), "") << rate;
    }
}

}  // namespace
}  // namespace kavu
