// What the panel of pair sets is made of: its controls, the pairs, the last fit.
#pragma once

#include "app/conversion/PairSetControls.h"
#include "app/conversion/PairSetPanel.h"
#include "conversion/PairSetFit.h"
#include "conversion/PairSetPage.h"

#include <optional>
#include <string>
#include <utility>

#include <QPointF>

namespace kavu {

class PlotView;

class PairSetParts {
  public:
    PairSetParts(PairSetPanel& panel, FormContext& form, DocumentContext& document,
                 ConversionStore& conversions, std::string name, const PairSetSetup& setup);

    void load();
    /// With `rescale` a range of Y that does not scale itself follows the values.
    void refit(bool rescale);
    [[nodiscard]] bool validate() { return setDefaultBits(); }
    [[nodiscard]] bool store();
    /// Places what is entered and what comes of it side by side if both have room in this width,
    /// else one below the other.
    void arrangeFor(int width);
    /// The width that they need one below the other.
    [[nodiscard]] int leastWidth() const;

  private:
    [[nodiscard]] int columnWidth(int column) const;

    // The list.
    void connectList();
    [[nodiscard]] std::optional<ValuePair> askForPair(const ValuePair& before, bool isNew);
    void takeList();
    void importPairs(const std::pair<std::string, std::string>& boxes);
    void pastePairs();
    void storePairs(std::size_t selected);
    void showPairs(std::size_t selected);

    // The choices.
    void connectChoices();
    void showChoices();
    /// Takes the word size from its field. A refused one is reported, and goes.
    bool setDefaultBits();
    void setSorted(bool sorted);
    /// Runs an edit of an option: a refit follows, and if its coefficients are other ones the
    /// record has changed.
    void optionChanged();
    void enableSeries(bool on);
    void editSeries(std::string& value, std::string_view prompt);

    // The result.
    void showResult();
    void enableControls();
    void showTrust();

    // The plot.
    void connectPlot();
    void setPlotShown(bool shown);
    /// How a view is drawn: both have frames of one width, with their pairs one above the other.
    [[nodiscard]] FitDrawing drawingOn(const DrawingSurface& surface, bool errors);
    void drawCurve(DrawingSurface& surface);
    void drawErrors(DrawingSurface& surface);
    bool drawPage(DrawingSurface& surface) const;
    void redraw();
    void editAttributes();
    void pointAt(QPointF place);
    /// The pair at a place of the plot.
    [[nodiscard]] std::optional<std::size_t> pairAt(QPointF place) const;

    /// Remembers a failure to store, for `store`.
    void noteStored(bool good) { unstored_ = unstored_ || !good; }
    void changed();

    PairSetPanel& panel_;
    FormContext& form_;
    DocumentContext& document_;
    std::string name_;
    PairSetSetup setup_;
    PairSetPage page_;
    PlotView* curveView_ = nullptr;
    PlotView* residualView_ = nullptr;
    PairSetControls controls_;

    PairSet pairs_;
    int order_ = 1;
    SeriesValues series_;
    FitOptions options_;
    FitInput input_;
    FitResult result_;
    std::string units_;
    bool curve_ = false;    ///< the record defines one
    bool adding_ = false;   ///< a pair was added, and the next one is asked for
    bool filling_ = false;  ///< the controls are being filled
    bool unstored_ = false;
    bool rescaled_ = false;
    PlotAttributes chosen_;  ///< the look, before a drawing gives it its ranges
    Plot plot_;
    Plot residuals_;
};

}  // namespace kavu
