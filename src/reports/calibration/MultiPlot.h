// The curves of up to eight measurements over one another.
#pragma once

#include "reports/calibration/Calibration.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DrawingSurface;

/// As many as there are series of their own looks.
inline constexpr std::size_t kMostPlotted = 8;

namespace multiplot {
inline constexpr std::string_view kTitle = "Multiple Item Calibration Plots";
inline constexpr std::string_view kXAxis = "TM Value";
inline constexpr std::string_view kYAxis = "EU Value";
/// The section of the settings with the measurements and the looks of the plot.
inline constexpr std::string_view kSection = "MultiPlot";
}  // namespace multiplot

struct PlottedRow {
    std::string name{};
    std::string date{};
    // Of the fit; empty if it failed.
    std::string order{};
    std::string rms{};
    std::string correlation{};
    std::string polynomial{};
    FitResult result{};
};

/// The rows of these measurements: one that is no pair set with a curve fit drops out, and beyond
/// eight no more are taken.
[[nodiscard]] std::vector<PlottedRow> plottedRows(const DocumentContext& context,
                                                  ConversionStore& store,
                                                  const std::vector<std::string>& names);

/// Draws title, curves and a legend, and below them the texts of the rows. False if the range of
/// the plot is empty, which the picture says.
bool drawMultiPlot(const DocumentContext& context, DrawingSurface& surface,
                   const std::vector<PlottedRow>& rows);

}  // namespace kavu
