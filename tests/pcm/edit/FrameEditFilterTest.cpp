#include "pcm/PcmLoad.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditFilter.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::StreamFixture;
using testing::ElementsAre;

constexpr const char* kFile = "[kavu]DSMF0000.D04";

struct FilterFixture : StreamFixture {
    explicit FilterFixture(int edition) : StreamFixture(edition) {
        format.dGroup = 4;
        place(3, 1, "SPEED");
        place(2, 1, "HEIGHT");
        format.changed = false;
    }
};

TEST(FrameEditFilter, WithoutMeasurementsThereIsNothingToSet) {
    StreamFixture f(2009);
    EXPECT_FALSE(readFilterList(f.format, f.parent));
    EXPECT_TRUE(f.ui.hasBox(340));
    EXPECT_FALSE(readFilterList(f.format, nullptr));
    FilterFixture older(2007);
    EXPECT_FALSE(hasFilterList(older.format));
    EXPECT_FALSE(readFilterList(older.format, older.parent));
    EXPECT_TRUE(older.ui.boxes.empty());
}

TEST(FrameEditFilter, In2009TheSelectedMeasurementsAreListed) {
    FilterFixture f(2009);
    f.write(kFile, "D-4\\SMF\\N-1:2;\r\nD-4\\SMF\\SMN-1-1:speed;\r\nD-4\\SMF\\SMN-1-2:GONE;\r\n");
    auto rows = readFilterList(f.format, f.parent);
    ASSERT_TRUE(rows);
    EXPECT_THAT(*rows, ElementsAre(FilterRow{"HEIGHT", "No"}, FilterRow{"SPEED", "Yes"},
                                   FilterRow{"GONE", "Yes"}));
    (*rows)[0].setting = "Yes";
    (*rows)[2].setting = "No";
    ASSERT_TRUE(storeFilterList(f.format, f.parent, *rows));
    EXPECT_EQ(f.TestContext::read(kFile),
              "D-4\\SMF\\N-1:2;\r\nD-4\\SMF\\SMN-1-1:HEIGHT;\r\nD-4\\SMF\\SMN-1-2:SPEED;\r\n");
    EXPECT_TRUE(f.format.changed);
}

TEST(FrameEditFilter, From2011OnEveryRowHasItsSetting) {
    FilterFixture f(2011);
    f.write(kFile,
            "D-4\\SMF\\N:3;\r\nD-4\\SMF\\SMN-1:SPEED;\r\nD-4\\SMF\\MFOT-1:O;\r\n"
            "D-4\\SMF\\SMN-2:GONE;\r\nD-4\\SMF\\MFOT-2:F;\r\nD-4\\SMF\\SMN-3:ODD;\r\n");
    auto rows = readFilterList(f.format, f.parent);
    ASSERT_TRUE(rows);
    EXPECT_THAT(*rows, ElementsAre(FilterRow{"HEIGHT", ""}, FilterRow{"SPEED", "Overwrite"},
                                   FilterRow{"GONE", "Filter"}, FilterRow{"ODD", "Neither"}));
    ASSERT_TRUE(storeFilterList(f.format, f.parent, *rows));
    EXPECT_EQ(f.TestContext::read(kFile),
              "D-4\\SMF\\N:4;\r\nD-4\\SMF\\SMN-1:HEIGHT;\r\nD-4\\SMF\\MFOT-1:N;\r\n"
              "D-4\\SMF\\SMN-2:SPEED;\r\nD-4\\SMF\\MFOT-2:O;\r\n"
              "D-4\\SMF\\SMN-3:GONE;\r\nD-4\\SMF\\MFOT-3:F;\r\n"
              "D-4\\SMF\\SMN-4:ODD;\r\nD-4\\SMF\\MFOT-4:N;\r\n");
}

TEST(FrameEditFilter, CommandsOfOtherProgramsStayWithTheirNumbers) {
    FilterFixture f(2011);
    f.write(kFile, "D-4\\SMF\\N:1;\r\nD-4\\SMF\\OWN-2:own;\r\nD-4\\SMF\\SMN-1:SPEED;\r\n");
    ASSERT_TRUE(storeFilterList(f.format, f.parent, {{"HEIGHT", "Filter"}}));
    EXPECT_EQ(f.TestContext::read(kFile),
              "D-4\\SMF\\N:1;\r\nD-4\\SMF\\SMN-1:HEIGHT;\r\nD-4\\SMF\\MFOT-1:F;\r\n"
              "D-4\\SMF\\OWN-2:own;\r\n");
}

TEST(FrameEditFilter, AFileThatCanNotBeWrittenIsToldAndTheOldListStays) {
    FilterFixture f(2009);
    f.write(kFile, "D-4\\SMF\\N-1:0;\r\n");
    std::filesystem::create_directory(f.store.pathOf(std::string(kFile)) + ".new");
    EXPECT_FALSE(storeFilterList(f.format, f.parent, {{"SPEED", "Yes"}}));
    EXPECT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_EQ(f.TestContext::read(kFile), "D-4\\SMF\\N-1:0;\r\n");
    EXPECT_FALSE(f.format.changed);
}

}  // namespace
}  // namespace kavu
