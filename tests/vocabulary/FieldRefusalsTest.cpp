#include "vocabulary/FieldRefusals.h"
#include "vocabulary/FieldRules.h"

#include <array>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr auto kChoices = std::to_array<Choice>({
    {"FM", "FM", "FM"},
    {"PM", "PM", "PM", 2004},
    {"XM", "", "Xml"},
});
constexpr Field kChoice{.code = "A", .limit = 2, .kind = FieldKind::Choice, .choices = kChoices};
constexpr Field kText{.code = "B", .limit = 3, .firstEdition = 2004, .lastEdition = 2009};

TEST(FieldRefusals, AnEditionWithoutTheFieldIsNamed) {
    EXPECT_EQ(editionRefusal(kText, 2007), "");
    EXPECT_EQ(
        editionRefusal(kText, 1999),
        "It is known from IRIG 106-04 (2004) on, and this document is of IRIG 106-99 (1999).");
    EXPECT_EQ(editionRefusal(kText, 2011),
              "It is known up to IRIG 106-09 (2009), and this document is of IRIG 106-11 (2011).");
}

TEST(FieldRefusals, AValueIsRefusedInWordsForTheUser) {
    EXPECT_EQ(valueRefusal(kText, "abc", 2004), "");
    EXPECT_EQ(valueRefusal(kText, "abcd", 2004), "The value can only be 3 characters long.");
    EXPECT_EQ(valueRefusal(kText, "a;", 2004), "A value cannot hold a semi-colon.");
    EXPECT_EQ(valueRefusal(kChoice, "ZZ", 1999), "The value is not one of: FM, XM.");
    EXPECT_EQ(valueRefusal(kChoice, "ZZ", 2011), "The value is not one of: FM, PM, XM.");
    EXPECT_EQ(choiceList(kChoice, 2011), "FM, PM, XM");
}

}  // namespace
}  // namespace kavu
