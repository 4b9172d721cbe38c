#include "app/conversion/PairSetImportDialog.h"
#include "app/conversion/PairSetPanel.h"
#include "app/conversion/PlotAttributesDialog.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "application/Application.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/PairSetPage.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <cmath>
#include <memory>

#include <QDialog>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kPairSetPictured[] = "ENG1-OIL-PRESS";

/// The calibration of a pressure transducer that is a little off the curve in the middle.
PairSet samplePairs() {
    PairSet pairs;
    for (int i = 0; i <= 10; ++i) {
        const double counts = 6000.0 * i;
        const double psi = counts / 512 + 8 * std::sin(counts / 14000) + (i == 5 ? 1.4 : 0);
        (void)pairs.add({formatPrintf("%.0f", counts), formatPrintf("%.2f", psi)});
    }
    return pairs;
}

/// Counts far from 0, over which a high order does not hold.
PairSet narrowPairs() {
    PairSet pairs;
    for (int i = 0; i <= 20; ++i) {
        const double counts = 30000 + 200.0 * i;
        (void)pairs.add(
            {formatPrintf("%.0f", counts), formatPrintf("%.3f", 50 + 40 * std::sin(i / 3.5))});
    }
    return pairs;
}

/// The panel as it is in the window of the type. It keeps what it shows, so the record it
/// was filled from may be deleted.
std::unique_ptr<QWidget> makePanel(ScreenshotStage& stage, const PairSet& pairs, int order,
                                   bool plot) {
    if (stage.document == nullptr || stage.application == nullptr) {
        return nullptr;
    }
    auto& conversions = stage.application->conversions();
    auto edit = DefinitionEdit::open(*stage.document, conversions, nullptr, kPairSetPictured);
    if (!edit) {
        return nullptr;
    }
    (void)edit->setValues(nullptr, {{"DCT", "PRS"}, {"MN3", "PSI"}, {"MOT1", "120"}});
    PairSetPage page(*stage.document, conversions, edit->name());
    (void)page.storePairs(nullptr, pairs);
    (void)page.storeCurve(nullptr, true);
    (void)page.storeOrder(nullptr, order);
    // Points for the pairs, a line for the curve.
    stage.document->settings.overrideForThisRun("PL1Sym", "7");
    stage.document->settings.overrideForThisRun("PL1Sty", "5");
    auto window = std::make_unique<QDialog>();
    window->setWindowTitle(toQString(std::string("Pair Sets: ") + kPairSetPictured));
    auto* layout = new QVBoxLayout(window.get());
    look::arrangeWindow(*layout, *window);
    layout->addWidget(new PairSetPanel(stage.form, *stage.document, conversions, edit->name(),
                                       {.bits = 16, .plot = plot}, window.get()));
    (void)edit->cancel(nullptr);
    return window;
}

PlotAttributes sampleAttributes() {
    PlotAttributes attributes;
    attributes.setRange(static_cast<int>(PlotScale::AutoX), 0, 1, 0, 120);
    attributes.series[0].symbol = PlotSymbol::FilledCircle;
    attributes.series[0].style = LineStyle::None;
    return attributes;
}

}  // namespace

void addPairSetScreenshots(ScreenshotList& list) {
    list.add("PairSetsPlot",
             [](ScreenshotStage& stage) { return makePanel(stage, samplePairs(), 3, true); });
    list.add("PairSets",
             [](ScreenshotStage& stage) { return makePanel(stage, samplePairs(), 3, false); });
    list.add("PairSetsTrust",
             [](ScreenshotStage& stage) { return makePanel(stage, narrowPairs(), 7, true); });
    list.add("ImportPairSets", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        const auto pairs = samplePairs();
        return std::make_unique<PairSetImportDialog>(stage.form, pairs, pairs.boxTexts());
    });
    list.add("EditPlotAttributes", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        return std::make_unique<PlotAttributesDialog>(stage.form, sampleAttributes(), 3,
                                                      "Pair Sets\nCurve Fit\nSeries Plot");
    });
    list.add("EditPlotSeries", [](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        return std::make_unique<PlotSeriesDialog>(stage.form, "Pair Sets",
                                                  sampleAttributes().series[0]);
    });
}

}  // namespace kavu
