// The ways to the windows of reports: the main menu, the tree, the windows of streams, buses and
// conversions.
#include "app/Forms.h"
#include "app/bus/BusForms.h"
#include "app/conversion/ConversionForms.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/PcmForms.h"
#include "app/reports/PagePreview.h"
#include "app/reports/ReportForms.h"
#include "app/reports/ReportFormsStage.h"
#include "app/reports/ReportWindow.h"
#include "app/shell/TreePanel.h"
#include "app/support/MainWindowStage.h"
#include "groups/DataSources.h"
#include "reports/calibration/Calibration.h"

#include <QAction>
#include <QCheckBox>
#include <QListWidget>

namespace kavu {
namespace {

using test::find;
using test::press;

class ReportFormsTest : public MainWindowTest {
  protected:
    void begin() {
        test::writeFile(path, test::sampleWithCurves());
        window = std::make_unique<DropWindow>(application, door);
        installForms(*window, application);
        ASSERT_TRUE(window->begin({.splash = false, .file = path}));
        form = std::make_unique<FormContext>(window->formContext());
        std::vector<std::string> links;
        ASSERT_TRUE(gatherDataLinks(application.context(), nullptr, links));
        stream = links.front();
    }
    static void closeIt(QDialog& dialog) { press(dialog, "close"); }
    /// A pair set with a curve, of the sample.
    std::string curve() { return calibrationNames(application.conversions(), nullptr).front(); }

    std::unique_ptr<FormContext> form;
    std::string stream;
};

TEST_F(ReportFormsTest, ThePlotsAndTheCalibrationsNeedADocumentAndTheOptionsDoNot) {
    window = std::make_unique<DropWindow>(application, door);
    installForms(*window, application);
    ASSERT_TRUE(window->begin({.splash = false}));
    EXPECT_FALSE(enabled(CommandId::Plots));
    EXPECT_FALSE(enabled(CommandId::CalibrationReports));
    EXPECT_TRUE(enabled(CommandId::ReportOptions));
    ASSERT_TRUE(window->openNamed(path));
    EXPECT_TRUE(enabled(CommandId::Plots));
    EXPECT_TRUE(enabled(CommandId::CalibrationReports));
}

TEST_F(ReportFormsTest, TheEntriesOfTheMenuOpenTheirWindows) {
    begin();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("ViewMultipleMeasurementPlots"));
        closeIt(dialog);
    });
    window->run(CommandId::Plots);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("PrintCalibrationReports"));
        closeIt(dialog);
    });
    window->run(CommandId::CalibrationReports);
    door.next([](QDialog& dialog) { press(dialog, "choice0"); }).next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("ReportOptions"));
        press(dialog, "cancel");
    });
    window->run(CommandId::ReportOptions);
}

TEST_F(ReportFormsTest, TheTreePrintsAllCalibrations) {
    begin();
    const TreeItem head{.kind = TreeKind::ConversionHead, .command = -18};
    EXPECT_TRUE(window->tree().available(TreeAction::PrintReports, head));
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("PrintCalibrationReports"));
        closeIt(dialog);
    });
    emit window->tree().requested(TreeAction::PrintReports, head);
}

TEST_F(ReportFormsTest, TheSheetOfAStreamOpensItsReportsWithTheFormatChecked) {
    begin();
    door.next([&](QDialog& sheet) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("PCMReports"));
            EXPECT_TRUE(find<QCheckBox>(dialog, "format")->isChecked());
            closeIt(dialog);
        });
        press(sheet, "reports");
        press(sheet, "cancel");
    });
    EXPECT_FALSE(editStream(*form, application, stream)) << "a report changes nothing";
}

TEST_F(ReportFormsTest, TheDisplayGeneratesReports) {
    begin();
    door.next([&](QDialog& sheet) {
        door.next([&](QDialog& display) {
            auto* const entry = display.findChild<QAction*>(QStringLiteral("reports"));
            ASSERT_NE(entry, nullptr);
            EXPECT_TRUE(entry->isEnabled());
            door.next([](QDialog& dialog) {
                EXPECT_EQ(dialog.objectName(), QStringLiteral("PCMReports"));
                EXPECT_FALSE(find<QCheckBox>(dialog, "format")->isChecked());
                closeIt(dialog);
            });
            entry->trigger();
            press(display, "close");
        });
        press(sheet, "viewEditStream");
        press(sheet, "cancel");
    });
    (void)editStream(*form, application, stream);
}

TEST_F(ReportFormsTest, TheEditorOfABusReportsItsMeasurements) {
    begin();
    door.next([&](QDialog& editor) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("PCMReports"));
            EXPECT_FALSE(find<QCheckBox>(dialog, "frame")->isEnabled());
            EXPECT_EQ(find<QListWidget>(dialog, "columns")->item(0)->text(),
                      QStringLiteral("Bus Address"));
            closeIt(dialog);
        });
        press(editor, "reports");
        press(editor, "cancel");
    });
    EXPECT_FALSE(editBus(*form, application, "1553 Bus 1"));
}

TEST_F(ReportFormsTest, ThePairSetsOfARecordPrintTheWholeSheet) {
    begin();
    std::string texts;
    door.next([&](QDialog& sheet) {
        QWidget* print = nullptr;
        for (auto* const each : QApplication::allWidgets()) {
            if (each->objectName() == QStringLiteral("print") && each->isVisible()) {
                print = each;
            }
        }
        if (print == nullptr) {
            press(sheet, "showDetails");
            QApplication::processEvents();
            for (auto* const each : QApplication::allWidgets()) {
                if (each->objectName() == QStringLiteral("print") && each->isVisible()) {
                    print = each;
                }
            }
        }
        ASSERT_NE(print, nullptr);
        door.next([&](QDialog& preview) {
            for (const auto& text :
                 dynamic_cast<PagePreview&>(preview).document().pages.at(0).texts()) {
                texts += text.text + "\n";
            }
            press(preview, "close");
        });
        QTest::mouseClick(print, Qt::LeftButton);
        press(sheet, "cancel");
    });
    settings().set(setting::kShowPlot, true);
    (void)editConversion(*form, application.context(), application.conversions(), curve());
    EXPECT_NE(texts.find("Calibration Data Sheet\n"), std::string::npos);
    EXPECT_NE(texts.find("Parameter Name:\n"), std::string::npos) << texts;
    EXPECT_NE(texts.find("Order Of Fit:"), std::string::npos);
}

TEST_F(ReportFormsTest, TheListOfAllDefinitionsPrintsCalibrations) {
    begin();
    door.next([&](QDialog& list) {
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("PrintCalibrationReports"));
            closeIt(dialog);
        });
        press(list, "print");
        press(list, "close");
    });
    (void)editAllConversions(*form, application.context(), application.conversions());
}

}  // namespace
}  // namespace kavu
