#include "application/automation/AutomationValues.h"

#include <limits>

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;

/// The name of the error, or "none".
template <typename Call>
std::string faultOf(const Call& call) {
    try {
        call();
        return "none";
    } catch (const AutomationError& error) {
        return std::string(automationErrorName(error.fault())) + " " +
               std::string(error.what()).substr(0, 3);
    }
}

TEST(AutomationValues, EveryErrorHasItsNameOnTheBus) {
    EXPECT_EQ(automationErrorName(AutomationFault::NoDocument), "Kavu.Error.NoDocument");
    EXPECT_EQ(automationErrorName(AutomationFault::NotANumber), "Kavu.Error.NotANumber");
    EXPECT_EQ(automationErrorName(AutomationFault::FileError), "Kavu.Error.FileError");
    EXPECT_STREQ(AutomationError::refused(-144, "Text").what(), "144: Text");
    EXPECT_STREQ(AutomationError::refused(0, "Text").what(), "0: Text");
}

TEST(AutomationValues, ANameMayBeWindows1252InTheFile) {
    EXPECT_THAT(storedForms("A"), ElementsAre("A"));
    EXPECT_THAT(storedForms("Gr\xC3\xB6\xC3\x9F"
                            "e\xE2\x82\xAC"),
                ElementsAre("Gr\xC3\xB6\xC3\x9F"
                            "e\xE2\x82\xAC",
                            "Gr\xF6\xDF"
                            "e\x80"));
    EXPECT_THAT(storedForms("\xCE\xB1"), ElementsAre("\xCE\xB1")) << "alpha is not in it";
}

TEST(AutomationValues, ATextKeepsTheBytesOfItsField) {
    EXPECT_EQ(storedText("\xC3\xB6", "\xF6"), "\xF6") << "the same text";
    EXPECT_EQ(storedText("\xC3\xA4", "\xF6"), "\xE4") << "the field has Windows-1252";
    EXPECT_EQ(storedText("\xCE\xB1", "\xF6"), "\xCE\xB1") << "which has no alpha";
    EXPECT_EQ(storedText("\xC3\xA4", "x"), "\xC3\xA4");
    EXPECT_EQ(shownText("a\x14\x15"
                        "b\xF6"),
              "a\r\nb\xC3\xB6");
}

TEST(AutomationValues, ANumberIsNeverGuessed) {
    EXPECT_EQ(numberOfText(" 12 ", "rate"), 12);
    EXPECT_EQ(numberOfText("-3", "rate"), -3);
    for (const char* const bad : {"", "x", "1.5", "12x", "99999999999", "1e3"}) {
        EXPECT_EQ(faultOf([&] { (void)numberOfText(bad, "rate"); }).substr(0, 21),
                  "Kavu.Error.NotANumber")
            << bad;
    }
}

TEST(AutomationValues, ANewNameHasOneTo32BytesWithoutBlanksAround) {
    const std::string longest(32, 'x');
    EXPECT_EQ(faultOf([&] { requireNewName(longest, 361); }), "none");
    EXPECT_EQ(faultOf([&] { requireNewName("A B", 361); }), "none");
    EXPECT_EQ(faultOf([&] { requireNewName("", 361); }), "Kavu.Error.Refused 361");
    EXPECT_EQ(faultOf([&] { requireNewName("A;B", 361); }), "Kavu.Error.Refused 402");
    for (const auto& bad : {longest + "x", std::string(" A"), std::string("A "),
                            std::string("A\nB"), std::string("A\tB"), std::string(" ")}) {
        EXPECT_EQ(faultOf([&] { requireNewName(bad, 361); }).substr(0, 19), "Kavu.Error.BadValue")
            << bad;
    }
}

TEST(AutomationValues, ARangeIncludesItsEnds) {
    EXPECT_EQ(faultOf([] { requireRange(1, 1, 99, "length"); }), "none");
    EXPECT_EQ(faultOf([] { requireRange(99, 1, 99, "length"); }), "none");
    for (const std::int64_t bad : {std::int64_t{0}, std::int64_t{100},
                                   std::int64_t{std::numeric_limits<std::int32_t>::min()},
                                   std::int64_t{std::numeric_limits<std::int32_t>::max()}}) {
        EXPECT_EQ(faultOf([&] { requireRange(bad, 1, 99, "length"); }).substr(0, 21),
                  "Kavu.Error.OutOfRange");
    }
}

TEST(AutomationValues, ACodeIsTakenInAnyCaseAndByEdition) {
    static constexpr Choice kChoices[] = {{.value = "INC"}, {.value = "D", .firstEdition = 2009}};
    EXPECT_EQ(requireCode(kChoices, 2009, "inc", "direction"), "INC");
    EXPECT_EQ(requireCode(kChoices, 2009, "d", "direction"), "D");
    EXPECT_EQ(faultOf([] { (void)requireCode(kChoices, 2007, "D", "direction"); }).substr(0, 19),
              "Kavu.Error.BadValue");
    EXPECT_EQ(faultOf([] { (void)requireCode(kChoices, 2009, "", "direction"); }).substr(0, 19),
              "Kavu.Error.BadValue");
}

}  // namespace
}  // namespace kavu
