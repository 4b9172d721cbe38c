#include "core/talk/Findings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(FindingPlaceTest, IsTheFirstCommandThatTheTextNames) {
    const auto place = placeIn("Invalid Word Length field (P-12\\AEF2-1) found, see D-3\\MN1-1.");
    EXPECT_EQ(place.letter, 'P');
    EXPECT_EQ(place.group, 12);
    EXPECT_EQ(place.code, "P-12\\AEF2-1");
    EXPECT_EQ(placeText(place), "P-12\\AEF2-1");
    const auto general = placeIn("G\\PN:KESTREL;");
    EXPECT_EQ(general.letter, 'G');
    EXPECT_EQ(general.group, 0);
    EXPECT_EQ(general.code, "G\\PN");
}

TEST(FindingPlaceTest, HasTheNamesOfMeasurementsAndStreamsInQuotes) {
    const auto place = placeIn("Measurement 'ENG1-N1' of Stream: 'PCM Stream 1' has no place.");
    EXPECT_EQ(place.measurement, "ENG1-N1");
    EXPECT_EQ(place.stream, "PCM Stream 1");
    EXPECT_EQ(placeText(place), "ENG1-N1");
    EXPECT_EQ(placeText(placeIn("The data link 'Pod' is not used")), "Pod");
}

TEST(FindingPlaceTest, IsUnknownWithoutAny) {
    for (const char* const text : {"Nothing is named here, not even P-x", "", "XP-1\\D2", "P-",
                                   "a measurement without a name", "measurement 'without an end"}) {
        EXPECT_FALSE(placeIn(text).isKnown()) << text;
    }
}

const std::vector<LoggedMessage> kLogged = {
    {7, 0, "", "a message of a log that was thrown away"},
    {264, 89, "Error Reading", "Unable to place measurement 'A'.\n\nIt is left out: <D-1\\LT-1-1>"},
    {-303, 89, "Error Reading", "Unable to create new"}};

TEST(FindingsOfLog, AreTheMessagesThatTheLogHoldsHoweverItBreaksThem) {
    const auto findings = findingsOfLog(
        kLogged,
        {"Error Reading - (KAVU Error #264)", "", "Unable to place measurement", "'A'.", "",
         "It is left out: <D-1\\LT-1-1>", "", "Last TMATS commands read:", "", "D-1\\MN-1-1:A;",
         "D-1\\LT-1-1:X;", "", "Error Reading", "", "Unable to create new", ""},
        "File");
    ASSERT_THAT(findings, SizeIs(2));
    EXPECT_EQ(findings[0].id, 264);
    EXPECT_EQ(findings[0].title, "Error Reading");
    EXPECT_EQ(findings[0].text, kLogged[1].text);
    EXPECT_EQ(findings[0].commands, "D-1\\MN-1-1:A; D-1\\LT-1-1:X;");
    EXPECT_EQ(findings[0].source, "File");
    EXPECT_EQ(findings[0].place.measurement, "A");
    EXPECT_EQ(findings[0].place.code, "D-1\\LT-1-1");
    EXPECT_EQ(findings[1].id, 303);
    EXPECT_EQ(findings[1].commands, "");
}

TEST(FindingsOfLog, AreItsLinesIfItHoldsNoMessage) {
    const auto findings = findingsOfLog(kLogged, {"one", "", "  ", "P-1\\D2 is wrong"}, "Save");
    ASSERT_THAT(findings, SizeIs(2));
    EXPECT_EQ(findings[0].text, "one");
    EXPECT_EQ(findings[1].place.code, "P-1\\D2");
    EXPECT_EQ(findings[1].source, "Save");
    EXPECT_THAT(findingsOfLog({}, {}, "Save"), IsEmpty());
}

TEST(FindingsOfLog, OfAHundredThousandMessagesCostOnePass) {
    std::vector<LoggedMessage> logged;
    std::vector<std::string> lines;
    for (int i = 0; i < 100'000; ++i) {
        logged.push_back({1, 0, "", "Message " + std::to_string(i) + "."});
        lines.push_back(logged.back().text);
    }
    EXPECT_THAT(findingsOfLog(logged, lines, "File"), SizeIs(100'000));
}

TEST(LinesOfFindings, HaveTheFormOfTheMessageLog) {
    Finding numbered;
    numbered.id = 264;
    numbered.title = "Error";
    numbered.text = "one\ntwo";
    EXPECT_THAT(linesOfFindings({numbered, findingOfText("a remark", "Remark")}),
                ElementsAre("Error - (KAVU Error #264)", "", "one", "two", "", "a remark", ""));
}

}  // namespace
}  // namespace kavu
