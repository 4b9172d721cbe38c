#include "reports/writers/TextWriter.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

ReportContent listReport() {
    ReportContent report;
    report.head = {.title = "T", .tmats = "TMATS", .link = "Link", .date = "D", .time = "H"};
    report.table.columns = {{.name = "Name", .head = {"Name"}}, {.name = "More", .head = {"M"}}};
    for (const auto* const name : {"A", "B\r\nC", "D"}) {
        auto& row = report.table.rows.emplace_back();
        row.add(name);
        row.add("");
    }
    return report;
}

constexpr const char* kHead = "T\nTMATS\nLink\n\n=\nDate: D  Time: H\n";

TEST(TextWriter, AFieldHasEachLineBreakAsOneBlank) {
    EXPECT_EQ(reportText({listReport()}, {}),
              kHead + std::string("Name M\n---- -\nA     \nB C   \nD     \n"));
    EXPECT_EQ(delimitedTable(listReport().table), "Name;More\nA;\nB C;\nD;\n");
}

TEST(TextWriter, AFormFeedDividesReports) {
    const auto one = reportText({listReport()}, {});
    EXPECT_EQ(reportText({listReport(), listReport()}, {}), one + "\f" + one);
}

TEST(TextWriter, APageBreakRepeatsTheHeadOfTheTable) {
    EXPECT_EQ(reportText({listReport()}, {.pageWidth = 132, .pageLines = 9}),
              kHead + std::string("Name M\n---- -\nA     \n\fName M\n---- -\nB C   \nD     \n"));
}

TEST(TextWriter, AbsurdlyShortPagesEnd) {
    const auto text = reportText({listReport()}, {.pageWidth = 1, .pageLines = 1});
    EXPECT_TRUE(text.ends_with("D     \n"));
}

}  // namespace
}  // namespace kavu
