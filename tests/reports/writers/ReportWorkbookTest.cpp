#include "core/text/Text.h"
#include "reports/ReportStage.h"
#include "reports/writers/ExcelXmlWriter.h"
#include "reports/writers/HtmlWriter.h"
#include "reports/writers/ReportWorkbook.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::Commands;
using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;

struct BookStage : ReportStage {
    std::string book(ReportKind kind) {
        const auto made = makeReport(source(), kind);
        ExcelXmlWriter writer(&ui);
        writeSheets(*made, writer);
        return writer.document();
    }
};

std::vector<std::string> sheetNames(const std::string& book) {
    std::vector<std::string> names;
    constexpr std::string_view kStart = "<Worksheet ss:Name=\"";
    for (auto at = book.find(kStart); at != std::string::npos; at = book.find(kStart, at + 1)) {
        const auto start = at + kStart.size();
        names.push_back(book.substr(start, book.find('"', start) - start));
    }
    return names;
}

TEST(ReportWorkbook, TheHeadIsFourRowsMergedOverAllColumns) {
    BookStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 1), listOf({inEveryFrame("A", 1, 1)})));
    t.set("MFReptLHdr", "Left & more");
    t.set("MFReptRHdr", "Right");
    const auto book = t.book(ReportKind::Frame);
    EXPECT_NE(
        book.find("<Cell ss:MergeAcross=\"3\" ss:StyleID=\"s21\"><Data ss:Type=\"String\">PCM "
                  "Major Frame Report</Data></Cell>"),
        std::string::npos)
        << book;
    EXPECT_NE(book.find(">Date: 01-02-2026 Time: 03:04:05<"), std::string::npos);
    EXPECT_NE(book.find("x:Data=\"&amp;LLeft &amp;&amp; more&amp;RRight\""), std::string::npos);
    EXPECT_EQ(book.find("Frame Sync Pattern"), std::string::npos) << "in text only";
    EXPECT_EQ(sheetNames(book), std::vector<std::string>{"PCM Major Frame"});
}

TEST(ReportWorkbook, A255thWordBeginsASecondSheet) {
    BookStage t;
    ASSERT_TRUE(t.load(plainFormat(255, 1), listOf({inEveryFrame("A", 1, 1)})));
    EXPECT_EQ(sheetNames(t.book(ReportKind::Frame)), std::vector<std::string>{"PCM Major Frame"});
    ASSERT_TRUE(t.load(plainFormat(256, 1), listOf({inEveryFrame("A", 1, 1)})));
    EXPECT_EQ(sheetNames(t.book(ReportKind::Frame)),
              (std::vector<std::string>{"PCM Major Frame (1-254)", "PCM Major Frame (255-255)"}));
    for (const auto& box : t.ui.boxes) {
        EXPECT_NE(box.title, "Warning") << "neither sheet is too wide";
    }
}

TEST(ReportWorkbook, TheListHasTwoGreyHeadRowsAndNumbersWhereTheyAre) {
    BookStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 1), listOf({inEveryFrame("12", 1, 1)})));
    t.choose({3, 4, 8});
    const auto book = t.book(ReportKind::Measurements);
    EXPECT_EQ(sheetNames(book), std::vector<std::string>{"Measurement Report"});
    EXPECT_NE(book.find("<Interior ss:Color=\"#c0c0c0\""), std::string::npos);
    EXPECT_NE(book.find("'!R5:R6\""), std::string::npos);
    EXPECT_NE(book.find("\"String\">12<"), std::string::npos) << "a name is no number";
    EXPECT_NE(book.find("\"Number\">16<"), std::string::npos);
}

TEST(ReportWorkbook, AFormatIsCaptionsWithTheirValues) {
    BookStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 1)));
    const auto book = t.book(ReportKind::Format);
    EXPECT_NE(book.find(">Common Word Length:</Data></Cell>\n<Cell ss:StyleID=\"s24\"><Data "
                        "ss:Type=\"String\">16<"),
              std::string::npos)
        << book;
}

TEST(HtmlWriter, AnswersForWhateverBytesANameHas) {
    BookStage t;
    ASSERT_TRUE(t.load(plainFormat(4, 1), listOf({inEveryFrame("<b>&K\xF6ln", 1, 1)})));
    const auto html = htmlPage({*makeReport(t.source(), ReportKind::Measurements)});
    EXPECT_NE(html.find("<td>&lt;b&gt;&amp;K\xC3\xB6ln</td>"), std::string::npos);
    EXPECT_EQ(html.find("<link"), std::string::npos);
    EXPECT_EQ(html.find("src="), std::string::npos);
}

}  // namespace
}  // namespace kavu
