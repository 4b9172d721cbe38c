// Calibration sheets on paper: every size and orientation, what is on the page, and how a run ends.
#include "drawing/CairoSurface.h"
#include "reports/ReportStage.h"
#include "reports/calibration/CalibrationSheet.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr double kMillimetre = 72 / 25.4;

struct PaperStage : test::ReportStage {
    explicit PaperStage(int pairs = 12) {
        std::string text = "[A]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nMN1=Oil\r\nMN3=PSI\r\nPS\\N=" +
                           std::to_string(pairs) + "\r\n";
        for (int i = 1; i <= pairs; ++i) {
            const auto n = std::to_string(i);
            text += "PS3-" + n + "=" + std::to_string(i * 10) + "\r\nPS4-" + n + "=" +
                    std::to_string(i * 20 + (i == 3 ? 9 : 0)) + "\r\n";
        }
        records(text);
    }
    PrintedDocument print(const PaperSetup& paper, int start = 1, UserInterface* over = nullptr) {
        const auto sheets = makeCalibrationSheets(context, conversions, nullptr, layout, nullptr,
                                                  {"A", "A"}, start, 106);
        EXPECT_EQ(sheets.size(), 2U);
        return printSheetPages(context, layout, sheets, paper, over);
    }
    static std::string textsOf(const RecordedPage& page) {
        std::string all;
        for (const auto& text : page.texts()) {
            all += text.text + "\n";
        }
        return all;
    }
};

TEST(SheetPrinter, FillsA4AndLetterInBothOrientationsWithinTheirMargins) {
    PaperStage t;
    for (const auto size : {PaperSize::A4, PaperSize::Letter}) {
        for (const bool isLandscape : {false, true}) {
            const auto made = t.print({size, isLandscape});
            const double shortSide = size == PaperSize::A4 ? 210 * kMillimetre : 612;
            const double longSide = size == PaperSize::A4 ? 297 * kMillimetre : 792;
            EXPECT_NEAR(made.paper.width, isLandscape ? longSide : shortSide, 0.1);
            EXPECT_NEAR(made.paper.height, isLandscape ? shortSide : longSide, 0.1);
            EXPECT_GE(made.pages.size(), 2U) << "a page for each sheet at least";
            for (const auto& page : made.pages) {
                for (const auto& text : page.texts()) {
                    if (text.font.angle != 0) {
                        continue;
                    }
                    EXPECT_GE(text.at.x, 10 * kMillimetre) << text.text;
                    EXPECT_GE(text.at.y, 10 * kMillimetre) << text.text;
                    EXPECT_LE(text.at.x + text.size.width, made.paper.width - 10 * kMillimetre)
                        << text.text;
                    EXPECT_LE(text.at.y + text.size.height, made.paper.height - 10 * kMillimetre)
                        << text.text;
                }
            }
        }
    }
}

TEST(SheetPrinter, HasCurvePairsErrorsTableFitDateFileAndPage) {
    PaperStage t;
    t.document.path = "/files/flight.tma";
    const auto made = t.print({}, 7);
    ASSERT_EQ(made.pages.size(), 2U);
    const auto texts = PaperStage::textsOf(made.pages[0]);
    for (const auto* const part :
         {"Calibration Data Sheet", "TMATS File: flight.tma", "Date: ", "Page 7",
          "Parameter Name:", "TM Value", "Error", "Manually Selected", "Order Of Fit: 1",
          "Correlation Coefficient: ", "RMS: ", " = Items marked with asterisks"}) {
        EXPECT_NE(texts.find(part), std::string::npos) << part << " in " << texts;
    }
    EXPECT_NE(PaperStage::textsOf(made.pages[1]).find("Page 8"), std::string::npos);
}

TEST(SheetPrinter, PrintsItsCaptionsInArialAndItsTableInCourierBold) {
    PaperStage t;
    const auto made = t.print({});
    const auto& texts = made.pages.at(0).texts();
    const auto font = [&](std::string_view part) {
        const auto found = std::find_if(texts.begin(), texts.end(), [part](const PageText& text) {
            return text.text.find(part) != std::string::npos;
        });
        EXPECT_NE(found, texts.end()) << part;
        return found == texts.end() ? DrawingFont{} : found->font;
    };
    EXPECT_EQ(font("Parameter Name:").family, "Arial");
    EXPECT_DOUBLE_EQ(font("Parameter Name:").height, 9);
    EXPECT_TRUE(font("Parameter Name:").bold);
    EXPECT_EQ(font("TM Value EU Value").family, "Courier");
    EXPECT_DOUBLE_EQ(font("TM Value EU Value").height, 8);
    EXPECT_TRUE(font("TM Value EU Value").bold);
}

TEST(SheetPrinter, LinesThatAreTooLongGoOnBelowAndLoseNothing) {
    PaperStage t;
    std::string words;
    for (int i = 1; i <= 60; ++i) {
        words += "word" + std::to_string(i) + " ";
    }
    const std::string whole(300, 'x');
    t.records(
        "[A]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=2\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=2\r\n"
        "PS4-2=5\r\nMN1=" +
        words + "\r\nTRD1=" + whole + "\r\n");
    const auto made = t.print({PaperSize::Letter, false});
    std::string all;
    for (const auto& text : made.pages.at(0).texts()) {
        if (text.font.angle == 0) {
            EXPECT_LE(text.at.x + text.size.width, made.paper.width - 10 * kMillimetre)
                << text.text;
        }
        all += text.text;
    }
    EXPECT_NE(all.find("word1 "), std::string::npos);
    EXPECT_NE(all.find("word60"), std::string::npos);
    EXPECT_EQ(std::count(all.begin(), all.end(), 'x'), 300);
}

TEST(SheetPrinter, ManyPairsGoOnOnTheNextPage) {
    PaperStage t(300);
    const auto made = t.print({PaperSize::Letter, true});
    EXPECT_GE(made.pages.size(), 4U);
    EXPECT_NE(PaperStage::textsOf(made.pages.back()).find("RMS: "), std::string::npos);
}

TEST(SheetPrinter, ACancelAtARowKeepsThePagesSoFar) {
    PaperStage t(300);
    t.ui.cancelAtPoll = 33;
    const auto made = t.print({}, 1, &t.ui);
    ASSERT_EQ(made.pages.size(), 1U);
    const auto texts = PaperStage::textsOf(made.pages[0]);
    EXPECT_NE(texts.find("\n  30 "), std::string::npos) << texts;
    EXPECT_EQ(texts.find("\n  62 "), std::string::npos);
    EXPECT_EQ(texts.find("RMS: "), std::string::npos);
    EXPECT_TRUE(made.pdf.starts_with("%PDF")) << "the job is closed";
}

TEST(SheetPrinter, ACancelBetweenSheetsPrintsNoOther) {
    PaperStage t;
    t.ui.cancelAtPoll = 1;
    EXPECT_TRUE(t.print({}, 1, &t.ui).pages.empty());
}

TEST(PaperSetup, IsAskedOfTheSurface) {
    PdfSurface wide({.paper = {800, 600}, .margin = 0});
    PdfSurface high({.paper = {600, 800}, .margin = 0});
    PdfSurface none({.paper = {60, 60}, .margin = 42});
    EXPECT_EQ(isLandscape(wide), true);
    EXPECT_EQ(isLandscape(high), false);
    EXPECT_EQ(isLandscape(none), std::nullopt) << "its margins leave no room";
}

TEST(PaperSetup, IsKeptForReportsAndForSheetsApart) {
    PaperStage t;
    EXPECT_EQ(readPaper(t.settings, PaperUse::Reports), (PaperSetup{PaperSize::A4, true}));
    EXPECT_EQ(readPaper(t.settings, PaperUse::Sheets), (PaperSetup{PaperSize::A4, false}));
    writePaper(t.settings, PaperUse::Sheets, {PaperSize::Letter, true});
    EXPECT_EQ(readPaper(t.settings, PaperUse::Sheets), (PaperSetup{PaperSize::Letter, true}));
    writePaper(t.settings, PaperUse::Reports, {PaperSize::Letter, false});
    EXPECT_EQ(readPaper(t.settings, PaperUse::Sheets), (PaperSetup{PaperSize::Letter, true}));
    EXPECT_EQ(readPaper(t.settings, PaperUse::Reports), (PaperSetup{PaperSize::Letter, false}));
}

TEST(EditedCalibration, PrintsTheWorkingCopyAndTheLastFitOfItsPage) {
    PaperStage t;
    t.write(working::kData1, "[A]\r\nDCT=PRS\r\nPS1=Y\r\nMN1=edited\r\nMN3=BAR\r\n");
    FitInput input;
    input.x = {0, 10, 20};
    input.y = {1, 21, 41};
    const auto options = FitOptions::read(t.settings);
    const auto calibration = editedCalibration(t.context, t.conversions, nullptr, "A", input,
                                               options, refitPairs(input, options));
    const auto sheet = makeCalibrationSheet(t.context, t.layout, calibration, 4, 106);
    EXPECT_EQ(sheet.page, 4);
    EXPECT_NE(sheet.text().find("\tDescription\tedited\n"), std::string::npos) << sheet.text();
    EXPECT_NE(sheet.text().find("EU (BAR) = "), std::string::npos);
    EXPECT_NE(sheet.text().find("41.0000"), std::string::npos);
}

}  // namespace
}  // namespace kavu
