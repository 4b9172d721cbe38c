#include "core/document/GroupFiles.h"
#include "groups/MeasurementNames.h"
#include "groups/NamesInStreams.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

class NamesInStreamsTest : public ::testing::Test {
  protected:
    NamesInStreamsTest() {
        t.write(groupFile('M', 1),
                "M-1\\ID:S;\r\nM-1\\BB\\DLN:One;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:Two;\r\n");
        t.write(groupFile('D', 1), "D-1\\DLN:Two;\r\nD-1\\MN-1-1:SPEED;\r\n");
        EXPECT_TRUE(names.checkForDuplicates(&t.ui));
        names.setChecking(true, false);
    }
    test::TestContext t;
    MeasurementNames names{t.context};
};

TEST_F(NamesInStreamsTest, StreamsAreCountedInTheOrderOfTheirLinks) {
    EXPECT_EQ(streamNumberOf(t.context, &t.ui, "One"), 1);
    EXPECT_EQ(streamNumberOf(t.context, &t.ui, "Two"), 2);
    EXPECT_EQ(streamNumberOf(t.context, &t.ui, "Three"), 0);
}

TEST_F(NamesInStreamsTest, ANameOfAnotherStreamIsRefusedWhileNamesAreChecked) {
    EXPECT_TRUE(isFreeInOtherStreams(t.context, &t.ui, names, "SPEED", 2));
    EXPECT_TRUE(isFreeInOtherStreams(t.context, &t.ui, names, "HEIGHT", 1));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_FALSE(isFreeInOtherStreams(t.context, &t.ui, names, "SPEED", 1));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 455);
    names.setChecking(false, false);
    EXPECT_TRUE(isFreeInOtherStreams(t.context, &t.ui, names, "SPEED", 1));
}

}  // namespace
}  // namespace kavu
