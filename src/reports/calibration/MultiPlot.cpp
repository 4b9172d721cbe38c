#include "reports/calibration/MultiPlot.h"

#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "drawing/PartSurface.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace kavu {

namespace {

constexpr double kPlotTitle = 14;
constexpr double kLegendPoints = 9;
constexpr double kLegendLine = 14;
constexpr double kLegendMark = 36;
constexpr double kPlotPartOfArea = 0.55;
constexpr double kPlotWidthShare = 0.78;
constexpr double kPlotHeightShare = 0.78;
/// A curve between its pairs is drawn through so many points.
constexpr int kCurvePoints = 200;

constexpr auto kStyles = std::to_array(
    {LineStyle::Solid, LineStyle::Dash, LineStyle::Dot, LineStyle::DashDot, LineStyle::DashDotDot});
constexpr auto kColours = std::to_array<DrawingColour>(
    {0x000000, 0xFF0000, 0x008000, 0x0000FF, 0x800080, 0x808000, 0x800000, 0x808080});

/// Each series has a dash and a mark of its own, so that paper without colour tells them apart;
/// what the settings have counts.
PlotAttributes plottedAttributes(const DocumentContext& context) {
    PlotAttributes attributes;
    for (std::size_t i = 0; i < kMostPlotted; ++i) {
        attributes.series[i] = {kColours[i], kStyles[i % kStyles.size()], 1,
                                static_cast<PlotSymbol>(2 + i)};
    }
    attributes.load(context.settings, multiplot::kSection);
    return attributes;
}

/// A curve through the range of its pairs.
struct PlottedCurve {
    std::vector<double> x{};
    std::vector<double> y{};
    std::vector<double> markX{};  ///< of its pairs
    std::vector<double> markY{};
};

PlottedCurve plottedCurve(const FitResult& result) {
    PlottedCurve curve;
    if (!result.fitted) {
        return curve;
    }
    const auto [least, most] = std::minmax_element(result.x.begin(), result.x.end());
    for (int i = 0; i <= kCurvePoints; ++i) {
        const double x = *least + (*most - *least) * i / kCurvePoints;
        curve.x.push_back(x);
        curve.y.push_back(evaluatePolynomial(x, result.fittedCoefficients(), result.order));
    }
    curve.markX = result.x;
    curve.markY = result.computed;
    return curve;
}

class MultiPlotDrawing {
  public:
    MultiPlotDrawing(const DocumentContext& context, DrawingSurface& surface,
                     const std::vector<PlottedRow>& rows)
        : surface_(surface), rows_(rows) {
        plot_.attributes = plottedAttributes(context);
        for (const auto& row : rows) {
            curves_.push_back(plottedCurve(row.result));
        }
    }

    bool draw() {
        (void)surface_.startPage();
        const auto area = surface_.area();
        const DrawingFont title{.family = "Arial", .height = kPlotTitle, .bold = true};
        const auto size = surface_.textSize(multiplot::kTitle, title);
        surface_.text({area.left + (area.width() - size.width) / 2, area.top}, multiplot::kTitle,
                      title);
        const double top = area.top + size.height;
        const double bottom = area.top + kPlotPartOfArea * area.height();
        PartSurface part(surface_, {area.left, top, area.right, bottom});
        part.setTextLine(top + kLegendLine);
        const bool drawn = drawCurves(part);
        drawLegend(bottom + kLegendLine);
        return drawn;
    }

  private:
    bool drawCurves(DrawingSurface& part) {
        std::vector<double> x;
        std::vector<double> y;
        for (const auto& curve : curves_) {
            x.insert(x.end(), curve.x.begin(), curve.x.end());
            y.insert(y.end(), curve.y.begin(), curve.y.end());
        }
        const PlotFrame frame{.widthFraction = kPlotWidthShare,
                              .heightFraction = kPlotHeightShare,
                              .x = x,
                              .y = y,
                              .xTitle = multiplot::kXAxis,
                              .yTitle = multiplot::kYAxis};
        if (!plot_.drawFrame(&part, frame)) {
            return false;
        }
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            auto& series = plot_.attributes.series[i];
            const auto whole = series;
            const int number = static_cast<int>(i) + 1;
            series.symbol = PlotSymbol::None;  // the points of the curve are too many for marks
            (void)plot_.drawSeries(number, curves_[i].x, curves_[i].y, false);
            series = whole;
            series.style = LineStyle::None;
            (void)plot_.drawSeries(number, curves_[i].markX, curves_[i].markY, false);
            series = whole;
        }
        return true;
    }

    /// A line of each row: its dash, its name and what its fit says.
    void drawLegend(double top) {
        const auto area = surface_.area();
        const DrawingFont bold{.family = "Arial", .height = kLegendPoints, .bold = true};
        const DrawingFont plain{.family = "Arial", .height = kLegendPoints};
        const double left = area.left + kLegendMark + kLegendPoints;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const auto& row = rows_[i];
            const auto& series = plot_.attributes.series[i];
            const double middle = top + kLegendPoints / 2;
            const bool black = surface_.isPage() && plot_.attributes.blackAndWhite;
            (void)surface_.setPen({black ? 0 : series.colour, series.width, series.style});
            surface_.line({area.left, middle}, {area.left + kLegendMark, middle});
            surface_.text({left, top}, row.name, bold);
            top += kLegendLine;
            surface_.text({left, top},
                          "Date: " + row.date + "   Fit: " + row.order + "   RMS: " + row.rms +
                              "   Correlation: " + row.correlation,
                          plain);
            top += kLegendLine;
            for (const auto& line : splitLines("EU = " + row.polynomial)) {
                surface_.text({left, top}, line, plain);
                top += kLegendLine;
            }
        }
    }

    DrawingSurface& surface_;
    const std::vector<PlottedRow>& rows_;
    std::vector<PlottedCurve> curves_{};
    Plot plot_{};
};

}  // namespace

std::vector<PlottedRow> plottedRows(const DocumentContext& context, ConversionStore& store,
                                    const std::vector<std::string>& names) {
    std::vector<PlottedRow> rows;
    for (const auto& name : names) {
        if (rows.size() == kMostPlotted) {
            break;
        }
        auto calibration = readCalibration(context, store, nullptr, name);
        if (!calibration) {
            continue;
        }
        PlottedRow row{.name = calibration->name, .date = calibration->field(c::kTrd5.code)};
        if (const auto& result = calibration->result; result.fitted) {
            const int precision = calibration->options.precision;
            row.order = std::to_string(result.order);
            row.rms = fixedText(result.rms, precision);
            row.correlation = fixedText(result.correlation, precision);
            row.polynomial = polynomialText(result, precision);
        }
        row.result = std::move(calibration->result);
        rows.push_back(std::move(row));
    }
    return rows;
}

bool drawMultiPlot(const DocumentContext& context, DrawingSurface& surface,
                   const std::vector<PlottedRow>& rows) {
    return MultiPlotDrawing(context, surface, rows).draw();
}

}  // namespace kavu
