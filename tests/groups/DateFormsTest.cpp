#include "groups/DateForms.h"
#include "support/TestContext.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr int kThisYear = 2026;

struct DateCase {
    const char* text;
    int source;
    const char* converted;  ///< null: left alone
    bool doubtful = false;
};

class DateForms : public testing::TestWithParam<DateCase> {};

TEST_P(DateForms, Converts) {
    const auto& c = GetParam();
    const auto date = convertDate(c.text, c.source, kThisYear);
    ASSERT_EQ(date.has_value(), c.converted != nullptr) << c.text;
    if (date) {
        EXPECT_EQ(date->text, c.converted);
        EXPECT_EQ(date->doubtful, c.doubtful);
    }
}

INSTANTIATE_TEST_SUITE_P(
    From1996, DateForms,
    testing::Values(DateCase{"04-07-09", 1996, "07-04-2009"},
                    DateCase{"31-12-26", 1996, "12-31-2026"},
                    DateCase{"31-12-27", 1996, "12-31-1927"},
                    DateCase{"01-02-00", 1996, "02-01-2000"},
                    DateCase{"99-99-99", 1996, "99-99-1999"}, DateCase{"04-07-0", 1996, nullptr},
                    DateCase{"", 1996, nullptr}, DateCase{"04/07/09", 1996, nullptr},
                    DateCase{"4-07-2009", 1996, nullptr}, DateCase{"AB-CD-EF", 1996, nullptr},
                    DateCase{"04-07-09 10:59", 1996, "07-04-2009", true}));

INSTANTIATE_TEST_SUITE_P(From1999, DateForms,
                         testing::Values(DateCase{"07-04-2009", 1999, "07-04-09"},
                                         DateCase{"07-04-1895", 1999, "07-04-95"},
                                         DateCase{"07-04-xx95", 2011, "07-04-95"},
                                         DateCase{"07-04-09", 1999, nullptr},
                                         DateCase{"07-04-20xx", 1999, nullptr},
                                         DateCase{"07.04.2009", 1999, nullptr}));

TEST(DateForms, TheOrderOfDayAndMonthIsSwappedOnTheWayFrom1996Only) {
    EXPECT_EQ(convertDate("04-07-09", 1996, kThisYear)->text, "07-04-2009");
    EXPECT_EQ(convertDate("07-04-2009", 1999, kThisYear)->text, "07-04-09");
}

TEST(DateForms, TheHourOfAConvertedTimeStandsAsTheTextOfItsFormat) {
    const auto fromOld = convertDate("07-04-09-10-59-33", 1996, kThisYear);
    ASSERT_TRUE(fromOld);
    EXPECT_EQ(fromOld->text, "04-07-2009-%2,2d-10-59");
    EXPECT_TRUE(fromOld->doubtful);
    const auto fromNew = convertDate("04-07-2009-10-59-33", 1999, kThisYear);
    ASSERT_TRUE(fromNew);
    EXPECT_EQ(fromNew->text, "04-07-09-%2,2d-10-59");
}

TEST(DateForms, ADoubtfulDateIsLoggedWithItsOldAndNewText) {
    test::TestContext t;
    reportDoubtfulDate(t.context, &t.ui, "R-1\\RI4", "old", "new");
    ASSERT_EQ(t.ui.logs.size(), 1U);
    EXPECT_EQ(t.ui.logs[0].id, 0);
    EXPECT_EQ(t.ui.logs[0].titleId, title::kWarning);
    EXPECT_NE(t.ui.logs[0].text.find("'old' (R-1\\RI4) was written as 'new'"), std::string::npos);
}

}  // namespace
}  // namespace kavu
