// The layout file that is open, and what is asked before it is left.
#include "core/WorkingStore.h"
#include "reports/ReportDesk.h"
#include "reports/ReportStage.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ReportStage;

struct DeskStage : ReportStage {
    DeskStage() { ui.boxes.clear(); }
    std::string made(const char* name, const char* text) {
        auto path = folder / name;
        test::writeFile(path, text);
        return path;
    }
    ReportDesk desk{context};
};

TEST(ReportDesk, WithoutAFileTheSettingsCount) {
    DeskStage t;
    EXPECT_TRUE(t.desk.set(&t.ui, "PNumString", "Seite ^"));
    EXPECT_EQ(t.settings.profileText("Reports", "PNumString"), "Seite ^");
    EXPECT_EQ(t.desk.layout().text("PNumString"), "Seite ^");
}

TEST(ReportDesk, AFileCountsFromItsCopyUntilItIsSaved) {
    DeskStage t;
    const auto path = t.made("one.rpt", "[Reports]\nDest=4\n");
    ASSERT_TRUE(t.desk.open(&t.ui, path));
    EXPECT_EQ(t.desk.layout().number("Dest"), 4);
    EXPECT_TRUE(t.desk.set(&t.ui, "Dest", "2"));
    EXPECT_EQ(test::readFile(path), "[Reports]\nDest=4\n");
    EXPECT_NE(test::readFile(t.store.pathOf(kLayoutCopy)).find("Dest=2"), std::string::npos);
    EXPECT_EQ(t.settings.profileText("Reports", "Dest"), "");
    EXPECT_TRUE(t.desk.file().save(&t.ui));
    EXPECT_EQ(test::readFile(path), "[Reports]\nDest=2\n");
}

TEST(ReportDesk, AChangedFileAsksBeforeAnotherIsOpened) {
    DeskStage t;
    const auto first = t.made("one.rpt", "[Reports]\nDest=4\n");
    const auto second = t.made("two.rpt", "[Reports]\nDest=1\n");
    ASSERT_TRUE(t.desk.open(&t.ui, first));
    ASSERT_TRUE(t.desk.set(&t.ui, "Dest", "2"));
    t.ui.queued = {Button::Cancel, Button::No};
    EXPECT_FALSE(t.desk.open(&t.ui, second));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].title, "Save Report Layout File");
    EXPECT_EQ(t.ui.boxes[0].text, "The currently opened Report Layout File:\n\n'" + first +
                                      "'\n\nhas changed. Do you wish to save it first?");
    EXPECT_EQ(t.desk.file().path(), first);
    EXPECT_TRUE(t.desk.open(&t.ui, second));
    EXPECT_EQ(test::readFile(first), "[Reports]\nDest=4\n");
    ASSERT_TRUE(t.desk.set(&t.ui, "Dest", "3"));
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(t.desk.close(&t.ui));
    EXPECT_EQ(test::readFile(second), "[Reports]\nDest=3\n");
    EXPECT_FALSE(fileExists(t.store.pathOf(kLayoutCopy)));
}

TEST(ReportDesk, AnUnchangedFileIsLeftWithoutAQuestion) {
    DeskStage t;
    const auto path = t.made("one.rpt", "[Reports]\nDest=4\n");
    ASSERT_TRUE(t.desk.open(&t.ui, path));
    EXPECT_TRUE(t.desk.set(&t.ui, "Dest", "4"));
    EXPECT_TRUE(t.desk.close(&t.ui));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(ReportDesk, AFileThatCannotBeSavedStaysOpen) {
    DeskStage t;
    const auto path = t.made("one.rpt", "[Reports]\nDest=4\n");
    ASSERT_TRUE(t.desk.open(&t.ui, path));
    ASSERT_TRUE(t.desk.set(&t.ui, "Dest", "2"));
    EXPECT_FALSE(t.desk.file().saveAs(&t.ui, "/nowhere/at/all.rpt"));
    EXPECT_TRUE(t.desk.file().isOpen());
    EXPECT_TRUE(t.desk.file().isChanged());
}

TEST(ReportDesk, AStartingPageBelowOneIsRefusedWithMessage161AndAskedForAgain) {
    DeskStage t;
    t.ui.integers = {0, -4, 12};
    EXPECT_EQ(askStartPage(t.messages, t.ui, 3), 12);
    EXPECT_EQ(t.ui.countBoxes(161), 2);
    ASSERT_EQ(t.ui.integerPrompts.size(), 3U);
    EXPECT_EQ(t.ui.integerPrompts[0].prompt, "Enter Starting Page Number");
    EXPECT_EQ(t.ui.integerPrompts[0].initial, 3);
    EXPECT_EQ(askStartPage(t.messages, t.ui, 3), std::nullopt);
}

}  // namespace
}  // namespace kavu
