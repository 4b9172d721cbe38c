// How a plot looks: its ranges, its grid, its series, with their keys in the settings and
// the rules of the dialog that edits them.
#pragma once

#include "drawing/DrawingSurface.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ProfileFile;
class ProfileSettings;

inline constexpr std::size_t kPlotSeries = 10;

/// Which axes scale automatically. The numbers are those of the settings.
enum class PlotScale { MinMax = 0, AutoX, AutoY, AutoXY };
[[nodiscard]] constexpr bool scalesX(PlotScale scale) {
    return scale == PlotScale::AutoX || scale == PlotScale::AutoXY;
}
[[nodiscard]] constexpr bool scalesY(PlotScale scale) {
    return scale == PlotScale::AutoY || scale == PlotScale::AutoXY;
}

enum class PlotSymbol {
    None = 1,
    HollowSquare,
    FilledSquare,
    HollowTriangle,
    FilledTriangle,
    HollowCircle,
    FilledCircle,
    Plus,
    Cross,
    Asterisk
};

struct SeriesAttributes {
    DrawingColour colour = 0;
    LineStyle style = LineStyle::Solid;
    int width = 1;  ///< 1 to 8
    PlotSymbol symbol = PlotSymbol::None;

    bool operator==(const SeriesAttributes&) const = default;
};

struct PlotRange {
    double least = 0;
    double most = 0;

    bool operator==(const PlotRange&) const = default;
};

struct PlotAttributes {
    PlotAttributes();

    PlotScale scale = PlotScale::AutoXY;
    PlotRange x;
    PlotRange y;
    DrawingColour borderColour = 0xC0C0C0;
    int borderWidth = 2;        ///< 1 to 8; also the gap to the labels
    bool blackAndWhite = true;  ///< when printing
    int xDivisions = 2;         ///< 0 to 100
    int yDivisions = 2;
    int xPrecision = 2;  ///< 0 to 20
    int yPrecision = 2;
    std::array<SeriesAttributes, kPlotSeries> series;

    /// Stores the method and the ranges that are not scaled automatically. Reversed bounds
    /// are accepted, equal ones leave the range.
    void setRange(int method, double xLeast, double xMost, double yLeast, double yMost);

    /// Automatic scaling: extends the range from 0 to all values of the data, for the
    /// axes that scale automatically.
    void scaleTo(std::span<const double> xData, std::span<const double> yData);

    /// Keys that are absent, or hold an invalid value, leave the present value.
    void load(const ProfileFile& file, std::string_view section);
    void load(const ProfileSettings& settings, std::string_view section);
    void save(ProfileFile& file, std::string_view section) const;
    void save(ProfileSettings& settings, std::string_view section) const;

    bool operator==(const PlotAttributes&) const = default;
};

// --- The dialog ---------------------------------------------------------------------------

struct PlotColourName {
    std::string_view name;
    DrawingColour colour;
};
[[nodiscard]] std::span<const PlotColourName> plotColours();
/// The name of a colour, or "0xRRGGBB" for one without.
[[nodiscard]] std::string plotColourName(DrawingColour colour);
[[nodiscard]] std::span<const std::string_view> plotScaleNames();
[[nodiscard]] std::span<const std::string_view> lineStyleNames();
/// From symbol 1 on.
[[nodiscard]] std::span<const std::string_view> plotSymbolNames();

namespace plottext {
inline constexpr std::string_view kUseColours = "Use Colors";
inline constexpr std::string_view kBlackAndWhite = "Black & White Only";
inline constexpr std::string_view kLimitsTitle = "Invalid Graph Limit Entered";
inline constexpr std::string_view kLimits =
    "\"Max X\" must be greater than \"Min X\", and \"Max Y\" must be greater than \"Min Y\"";
inline constexpr std::string_view kCancelTitle = "Save Changes?";
inline constexpr std::string_view kCancel =
    "Items have changed. If you cancel, these items will not take effect.\n\nDo you really want "
    "to cancel?";
inline constexpr std::string_view kNoControls = "Unable to create controls";
inline constexpr std::string_view kSelectionTitle = "Invalid Selection";
inline constexpr std::string_view kSelection =
    "You have selected an incompatible combination.\n\nIf you select a Line Style other than "
    "\"Solid\" or \"None\", the Line Width value must be 1.\n\n";
inline constexpr std::string_view kChangeWidth = "Would you like to change Line Width to 1?";
inline constexpr std::string_view kChangeStyle =
    "Would you like to change Line Style to \"Solid\"?";
inline constexpr std::string_view kSelectAnother = "Please Select another combination.";
}  // namespace plottext

/// Checks the limits that are in use; false calls for the message `kLimits`.
[[nodiscard]] bool plotLimitsHold(const PlotAttributes& attributes);
/// False for a line style other than solid and none with a width over 1.
[[nodiscard]] bool styleFitsWidth(const SeriesAttributes& series);
/// The whole text of the conflict, with the question that fits what was changed.
[[nodiscard]] std::string styleConflictText(bool widthWasChanged);
/// Resolves the conflict as the question offers.
void settleStyleConflict(SeriesAttributes& series, bool widthWasChanged);
/// The titles of the rows, 0 to 10 of them: the lines of `names`, else the series number.
[[nodiscard]] std::vector<std::string> seriesTitles(int count, std::string_view names);

}  // namespace kavu
