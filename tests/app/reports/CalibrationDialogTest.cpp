// "Print Calibration Reports": what is marked is printed, from the page that the user enters.
#include "app/reports/CalibrationDialog.h"
#include "app/reports/PagePreview.h"
#include "app/reports/ReportFormsStage.h"
#include "reports/calibration/CalibrationSheet.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;

class CalibrationDialogTest : public test::ReportFormsStage {
  protected:
    [[nodiscard]] std::vector<std::string> names() {
        return calibrationNames(t.application.conversions(), nullptr);
    }
    /// Texts of the pages that a preview shows.
    static std::string textsOf(const PagePreview& preview) {
        std::string all;
        for (const auto& page : preview.document().pages) {
            for (const auto& text : page.texts()) {
                all += text.text + "\n";
            }
        }
        return all;
    }
};

TEST_F(CalibrationDialogTest, ShowsAllPairSetsMarkedAndTheLayoutThatIsOpen) {
    ASSERT_GE(names().size(), 2U);
    CalibrationDialog dialog(calibrations(), names());
    EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Print Calibration Reports"));
    EXPECT_EQ(dialog.marked(), names());
    EXPECT_EQ(find<QLabel>(dialog, "layout")->text(), QStringLiteral("Report Layout File: (None)"));
    EXPECT_FALSE(find<QPushButton>(dialog, "closeLayout")->isEnabled());
    dialog.show();
    press(dialog, "clearAll");
    EXPECT_TRUE(dialog.marked().empty());
    press(dialog, "selectAll");
    EXPECT_EQ(dialog.marked(), names());
    const auto path = made("own.rpt", "[Reports]\n");
    t.ui.files = {FileChoice{path, 1}};
    press(dialog, "openLayout");
    EXPECT_EQ(find<QLabel>(dialog, "layout")->text(),
              QStringLiteral("Report Layout File: ") + toQString(path));
    press(dialog, "closeLayout");
    EXPECT_EQ(find<QLabel>(dialog, "layout")->text(), QStringLiteral("Report Layout File: (None)"));
}

TEST_F(CalibrationDialogTest, WithoutAMarkThereIsNothingToPrint) {
    CalibrationDialog dialog(calibrations(), names());
    dialog.show();
    press(dialog, "clearAll");
    press(dialog, "print");
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].text,
              "There are no calibration reports to print, or none are selected.");
}

TEST_F(CalibrationDialogTest, AsksFirstThenForTheFirstPageThenShowsThePages) {
    CalibrationDialog dialog(calibrations(), names());
    dialog.show();
    t.ui.queued = {Button::Yes};
    t.ui.integers = {0, 5};
    std::string texts;
    door.next([&](QDialog& preview) {
        texts = textsOf(dynamic_cast<PagePreview&>(preview));
        press(preview, "close");
    });
    press(dialog, "print");
    const auto count = std::to_string(names().size());
    EXPECT_EQ(t.ui.boxes[0].text, "This function will print calibration reports for " + count +
                                      " measurements.\n\nContinue?");
    EXPECT_EQ(t.ui.countBoxes(161), 1);
    EXPECT_NE(texts.find("Calibration Data Sheet\n"), std::string::npos);
    EXPECT_NE(texts.find("Page 5\n"), std::string::npos);
    EXPECT_NE(texts.find("Page 6\n"), std::string::npos);
    EXPECT_GT(t.application.reportDesk().nextPage, 5) << "the count goes on";
}

TEST_F(CalibrationDialogTest, ANoOrACancelPrintsNothing) {
    CalibrationDialog dialog(calibrations(), names());
    dialog.show();
    t.ui.queued = {Button::No, Button::Yes};
    press(dialog, "print");
    press(dialog, "print");
    EXPECT_TRUE(door.names.empty());
    EXPECT_EQ(t.ui.integerPrompts.size(), 1U);
    EXPECT_EQ(t.application.reportDesk().nextPage, 1);
}

TEST_F(CalibrationDialogTest, OnlyWhatIsMarkedIsPrinted) {
    CalibrationDialog dialog(calibrations(), names());
    dialog.show();
    press(dialog, "clearAll");
    find<QListWidget>(dialog, "measurements")->item(1)->setCheckState(Qt::Checked);
    t.ui.queued = {Button::Yes};
    t.ui.integers = {1};
    std::string texts;
    door.next([&](QDialog& preview) {
        texts = textsOf(dynamic_cast<PagePreview&>(preview));
        press(preview, "close");
    });
    press(dialog, "print");
    EXPECT_NE(texts.find(names()[1] + "\n"), std::string::npos);
    EXPECT_EQ(texts.find(names()[0] + "\n"), std::string::npos);
}

}  // namespace
}  // namespace kavu
