// "View Plots": its rows, what it keeps, and what it writes.
#include "app/conversion/PlotView.h"
#include "app/framework/EditableList.h"
#include "app/reports/PagePreview.h"
#include "app/reports/PlotsDialog.h"
#include "app/reports/ReportFormsStage.h"
#include "drawing/CairoSurface.h"

#include <QImage>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;

class PlotsDialogTest : public test::ReportFormsStage {
  protected:
    [[nodiscard]] std::vector<std::string> names() {
        return calibrationNames(t.application.conversions(), nullptr);
    }
    [[nodiscard]] ProfileSettings& settings() { return t.application.context().settings; }
    [[nodiscard]] std::string plotted(const char* name) {
        return settings().profileText("MultiPlot", name);
    }
    void keep(const std::vector<std::string>& kept) {
        int number = 0;
        for (const auto& name : kept) {
            settings().writeProfile("MultiPlot", "Mes" + std::to_string(++number), name);
        }
    }
};

TEST_F(PlotsDialogTest, AddsEditsAndDeletesMeasurements) {
    PlotsDialog dialog(calibrations(), names());
    EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("View Plots"));
    dialog.show();
    t.ui.rows = {0, 1};
    press(dialog, "add");
    ASSERT_EQ(dialog.rows().size(), 1U);
    EXPECT_EQ(t.ui.tablePrompts[0].title, "Select Measurement To Be Plotted");
    EXPECT_EQ(t.ui.tablePrompts[0].columns, (std::vector<std::string>{"Measurement Name", "Date"}));
    EXPECT_EQ(dialog.rows()[0].name, names()[0]);
    EXPECT_FALSE(dialog.rows()[0].order.empty());
    press(dialog, "edit");
    EXPECT_EQ(dialog.rows()[0].name, names()[1]);
    t.ui.queued = {Button::No, Button::Yes};
    press(dialog, "delete");
    EXPECT_EQ(t.ui.boxes[0].text, "Delete this measurement from the plot?");
    EXPECT_EQ(dialog.rows().size(), 1U);
    press(dialog, "delete");
    EXPECT_TRUE(dialog.rows().empty());
}

TEST_F(PlotsDialogTest, ANinthMeasurementCannotBeAdded) {
    keep(std::vector<std::string>(8, names()[0]));
    PlotsDialog dialog(calibrations(), names());
    EXPECT_EQ(dialog.rows().size(), 8U);
    EXPECT_FALSE(find<QPushButton>(dialog, "add")->isEnabled());
}

TEST_F(PlotsDialogTest, MeasurementsThatAreGoneDropOut) {
    keep({"gone", names()[1], "gone too"});
    PlotsDialog dialog(calibrations(), names());
    ASSERT_EQ(dialog.rows().size(), 1U);
    EXPECT_EQ(dialog.rows()[0].name, names()[1]);
    dialog.reject();
    EXPECT_EQ(plotted("Mes1"), names()[1]);
    EXPECT_EQ(plotted("Mes2"), "") << "what is gone is not kept";
    EXPECT_EQ(plotted("Mes3"), "");
}

TEST_F(PlotsDialogTest, CloseKeepsTheMeasurementsTheirDatesAndTheLooks) {
    PlotsDialog dialog(calibrations(), names());
    dialog.show();
    t.ui.rows = {1};
    press(dialog, "add");
    press(dialog, "close");
    EXPECT_EQ(plotted("Mes1"), names()[1]);
    EXPECT_EQ(plotted("Date1"), dialog.rows()[0].date);
    EXPECT_FALSE(settings().profileKeys("MultiPlot").size() < 3) << "and the attributes";
}

TEST_F(PlotsDialogTest, ThePlotHasALegendWithALineAndAMarkForEachMeasurement) {
    keep({names()[0], names()[1]});
    PlotsDialog dialog(calibrations(), names());
    PdfSurface surface({.paper = {600, 400}, .margin = 0, .keepsPages = true});
    ASSERT_TRUE(drawMultiPlot(surface, plottedAttributes(settings()), dialog.rows(),
                              MultiPlotTexts::Legend));
    const auto made = surface.printed();
    std::vector<std::string> texts;
    for (const auto& text : made.pages.at(0).texts()) {
        texts.push_back(text.text);
    }
    for (const auto& wanted : {std::string(multiplot::kTitle), std::string(multiplot::kXAxis),
                               std::string(multiplot::kYAxis), names()[0], names()[1]}) {
        EXPECT_NE(std::find(texts.begin(), texts.end(), wanted), texts.end()) << wanted;
    }
}

TEST_F(PlotsDialogTest, SavesThePlotAsPdfSvgAndPngAndTheDataAsCsv) {
    keep({names()[0]});
    PlotsDialog dialog(calibrations(), names());
    dialog.show();
    t.ui.files = {FileChoice{t.folder / "plot.pdf", 1}, FileChoice{t.folder / "plot", 2},
                  FileChoice{t.folder / "plot", 3}, FileChoice{t.folder / "data.csv", 1}};
    for (int i = 0; i < 3; ++i) {
        press(dialog, "savePlot");
    }
    press(dialog, "saveData");
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(test::readFile(t.folder / "plot.pdf").starts_with("%PDF"));
    EXPECT_NE(test::readFile(t.folder / "plot.svg").find(names()[0]), std::string::npos);
    EXPECT_FALSE(QImage(toQString(t.folder / "plot.png")).isNull());
    const auto data = test::readFile(t.folder / "data.csv");
    EXPECT_TRUE(data.starts_with("Name,TM Value,EU Value,Fit,Error\n" + names()[0] + ",")) << data;
    EXPECT_EQ(static_cast<std::size_t>(std::count(data.begin(), data.end(), '\n')),
              dialog.rows()[0].result.x.size() + 1);
}

TEST_F(PlotsDialogTest, PrintShowsWhatEachFitSays) {
    keep({names()[0]});
    PlotsDialog dialog(calibrations(), names());
    dialog.show();
    std::string texts;
    door.next([&](QDialog& preview) {
        for (const auto& text :
             dynamic_cast<PagePreview&>(preview).document().pages.at(0).texts()) {
            texts += text.text + "\n";
        }
        press(preview, "close");
    });
    press(dialog, "print");
    for (const auto* const part : {"Date: ", "Fit: ", "RMS: ", "Correlation: ", "EU = ("}) {
        EXPECT_NE(texts.find(part), std::string::npos) << part;
    }
}

TEST_F(PlotsDialogTest, WithoutAnyPairSetThereIsANoteAndNoWindow) {
    test::TestApplication empty;
    auto emptyForm = formContext(empty.ui, door, empty.application.context());
    viewMultipleMeasurementPlots({emptyForm, empty.application.context(),
                                  empty.application.conversions(), empty.application.reportDesk()},
                                 nullptr);
    ASSERT_EQ(empty.ui.boxes.size(), 1U);
    EXPECT_EQ(empty.ui.boxes[0].text,
              "There are no measurements that are defined as Pair Sets (with \"defining polynomial "
              "fit\" option set)");
    EXPECT_TRUE(door.names.empty());
}

}  // namespace
}  // namespace kavu
