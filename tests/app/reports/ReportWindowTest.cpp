// "Report Generation": its fields and their keys, its layout file, what Generate does.
#include "app/reports/ReportFormsStage.h"
#include "app/reports/ReportWindow.h"
#include "app/reports/TextViewer.h"
#include "app/reports/UrlCatcher.h"
#include "bus/definition/BusDefinition.h"
#include "core/WorkingStore.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

namespace kavu {
namespace {

using test::find;
using test::press;

class ReportWindowTest : public test::ReportFormsStage {
  protected:
    static void check(QWidget& window, const char* name, bool on = true) {
        find<QCheckBox>(window, name)->setChecked(on);
    }
    static void choose(QWidget& window, const char* name, int index) {
        find<QComboBox>(window, name)->setCurrentIndex(index);
    }
    static void trigger(QWidget& window, const char* name) {
        auto* const action = window.findChild<QAction*>(QLatin1String(name));
        ASSERT_NE(action, nullptr) << name;
        EXPECT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
};

TEST_F(ReportWindowTest, HasItsFieldsWithNamesAndRoom) {
    ReportWindow window(setup());
    EXPECT_EQ(test::checkWindow(window), std::vector<std::string>{});
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Report Generation"));
    EXPECT_EQ(window.objectName(), QStringLiteral("PCMReports"));
    const auto* const destinations = find<QComboBox>(window, "destination");
    ASSERT_EQ(destinations->count(), 5);
    EXPECT_EQ(destinations->itemText(0), QStringLiteral("Screen (Excel XML)"));
    EXPECT_EQ(destinations->itemText(4), QStringLiteral("File (plain text)"));
    const auto* const sizes = find<QComboBox>(window, "font");
    ASSERT_EQ(sizes->count(), 15);
    EXPECT_EQ(sizes->itemText(0), QStringLiteral("Automatic"));
    EXPECT_EQ(sizes->itemText(1), QStringLiteral("2"));
    EXPECT_EQ(sizes->itemText(14), QStringLiteral("15"));
    const auto* const sorts = find<QComboBox>(window, "sort");
    ASSERT_EQ(sorts->count(), 2);
    EXPECT_EQ(sorts->itemText(0), QStringLiteral("FWP/FN"));
    const auto* const columns = find<QListWidget>(window, "columns");
    EXPECT_EQ(columns->item(0)->text(), QStringLiteral("Measurement Location Type"));
    EXPECT_EQ(columns->item(columns->count() - 1)->text(),
              QStringLiteral("EU Conversion Arguments"));
}

TEST_F(ReportWindowTest, ABusHasItsOwnColumnsAndSortsAndNoReportsOfAFrame) {
    const BusDefinition bus{};
    ReportWindow window(setup(&bus));
    EXPECT_EQ(test::checkWindow(window), std::vector<std::string>{});
    EXPECT_FALSE(find<QCheckBox>(window, "format")->isEnabled());
    EXPECT_FALSE(find<QCheckBox>(window, "frame")->isEnabled());
    EXPECT_FALSE(find<QCheckBox>(window, "frameDelimited")->isEnabled());
    EXPECT_EQ(find<QComboBox>(window, "sort")->itemText(1), QStringLiteral("Bus/Msg"));
    auto* const columns = find<QListWidget>(window, "columns");
    EXPECT_EQ(columns->item(0)->text(), QStringLiteral("Bus Address"));
    columns->item(0)->setCheckState(Qt::Checked);
    set("Fmt", "1");
    window.generate();
    EXPECT_EQ(key("M15531"), "1");
    EXPECT_EQ(key("M1"), "") << "the columns of a stream are others";
    EXPECT_EQ(key("Fmt"), "1") << "what a bus does not have keeps what a stream wants";
}

TEST_F(ReportWindowTest, AnEnabledStringOfCommentsIsAColumnOfItsOwn) {
    auto& settings = t.application.context().settings;
    settings.writeProfile("EUComment", "C", "1");
    settings.writeProfile("EUComment", "E1", "1");
    settings.writeProfile("EUComment", "S1", "Sensor:");
    ReportWindow window(setup());
    const auto* const columns = find<QListWidget>(window, "columns");
    EXPECT_EQ(columns->item(20)->text(), QStringLiteral("Sensor: (from EU Comment)"));
}

TEST_F(ReportWindowTest, GenerateSavesTheKeysFirst) {
    ReportWindow window(setup());
    window.show();
    check(window, "measurements");
    check(window, "measurementsDelimited");
    choose(window, "destination", 4);
    choose(window, "font", 7);
    choose(window, "sort", 1);
    find<QListWidget>(window, "columns")->item(2)->setCheckState(Qt::Checked);
    press(window, "generate");
    EXPECT_TRUE(t.ui.hasText("Please enter a pathname for ASCII delimited reports first"));
    EXPECT_EQ(key("MesRpt"), "1");
    EXPECT_EQ(key("MesDel"), "1");
    EXPECT_EQ(key("Dest"), "4");
    EXPECT_EQ(key("Font"), "7");
    EXPECT_EQ(key("MesRptSort"), "1");
    EXPECT_EQ(key("M3"), "1");
    EXPECT_EQ(key("M1"), "0");
}

TEST_F(ReportWindowTest, WithNothingCheckedGenerateOnlySavesTheKeys) {
    ReportWindow window(setup());
    window.show();
    choose(window, "destination", 3);
    press(window, "generate");
    EXPECT_EQ(key("Dest"), "3");
    EXPECT_EQ(key("Fmt"), "0");
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(door.names.empty());
}

TEST_F(ReportWindowTest, ReportsOfASheetCheckTheFormat) {
    ReportWindow window(setup(nullptr, true));
    EXPECT_TRUE(find<QCheckBox>(window, "format")->isChecked());
    EXPECT_FALSE(find<QCheckBox>(window, "frame")->isChecked());
}

TEST_F(ReportWindowTest, ThePathIsForFilesOnly) {
    ReportWindow window(setup());
    for (int index = 0; index < 5; ++index) {
        choose(window, "destination", index);
        EXPECT_EQ(find<QWidget>(window, "reportPath")->isEnabled(), index == 1 || index == 4)
            << index;
    }
}

TEST_F(ReportWindowTest, BrowseFillsThePathAndKeepsItsBytes) {
    ReportWindow window(setup());
    window.show();
    choose(window, "destination", 4);
    const std::string path = t.folder / "K\xF6ln.txt";
    t.ui.files = {FileChoice{path, 1}};
    press(window, "reportPathBrowse");
    EXPECT_EQ(t.ui.filePrompts.back().title, "Select Report File");
    check(window, "format");
    press(window, "generate");
    EXPECT_EQ(key("ReportPath"), path);
    EXPECT_TRUE(fileExists(path));
}

TEST_F(ReportWindowTest, AFileThatIsThereIsReplacedAfterAQuestionAndThenWithoutOne) {
    const auto path = made("kept.txt", "kept");
    set("ReportPath", path);
    ReportWindow window(setup());
    window.show();
    check(window, "format");
    choose(window, "destination", 4);
    t.ui.queued = {Button::No, Button::Yes};
    press(window, "generate");
    EXPECT_EQ(test::readFile(path), "kept");
    press(window, "generate");
    EXPECT_TRUE(test::readFile(path).starts_with("PCM Stream Attributes Report\n"));
    EXPECT_EQ(t.ui.boxes.size(), 2U);
    press(window, "generate");
    EXPECT_EQ(t.ui.boxes.size(), 2U) << "it is this window's own by now";
}

TEST_F(ReportWindowTest, TextOnTheScreenOpensInAViewer) {
    ReportWindow window(setup());
    window.show();
    check(window, "format");
    choose(window, "destination", 2);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("TextViewer"));
        EXPECT_TRUE(find<QPlainTextEdit>(dialog, "text")
                        ->toPlainText()
                        .startsWith(QStringLiteral("PCM Stream Attributes Report\n")));
        press(dialog, "close");
    });
    press(window, "generate");
}

TEST_F(ReportWindowTest, AWorkbookOnTheScreenGoesToTheDesktop) {
    test::UrlCatcher desktop;
    ReportWindow window(setup());
    window.show();
    check(window, "format");
    choose(window, "destination", 0);
    press(window, "generate");
    ASSERT_EQ(desktop.urls.size(), 1);
    EXPECT_EQ(desktop.urls[0].fileName(), QStringLiteral("KAVU9Report.xml"));
}

TEST_F(ReportWindowTest, ThePrinterIsAPreviewOfItsPages) {
    ReportWindow window(setup());
    window.show();
    check(window, "format");
    check(window, "frame");
    choose(window, "destination", 3);
    t.ui.integers = {7};
    press(window, "startPageButton");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("PagePreview"));
        EXPECT_EQ(find<QLabel>(dialog, "pageCount")->text().left(3), QStringLiteral("of "));
        press(dialog, "close");
    });
    press(window, "generate");
}

TEST_F(ReportWindowTest, TheStartingPageIsRefusedBelowOneAndShownInTheMenu) {
    ReportWindow window(setup());
    window.show();
    t.ui.integers = {0, 12};
    press(window, "startPageButton");
    EXPECT_EQ(t.ui.countBoxes(161), 1);
    EXPECT_EQ(window.startPage(), 12);
    EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("startPage"))->text(),
              QStringLiteral("&Set Starting Page Number (Current Page: 12)"));
    EXPECT_TRUE(key("StartPage").empty()) << "it is not stored";
}

// --- the layout file ------------------------------------------------------------------------

TEST_F(ReportWindowTest, ALayoutFileFillsTheFieldsAndTakesThem) {
    const auto path = made("own.rpt", "[Reports]\nFmt=1\nDest=2\nM2=1\nUnknown=x\n");
    ReportWindow window(setup());
    window.show();
    EXPECT_EQ(find<QLabel>(window, "layout")->text(), QStringLiteral("Report Layout File: (None)"));
    t.ui.files = {FileChoice{path, 1}};
    trigger(window, "openLayout");
    EXPECT_EQ(t.ui.filePrompts.back().title, "Open Report Layout File");
    EXPECT_EQ(t.ui.filePrompts.back().filters.front().first, "KAVU-9 Report Layout Files");
    EXPECT_EQ(t.ui.filePrompts.back().filters.front().second, "*.rpt");
    EXPECT_TRUE(find<QCheckBox>(window, "format")->isChecked());
    EXPECT_EQ(find<QComboBox>(window, "destination")->currentIndex(), 2);
    EXPECT_EQ(find<QListWidget>(window, "columns")->item(1)->checkState(), Qt::Checked);
    choose(window, "destination", 3);
    trigger(window, "saveLayout");
    const auto text = test::readFile(path);
    EXPECT_NE(text.find("Dest=3\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Unknown=x\n"), std::string::npos) << "lines of others stay";
    EXPECT_EQ(key("Dest"), "") << "the settings are left alone";
    trigger(window, "closeLayout");
    EXPECT_EQ(find<QComboBox>(window, "destination")->currentIndex(), 0);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(ReportWindowTest, FieldsThatWereChosenForAFileCountAsItsChange) {
    const auto path = made("own.rpt", "[Reports]\nDest=2\n");
    ReportWindow window(setup());
    window.show();
    t.ui.files = {FileChoice{path, 1}, FileChoice{path, 1}};
    trigger(window, "openLayout");
    choose(window, "destination", 3);
    t.ui.queued = {Button::Cancel};
    trigger(window, "openLayout");
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.boxes.back().title, "Save Report Layout File");
    EXPECT_EQ(find<QComboBox>(window, "destination")->currentIndex(), 3) << "Cancel keeps it";
}

TEST_F(ReportWindowTest, ANewLayoutFileHasAllKeys) {
    ReportWindow window(setup());
    window.show();
    choose(window, "destination", 4);
    const std::string path = t.folder / "new.rpt";
    t.ui.files = {FileChoice{path, 1}};
    trigger(window, "saveLayoutAs");
    EXPECT_EQ(t.ui.filePrompts.back().title, "Save KAVU-9 Report Layout File As");
    const auto text = test::readFile(path);
    for (const auto* const line :
         {"Dest=4", "Font=0", "M1=0", "M22=0", "M155324=0", "MesReptTitle=Measurement Report",
          "PCMReptTitle=PCM Stream Attributes Report", "MFReptTitle=PCM Major Frame Report",
          "MFReptStyle=1", "MFReptDupMes=1", "MFReptCompact=1", "MFReptSC=0",
          "PlotTitle=Calibration Data Sheet", "PNumLoc=2", "PNumString=Page ^"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(find<QLabel>(window, "layout")->text(),
              QStringLiteral("Report Layout File: ") + toQString(path));
}

TEST_F(ReportWindowTest, TheEndOfTheProgramAsksAboutAChangedLayout) {
    const auto path = made("own.rpt", "[Reports]\nDest=2\n");
    auto& desk = t.application.reportDesk();
    ASSERT_TRUE(desk.open(&t.ui, path));
    ASSERT_TRUE(desk.set(&t.ui, "Dest", "1"));
    t.ui.queued = {Button::Cancel, Button::Yes};
    EXPECT_FALSE(t.application.shutDown(&t.ui));
    EXPECT_EQ(t.ui.boxes.back().title, "Save Report Layout File");
    EXPECT_TRUE(t.application.shutDown(&t.ui));
    EXPECT_EQ(test::readFile(path), "[Reports]\nDest=1\n");
}

}  // namespace
}  // namespace kavu
