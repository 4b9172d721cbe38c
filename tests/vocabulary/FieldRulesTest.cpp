#include "core/text/Clock.h"
#include "vocabulary/FieldRules.h"

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

TEST(FieldRules, AnEntryThatOnlyXmlKnowsIsNotOffered) {
    constexpr auto choices = std::to_array<Choice>(
        {{"PM", "PM", "PM"}, {"FQPSK-JR", "", "FQPSK-JR"}, {"OTHR", "OTHR", "Other"}});
    const Field field{.code = "X", .limit = 8, .kind = FieldKind::Choice, .choices = choices};
    const auto offered = choicesOf(field, 2011);
    ASSERT_EQ(offered.size(), 2u);
    EXPECT_EQ(offered[1].value, "OTHR");
    // It is a value of the standard all the same, and may be typed.
    EXPECT_EQ(checkValue(field, "FQPSK-JR", 2011), ValueFault::None);
    EXPECT_EQ(storedValue(field, "fqpsk-jr", 2011), "FQPSK-JR");
    EXPECT_EQ(choiceList(field, 2011), "PM, FQPSK-JR, OTHR");
}

TEST(FieldRules, ATextThatThePageCutsIsStoredAsXmlKnowsIt) {
    constexpr auto choices = std::to_array<Choice>(
        {{"RHCP", "RHCP", "Right Hand"}, {"LINE", "LINEAR", {}}, {"LIN", {}, "Linear"}});
    const Field field{.limit = 4, .kind = FieldKind::Choice, .choices = choices};
    for (const char* const typed : {"LIN", "LINE", "linear", "Linear", "LINEA"}) {
        EXPECT_EQ(checkValue(field, typed, 2011), ValueFault::None) << typed;
        EXPECT_EQ(storedValue(field, typed, 2011), "LIN") << typed;
    }
    EXPECT_EQ(storedValue(field, "right hand", 2011), "RHCP");
    EXPECT_EQ(checkValue(field, "Right", 2011), ValueFault::NoChoice);
    EXPECT_EQ(choiceList(field, 2011), "RHCP, LIN");
}

TEST(FieldRules, TheLimitFollowsTheEdition) {
    constexpr Field field{.code = "RF4", .limit = 8, .limit1996 = 5, .limit1999 = 4};
    static_assert(limitIn(1996, field) == 5 && limitIn(1999, field) == 4);
    static_assert(limitIn(2000, field) == 8 && limitIn(2011, field) == 8);
    static_assert(limitIn(1996, Field{.limit = 3}) == 3);
}

TEST(FieldRules, APageKnowsTheFieldsOfItsEditionWithTheirLimits) {
    constexpr auto table = std::to_array<Field>({
        {.code = "A", .limit = 10, .limit1996 = 8},
        {.code = "B", .firstEdition = 2009},
        {.code = "C", .lastEdition = 1999},
        {.code = "D", .bridgeOnly = true},
    });
    const auto early = knownFields(table, 1996);
    ASSERT_EQ(early.size(), 2u);
    EXPECT_EQ(early[0].limit, 8u);
    EXPECT_EQ(early[1].code, "C");
    const auto late = knownFields(table, 2011);
    ASSERT_EQ(late.size(), 2u);
    EXPECT_EQ(late[0].limit, 10u);
    EXPECT_EQ(late[1].code, "B");
}

TEST(FieldRules, EachFaultOfAValueIsNamed) {
    struct Case {
        Field field;
        std::string_view value;
        ValueFault fault;
    };
    constexpr auto yesNo = std::to_array<Choice>({{.text = "Yes"}, {.text = "No"}});
    const Field text{.limit = 4};
    const Field choice{.limit = 1, .kind = FieldKind::Choice, .choices = yesNo};
    const Field date{.limit = 10, .kind = FieldKind::Date};
    const Field moment{.limit = 19, .kind = FieldKind::DateTime};
    const Field digits{.limit = 2, .kind = FieldKind::Digits};
    const Field count{.kind = FieldKind::Count, .rows = 9};
    const Case cases[] = {
        {text, "", ValueFault::None},
        {text, "abcd", ValueFault::None},
        {text, "abcde", ValueFault::TooLong},
        {text, "a;bcde", ValueFault::Semicolon},
        {choice, "y", ValueFault::None},
        {choice, "Yes", ValueFault::None},
        {choice, "Q", ValueFault::NoChoice},
        {choice, ";", ValueFault::Semicolon},
        {date, "02-31-2005", ValueFault::None},
        {date, "today", ValueFault::BadDate},
        {moment, "02-31-2005", ValueFault::BadDate},
        {moment, "02-31-2005-00-00-59", ValueFault::None},
        {digits, "12", ValueFault::None},
        {digits, "1a", ValueFault::NotDigits},
        {digits, "123", ValueFault::TooLong},
        {count, "9", ValueFault::None},
        {count, "10", ValueFault::TooMany},
        {count, "99999999999999999999999", ValueFault::TooMany},
        {count, "-1", ValueFault::NotDigits},
    };
    for (const auto& [field, value, fault] : cases) {
        EXPECT_EQ(checkValue(field, value, 2011), fault) << value;
    }
}

TEST(FieldRules, AValueIsStoredByTheRuleOfItsField) {
    constexpr auto levels = std::to_array<Choice>({{.text = "Secret"}, {.text = "Top Secret"}});
    const Field choice{.limit = 1, .kind = FieldKind::Choice, .choices = levels};
    EXPECT_EQ(storedValue(choice, "top", 2011), "T");
    EXPECT_EQ(storedValue(choice, "", 2011), "");
    EXPECT_EQ(storedValue(Field{}, " two  ", 2011), " two");
}

TEST(FieldRules, AValueOfAChoiceIsStoredBeforeATextThatBeginsSo) {
    constexpr auto bits = std::to_array<Choice>({{.value = "0", .text = "1.0"},
                                                 {.value = "1", .text = "1.5"},
                                                 {.value = "2", .text = "2.0"}});
    const Field choice{.kind = FieldKind::Choice, .choices = bits};
    EXPECT_EQ(storedValue(choice, "1", 2011), "1");
    EXPECT_EQ(storedValue(choice, "1.0", 2011), "0");
    EXPECT_EQ(storedValue(choice, "2", 2011), "2");
}

TEST(FieldRules, ACountFromAFileStaysWithinItsList) {
    EXPECT_EQ(clampedCount("12", 9), 9u);
    EXPECT_EQ(clampedCount("3 rows", 9), 3u);
    for (const char* text : {"", "-4", "none", "0", "-99999999999999999999"}) {
        EXPECT_EQ(clampedCount(text, 9), 0u) << text;
    }
    EXPECT_EQ(clampedCount("99999999999999999999", 9), 9u);
}

TEST(FieldRules, AChangeFillsItsEmptyDates) {
    constexpr auto rules = std::to_array<AutomaticDate>({
        {.field = {}, .date = "OD"},
        {.field = "RN", .date = "RD"},
        {.field = "RI1", .date = "RI4", .kind = FieldKind::DateTime},
    });
    const FixedClock clock(CivilTime{2026, 1, 2, 3, 4, 5});
    FieldValues values;
    EXPECT_EQ(fillDates(rules, "PN", values, clock, 2011), std::vector<std::string_view>{"OD"});
    EXPECT_EQ(values["OD"], "01-02-2026");
    EXPECT_EQ(fillDates(rules, "RN", values, clock, 1996), std::vector<std::string_view>{"RD"});
    EXPECT_EQ(values["RD"], "01-02-26");
    EXPECT_TRUE(fillDates(rules, "RN", values, clock, 2011).empty());
    fillDates(rules, "RI1", values, clock, 2011);
    EXPECT_EQ(values["RI4"], "01-02-2026-03-04-05");
}

}  // namespace
}  // namespace kavu
