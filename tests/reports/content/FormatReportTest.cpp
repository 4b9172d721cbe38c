#include "reports/ReportStage.h"
#include "reports/content/FormatReport.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::Commands;
using test::plainFormat;
using test::ReportStage;
using test::operator+;

TEST(FormatReport, HasFiveSectionsWithTheTextsOfTheValues) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(5, 4) + Commands{"D1:NRZ-L", "D2:1000000", "D3:U", "D4:I",
                                                    "D5:Y", "D6:N", "D7:N", "D8:STD", "F2:M",
                                                    "F3:NO", "F4:T", "MF3:FPT", "SYNC1:0",
                                                    "SYNC2:1", "SYNC3:2", "SYNC4:3"}));
    t.format.syncPattern = "1111";
    EXPECT_EQ(t.body(ReportKind::Format),
              "Input Data\n\n\tPCM Code:\t\t\tNRZ-L\n\tEncryption:\t\t\tUnencrypted\n"
              "\tBit Rate:\t\t\t1000000 (bps)\n\tData Direction:\t\t\tNormal\n"
              "\tPolarity:\t\t\tInverted\n\tData Randomized:\t\tNo\n"
              "\tAuto Polarity Correction:\tYes\n\tRandomizer Length:\t\tStandard\n"
              "\nFormat Data\n\n\tType Format:\t\t\tTWO\n\tCommon Word Length:\t\t16\n"
              "\tParity:\t\t\t\tNone\n\tWord Transfer Order:\t\tMSB\n"
              "\tParity Transfer Order:\t\tTrails Word\n"
              "\nMinor Frame\n\n\tNumber Of Minor Frames:\t\t4\n\tBits Per Minor Frame:\t\t88\n"
              "\tWords Per Minor Frame:\t\t5\n"
              "\nFrame Sync\n\n\tSync Type:\t\tFixed Pattern\n\tSync Pattern Length:\t24\n"
              "\tSync Pattern:\t\t1111\n"
              "\nSync Criteria\n\n\tIn Sync\n\t\tCriteria:\t\t0\n\t\tSync Pattern:\t\t1\n"
              "\tOut Of Sync\n\t\tNumber Of Disagrees:\t2\n\t\tSync Pattern:\t\t3\n");
}

TEST(FormatReport, AnotherCodeIsFollowedByItsTextWithoutABlankAndByNothingWithoutOne) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(3, 1) + Commands{"D1:OTHER"}));
    EXPECT_NE(t.text(ReportKind::Format).find("\tPCM Code:\t\t\tOTHER\n"), std::string::npos);
    t.format.nonStandardCode = "MINE";
    EXPECT_NE(t.text(ReportKind::Format).find("\tPCM Code:\t\t\tOTHER(MINE)\n"), std::string::npos);
}

TEST(FormatReport, UnknownValuesStayAsStoredAndEmptyOnesEmptyButForTheWordOrder) {
    ReportStage t;
    ASSERT_TRUE(t.load(plainFormat(3, 1)));
    t.format.parity = "XX";
    t.format.polarity = "";
    t.format.wordTransferOrder = "";
    const auto text = t.text(ReportKind::Format);
    EXPECT_NE(text.find("\tParity:\t\t\t\tXX\n"), std::string::npos);
    EXPECT_NE(text.find("\tPolarity:\t\t\t\n"), std::string::npos);
    EXPECT_NE(text.find("\tWord Transfer Order:\t\tDefault\n"), std::string::npos);
}

}  // namespace
}  // namespace kavu
