#include "core/FieldRules.h"

#include <array>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr auto kSources = std::to_array<Choice>({
    {.value = "RF", .text = "RF"},
    {.value = "TAP", .text = "Tape"},
    {.value = "STO", .text = "Storage", .firstEdition = 2004},
    {.value = "DSS", .text = "Distributed Source", .firstEdition = 2009},
    {.value = "OTH", .text = "Other"},
});

TEST(FieldRules, TheEntriesOfAChoiceFollowTheEdition) {
    const Field field{.code = "X", .choices = kSources};
    EXPECT_EQ(choicesOf(field, 1999).size(), 3u);
    EXPECT_EQ(choicesOf(field, 2004).size(), 4u);
    EXPECT_EQ(choicesOf(field, 2009).size(), 5u);
}

TEST(FieldRules, AChoiceIsTheFirstEntryThatBeginsWithTheValue) {
    constexpr auto choices =
        std::to_array<Choice>({{.text = "Yes"}, {.text = "No"}, {.text = "Not yet"}});
    EXPECT_EQ(choiceIndex(choices, "Y"), 0);
    EXPECT_EQ(choiceIndex(choices, "y"), 0);
    EXPECT_EQ(choiceIndex(choices, "yES"), 0);
    EXPECT_EQ(choiceIndex(choices, "n"), 1);
    EXPECT_EQ(choiceIndex(choices, "not"), 2);
    EXPECT_EQ(choiceIndex(choices, "Yes!"), -1);
    EXPECT_EQ(choiceIndex(choices, "Q"), -1);
    EXPECT_EQ(choiceIndex(choices, ""), -1);
}

TEST(FieldRules, AChoiceIsFoundByItsValueWhereNoTextBeginsWithIt) {
    EXPECT_EQ(choiceIndex(kSources, "DSS"), 3);
    EXPECT_EQ(choiceIndex(kSources, "dss"), 3);
    EXPECT_EQ(choiceIndex(kSources, "DS"), -1);
}

TEST(FieldRules, AChoiceIsStoredAsItsValueOrTheLeftmostCharacters) {
    EXPECT_EQ(storedChoice(kSources[3], 3), "DSS");
    EXPECT_EQ(storedChoice({.text = "Top Secret"}, 1), "T");
    EXPECT_EQ(storedChoice({.text = "Top Secret"}, 4), "Top");
    EXPECT_EQ(storedChoice({.text = "Top Secret"}, 0), "Top Secret");
}

TEST(FieldRules, GoodDatesPass) {
    for (const char* text : {"", "01-01-2011", "12-31-0000", "02-31-2005"}) {
        EXPECT_TRUE(isValidDate(text, 2005)) << text;
    }
    EXPECT_TRUE(isValidDate("12-31-99", 1996));
    EXPECT_TRUE(isValidDateTime("12-31-2005-23-59-59", 2005));
    EXPECT_TRUE(isValidDateTime("12-31-96-00-00-00", 1996));
}

TEST(FieldRules, BadDatesAreRefused) {
    for (const char* text : {"12-31-99", "13-01-2011", "00-01-2011", "01-00-2011", "01-32-2011",
                             "01/01/2011", "1-1-2011", "01-01-20x1", " 01-01-2011", "01-01-2011 ",
                             "01-01-2011-00-00-00", "+1-01-2011"}) {
        EXPECT_FALSE(isValidDate(text, 2005)) << text;
    }
    EXPECT_FALSE(isValidDate("12-31-1999", 1996));
    for (const char* text : {"12-31-2005", "12-31-2005-24-00-00", "12-31-2005-00-60-00",
                             "12-31-2005-00-00-60", "12-31-2005 00-00-00", "12-31-2005-00:00:00"}) {
        EXPECT_FALSE(isValidDateTime(text, 2005)) << text;
    }
}

TEST(FieldRules, AWholeNumberIsReadInFullOrNotAtAll) {
    EXPECT_EQ(parseInteger("12"), 12);
    EXPECT_EQ(parseInteger(" -12\t"), -12);
    EXPECT_EQ(parseInteger("+7"), 7);
    for (const char* text :
         {"", " ", "12x", "1 2", "1.0", "0x10", "+-1", "--1", "+", "9223372036854775808"}) {
        EXPECT_FALSE(parseInteger(text)) << text;
    }
}

TEST(FieldRules, ANumberIsReadInFullOrNotAtAll) {
    EXPECT_EQ(parseDouble("1.5"), 1.5);
    EXPECT_EQ(parseDouble(" -2E3 "), -2000);
    EXPECT_EQ(parseDouble("+.5"), 0.5);
    for (const char* text : {"", "1,5", "1.5V", "nan", "inf", "1e999", "--1"}) {
        EXPECT_FALSE(parseDouble(text)) << text;
    }
}

}  // namespace
}  // namespace kavu
