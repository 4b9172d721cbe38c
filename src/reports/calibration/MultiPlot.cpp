#include "reports/calibration/MultiPlot.h"

#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "drawing/PartSurface.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>

namespace kavu {

namespace {

constexpr double kPlotTitle = 14;
constexpr double kLegendPoints = 9;
constexpr double kLegendLine = 14;
constexpr double kLegendMark = 36;
constexpr double kLegendText = 13;  ///< of the names on a screen
constexpr double kLegendRow = 20;
constexpr double kPlotPartOfArea = 0.55;
constexpr double kPlotWidthShare = 0.78;
constexpr double kPlotHeightShare = 0.78;
constexpr double kScreenHeightShare = 0.66;  ///< the legend is close below the title of the axis
constexpr std::string_view kNameKey = "Mes";
constexpr std::string_view kDateKey = "Date";
/// A curve between its pairs is drawn through so many points.
constexpr int kCurvePoints = 200;

constexpr auto kStyles = std::to_array(
    {LineStyle::Solid, LineStyle::Dash, LineStyle::Dot, LineStyle::DashDot, LineStyle::DashDotDot});
constexpr auto kColours = std::to_array<DrawingColour>(
    {0x000000, 0xFF0000, 0x008000, 0x0000FF, 0x800080, 0x808000, 0x800000, 0x808080});

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
    MultiPlotDrawing(DrawingSurface& surface, const PlotAttributes& attributes,
                     const std::vector<PlottedRow>& rows, MultiPlotTexts texts)
        : surface_(surface), rows_(rows), texts_(texts) {
        plot_.attributes = attributes;
        for (const auto& row : rows) {
            curves_.push_back(plottedCurve(row.result));
        }
    }

    bool draw() {
        (void)surface_.startPage();
        const auto area = surface_.area();
        const DrawingFont title{.family = "Arial", .height = kPlotTitle, .bold = true};
        const auto size = surface_.textSize(multiplot::kTitle, title);
        const auto drawTitle = [&](double at) {
            surface_.text({area.left + (area.width() - size.width) / 2, at}, multiplot::kTitle,
                          title);
        };
        const bool withFits = texts_ == MultiPlotTexts::Fits;
        if (withFits) {
            drawTitle(area.top);
        }
        const double top = area.top + (withFits ? 0 : kLegendLine / 2);
        const double below = top + size.height;
        const double bottom = withFits ? area.top + kPlotPartOfArea * area.height()
                                       : std::max(below, area.bottom - legendHeight(area.width()));
        PartSurface part(surface_, {area.left, withFits ? below : area.top, area.right, bottom});
        part.setTextLine(below + kLegendLine);
        const bool drawn = drawCurves(part);
        if (withFits) {
            drawFits(bottom + kLegendLine);
        } else {
            // The frame has a background, which covers what was drawn before it.
            drawTitle(top);
            drawLegend(bottom);
        }
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
                              .heightFraction = texts_ == MultiPlotTexts::Fits ? kPlotHeightShare
                                                                               : kScreenHeightShare,
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

    /// The line of a row with its mark, as on its curve.
    void drawSample(std::size_t row, double left, double middle) {
        const auto& series = plot_.attributes.series[row];
        const bool black = surface_.isPage() && plot_.attributes.blackAndWhite;
        const auto colour = black ? DrawingColour{0} : series.colour;
        if (series.style != LineStyle::None) {
            (void)surface_.setPen({colour, series.width, series.style});
            surface_.line({left, middle}, {left + kLegendMark, middle});
        }
        drawPlotSymbol(surface_, series, colour, {left + kLegendMark / 2, middle});
    }

    /// The texts of a row below its name.
    static std::vector<std::string> fitLines(const PlottedRow& row) {
        std::vector<std::string> lines = {"Date: " + row.date + "   Fit: " + row.order +
                                          "   RMS: " + row.rms +
                                          "   Correlation: " + row.correlation};
        for (auto& line : splitLines("EU = " + row.polynomial)) {
            lines.emplace_back(std::move(line));
        }
        return lines;
    }
    /// The height of a line: a picture has no second page, and its texts are closer and smaller
    /// where they would not fit.
    [[nodiscard]] double fitLine(double top) const {
        double lines = 0;
        for (const auto& row : rows_) {
            lines += 1 + static_cast<double>(fitLines(row).size());
        }
        const double room = surface_.area().bottom - top;
        return surface_.isPage() || lines == 0 ? kLegendLine : std::min(kLegendLine, room / lines);
    }

    /// A line of each row: its dash and mark, its name and what its fit says.
    void drawFits(double top) {
        const auto area = surface_.area();
        const double line = fitLine(top);
        const double height = kLegendPoints * line / kLegendLine;
        const DrawingFont bold{.family = "Arial", .height = height, .bold = true};
        const DrawingFont plain{.family = "Arial", .height = height};
        const double left = area.left + kLegendMark + kLegendPoints;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const auto lines = fitLines(rows_[i]);
            const double needed = line * static_cast<double>(1 + lines.size());
            if (top + needed > area.bottom && surface_.nextPage()) {
                top = area.top;
            }
            drawSample(i, area.left, top + height / 2);
            surface_.text({left, top}, rows_[i].name, bold);
            top += line;
            for (const auto& text : lines) {
                surface_.text({left, top}, text, plain);
                top += line;
            }
        }
    }

    /// The names in as many columns as there is room for.
    struct LegendGrid {
        std::size_t columns = 1;
        double width = 0;
    };
    [[nodiscard]] LegendGrid legendGrid(double width) const {
        const DrawingFont font{.family = {}, .height = kLegendText};
        double widest = 1;
        for (const auto& row : rows_) {
            widest = std::max(widest, surface_.textSize(row.name, font).width);
        }
        widest += kLegendMark + 3 * kLegendPoints;
        const auto columns = static_cast<std::size_t>(std::max(1.0, std::floor(width / widest)));
        return {std::min(columns, std::max<std::size_t>(1, rows_.size())), widest};
    }
    [[nodiscard]] double legendHeight(double width) const {
        const auto columns = legendGrid(width).columns;
        const auto lines = (rows_.size() + columns - 1) / columns;
        return static_cast<double>(lines) * kLegendRow + kLegendPoints;
    }
    void drawLegend(double top) {
        const auto area = surface_.area();
        const auto grid = legendGrid(area.width());
        // What is outside of the frame has no background yet.
        (void)surface_.setPen({0xFFFFFF, 1, LineStyle::Solid});
        surface_.setSolidBrush(0xFFFFFF);
        surface_.rectangle({area.left, top, area.right, area.bottom});
        surface_.setHollowBrush();
        const double left =
            area.left +
            std::max(0.0, (area.width() - static_cast<double>(grid.columns) * grid.width) / 2);
        const DrawingFont font{.family = {}, .height = kLegendText};
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const double x = left + static_cast<double>(i % grid.columns) * grid.width;
            const double y = top + static_cast<double>(i / grid.columns) * kLegendRow;
            const double height = surface_.textSize(rows_[i].name, font).height;
            drawSample(i, x, y + height / 2);
            surface_.text({x + kLegendMark + kLegendPoints, y}, rows_[i].name, font);
        }
    }

    DrawingSurface& surface_;
    const std::vector<PlottedRow>& rows_;
    MultiPlotTexts texts_;
    std::vector<PlottedCurve> curves_{};
    Plot plot_{};
};

std::string quoted(const std::string& text, char divider) {
    const bool isPlain = text.find(divider) == std::string::npos &&
                         text.find_first_of("\"\r\n") == std::string::npos;
    return isPlain ? text : "\"" + replaceAll(text, "\"", "\"\"") + "\"";
}

std::string numbered(std::string_view key, std::size_t index) {
    return std::string(key) + std::to_string(index + 1);
}

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
        row.x = std::move(calibration->input.x);
        row.y = std::move(calibration->input.y);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<PlottedName> readPlotted(const ProfileSettings& settings) {
    std::vector<PlottedName> names;
    for (std::size_t i = 0; i < kMostPlotted; ++i) {
        auto name = settings.profileText(multiplot::kSection, numbered(kNameKey, i));
        if (!name.empty()) {
            names.push_back({std::move(name),
                             settings.profileText(multiplot::kSection, numbered(kDateKey, i))});
        }
    }
    return names;
}

void writePlotted(ProfileSettings& settings, const std::vector<PlottedRow>& rows) {
    for (std::size_t i = 0; i < kMostPlotted; ++i) {
        const bool isThere = i < rows.size();
        const auto put = [&](std::string_view key, const std::string& text) {
            settings.writeProfile(multiplot::kSection, numbered(key, i),
                                  isThere ? std::optional<std::string_view>(text) : std::nullopt);
        };
        put(kNameKey, isThere ? rows[i].name : std::string());
        put(kDateKey, isThere ? rows[i].date : std::string());
    }
}

PlotAttributes plottedAttributes(const ProfileSettings& settings) {
    PlotAttributes attributes;
    for (std::size_t i = 0; i < kMostPlotted; ++i) {
        attributes.series[i] = {kColours[i], kStyles[i % kStyles.size()], 1,
                                static_cast<PlotSymbol>(2 + i)};
    }
    attributes.load(settings, multiplot::kSection);
    return attributes;
}

bool drawMultiPlot(DrawingSurface& surface, const PlotAttributes& attributes,
                   const std::vector<PlottedRow>& rows, MultiPlotTexts texts) {
    return MultiPlotDrawing(surface, attributes, rows, texts).draw();
}

bool drawMultiPlot(const DocumentContext& context, DrawingSurface& surface,
                   const std::vector<PlottedRow>& rows) {
    return drawMultiPlot(surface, plottedAttributes(context.settings), rows, MultiPlotTexts::Fits);
}

std::string multiPlotData(const std::vector<PlottedRow>& rows, int precision, char divider) {
    std::string table;
    const auto addLine = [&](const std::array<std::string, 5>& values) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            table += i > 0 ? std::string(1, divider) : std::string();
            table += quoted(values[i], divider);
        }
        table += '\n';
    };
    addLine(
        {"Name", std::string(multiplot::kXAxis), std::string(multiplot::kYAxis), "Fit", "Error"});
    for (const auto& row : rows) {
        const auto& result = row.result;
        for (std::size_t i = 0; i < row.x.size(); ++i) {
            const bool isFitted = i < result.computed.size();
            addLine({row.name, exponentText(row.x[i], precision), exponentText(row.y[i], precision),
                     isFitted ? exponentText(result.computed[i], precision) : std::string(),
                     isFitted ? exponentText(result.errors[i], precision) : std::string()});
        }
    }
    return table;
}

}  // namespace kavu
