// One press of Generate, without a window.
#include "core/WorkingStore.h"
#include "reports/ReportRun.h"
#include "reports/ReportStage.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::inEveryFrame;
using test::listOf;
using test::plainFormat;
using test::ReportStage;

struct RunStage : ReportStage {
    RunStage() {
        EXPECT_TRUE(
            load(plainFormat(4, 2), listOf({inEveryFrame("A", 1, 2), inEveryFrame("B", 2, 2)})));
        ui.boxes.clear();
        ui.statusTexts.clear();
    }
    bool run() {
        shown.clear();
        return generateReports(
            source(),
            {.mayWrite =
                 [this](const std::string& path) {
                     asked.push_back(path);
                     return mayWrite;
                 },
             .showText = [this](const std::string& path) { shown.push_back(path); },
             .openWorkbook =
                 [this](const std::string& path) {
                     shown.push_back(path);
                     return opens;
                 },
             .print =
                 [this](std::vector<ReportContent> reports) { printed = std::move(reports); }});
    }
    std::string path(const char* name) { return folder / name; }

    std::vector<std::string> shown;
    std::vector<std::string> asked;
    std::vector<ReportContent> printed;
    bool opens = true;
    bool mayWrite = true;
};

TEST(ReportRun, WithoutAnyReportCheckedNothingHappens) {
    RunStage t;
    t.set("Dest", "4");
    EXPECT_TRUE(t.run());
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(t.shown.empty());
    EXPECT_TRUE(t.asked.empty());
}

TEST(ReportRun, AMissingPathIsAskedForBeforeAnythingIsMade) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("Dest", "4");
    EXPECT_FALSE(t.run());
    EXPECT_TRUE(t.ui.hasText("Please enter a pathname for printed reports first"));
    t.ui.boxes.clear();
    t.set("FrameDel", "1");
    EXPECT_FALSE(t.run());
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].text, "Please enter a pathname for ASCII delimited reports first");
    EXPECT_TRUE(t.ui.statusTexts.empty() || t.ui.statusTexts.back().empty());
}

TEST(ReportRun, AFileThatCannotBeOpenedIsMessage403AndNothingIsMade) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("MesDel", "1");
    t.set("Dest", "4");
    t.set("ASCIIPath", t.path("made.csv"));
    t.set("ReportPath", "/nowhere/at/all.txt");
    EXPECT_FALSE(t.run());
    ASSERT_EQ(t.ui.countBoxes(403), 1);
    EXPECT_TRUE(t.ui.hasText("Can't open '/nowhere/at/all.txt'"));
    EXPECT_FALSE(fileExists(t.path("made.csv"))) << "both are looked at before the first is made";
}

TEST(ReportRun, AWorkbookWithoutAPathCannotBeOpened) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("Dest", "1");
    EXPECT_FALSE(t.run());
    EXPECT_TRUE(t.ui.hasText("Can't open ''"));
}

TEST(ReportRun, DelimitedFilesComeFirstThenTheReportsInTheirOrder) {
    RunStage t;
    for (const auto* const key : {"Fmt", "FrameRpt", "MesRpt", "FrameDel", "MesDel"}) {
        t.set(key, "1");
    }
    t.set("Dest", "4");
    t.set("ASCIIPath", t.path("made.csv"));
    t.set("ReportPath", t.path("made.txt"));
    EXPECT_TRUE(t.run());
    std::vector<std::string> made;
    for (const auto& text : t.ui.progressTexts) {
        made.push_back(text);
    }
    EXPECT_EQ(made, (std::vector<std::string>{
                        "Creating ASCII Major Frame Report", "Creating ASCII Measurement Report",
                        "Creating PCM Format Report", "Creating Major Frame Report",
                        "Creating Measurement Report"}));
    EXPECT_EQ(test::readFile(t.path("made.csv")), "A;B;\nA;B;\nName\nA\nB\n");
    const auto text = test::readFile(t.path("made.txt"));
    EXPECT_LT(text.find("PCM Stream Attributes Report"), text.find("PCM Major Frame Report"));
    EXPECT_LT(text.find("PCM Major Frame Report"), text.find("Measurement Report\n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\f'), 2);
    EXPECT_EQ(t.asked, (std::vector<std::string>{t.path("made.csv"), t.path("made.txt")}));
}

TEST(ReportRun, EachDestinationGetsTheReports) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("Dest", "0");
    EXPECT_TRUE(t.run());
    ASSERT_EQ(t.shown.size(), 1U);
    EXPECT_EQ(t.shown[0], t.store.pathOf("KAVU9Report.xml"));
    EXPECT_TRUE(test::readFile(t.shown[0]).starts_with("<?xml version=\"1.0\"?>\n"));
    t.set("Dest", "1");
    t.set("ReportPath", t.path("made.xml"));
    EXPECT_TRUE(t.run());
    EXPECT_TRUE(t.shown.empty());
    EXPECT_TRUE(test::readFile(t.path("made.xml")).starts_with("<?xml version=\"1.0\"?>\n"));
    t.set("Dest", "2");
    EXPECT_TRUE(t.run());
    ASSERT_EQ(t.shown.size(), 1U);
    EXPECT_EQ(t.shown[0], t.store.pathOf("KAVU9Report.txt"));
    EXPECT_TRUE(test::readFile(t.shown[0]).starts_with("Measurement Report\n"));
    t.set("Dest", "3");
    EXPECT_TRUE(t.run());
    EXPECT_TRUE(t.shown.empty());
    ASSERT_EQ(t.printed.size(), 1U);
    EXPECT_EQ(t.printed[0].kind, ReportKind::Measurements);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(ReportRun, AWorkbookThatNoProgramOpensIsTold) {
    RunStage t;
    t.set("MesRpt", "1");
    t.opens = false;
    EXPECT_FALSE(t.run());
    EXPECT_EQ(t.ui.countBoxes(403), 1);
}

TEST(ReportRun, AFileThatIsThereIsLeftWhenTheUserSaysNo) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("Dest", "4");
    test::writeFile(t.path("kept.txt"), "kept");
    t.set("ReportPath", t.path("kept.txt"));
    t.mayWrite = false;
    EXPECT_FALSE(t.run());
    EXPECT_EQ(test::readFile(t.path("kept.txt")), "kept");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(ReportRun, AKeyThatCannotBeReadDropsItsReportOnly) {
    RunStage t;
    t.set("FrameRpt", "1");
    t.set("MesRpt", "1");
    t.set("MFReptStyle", "9");
    t.set("Dest", "4");
    t.set("ReportPath", t.path("made.txt"));
    EXPECT_TRUE(t.run());
    EXPECT_EQ(t.ui.countBoxes(404), 1);
    const auto text = test::readFile(t.path("made.txt"));
    EXPECT_TRUE(text.starts_with("Measurement Report\n")) << text;
}

TEST(ReportRun, ACancelKeepsWhatWasMadeOfTheFrame) {
    RunStage t;
    t.set("FrameRpt", "1");
    t.set("MesRpt", "1");
    t.set("Dest", "4");
    t.set("ReportPath", t.path("made.txt"));
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(t.run());
    const auto text = test::readFile(t.path("made.txt"));
    EXPECT_TRUE(text.starts_with("PCM Major Frame Report\n")) << text;
    EXPECT_EQ(text.find("Measurement Report"), std::string::npos);
    EXPECT_EQ(t.ui.progressOpened, t.ui.progressClosed);
}

TEST(ReportRun, ACancelOfTheMeasurementsLeavesNothingBehind) {
    RunStage t;
    t.set("MesRpt", "1");
    t.set("Dest", "4");
    t.set("ReportPath", t.path("made.txt"));
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(t.run());
    EXPECT_FALSE(fileExists(t.path("made.txt")));
    std::vector<FolderEntry> entries;
    ASSERT_TRUE(listFolder(t.store.folder(), entries).ok());
    for (const auto& entry : entries) {
        EXPECT_NE(entry.name, "KAVU9TMP.TMP") << "no intermediate file stays";
    }
}

}  // namespace
}  // namespace kavu
