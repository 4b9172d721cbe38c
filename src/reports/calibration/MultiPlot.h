// The curves of up to eight measurements over one another.
#pragma once

#include "conversion/PlotAttributes.h"
#include "reports/calibration/Calibration.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DrawingSurface;
class ProfileSettings;

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
    // The pairs of the record, as they are.
    std::vector<double> x{};
    std::vector<double> y{};
};

/// The rows of these measurements: one that is no pair set with a curve fit drops out, and beyond
/// eight no more are taken.
[[nodiscard]] std::vector<PlottedRow> plottedRows(const DocumentContext& context,
                                                  ConversionStore& store,
                                                  const std::vector<std::string>& names);

/// The names and dates that the settings keep, at most eight, as `Mes%d` and `Date%d`.
struct PlottedName {
    std::string name{};
    std::string date{};
};
[[nodiscard]] std::vector<PlottedName> readPlotted(const ProfileSettings& settings);
void writePlotted(ProfileSettings& settings, const std::vector<PlottedRow>& rows);

/// How the plot looks: as the settings have it, and where they say nothing each series has a dash
/// and a mark of its own, so that paper without colour tells them apart.
[[nodiscard]] PlotAttributes plottedAttributes(const ProfileSettings& settings);

/// What is drawn besides the curves.
enum class MultiPlotTexts {
    Legend,  ///< the names with their lines and marks
    Fits,    ///< and below each name what its fit says
};
/// Draws title, curves and a legend. False if the range of the plot is empty, which the picture
/// says.
bool drawMultiPlot(DrawingSurface& surface, const PlotAttributes& attributes,
                   const std::vector<PlottedRow>& rows, MultiPlotTexts texts);
/// The same with the attributes of the settings and all texts.
bool drawMultiPlot(const DocumentContext& context, DrawingSurface& surface,
                   const std::vector<PlottedRow>& rows);

/// The pairs of all rows as a table: name, TM value, EU value, the value of the fit, its error.
/// `divider` stands between values; a value that holds it is quoted.
[[nodiscard]] std::string multiPlotData(const std::vector<PlottedRow>& rows, int precision,
                                        char divider);

}  // namespace kavu
