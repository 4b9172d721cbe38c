// Reports on paper: fonts, page numbers, breaks, cancel; and a text as it is.
#include "reports/ReportStage.h"
#include "reports/print/ReportPrinter.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;

struct PrintStage : ReportStage {
    explicit PrintStage(int frames = 4) {
        EXPECT_TRUE(load(plainFormat(6, frames), listOf({inEveryFrame("NAME", 2, frames)})));
        ui.boxes.clear();
    }
    PrintedDocument print(ReportKind kind, int start = 1, const PaperSetup& paper = {},
                          UserInterface* over = nullptr) {
        std::vector<ReportContent> reports;
        reports.push_back(*makeReport(source(), kind));
        return printReportPages(context, layout, reports, start, paper, over);
    }
    static const PageText* find(const RecordedPage& page, std::string_view part) {
        const auto found =
            std::find_if(page.texts().begin(), page.texts().end(),
                         [part](const PageText& text) { return text.text.starts_with(part); });
        return found == page.texts().end() ? nullptr : &*found;
    }
};

TEST(ReportPrinter, CaptionsAreBoldArialAndValuesCourier) {
    PrintStage t;
    const auto made = t.print(ReportKind::Format);
    const auto* const caption = PrintStage::find(made.pages.at(0), "Common Word Length:");
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->font.family, "Arial");
    EXPECT_TRUE(caption->font.bold);
    const auto* const value = PrintStage::find(made.pages.at(0), "PCM Stream Attributes Report");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->font.family, "Courier");
    EXPECT_FALSE(value->font.bold);
    EXPECT_DOUBLE_EQ(value->font.height, 9) << "the first entry of the list of sizes";
}

TEST(ReportPrinter, TheSizeIsOneMoreThanItsIndex) {
    PrintStage t;
    t.set("Font", "11");
    const auto made = t.print(ReportKind::Format);
    EXPECT_DOUBLE_EQ(PrintStage::find(made.pages.at(0), "PCM Stream")->font.height, 12);
}

TEST(ReportPrinter, NumbersItsPagesFromTheFirstOneOn) {
    PrintStage t(256);
    t.set("MFReptCompact", "0");
    const auto made = t.print(ReportKind::Frame, 10);
    ASSERT_GT(made.pages.size(), 2U);
    for (std::size_t i = 0; i < made.pages.size(); ++i) {
        EXPECT_NE(PrintStage::find(made.pages[i], "Page " + std::to_string(10 + i)), nullptr) << i;
    }
}

TEST(ReportPrinter, ANumberTextWithoutAMarkIsTheSameOnAllPages) {
    PrintStage t(256);
    t.set("MFReptCompact", "0");
    t.set("PNumString", "secret");
    const auto made = t.print(ReportKind::Frame);
    for (const auto& page : made.pages) {
        EXPECT_NE(PrintStage::find(page, "secret"), nullptr);
    }
    t.set("PNumLoc", "0");
    EXPECT_EQ(PrintStage::find(t.print(ReportKind::Frame).pages.at(0), "secret"), nullptr);
}

TEST(ReportPrinter, HeadersAndTheNumberStandWhereTheLayoutWantsThem) {
    PrintStage t;
    t.set("PCMReptLHdr", "left header");
    t.set("PCMReptRHdr", "right header");
    for (int place = 1; place <= 6; ++place) {
        t.set("PNumLoc", std::to_string(place));
        const auto made = t.print(ReportKind::Format);
        const auto& page = made.pages.at(0);
        const auto* const number = PrintStage::find(page, "Page 1");
        ASSERT_NE(number, nullptr) << place;
        EXPECT_EQ(number->at.y > made.paper.height / 2, place <= 3) << place;
        const double middle = number->at.x + number->size.width / 2;
        const int column = (place - 1) % 3;
        EXPECT_EQ(middle < made.paper.width / 3, column == 0) << place;
        EXPECT_EQ(middle > made.paper.width * 2 / 3, column == 2) << place;
        EXPECT_LT(PrintStage::find(page, "left header")->at.x, made.paper.width / 3);
        EXPECT_GT(PrintStage::find(page, "right header")->at.x, made.paper.width / 2);
    }
}

TEST(ReportPrinter, APageBreakRepeatsTheHeadOfTheTable) {
    PrintStage t(256);
    t.set("MFReptCompact", "0");
    const auto made = t.print(ReportKind::Measurements);
    EXPECT_EQ(made.pages.size(), 1U);
    const auto frame = t.print(ReportKind::Frame);
    for (const auto& page : frame.pages) {
        EXPECT_GE(std::count_if(page.texts().begin(), page.texts().end(),
                                [](const PageText& text) {
                                    return text.text.find(" 1 2    3") != std::string::npos;
                                }),
                  1);
    }
}

TEST(ReportPrinter, ACancelKeepsThePagesSoFar) {
    PrintStage t(256);
    t.set("MFReptCompact", "0");
    const auto whole = t.print(ReportKind::Frame);
    t.ui.cancelAtPoll = 1;
    const auto part = t.print(ReportKind::Frame, 1, {}, &t.ui);
    EXPECT_GE(part.pages.size(), 1U);
    EXPECT_LT(part.pages.size(), whole.pages.size());
    EXPECT_TRUE(part.pdf.starts_with("%PDF"));
}

TEST(ReportPrinter, ThePdfOfTheCommandLineIsThatOfThePages) {
    PrintStage t;
    std::vector<ReportContent> reports;
    reports.push_back(*makeReport(t.source(), ReportKind::Format));
    EXPECT_EQ(
        printReports(t.context, t.layout, reports, 1),
        printReportPages(t.context, t.layout, reports, 1, {PaperSize::A4, true}, nullptr).pdf);
}

TEST(PrintText, PrintsEachLineAndBeginsAPageAtAFormFeed) {
    ReportStage t;
    const auto made = printText(t.context, "Report", "one\n\ttwo\n\f\nthree\n", {});
    ASSERT_EQ(made.pages.size(), 2U);
    EXPECT_NE(PrintStage::find(made.pages[0], "one"), nullptr);
    EXPECT_NE(PrintStage::find(made.pages[0], "        two"), nullptr) << "tabs have their stops";
    EXPECT_NE(PrintStage::find(made.pages[1], "three"), nullptr);
    EXPECT_EQ(made.title, "Report");
}

}  // namespace
}  // namespace kavu
