#include "core/text/Edition.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(EditionTest, EditionsAreInOrderAndEndWithTheLatest) {
    EXPECT_TRUE(std::is_sorted(kEditions.begin(), kEditions.end()));
    EXPECT_EQ(kEditions.back(), kLatestEdition);
}

TEST(EditionTest, NumberIsTheLastTwoDigitsOfTheYear) {
    EXPECT_EQ(editionNumber(1996), 96);
    EXPECT_EQ(editionNumber(2000), 0);
    EXPECT_EQ(editionNumber(2004), 4);
    EXPECT_EQ(editionNumber(2011), 11);
}

TEST(EditionTest, NumbersOfTwoDigitsBecomeYears) {
    struct Case {
        int number;
        int year;
    };
    for (const auto& c :
         {Case{0, 2000}, Case{4, 2004}, Case{95, 2095}, Case{96, 1996}, Case{97, 97}, Case{98, 98},
          Case{99, 1999}, Case{1999, 1999}, Case{-1, -1}, Case{100, 100}}) {
        EXPECT_EQ(normalisedEdition(c.number), c.year) << c.number;
    }
}

TEST(EditionTest, NumberAndYearOfEveryEditionBelongTogether) {
    for (const int year : kEditions) {
        EXPECT_EQ(normalisedEdition(editionNumber(year)), year);
    }
}

TEST(EditionTest, IsShownWithNumberAndYear) {
    EXPECT_EQ(editionText(2004), "106-04 (2004)");
    EXPECT_EQ(editionText(1996), "106-96 (1996)");
    EXPECT_EQ(editionText(2000), "106-00 (2000)");
}

}  // namespace
}  // namespace kavu
