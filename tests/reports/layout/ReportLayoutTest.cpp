#include "reports/layout/ReportColumns.h"
#include "reports/layout/ReportLayout.h"
#include "support/TestContext.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::TestContext;

struct LayoutStage : TestContext {
    LayoutFile file{context};
    std::string path = folder / "a.rpt";
};

TEST(LayoutFile, ANewFileHasAllKeysWithTheDefaultsOfTheTable) {
    LayoutStage t;
    ASSERT_TRUE(t.file.create(&t.ui, t.path));
    ASSERT_TRUE(t.file.save(&t.ui));
    const auto bytes = test::readFile(t.path);
    EXPECT_TRUE(
        bytes.starts_with("[Reports]\r\nFmt=0\r\nFrameRpt=0\r\nMesRpt=0\r\nDest=0\r\n"
                          "Font=0\r\nFrameDel=0\r\nMesDel=0\r\nReportPath=\r\n"
                          "ASCIIPath=\r\nMesRptSort=0\r\nM1=0\r\n"))
        << bytes;
    EXPECT_TRUE(bytes.ends_with(
        "M155324=0\r\nMesReptTitle=Measurement Report\r\nMesReptLHdr=\r\n"
        "MesReptRHdr=\r\nMFReptSC=0\r\nPCMReptTitle=PCM Stream Attributes Report\r\n"
        "PCMReptLHdr=\r\nPCMReptRHdr=\r\nMFReptTitle=PCM Major Frame Report\r\n"
        "MFReptLHdr=\r\nMFReptRHdr=\r\nMFReptStyle=1\r\nMFReptDupMes=1\r\n"
        "MFReptCompact=1\r\nPlotTitle=Calibration Data Sheet\r\nPlotLHdr=\r\n"
        "PlotRHdr=\r\nPNumLoc=2\r\nPNumString=Page ^\r\n"))
        << bytes;
    EXPECT_NE(bytes.find("M22=0\r\nM15531=0\r\n"), std::string::npos);
    EXPECT_TRUE(t.file.problems().empty());
}

TEST(LayoutFile, AnEnabledStringOfCommentsIsOneMoreColumnOfBothKinds) {
    LayoutStage t;
    t.settings.writeProfile("EUComment", "C", "2");
    t.settings.writeProfile("EUComment", "E1", "1");
    t.settings.writeProfile("EUComment", "S1", "Owner:");
    t.settings.writeProfile("EUComment", "E2", "0");
    t.settings.writeProfile("EUComment", "S2", "Other:");
    const auto columns = reportColumns(t.context, false);
    ASSERT_EQ(columns.size(), 23U);
    EXPECT_EQ(columns[0].shownName(), "Measurement Location Type");
    EXPECT_EQ(columns[20].shownName(), "Owner: (from EU Comment)");
    EXPECT_EQ(columns[20].name, "Owner:");
    EXPECT_EQ(columns[22].name, "EU Conversion Arguments");
    EXPECT_EQ(reportColumns(t.context, true).size(), 25U);
}

TEST(LayoutFile, KeepsAllOtherLinesWhenAKeyIsSet) {
    LayoutStage t;
    test::writeFile(t.path, "; mine\n[Other]\nX=1\n[Reports]\nmfreptstyle=2\n\nMine=3\n");
    ASSERT_TRUE(t.file.open(&t.ui, t.path));
    EXPECT_TRUE(t.file.set(&t.ui, "MFReptStyle", "3"));
    EXPECT_TRUE(t.file.isChanged());
    EXPECT_EQ(test::readFile(t.path).find("mfreptstyle=3"), std::string::npos) << "only a copy";
    EXPECT_TRUE(t.has(kLayoutCopy));
    EXPECT_TRUE(t.file.save(&t.ui));
    EXPECT_FALSE(t.file.isChanged());
    EXPECT_EQ(test::readFile(t.path), "; mine\n[Other]\nX=1\n[Reports]\nmfreptstyle=3\n\nMine=3\n");
    t.file.close();
    EXPECT_FALSE(t.has(kLayoutCopy));
}

TEST(LayoutFile, ListsUnknownKeysColumnsAndValues) {
    LayoutStage t;
    test::writeFile(t.path, "[Reports]\r\nDest=x\r\nM23=1\r\nMine=3\r\nMFReptStyle=\r\nM1=1\r\n");
    ASSERT_TRUE(t.file.open(&t.ui, t.path));
    const auto problems = t.file.problems();
    ASSERT_EQ(problems.size(), 4U);
    EXPECT_EQ(problems[0].kind, LayoutFile::Problem::Kind::Value);
    EXPECT_EQ(problems[1].kind, LayoutFile::Problem::Kind::Column);
    EXPECT_EQ(problems[2].kind, LayoutFile::Problem::Kind::Unknown);
    EXPECT_EQ(problems[3].key, "MFReptStyle");
}

TEST(LayoutFile, AFileThatIsMissingIsReported) {
    LayoutStage t;
    EXPECT_FALSE(t.file.open(&t.ui, t.folder / "none.rpt"));
    EXPECT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_FALSE(t.file.isOpen());
}

TEST(ReportLayout, TitlesKeepTheirLineBreaksAsStoredBytes) {
    TestContext t;
    ReportLayout layout(t.settings);
    EXPECT_TRUE(layout.set(layout_key::kFrameTitle, "One\r\nTwo"));
    EXPECT_EQ(*layout.stored(layout_key::kFrameTitle), "One\x14\x15Two");
    EXPECT_EQ(layout.text(layout_key::kFrameTitle), "One\r\nTwo");
}

TEST(ReportLayout, AMissingKeyHasItsDefaultAndANumberThatItCannotHaveAsWell) {
    TestContext t;
    ReportLayout layout(t.settings);
    EXPECT_EQ(layout.text(layout_key::kPageNumber), "Page ^");
    EXPECT_EQ(layout.number(layout_key::kPageNumberPlace), 2);
    EXPECT_TRUE(layout.set(layout_key::kPageNumberPlace, "9"));
    EXPECT_EQ(layout.number(layout_key::kPageNumberPlace), 2);
    EXPECT_TRUE(layout.set(layout_key::kPlotTitle, ""));
    EXPECT_EQ(layout.text(layout_key::kPlotTitle), "");
}

TEST(ReportLayout, AnOptionThatIsThereAndCannotBeReadIsMessage404EmptyToo) {
    for (const auto* const value : {"0", "4", "x", "", "1 2"}) {
        TestContext t;
        ReportLayout layout(t.settings);
        EXPECT_EQ(layout.option(layout_key::kFrameStyle, t.messages, &t.ui), 1);
        EXPECT_TRUE(layout.set(layout_key::kFrameStyle, value));
        EXPECT_FALSE(layout.option(layout_key::kFrameStyle, t.messages, &t.ui)) << value;
        ASSERT_EQ(t.ui.boxes.size(), 1U) << value;
        EXPECT_EQ(t.ui.boxes.front().id, 404);
        EXPECT_NE(t.ui.boxes.front().text.find("'MFReptStyle'"), std::string::npos);
    }
}

}  // namespace
}  // namespace kavu
