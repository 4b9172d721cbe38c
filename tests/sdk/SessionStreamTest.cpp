// The load of a stream by a session, and the queries on it.
#include "pcm/LoadFixture.h"
#include "sdk/SessionStage.h"

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// A format of 9 words and 4 frames, all words of 16 bits.
std::string format(std::string_view edition = "09", std::string_view more = {}) {
    return "G\\106:" + std::string(edition) +
           ";M-1\\BB\\DLN:Link;P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:9;"
           "P-1\\MF4:16;P-1\\MF5:1110101110010000;" +
           std::string(more);
}
std::string data(std::string_view rows, int count) {
    return "D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MLN-1:List;D-1\\MN\\N-1:" + std::to_string(count) +
           ";" + std::string(rows);
}
std::string all(const TranslatorSdk& sdk) {
    std::string text;
    for (const auto& error : sdk.errors()) {
        text += error + "|";
    }
    return text;
}

constexpr std::string_view kWordFrame =
    "D-1\\MN-1-1:Zeta;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\MNF\\N-1-1-1:1;"
    "D-1\\WP-1-1-1-1:5;D-1\\WI-1-1-1-1:0;D-1\\FP-1-1-1-1:1;D-1\\FI-1-1-1-1:1;"
    "D-1\\WFM-1-1-1-1:FW;"
    "D-1\\MN-1-2:Alpha;D-1\\LT-1-2:WDFR;D-1\\MML\\N-1-2:1;D-1\\MNF\\N-1-2-1:2;"
    "D-1\\MWL-1-2-1:20;D-1\\WP-1-2-1-1:2;D-1\\FP-1-2-1-1:1;D-1\\FI-1-2-1-1:1;"
    "D-1\\WFM-1-2-1-1:FW;D-1\\WFP-1-2-1-1:2;D-1\\WFT-1-2-1-1:L;D-1\\WP-1-2-1-2:3;"
    "D-1\\FP-1-2-1-2:1;D-1\\FI-1-2-1-2:1;D-1\\WFM-1-2-1-2:0000000000001111;D-1\\WFP-1-2-1-2:1;";

TEST(SessionStreamTest, ListsMeasurementsInTheOrderOfTheFileWithPlacesAndMasks) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format() + data(kWordFrame, 2)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_EQ(stage.sdk.measurementCount(), 2U);
    const auto& zeta = stage.sdk.measurement(0);
    EXPECT_EQ(zeta.name, "Zeta");
    EXPECT_EQ(zeta.wordLength, 16);
    ASSERT_EQ(zeta.locations.size(), 1U);
    EXPECT_EQ(zeta.locations[0].fragments[0].word, (SdkRange{5, 0, 5}));
    EXPECT_EQ(zeta.locations[0].fragments[0].frame, (SdkRange{1, 1, 4}));
    EXPECT_EQ(zeta.locations[0].fragments[0].mask, "FW");
    const auto& alpha = stage.sdk.measurement(*stage.sdk.findMeasurement("ALPHA"));
    EXPECT_EQ(alpha.wordLength, 20);
    ASSERT_EQ(alpha.locations[0].fragments.size(), 2U);
    // The fragments are in the order of their numbers.
    EXPECT_EQ(alpha.locations[0].fragments[0].word.start, 3);
    EXPECT_EQ(alpha.locations[0].fragments[1].transferOrder, 'L');
    EXPECT_EQ(stage.sdk.errors().size(), 0U) << all(stage.sdk);
}

TEST(SessionStreamTest, ReadsOlderLocationTypesWithoutAnEdition) {
    SessionStage stage;
    auto text = format() + data(
                               "D-1\\MN-1-1:A;D-1\\LT-1-1:MF;D-1\\MF-1-1:3;D-1\\MFM-1-1:"
                               "0011;D-1\\MN-1-2:B;D-1\\LT-1-2:MFSC;D-1\\MFS\\N-1-2:3;"
                               "D-1\\MFS1-1-2:I;D-1\\MFS2-1-2:1;D-1\\MFS4-1-2:2;",
                               2);
    text.erase(0, text.find(';') + 1);
    ASSERT_TRUE(stage.open(text));
    EXPECT_EQ(stage.sdk.version(), 2011);
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_EQ(stage.sdk.measurementCount(), 2U);
    const auto& single = stage.sdk.measurement(0);
    ASSERT_EQ(single.locations.size(), 1U) << all(stage.sdk);
    EXPECT_EQ(single.locationType, "MF");
    EXPECT_EQ(single.locations[0].fragments[0].word, (SdkRange{3, 0, 3}));
    EXPECT_EQ(single.locations[0].fragments[0].mask, "0011");
    EXPECT_EQ(stage.sdk.measurement(1).locations[0].fragments[0].word, (SdkRange{1, 2, 5}));
    EXPECT_EQ(stage.sdk.version(), 2011) << "only the stream was read as an older one";
}

TEST(SessionStreamTest, ReadsOlderLocationTypesOfAnEditionWithoutWordFrameLocations) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format("99") +
                           data("D-1\\MN-1-1:F;D-1\\LT-1-1:MFFR;D-1\\FMF\\N-1-1:2;D-1\\FMF1-1-1:32;"
                                "D-1\\FMF2-1-1:I;D-1\\FMF3-1-1:2;D-1\\FMF5-1-1:1;",
                                1)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    const auto& measurement = stage.sdk.measurement(0);
    ASSERT_EQ(measurement.locations.size(), 1U) << all(stage.sdk);
    ASSERT_EQ(measurement.locations[0].fragments.size(), 2U);
    EXPECT_EQ(measurement.locations[0].fragments[1].word, (SdkRange{3, 0, 3}));
    EXPECT_EQ(measurement.wordLength, 32);
}

/// A stream of 16 words and 12 frames whose words 5, 9 and 13 are one supercommutated subframe.
std::string subframes(const std::vector<Commands>& measurements) {
    const auto commands =
        plainFormat(16, 12) +
        counterAt(1, 12,
                  Commands{"SF\\N-1:1", "SF1-1-1:SUPER", "SF2-1-1:3", "SF3-1-1:FI", "SF4-1-1-1:5",
                           "SF5-1-1:4", "SF6-1-1:12"});
    std::string text = "G\\106:09;P-1\\DLN:Link;D-1\\DLN:Link;";
    for (const auto& command : commands) {
        text += "P-1\\" + command + ";";
    }
    for (const auto& command : listOf(measurements)) {
        text += "D-1\\" + command + ";";
    }
    return text;
}

TEST(SessionStreamTest, GivesEachSampleOfFragmentsThatNoRangeCanState) {
    SessionStage stage;
    const auto at = [](int j, int position, int number) {
        const auto place = "@-1-" + std::to_string(j);
        return Commands{"FSF8" + place + ":" + std::to_string(position), "FSF9" + place + ":FW",
                        "FSF11" + place + ":" + std::to_string(number)};
    };
    ASSERT_TRUE(stage.open(subframes({Commands{"MN@:F", "LT@:SFFR", "FSF\\N@:2", "FSF1@:32",
                                               "FSF2\\N@:1", "FSF3@-1:SUPER", "FSF4@-1:E"} +
                                      at(1, 1, 1) + at(2, 2, 2) + at(3, 5, 2)})));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    EXPECT_EQ(stage.sdk.measurement(0).locations.size(), 3U);
    EXPECT_EQ(stage.sdk.measurement(0).wordLength, 32);
    EXPECT_THAT(stage.sdk.errors(),
                Contains("WARNING: Could not determine Frame Increment for SFFR measurement\n'F' "
                         "(Fragment #1).\n\n"));
}

TEST(SessionStreamTest, GivesAPlaceInSomeFramesOfAStreamWithoutAnIdCounter) {
    SessionStage stage;
    ASSERT_TRUE(
        stage.open(format() + data("D-1\\MN-1-1:Some;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:2;"
                                   "D-1\\MWL-1-1-1:12;D-1\\WP-1-1-1-1:4;D-1\\FP-1-1-1-1:2;"
                                   "D-1\\FI-1-1-1-1:2;D-1\\WFM-1-1-1-1:1111;D-1\\WFT-1-1-1-1:l;"
                                   "D-1\\WP-1-1-2-1:5;D-1\\FP-1-1-2-1:3;",
                                   1)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    const auto& measurement = stage.sdk.measurement(0);
    ASSERT_EQ(measurement.locations.size(), 2U) << all(stage.sdk);
    EXPECT_EQ(measurement.wordLength, 12);
    EXPECT_EQ(measurement.locations[0].fragments[0].frame, (SdkRange{2, 2, 4}));
    EXPECT_EQ(measurement.locations[0].fragments[0].transferOrder, 'L');
    EXPECT_EQ(measurement.locations[1].fragments[0].frame, (SdkRange{3, 0, 3}));
    EXPECT_TRUE(stage.sdk.errors().empty()) << all(stage.sdk);
}

TEST(SessionStreamTest, GivesAPlaceOfASubframeAsWordsAndFrames) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(subframes({{"MN@:S", "LT@:SF", "SF1@:SUPER", "SF2@:2", "SFM@:FW"}})));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_EQ(stage.sdk.measurement(0).locations.size(), 1U) << all(stage.sdk);
    EXPECT_EQ(stage.sdk.measurement(0).locations[0].fragments[0].word, (SdkRange{9, 0, 9}));
    EXPECT_EQ(stage.sdk.measurement(0).locations[0].fragments[0].frame, (SdkRange{1, 0, 1}));
}

TEST(SessionStreamTest, ListsAMeasurementWithoutAValidPlaceAndSaysSo) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format() + data("D-1\\MN-1-1:Far;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;"
                                           "D-1\\WP-1-1-1-1:90;D-1\\FP-1-1-1-1:1;",
                                           1)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    ASSERT_EQ(stage.sdk.measurementCount(), 1U);
    EXPECT_TRUE(stage.sdk.measurement(0).locations.empty());
    EXPECT_THAT(stage.sdk.errors(),
                Contains("ERROR: An invalid 'D-1\\WP-1-1-1-1' field was found in the TMATS file "
                         "for measurement 'Far'\nValue found: 90\n"));
}

TEST(SessionStreamTest, IgnoresASecondDefinitionOfANameAndReportsItOnce) {
    SessionStage stage;
    ASSERT_TRUE(
        stage.open(format() + data("D-1\\MN-1-1:A;D-1\\LT-1-1:MF;D-1\\MF-1-1:3;D-1\\MN-1-2:a;"
                                   "D-1\\LT-1-2:MF;D-1\\MF-1-2:4;D-1\\MN-1-3: ;D-1\\LT-1-3:MF;",
                                   3)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    EXPECT_EQ(stage.sdk.measurementCount(), 1U);
    EXPECT_THAT(stage.sdk.errors(), Contains("Measurement 'a' was previously defined.\n"
                                             "This definition will be ignored."));
    EXPECT_THAT(stage.sdk.errors(),
                Contains("WARNING:  Error reading TMATS file line: 'D-1\\MN-1-3'\n"));
    EXPECT_EQ(stage.sdk.errors().size(), 2U) << all(stage.sdk);
}

TEST(SessionStreamTest, ReportsAFragmentNumberBeyondTheFragments) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format() +
                           data("D-1\\MN-1-1:F;D-1\\LT-1-1:MFFR;D-1\\FMF\\N-1-1:2;D-1\\FMF1-1-1:32;"
                                "D-1\\FMF2-1-1:E;D-1\\FMF6-1-1-1:2;D-1\\FMF9-1-1-1:1;"
                                "D-1\\FMF6-1-1-2:99;D-1\\FMF9-1-1-2:7;",
                                1)));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    EXPECT_THAT(stage.sdk.errors(),
                Contains("ERROR: An invalid 'D-1\\FMF6-1-1-2' field found in TMATS file for MFFR "
                         "measurement\n'F'. Value found: 99\n"
                         "This value must be a number between 1 and 8\n\n"));
    EXPECT_THAT(stage.sdk.errors(),
                Contains("An error was found with TMATS command: 'D-1\\FMF9-1-1-2'.\n"
                         "Invalid fragment number found (7). This number must be between 1 and "
                         "2.\n"));
    EXPECT_THAT(stage.sdk.errors(),
                Contains(testing::AnyOf("ERROR: Unable to completely define measurement 'F'.\n",
                                        "ERROR: Unable to add MFFR measurement 'F'.\n")));
}

TEST(SessionStreamTest, LoadsAFormatWithoutADGroupAsOneWithoutMeasurements) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format()));
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    EXPECT_EQ(stage.sdk.measurementCount(), 0U);
    EXPECT_TRUE(stage.sdk.errors().empty()) << all(stage.sdk);
}

TEST(SessionStreamTest, RefusesAStreamThatIsNot) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format()));
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(2), -1);
    EXPECT_THAT(stage.sdk.errors(), ElementsAre("ERROR: Unable to process stream #2.\nThere are "
                                                "only 1 streams in this TMATS file.\n\n"));
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(0), -1);
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(-1), -1);
}

TEST(SessionStreamTest, RefusesALinkWithoutAGroup) {
    SessionStage stage;
    ASSERT_TRUE(stage.open("M-1\\BB\\DLN:Alone;"));
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), -1);
    EXPECT_THAT(stage.sdk.errors(), ElementsAre("ERROR: Unable to open TMATS Stream File for Data "
                                                "Link 'Alone'.\n\n"));
}

TEST(SessionStreamTest, RefusesAFormatWithoutValidWordsPerMinorFrame) {
    for (const auto& [words, error] : std::vector<std::pair<std::string, std::string>>{
             {"",
              "ERROR: Could not locate PCM Format WORDS PER MINOR FRAME (P-1\\MF1) field in "
              "TMATS file.\n\n"},
             {"P-1\\MF1:x;",
              "ERROR: Invalid 'Words Per Frame' (P-1\\MF1) field found in TMATS "
              "file.\n\n"},
             {"P-1\\MF1:0;",
              "ERROR: Invalid 'Words Per Frame' (P-1\\MF1) field found in TMATS "
              "file.\n\n"}}) {
        SessionStage stage;
        ASSERT_TRUE(stage.open("P-1\\DLN:a;P-1\\TF:ONE;" + words));
        EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), -1);
        EXPECT_THAT(stage.sdk.errors(), ElementsAre(error));
        EXPECT_EQ(stage.sdk.loadedStream(), 0);
    }
}

TEST(SessionStreamTest, SaysThatThereAreTooManySubframesAndAsyncFormats) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format("09",
                                  "P-1\\ISF\\N:1;P-1\\ISF1-1:ID;P-1\\SF\\N-1:10000;"
                                  "P-1\\AEF\\N:19;") +
                           data("", 0)));
    (void)stage.sdk.ParseTmatsPcmFormatInfo(1);
    EXPECT_THAT(stage.sdk.errors(),
                Contains("Too many subframe were defined in the PCM stream (P-1\\SF\\N-1).\nThis "
                         "program only allows 9999 subframe definitions. Number of subframes "
                         "truncated.\n"));
    EXPECT_THAT(stage.sdk.errors(),
                Contains("ERROR: Invalid number of Async Formats defined in TMATS file.\n"));
    EXPECT_THAT(stage.sdk.errors(),
                Contains("Value found: 19. This value must be a number between 0 and 18\n"));
    EXPECT_THAT(stage.sdk.errors(), Contains("No Embedded Async definitions will be "
                                             "processed.\n\n"));
    EXPECT_EQ(stage.sdk.format().asyncCount(), 0);
}

TEST(SessionStreamTest, ReadsTheMeasurementsOfABus) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(
        "G\\106:09;B-1\\DLN:Bus;B-1\\NBS\\N:1;B-1\\BID-1:1;B-1\\BNA-1:one;B-1\\NMS\\N-1:2;"
        "B-1\\MID-1-1:1;B-1\\MNA-1-1:m1;B-1\\MID-1-2:2;B-1\\MN\\N-1-2:2;B-1\\MN-1-2-1:Heading;"
        "B-1\\NML\\N-1-2-1:2;B-1\\MWN-1-2-1-1:3;B-1\\MBM-1-2-1-1:FW;B-1\\MFP-1-2-1-1:2;"
        "B-1\\MWN-1-2-1-2:4;B-1\\MBM-1-2-1-2:1111000000000000;B-1\\MFP-1-2-1-2:1;"
        "B-1\\MN-1-2-2:Status;B-1\\NML\\N-1-2-2:1;B-1\\MWN-1-2-2-1:9;"));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_EQ(stage.sdk.measurementCount(), 2U);
    const auto& heading = stage.sdk.measurement(0);
    EXPECT_EQ(heading.name, "Heading");
    EXPECT_EQ(heading.wordLength, 20);
    EXPECT_EQ(heading.bus, 1);
    EXPECT_EQ(heading.message, 2);
    SdkBusInfo info;
    ASSERT_EQ(stage.sdk.Get1553MeasurementInfo(0, 1, 1, info), 0);
    EXPECT_EQ(info.word, 4);
    EXPECT_EQ(info.sortKey, "00001000020000400001");
    EXPECT_TRUE(stage.sdk.errors().empty()) << all(stage.sdk);
}

TEST(SessionStreamTest, StatesHowFarItIsWithTheMeasurementsOfABus) {
    SessionStage stage;
    ASSERT_TRUE(
        stage.open("G\\106:09;B-1\\DLN:Bus;B-1\\NBS\\N:1;B-1\\BID-1:1;B-1\\BNA-1:one;"
                   "B-1\\NMS\\N-1:1;B-1\\MID-1-1:1;B-1\\MN\\N-1-1:2;B-1\\MN-1-1-1:Heading;"
                   "B-1\\NML\\N-1-1-1:1;B-1\\MWN-1-1-1-1:3;B-1\\MN-1-1-2:Status;"
                   "B-1\\NML\\N-1-1-2:1;B-1\\MWN-1-1-2-1:9;"));
    stage.ui.statusTexts.clear();
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_FALSE(stage.ui.statusTexts.empty());
    EXPECT_EQ(stage.ui.statusTexts.front(), "Initializing 1553 measurements");
    EXPECT_THAT(stage.ui.statusTexts,
                testing::IsSupersetOf({"Gathering measurement info #2 of 2 (100%)",
                                       "Converting measurement #2 of 2 (100%)"}));
}

TEST(SessionStreamTest, StatesEachSubframeAndTheAsyncFormats) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format() + "P-1\\ISF\\N:1;P-1\\ISF1-1:C;P-1\\SF\\N-1:2;P-1\\SF1-1-1:a;"
                                      "P-1\\SF1-1-2:b;P-1\\AEF\\N:1;P-1\\AEF1-1:1;P-1\\AEF2-1:CW;"
                                      "P-1\\AEF3-1-1:2;"));
    stage.ui.statusTexts.clear();
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    EXPECT_THAT(stage.ui.statusTexts,
                testing::IsSupersetOf({"Converting PCM subframe definitions - Subframe #1 of 2",
                                       "Converting PCM subframe definitions - Subframe #2 of 2",
                                       "...Gathering PCM Async Info (Stream 1)",
                                       "Initializing measurements in TMATS file. (0%)",
                                       "Initializing measurements in TMATS file. (100%)"}));
    ASSERT_EQ(stage.sdk.format().asyncCount(), 1);
    EXPECT_EQ(stage.sdk.format().asyncFormats[0].dataLinkName, "AsyncDataLink1");
}

TEST(SessionStreamTest, ReadsTheMeasurementsOfMessageData) {
    SessionStage stage;
    ASSERT_TRUE(
        stage.open("G\\106:09;S-1\\DLN:Text;S-1\\NS\\N:1;S-1\\SNA-1:s;S-1\\NMS\\N-1:1;"
                   "S-1\\MNA-1-1:m;S-1\\MN\\N-1-1:1;S-1\\MN-1-1-1:Speed;"
                   "S-1\\NML\\N-1-1-1:1;S-1\\MFN-1-1-1-1:2;"));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0) << all(stage.sdk);
    ASSERT_EQ(stage.sdk.measurementCount(), 1U);
    EXPECT_EQ(stage.sdk.measurement(0).name, "Speed");
    ASSERT_EQ(stage.sdk.measurement(0).locations.size(), 1U);
    EXPECT_EQ(stage.sdk.measurement(0).locations[0].fragments[0].word.start, 2);
}

TEST(SessionStreamTest, LoadsOneStreamAfterTheOtherAndKeepsTheLast) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(format() + data(kWordFrame, 2) +
                           "P-2\\DLN:Other;P-2\\TF:ONE;P-2\\F1:8;P-2\\MF\\N:1;P-2\\MF1:5;"
                           "D-2\\DLN:Other;D-2\\ML\\N:1;D-2\\MN\\N-1:1;D-2\\MN-1-1:X;"
                           "D-2\\LT-1-1:MF;D-2\\MF-1-1:2;"));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(2), 0) << all(stage.sdk);
    EXPECT_EQ(stage.sdk.measurement(0).wordLength, 8);
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    EXPECT_EQ(stage.sdk.measurementCount(), 2U);
    const auto errors = stage.sdk.errors().size();
    EXPECT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    EXPECT_EQ(stage.sdk.errors().size(), errors);
    stage.sdk.close();
    EXPECT_EQ(stage.sdk.measurementCount(), 0U);
}

class SessionQueryTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(stage_.open(format() + data(kWordFrame, 2) + "C-4\\DCN:Zeta;C-4\\DCT:COE;"));
        ASSERT_EQ(stage_.sdk.ParseTmatsPcmFormatInfo(1), 0);
    }
    SessionStage stage_;
    TranslatorSdk& sdk_ = stage_.sdk;
};

TEST_F(SessionQueryTest, GivesTheIntervalsOfALocation) {
    SdkRange word;
    SdkRange frame;
    ASSERT_EQ(sdk_.GetPcmMeasurementIntervals(0, 1, 1, word, frame), 0);
    EXPECT_EQ(word, (SdkRange{5, 0, 5}));
    EXPECT_EQ(frame, (SdkRange{1, 1, 4}));
}

TEST_F(SessionQueryTest, CopiesAMaskThatFitsWithItsEndAndRefusesASmallerBuffer) {
    char buffer[3] = {'x', 'x', 'x'};
    ASSERT_EQ(sdk_.GetMeasurementBitMask(0, 1, 1, buffer, 3), 0);
    EXPECT_STREQ(buffer, "FW");
    EXPECT_EQ(sdk_.GetMeasurementBitMask(0, 1, 1, buffer, 2), -1);
    EXPECT_EQ(sdk_.GetMeasurementBitMask(0, 1, 1, nullptr, 9), -1);
    EXPECT_THAT(sdk_.errors(), Contains("ERROR: Buffer size too small to hold bitmask for "
                                        "measurement 'Zeta'\n\n"));
}

TEST_F(SessionQueryTest, SaysWhetherAMaskIsAFullWordAndWhichBitsItHas) {
    EXPECT_EQ(sdk_.IsMeasurementBitMaskAFullWord(0, 1, 1), 1);
    EXPECT_EQ(sdk_.IsMeasurementBitMaskAFullWord(1, 1, 1), 0);
    std::vector<int> bits;
    ASSERT_EQ(sdk_.GetMeasurementBitMaskBitLocations(1, 1, 1, bits), 0);
    EXPECT_THAT(bits, ElementsAre(13, 14, 15, 16));
    std::string words;
    ASSERT_EQ(sdk_.GetMeasurementFragmentMask(1, 1, 2, words), 0);
    EXPECT_EQ(words, "000000000000FFFF");
}

TEST_F(SessionQueryTest, RefusesIndicesAndFragmentsThatAreNot) {
    std::vector<int> bits;
    EXPECT_EQ(sdk_.GetMeasurementBitMaskBitLocations(2, 1, 1, bits), -1);
    EXPECT_EQ(sdk_.IsMeasurementBitMaskAFullWord(1, 1, 3), -1);
    EXPECT_EQ(sdk_.IsMeasurementBitMaskAFullWord(0, 1, 2), -1);
    EXPECT_THAT(sdk_.errors(),
                ElementsAre("ERROR: Invalid measurement index (2) passed to "
                            "GetMeasurementBitMaskBitLocations()\n\n",
                            "ERROR: Invalid Fragment Number (3) passed to "
                            "IsMeasurementBitMaskAFullWord()\n\n",
                            "ERROR in IsMeasurementBitMaskAFullWord():\n\tMeasurement Zeta is not "
                            "a fragment.\n\tInvalid 'Fragment Number' argument (2) passed to this "
                            "function.\n\n"));
}

TEST_F(SessionQueryTest, GivesAConversionRecordByItsIndex) {
    SdkGroup record;
    ASSERT_EQ(sdk_.GetMeasurementEUInfoByIndex(4, record), 0);
    EXPECT_EQ(record.value("DCT"), "COE");
    EXPECT_EQ(sdk_.GetMeasurementEUInfoByIndex(3, record), -1);
    EXPECT_THAT(sdk_.errors(), ElementsAre("ERROR: Invalid C-Index value passed to "
                                           "GetMeasurementEUInfoByIndex.\n\n"));
}

TEST(SessionConversionTest, GivesTheCoefficientsOfARecordAndTheCurveOfItsPairs) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(
        "G\\106:09;C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:2;C-1\\CO:1;C-1\\CO-1:2;C-1\\CO-2:3;"
        "C-2\\DCN:P;C-2\\DCT:PRS;C-2\\PS\\N:2;C-2\\PS1:Y;C-2\\PS2:1;C-2\\PS3-1:1;"
        "C-2\\PS4-1:10;C-2\\PS3-2:2;C-2\\PS4-2:20;"));
    EuEvaluation evaluation;
    ASSERT_EQ(stage.sdk.GetMeasurementEUCoefficients(*stage.sdk.openConversion(0), evaluation), 0);
    EXPECT_THAT(evaluation.coefficients(), ElementsAre(1, 2, 3));
    ASSERT_EQ(stage.sdk.GetMeasurementEUCoefficients(*stage.sdk.openConversion(1), evaluation), 0);
    ASSERT_EQ(evaluation.coefficients().size(), 2U);
    EXPECT_NEAR(evaluation.coefficients()[1], 10, 1e-9);
    EXPECT_TRUE(stage.sdk.errors().empty());
}

TEST(SessionConversionTest, SaysThatPairsGiveNoCurve) {
    SessionStage stage;
    ASSERT_TRUE(
        stage.open("C-2\\DCN:P;C-2\\DCT:PRS;C-2\\PS\\N:2;C-2\\PS1:Y;C-2\\PS2:5;"
                   "C-2\\PS3-1:1;C-2\\PS4-1:10;C-2\\PS3-2:2;C-2\\PS4-2:20;C-3\\DCN:D;"
                   "C-3\\DCT:DIS;"));
    EuEvaluation evaluation;
    EXPECT_EQ(stage.sdk.GetMeasurementEUCoefficients(*stage.sdk.openConversion(0), evaluation), -1);
    EXPECT_EQ(stage.sdk.GetMeasurementEUCoefficients(*stage.sdk.openConversion(1), evaluation), -1);
    EXPECT_THAT(stage.sdk.errors(),
                ElementsAre("ERROR: Unable to generate coefficients from pair sets definition for "
                            "'P'.\n\tNumber of pair sets: 2 Order of fit: 5\n\n",
                            "ERROR: 'D': A conversion of type \"DIS\" is no polynomial.\n\n"));
}

TEST(BitMaskTest, CountsBitsFromTheLeft) {
    EXPECT_THAT(BitMask("1001", 16).bits(), ElementsAre(1, 4));
    EXPECT_EQ(BitMask("1001", 16).words(), "0000000000000009");
    EXPECT_THAT(BitMask("F0", 8).bits(), ElementsAre(1, 2, 3, 4));
}

TEST(BitMaskTest, TakesAllBitsForAnEmptyMaskAndFw) {
    for (const char* const text : {"", "FW", "fw", " FW "}) {
        const BitMask mask(text, 12);
        EXPECT_TRUE(mask.isFullWord()) << text;
        EXPECT_EQ(mask.bitCount(), 12) << text;
        EXPECT_EQ(mask.words(), "0000000000000FFF") << text;
    }
}

TEST(BitMaskTest, IsNoFullWordIfItIsShorterThanTheWord) {
    EXPECT_FALSE(BitMask("1111", 8).isFullWord());
    EXPECT_TRUE(BitMask("11111111", 8).isFullWord());
    EXPECT_FALSE(BitMask("", 0).isFullWord());
}

TEST(BitMaskTest, HasNoBitsIfItIsNoMask) {
    const BitMask mask("12;x", 8);
    EXPECT_FALSE(mask.isValid());
    EXPECT_TRUE(mask.bits().empty());
    EXPECT_EQ(mask.words(), "0000000000000000");
}

TEST(BitMaskTest, GivesTheLast64BitsOfALongerMask) {
    EXPECT_EQ(BitMask("1" + std::string(64, '0'), 65).words(), "0000000000000000");
    EXPECT_EQ(BitMask(std::string(64, '1'), 64).words(), "FFFFFFFFFFFFFFFF");
}

}  // namespace
}  // namespace kavu::test
