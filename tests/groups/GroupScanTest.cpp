#include "groups/GroupScan.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;

TEST(LinkNamesTest, HoldsANameOnceWhateverItsCase) {
    LinkNames names;
    EXPECT_TRUE(names.add("Link"));
    EXPECT_FALSE(names.add("LINK"));
    EXPECT_FALSE(names.add(""));
    EXPECT_TRUE(names.has("link"));
    EXPECT_TRUE(names.has("Link "));  // no command keeps the blank
    EXPECT_FALSE(names.has(" Link"));
    EXPECT_THAT(names.names(), ElementsAre("Link"));
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

}  // namespace
}  // namespace kavu
