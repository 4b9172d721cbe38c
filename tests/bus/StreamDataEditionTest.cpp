#include "bus/StreamDataEdition.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

constexpr char kSince2009[] =
    "This is a 106-%s TMATS file. The feature you are trying to access was not introduced until "
    "IRIG version 106-%s";

std::string notice(const std::string& edition, const std::string& first) {
    return formatPrintf(kSince2009, edition, first);
}

TEST(StreamDataEdition, MessagesAreKnownFromTheEditionThatHasThem) {
    for (const auto& [edition, text] :
         {std::pair{1996, "96"}, {2004, "04"}, {2005, "05"}, {2007, "07"}}) {
        TestContext t(edition);
        EXPECT_FALSE(knowsMessages(t.context, &t.ui)) << edition;
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        EXPECT_EQ(t.ui.boxes[0].id, 73);
        EXPECT_EQ(t.ui.boxes[0].titleId, 78);
        EXPECT_EQ(t.ui.boxes[0].text, notice(text, "09"));
    }
    for (const int edition : {2009, 2011}) {
        TestContext t(edition);
        EXPECT_TRUE(knowsMessages(t.context, &t.ui));
        EXPECT_TRUE(t.ui.boxes.empty());
    }
}

TEST(StreamDataEdition, PacketsAreKnownInTheTwoEditionsThatHaveThem) {
    for (const int edition : {2005, 2007}) {
        TestContext t(edition);
        EXPECT_TRUE(knowsPackets(t.context, &t.ui));
        EXPECT_TRUE(t.ui.boxes.empty());
    }
    TestContext t(2004);
    EXPECT_FALSE(knowsPackets(t.context, &t.ui));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 73);
    EXPECT_EQ(t.ui.boxes[0].text, notice("04", "05"));
}

TEST(StreamDataEdition, TheNoticeForPacketsAlsoSaysSinceWhenThereAreNone) {
    for (const auto& [edition, text] : {std::pair{2009, "09"}, {2011, "11"}}) {
        TestContext t(edition);
        EXPECT_FALSE(knowsPackets(t.context, &t.ui));
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        EXPECT_EQ(t.ui.boxes[0].text, notice(text, "05") + ", and was removed in 106-09");
    }
    TestContext silent(2011);
    EXPECT_FALSE(knowsPackets(silent.context, nullptr));
}

}  // namespace
}  // namespace kavu
