#include "groups/MeasurementNames.h"
#include "pcm/LoadFixture.h"
#include "pcm/model/DuplicateNames.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::Commands;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::operator+;
using ::testing::EndsWith;
using ::testing::HasSubstr;

/// Two streams, the second one in memory; both have a measurement BOTH.
class TwoStreams : public LoadFixture {
  public:
    TwoStreams() : names(context) {
        write("[kavu]MULT.M01",
              "M-1\\ID:S;\r\nM-1\\BB\\DLN:PCM 0;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:PCM 1;\r\n");
        writeGroup('P', plainFormat(8, 1), "PCM 0", 2);
        writeGroup('D',
                   listOf({Commands{"MN@:BOTH", "LT@:MF", "MF@:3"},
                           Commands{"MN@:FIRST", "LT@:MF", "MF@:4"}}),
                   "PCM 0", 2);
        EXPECT_TRUE(load(plainFormat(8, 1), listOf({Commands{"MN@:BOTH", "LT@:MF", "MF@:3"},
                                                    Commands{"MN@:SECOND", "LT@:MF", "MF@:4"}})));
        EXPECT_TRUE(names.checkForDuplicates(&ui));
        // A name in two streams has put the checking off.
        EXPECT_FALSE(names.checking());
        names.setChecking(true, false);
        ui.boxes.clear();
    }
    MeasurementNames names;
};

TEST(DuplicateNames, TheStreamIsNumberedAmongTheLinks) {
    TwoStreams streams;
    EXPECT_EQ(streamNumber(streams.format, &streams.ui), 2);
    streams.format.streamName = "NOBODY";
    EXPECT_EQ(streamNumber(streams.format, &streams.ui), 0);
}

TEST(DuplicateNames, ANameOfAnotherStreamIsRefusedWithItsNumber) {
    TwoStreams streams;
    EXPECT_FALSE(checkNameInOtherStreams(streams.format, &streams.ui, streams.names, "FIRST", 2));
    ASSERT_EQ(streams.ui.boxes.size(), 1U);
    EXPECT_EQ(streams.ui.boxes[0].text,
              "Measurement 'FIRST' is already being used in stream #1. "
              "Please select another name.");
    EXPECT_TRUE(checkNameInOtherStreams(streams.format, &streams.ui, streams.names, "SECOND", 2));
    EXPECT_TRUE(checkNameInOtherStreams(streams.format, &streams.ui, streams.names, "NEW", 2));
    streams.names.setChecking(false, false);
    EXPECT_TRUE(checkNameInOtherStreams(streams.format, &streams.ui, streams.names, "FIRST", 2));
}

TEST(DuplicateNames, ConversionsOfANameInAnotherStreamAreChangedOnRequest) {
    TwoStreams streams;
    streams.ui.byId[457] = Button::Yes;
    EXPECT_TRUE(askEuChange(streams.format, &streams.ui, streams.names, "BOTH", 2, true));
    ASSERT_EQ(streams.ui.boxes.size(), 1U);
    EXPECT_EQ(streams.ui.boxes[0].titleId, 80);
    EXPECT_THAT(streams.ui.boxes[0].text,
                HasSubstr("You are about to delete the EU conversions for measurement 'BOTH'"));
    EXPECT_THAT(streams.ui.boxes[0].text, HasSubstr("will also be deleted"));
    // The parenthesis is never closed.
    EXPECT_THAT(streams.ui.boxes[0].text,
                EndsWith("(Yes = delete, No = Do not alter existing EU conversions"));
    streams.ui.byId[457] = Button::No;
    EXPECT_FALSE(askEuChange(streams.format, &streams.ui, streams.names, "BOTH", 2, false));
    EXPECT_THAT(streams.ui.boxes[1].text, HasSubstr("If you rename this measurement"));
}

TEST(DuplicateNames, NothingIsAskedForANameOfThisStreamAloneOrWithoutChecking) {
    TwoStreams streams;
    EXPECT_TRUE(askEuChange(streams.format, &streams.ui, streams.names, "SECOND", 2, true));
    streams.names.setChecking(false, false);
    EXPECT_TRUE(askEuChange(streams.format, &streams.ui, streams.names, "BOTH", 2, true));
    EXPECT_TRUE(streams.ui.boxes.empty());
}

TEST(DuplicateNames, ANullParentRefuses) {
    TwoStreams streams;
    EXPECT_FALSE(askEuChange(streams.format, nullptr, streams.names, "BOTH", 2, true));
    EXPECT_FALSE(checkNameInOtherStreams(streams.format, nullptr, streams.names, "BOTH", 2));
}

}  // namespace
}  // namespace kavu
