// The refit of the pair set page: from the pairs and the options of a measurement to all that
// the page shows, and the drawing of it. Nothing here touches a record or a setting.
#pragma once

#include "conversion/CurveFit.h"
#include "conversion/CurveTrust.h"
#include "conversion/PairSet.h"
#include "conversion/Plot.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ProfileSettings;
class UserInterface;
class Messages;

/// The settings of fits.
struct FitOptions {
    int maxOrder = 5;            ///< `LSBFMaxOrder`, 1 to 10: of the search for the best fit
    bool useBestFit = false;     ///< `UseLSBFSolution`: use the order that the search finds
    bool curveAllPairs = false;  ///< `CurveAllPairs`: the curve runs through every count
    int defaultBits = 16;        ///< `CurveDefBits`: the word size if that is unknown
    bool sorted = false;         ///< `PRSSort`
    int precision = 8;           ///< `FloatPrecision`, 0 to 40
    bool seriesEnabled = false;  ///< `DoRCal`

    [[nodiscard]] static FitOptions read(const ProfileSettings& settings);
};

/// The highest order that the list of orders offers; a best fit of 10 is used nevertheless.
inline constexpr int kHighestListedOrder = 9;

/// Stores the word size of curves; one under 1 is refused with message 405 ("Invalid
/// 'Number Of Bits'").
bool writeCurveDefaultBits(const Messages& messages, ProfileSettings& settings,
                           UserInterface* parent, int bits);

/// The texts of the limits of a record, as on their page.
struct RecordLimits {
    std::string valueHigh;  ///< "MOT1"
    std::string valueLow;   ///< "MOT2"
    std::string limitHigh;  ///< "MOT3"
    std::string limitLow;   ///< "MOT4"
};

struct FitInput {
    std::vector<double> x;
    std::vector<double> y;
    int order = 1;
    RecordLimits limits;
    bool series = false;  ///< the check of the series plot
    std::string zero;     ///< the zero and the cal value of the series, as entered
    std::string cal;
    int bits = 0;              ///< word length of the measurement; 0 is unknown
    std::string binaryFormat;  ///< "BFM"
};

/// What the refit has found. Rows are in the order of the pairs.
struct FitResult {
    int pairs = 0;
    int order = 0;    ///< the one that was fitted
    int bestFit = 0;  ///< 0 for unknown
    bool fitted = false;
    FitCoefficients coefficients{};
    std::vector<double> x;  ///< with 0.0 replaced
    std::vector<double> y;
    std::vector<double> computed;  ///< empty without a fit, as the following
    std::vector<double> errors;    ///< computed minus given values
    std::vector<bool> marked;      ///< off by 0.5 percent of full scale or more
    double rms = 0;
    double correlation = 0;
    PlotRange fullScale;
    std::optional<double> zeroX, zeroY, calX, calY;  ///< of the series, when it is on

    // What the page offers.
    bool orderListEnabled = true;
    bool series = false;  ///< the check after the refit
    bool seriesEnabled = false;
    bool boxesEnabled = false;  ///< the zero and the cal box
    bool printingEnabled = false;

    /// The coefficients of the fit, c[0] to c[order].
    [[nodiscard]] std::span<const double> fittedCoefficients() const;
};

/// In the boxes of values the number at the front of the text counts. A fit with numbers that
/// are not finite counts as failed: no record can hold them.
[[nodiscard]] FitResult refitPairs(const FitInput& input, const FitOptions& options);

/// The range of a record widened by the values of the series and by all y.
[[nodiscard]] PlotRange fullScaleOf(const RecordLimits& limits,
                                    std::optional<std::pair<double, double>> series,
                                    std::span<const double> y);

/// The counts that the curve is drawn through; nothing for a word of less than 1 bit.
[[nodiscard]] std::optional<CountRange> fitCountRange(const FitInput& input,
                                                      const FitOptions& options);

/// How far the result holds as it is written. The range of the counts is checked if the
/// word length is known or the curve is drawn over it.
[[nodiscard]] CurveTrust judgeResult(const FitResult& result, const FitInput& input,
                                     const FitOptions& options);

// --- Texts of the page -------------------------------------------------------------------

[[nodiscard]] std::string bestFitText(int bestFit);
/// "c(%d) = %.*e" with `E`, one for each coefficient.
[[nodiscard]] std::vector<std::string> coefficientLines(const FitResult& result, int precision);
/// The statistics with their leading digits; empty without a fit. An RMS that is only the rounding
/// of the values is 0 for the reader.
[[nodiscard]] std::string rmsText(const FitResult& result, int precision);
[[nodiscard]] std::string correlationText(const FitResult& result, int precision);
/// The text in the plot area if there is no curve; empty if there is one.
[[nodiscard]] std::string fitFailureText(const FitResult& result);

/// Pair number, "Corrected EU Value" and "Error" of a row; the last two are empty without a
/// fit.
struct FitRow {
    std::string number;
    std::string computed;
    std::string error;
};
[[nodiscard]] std::vector<FitRow> fitRows(const FitResult& result);

// --- The plot ----------------------------------------------------------------------------

struct FitDrawing {
    std::string units;     ///< "MN3"
    bool rescale = false;  ///< use the full scale as the range of Y
    bool printing = false;
    double widthFraction = 1;
    double heightFraction = 1;
    PlotAlignment alignment = PlotAlignment::Centre;
    std::optional<std::size_t> selected;  ///< a row that is highlighted
    bool showMarked = false;              ///< also rings the rows that are out of tolerance
};
/// The most points of a curve through every count; a longer range is drawn in equal steps.
inline constexpr std::size_t kMostCurvePoints = std::size_t{1} << 20;

/// The attributes with the ranges that the drawing of the fit has.
[[nodiscard]] PlotAttributes fitScale(PlotAttributes attributes, const FitResult& result,
                                      const FitInput& input, const FitOptions& options,
                                      const FitDrawing& drawing);

/// Leaves only the room that the labels and the titles of a frame need on a window. `scaled`
/// has the ranges of the drawing; `xTitle` is true if there is a title below the labels.
void leaveRoomForLabels(FitDrawing& drawing, const DrawingSurface& surface,
                        const PlotAttributes& scaled, bool xTitle);

/// Draws the axes and the three series, or the text of the failure. False if no frame could
/// be drawn.
bool drawFit(Plot& plot, DrawingSurface& surface, const FitResult& result, const FitInput& input,
             const FitOptions& options, const FitDrawing& drawing);

/// The attributes that the residuals are drawn with. The range of X is that of `curve`
/// (`fitScale`), so that the pairs of both are aligned.
[[nodiscard]] PlotAttributes residualScale(const PlotAttributes& curve, const FitResult& result);

/// Draws the errors under the curve: a zero line and one bar per pair. Bars have the colour of
/// the curve, those of rows out of tolerance the colour of their rings. The attributes of the
/// plot are those of `residualScale`.
bool drawResiduals(Plot& plot, DrawingSurface& surface, const FitResult& result,
                   const FitDrawing& drawing);

/// One page: the name, the plot, the coefficients and the statistics. False if the page
/// cannot be started or there is no frame.
bool drawFitPage(Plot& plot, DrawingSurface& page, std::string_view name, const FitResult& result,
                 const FitInput& input, const FitOptions& options, FitDrawing drawing);

}  // namespace kavu
