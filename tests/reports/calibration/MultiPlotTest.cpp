// The plot of several measurements: what is kept of it, its legend, its data.
#include "drawing/CairoSurface.h"
#include "drawing/SvgSurface.h"
#include "reports/ReportStage.h"
#include "reports/calibration/MultiPlot.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include <gtest/gtest.h>

namespace kavu {
namespace {

struct PlotsStage : test::ReportStage {
    PlotsStage() {
        std::string text;
        for (const char* const name : {"A", "B;x", "C", "D", "E", "F", "G", "H", "I"}) {
            text +=
                std::string("[") + name +
                "]\r\nDCT=PRS\r\nPS1=Y\r\nPS2=1\r\nPS\\N=3\r\nPS3-1=0\r\nPS4-1=1\r\nPS3-2=10\r\n"
                "PS4-2=21\r\nPS3-3=20\r\nPS4-3=41\r\nTRD5=01-02-2009\r\n";
        }
        records(text);
        settings.write("FloatPrecision", "2");
    }
    std::vector<PlottedRow> rows(const std::vector<std::string>& names) {
        return plottedRows(context, conversions, names);
    }
};

TEST(MultiPlot, KeepsNamesAndDatesAndForgetsTheRest) {
    PlotsStage t;
    writePlotted(t.settings, t.rows({"A", "C", "D"}));
    EXPECT_EQ(t.settings.profileText("MultiPlot", "Mes2"), "C");
    EXPECT_EQ(t.settings.profileText("MultiPlot", "Date2"), "01-02-2009");
    writePlotted(t.settings, t.rows({"C"}));
    const auto kept = readPlotted(t.settings);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].name, "C");
    EXPECT_EQ(kept[0].date, "01-02-2009");
    EXPECT_EQ(t.settings.profileKeys("MultiPlot"), (std::vector<std::string>{"Mes1", "Date1"}));
}

TEST(MultiPlot, EachSeriesHasADashAndAMarkOfItsOwn) {
    PlotsStage t;
    const auto looks = plottedAttributes(t.settings);
    std::set<std::pair<int, int>> seen;
    std::set<int> marks;
    for (std::size_t i = 0; i < kMostPlotted; ++i) {
        const auto& series = looks.series[i];
        seen.emplace(static_cast<int>(series.style), static_cast<int>(series.symbol));
        marks.insert(static_cast<int>(series.symbol));
        EXPECT_NE(series.symbol, PlotSymbol::None);
    }
    EXPECT_EQ(seen.size(), kMostPlotted);
    EXPECT_EQ(marks.size(), kMostPlotted) << "told apart on paper without colour";
}

TEST(MultiPlot, NoMoreThanEightAreTaken) {
    PlotsStage t;
    EXPECT_EQ(t.rows({"A", "B;x", "C", "D", "E", "F", "G", "H", "I"}).size(), kMostPlotted);
}

TEST(MultiPlot, TheLegendOfAScreenIsBelowThePlotAndNothingOverlaps) {
    PlotsStage t;
    const auto rows = t.rows({"A", "C", "D", "E", "F", "G", "H", "I"});
    PdfSurface surface({.paper = {500, 400}, .margin = 0, .keepsPages = true});
    ASSERT_TRUE(
        drawMultiPlot(surface, plottedAttributes(t.settings), rows, MultiPlotTexts::Legend));
    const auto made = surface.printed();
    const auto& texts = made.pages.at(0).texts();
    std::vector<DrawingRect> boxes;
    for (const auto& text : texts) {
        if (text.text == multiplot::kTitle || text.text.size() == 1) {
            boxes.push_back(
                {text.at.x, text.at.y, text.at.x + text.size.width, text.at.y + text.size.height});
        }
    }
    ASSERT_GE(boxes.size(), 9U);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_LE(boxes[i].bottom, 400) << i;
        for (std::size_t k = i + 1; k < boxes.size(); ++k) {
            const bool isApart = boxes[i].right <= boxes[k].left ||
                                 boxes[k].right <= boxes[i].left ||
                                 boxes[i].bottom <= boxes[k].top || boxes[k].bottom <= boxes[i].top;
            EXPECT_TRUE(isApart) << i << " and " << k;
        }
    }
}

TEST(MultiPlot, TheDataAreTheRowsOfAllPairsAndNamesAreQuotedWhereTheyMust) {
    PlotsStage t;
    const auto rows = t.rows({"A", "B;x"});
    ASSERT_EQ(rows.size(), 2U);
    const auto data = multiPlotData(rows, 2, ',');
    EXPECT_TRUE(
        data.starts_with("Name,TM Value,EU Value,Fit,Error\n"
                         "A,0.00E+00,1.00E+00,1.00E+00,"))
        << data;
    EXPECT_EQ(std::count(data.begin(), data.end(), '\n'), 7);
    EXPECT_NE(multiPlotData(rows, 2, ';').find("\"B;x\";"), std::string::npos);
}

TEST(MultiPlot, PrintSaysOfEachRowWhatItsFitIs) {
    PlotsStage t;
    PdfSurface surface({.keepsPages = true});
    ASSERT_TRUE(drawMultiPlot(t.context, surface, t.rows({"A"})));
    const auto made = surface.printed();
    std::string all;
    for (const auto& text : made.pages.at(0).texts()) {
        all += text.text + "\n";
    }
    EXPECT_NE(all.find("Date: 01-02-2009   Fit: 1   RMS: 0.00   Correlation: 1.00\n"),
              std::string::npos)
        << all;
    EXPECT_NE(all.find("EU = (1.00E+00) + (2.00E+00)*Count\n"), std::string::npos) << all;
    for (const auto text : {multiplot::kTitle, multiplot::kXAxis, multiplot::kYAxis}) {
        EXPECT_NE(all.find(text), std::string::npos) << text;
    }
}

TEST(MultiPlot, EightRowsWithLongFitsFitAPictureAndGoOnOnTheNextPage) {
    PlotsStage t;
    auto rows = t.rows({"A", "C", "D", "E", "F", "G", "H", "I"});
    for (auto& row : rows) {
        row.polynomial = "(1.00E+00) + (2.00E+00)*Count +\n\tx +\n\ty +\n\tz";
    }
    PdfSurface paper({.paper = {842, 595}, .keepsPages = true});
    ASSERT_TRUE(drawMultiPlot(t.context, paper, rows));
    const auto made = paper.printed();
    EXPECT_EQ(made.pages.size(), 2U);
    std::size_t names = 0;
    for (const auto& page : made.pages) {
        for (const auto& text : page.texts()) {
            EXPECT_LE(text.at.y + text.size.height, 595) << text.text;
            names += text.font.bold && text.text.size() == 1 ? 1 : 0;
        }
    }
    EXPECT_EQ(names, 8U);
    SvgSurface picture(900, 1000);
    ASSERT_TRUE(drawMultiPlot(t.context, picture, rows));
    const auto svg = picture.document();
    std::size_t lines = 0;
    for (auto at = svg.find("<text "); at != std::string::npos; at = svg.find("<text ", at + 1)) {
        const auto y = svg.find(" y=\"", at);
        EXPECT_LE(std::atof(svg.c_str() + y + 4), 1000);
        ++lines;
    }
    EXPECT_GE(lines, 8U * 6U);
}

}  // namespace
}  // namespace kavu
