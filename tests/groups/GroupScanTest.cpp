#include "groups/GroupScan.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;

TEST(LinkNamesTest, HoldsEachNameOnceAsItIsSpelled) {
    LinkNames names;
    EXPECT_TRUE(names.add("Link"));
    EXPECT_FALSE(names.add("Link"));
    EXPECT_FALSE(names.add(""));
    EXPECT_TRUE(names.has("Link"));
    EXPECT_FALSE(names.has("link"));
    EXPECT_TRUE(names.has("Link "));  // no command keeps the blank
    EXPECT_FALSE(names.has(" Link"));
    EXPECT_TRUE(names.add("LINK"));
    EXPECT_THAT(names.names(), ElementsAre("Link", "LINK"));
}

TEST(GroupScan, PcmFilesAreReadWithWhatIsEmbeddedInThem) {
    test::TestContext t;
    t.write("[kavu]PCMFMT.P02",
            "P-2\\DLN:Outer;\r\nP-2\\TF:TWO;\r\nP-2\\ADM\\N:1;\r\nP-2\\ADM\\DMN-1:Merge;\r\n"
            "P-2\\AEF\\N:1;\r\nP-2\\AEF\\DLN-1:Inner;\r\nP-2\\AEF\\DLN-2:not counted;\r\n");
    std::vector<PcmLinks> formats;
    EXPECT_TRUE(readPcmLinks(t.context, &t.ui, formats));
    ASSERT_EQ(formats.size(), 1U);
    EXPECT_EQ(formats[0].index, 2);
    EXPECT_EQ(formats[0].link, "Outer");
    EXPECT_EQ(formats[0].format, "TWO");
    EXPECT_THAT(formats[0].embedded, ElementsAre("Inner", "Merge"));
}

TEST(GroupScan, ACancelEndsTheReading) {
    test::TestContext t;
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:a;\r\n");
    t.ui.cancelAtPoll = 1;
    std::vector<PcmLinks> formats;
    EXPECT_FALSE(readPcmLinks(t.context, &t.ui, formats));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(GroupScan, MultiplexFilesAreReadWithTheirLinksInTheOrderOfTheGroup) {
    test::TestContext t;
    t.write("[kavu]MULT.M03",
            "M-3\\SI\\DLN-2:Second;\r\nM-3\\SI\\N:2;\r\nM-3\\SI\\DLN-1:First;\r\n"
            "M-3\\SI\\DLN-3:not counted;\r\nM-3\\BB\\DLN:Base;\r\nM-3\\SI\\MN-1:Measured;\r\n"
            "M-3\\ID:Source;\r\n");
    t.write("[kavu]MULT.M04", "M-4\\BB\\MN:Measured;\r\nM-4\\SI\\N:400;\r\n");
    std::vector<Multiplex> multiplexes;
    EXPECT_TRUE(readMultiplexes(t.context, &t.ui, multiplexes));
    ASSERT_EQ(multiplexes.size(), 2U);
    EXPECT_EQ(multiplexes[0].index, 3);
    EXPECT_EQ(multiplexes[0].source, "Source");
    EXPECT_THAT(multiplexes[0].links, ElementsAre("Base", "First", "Second"));
    EXPECT_EQ(multiplexes[1].source, "");
    EXPECT_TRUE(multiplexes[1].links.empty());
}

}  // namespace
}  // namespace kavu
