#include "reports/ReportStage.h"
#include "reports/calibration/CalibrationSheet.h"
#include "reports/calibration/MultiPlot.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;

constexpr std::string_view kRecords =
    "[A]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=3\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=10\r\nPS4-2=21\r\n"
    "PS3-3=20\r\nPS4-3=41\r\nMN1=Oil\r\nMN3=PSI\r\nTRD1=Tube\r\nTRD5=01-02-2009\r\nPOC1=Me\r\n"
    "BFM=UNS\r\nCOM=First [KAVU: ZeroCal=0 RCal=20]\r\n"
    "[B]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=1\r\nPS3-1=0\r\nPS4-1=1\r\n"
    "[C]\r\nDCT=PRS\r\nPS1=N\r\nPS2=1\r\nPS\\N=2\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=2\r\nPS4-2=3\r\n"
    "[D]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=2\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=2\r\nPS4-2=5\r\n";

struct SheetStage : ReportStage {
    SheetStage() {
        settings.write("FloatPrecision", "2");
        records(kRecords);
    }
    std::vector<CalibrationSheet> sheets(const std::vector<std::string>& names, int start = 1,
                                         const PcmFormat* stream = nullptr,
                                         std::size_t width = 132) {
        return makeCalibrationSheets(context, conversions, stream, layout, &ui, names, start,
                                     width);
    }
    std::string sheet(const std::string& name, const PcmFormat* stream = nullptr,
                      std::size_t width = 132) {
        const auto made = sheets({name}, 1, stream, width);
        return made.empty() ? "(none)" : made.front().text();
    }
};

TEST(CalibrationSheet, HasAllTextsInTheirOrder) {
    SheetStage t;
    EXPECT_EQ(t.sheet("A", nullptr, 60),
              "Parameter Name:\tA\n\n\tDescription\tOil\n\tUnits\tPSI\nTransducer\n\n\tType\tTube\n"
              "Date\t01-02-2009\nPOC:\t\tMe\nComments:\n\n\tFirst\n"
              "   # TM Value EU Value Corrected  Error\n"
              "   1   0.0000   1.0000    1.0000 0.0000\n"
              "   2  10.0000  21.0000   21.0000 0.0000\n"
              "   3  20.0000  41.0000   41.0000 0.0000\n"
              "Manually Selected\nEU (PSI) = (1.00E+00) + (2.00E+00)*Count\n"
              "\nCorrelation Coefficient: 1.00\tOrder Of Fit: 1\n\nRMS: 0.00\n"
              "\n1 Count: 2.00\t65535 Counts: 131070.00\n\n");
}

TEST(CalibrationSheet, AnEmptyDescriptionHasNoLine) {
    SheetStage t;
    EXPECT_EQ(t.sheet("D").find("\tDescription"), std::string::npos);
    EXPECT_EQ(t.sheet("D").find("Transducer"), std::string::npos);
}

TEST(CalibrationSheet, AMeasurementThatTheStreamDoesNotHaveHasNoLocations) {
    SheetStage t;
    ASSERT_TRUE(t.load(plainFormat(5, 1), listOf({inEveryFrame("A", 3, 1)})));
    EXPECT_NE(t.sheet("A", &t.format).find("Locations (FWP):\t3\n"), std::string::npos);
    EXPECT_EQ(t.sheet("D", &t.format).find("Locations (FWP):"), std::string::npos);
    EXPECT_EQ(t.sheet("A").find("Locations (FWP):"), std::string::npos) << "no stream is loaded";
}

TEST(CalibrationSheet, TheTableIsInTwoHalvesWhereTheyFit) {
    SheetStage t;
    const auto text = t.sheet("A");
    EXPECT_NE(text.find("   # TM Value EU Value Corrected  Error       # TM Value"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n   2  10.0000  21.0000   21.0000 0.0000\nManually"), std::string::npos)
        << "the left half is the longer one";
}

TEST(CalibrationSheet, TheSeriesIsShownWhenItIsOn) {
    SheetStage t;
    EXPECT_EQ(t.sheet("A").find("Series"), std::string::npos);
    t.settings.write("DoRCal", "1");
    EXPECT_NE(t.sheet("A").find("Series Zero (0.000000) = 1.000000\t"
                                "Series Cal (20.000000) = 41.000000\n"),
              std::string::npos)
        << t.sheet("A");
    EXPECT_EQ(t.sheet("A").find("KAVU:"), std::string::npos);
}

TEST(CalibrationSheet, AFailedFitIsSkippedAndTakesNoPageNumber) {
    SheetStage t;
    const auto sheets = t.sheets({"A", "B", "C", "none", "D"}, 7);
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].page, 7);
    EXPECT_EQ(sheets[1].calibration.name, "D");
    EXPECT_EQ(sheets[1].page, 8);
    EXPECT_EQ(sheets[1].pageText, "Page 8");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(CalibrationSheet, APageNumberTextWithoutItsMarkIsTheSameOnAllPages) {
    EXPECT_EQ(pageNumberText("Sheet", 3), "Sheet");
    EXPECT_EQ(pageNumberText("^ of ^", 3), "3 of 3");
}

TEST(CalibrationSheet, WhoCalibratesIsATextAndNoNumber) {
    SheetStage t;
    t.settings.write("CalBy", "1");
    EXPECT_EQ(t.sheet("A").find("Calibrated By:"), std::string::npos);
    t.settings.write("CalBy", "J. Doe");
    EXPECT_NE(t.sheet("A").find("POC:\t\tMe\nCalibrated By:\tJ. Doe\n"), std::string::npos);
}

TEST(CalibrationSheet, RowsThatAreMarkedAreExplained) {
    SheetStage t;
    t.records(
        "[A]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=3\r\nPS3-1=0\r\nPS4-1=0\r\nPS3-2=1\r\n"
        "PS4-2=5\r\nPS3-3=2\r\nPS4-3=2\r\n");
    const auto text = t.sheet("A");
    EXPECT_NE(text.find("*\n"), std::string::npos);
    EXPECT_TRUE(
        text.ends_with(" = Items marked with asterisks are more than 0.5% (of full scale) "
                       "away from the calculated line.\n"))
        << text;
}

TEST(CalibrationSheet, APolynomialHasFourTermsOnALine) {
    FitResult result;
    result.fitted = true;
    result.order = 4;
    result.coefficients = {1, 2, 3, 4, 5};
    EXPECT_EQ(polynomialText(result, 0),
              "(1E+00) + (2E+00)*Count + (3E+00)*Count^2 + (4E+00)*Count^3 +\n\t(5E+00)*Count^4");
}

TEST(CalibrationSheet, IsPrintedOnAPageOfItsOwn) {
    SheetStage t;
    const auto pdf = printCalibrationSheets(t.context, t.layout, t.sheets({"A", "D"}));
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("/Count 2"), std::string::npos);
}

TEST(CalibrationNames, AreThePairSetsWithACurveFit) {
    SheetStage t;
    EXPECT_EQ(calibrationNames(t.conversions, &t.ui), (std::vector<std::string>{"A", "B", "D"}));
}

TEST(MultiPlot, ANinthMeasurementIsNotTaken) {
    SheetStage t;
    const std::vector<std::string> names(9, "A");
    EXPECT_EQ(plottedRows(t.context, t.conversions, names).size(), 8U);
}

TEST(MultiPlot, MeasurementsThatAreNoPairSetsAnyMoreDropOut) {
    SheetStage t;
    const auto rows = plottedRows(t.context, t.conversions, {"gone", "C", "A", "B"});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].name, "A");
    EXPECT_EQ(rows[0].date, "01-02-2009");
    EXPECT_EQ(rows[0].order, "1");
    EXPECT_EQ(rows[0].polynomial, "(1.00E+00) + (2.00E+00)*Count");
    EXPECT_EQ(rows[1].name, "B");
    EXPECT_EQ(rows[1].order + rows[1].rms + rows[1].correlation + rows[1].polynomial, "");
}

}  // namespace
}  // namespace kavu
