// A curve through the pairs of a text file, with the numbers and texts of the pair set page.
#include "application/Application.h"
#include "cli/Commands.h"
#include "cli/OutputFile.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "conversion/EuNumbers.h"
#include "conversion/PairFile.h"
#include "conversion/PairSetFit.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "drawing/SvgSurface.h"

#include <algorithm>
#include <numeric>

namespace kavu::cli {

namespace {

constexpr const char* kTitle = "Curve Fit";
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 28;
constexpr int kPictureWidth = 900;
constexpr int kPictureHeight = 600;
constexpr double kPlotPart = 0.8;

bool report(ScriptedInterface* ui, const IoStatus& status, const char* action) {
    if (!status.ok()) {
        showBox(
            ui,
            formatPrintf("Unable to %s '%s'\n\nReason: %s", action, status.path(), status.reason()),
            kTitle);
    }
    return status.ok();
}

FitOptions optionsOf(const CommandContext& context) {
    auto options = FitOptions::read(context.application.context().settings);
    const auto& line = context.line;
    options.maxOrder = line.maxOrder.value_or(options.maxOrder);
    options.precision = line.precision.value_or(options.precision);
    options.useBestFit = !line.order;
    // Without a word size there is no range of counts to draw or to judge.
    options.curveAllPairs = options.curveAllPairs && line.bits;
    return options;
}

bool readPairs(const CommandContext& context, FitInput& input) {
    const auto& path = context.line.file;
    std::uint64_t size = 0;
    if (!report(context.ui, probeSize(path, size), "read")) {
        return false;
    }
    if (size > kMostBytes) {
        showBox(context.ui, formatPrintf("'%s' is too large to be a list of pairs.", path), kTitle);
        return false;
    }
    std::string text;
    if (!report(context.ui, readWholeFile(path, text), "read")) {
        return false;
    }
    auto file = parsePairFile(text);
    if (!file.error.empty()) {
        showBox(context.ui, file.error, kTitle);
        return false;
    }
    input.x = std::move(file.x);
    input.y = std::move(file.y);
    return true;
}

/// Sorts the pairs by ascending telemetry value, if the settings ask for it.
void sortPairs(FitInput& input) {
    std::vector<std::size_t> order(input.x.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return input.x[a] < input.x[b]; });
    FitInput sorted = input;
    for (std::size_t i = 0; i < order.size(); ++i) {
        sorted.x[i] = input.x[order[i]];
        sorted.y[i] = input.y[order[i]];
    }
    input = std::move(sorted);
}

Json pairsJson(const FitInput& input, const FitResult& result) {
    Json pairs = Json::array();
    for (std::size_t i = 0; i < input.x.size(); ++i) {
        Json pair{{"x", input.x[i]}, {"y", input.y[i]}};
        if (result.fitted) {
            pair["computed"] = result.computed[i];
            pair["error"] = result.errors[i];
            pair["marked"] = static_cast<bool>(result.marked[i]);
        }
        pairs.push_back(std::move(pair));
    }
    return pairs;
}

void addMembers(Json& members, const FitInput& input, const FitResult& result, int precision) {
    members["order"] = result.order;
    members["bestFit"] = result.bestFit;
    Json written = Json::array();
    Json exact = Json::array();
    for (const double c : result.fittedCoefficients()) {
        written.push_back(exponentText(c, precision));
        exact.push_back(c);
    }
    members["coefficients"] = std::move(written);
    members["coefficientsExact"] = std::move(exact);
    members["pairs"] = pairsJson(input, result);
    if (result.fitted) {
        members["rms"] = result.rms;
        members["correlation"] = result.correlation;
    }
}

void addTrust(Json& members, const CurveTrust& trust) {
    members["trust"] = {{"known", trust.known},
                        {"holds", trust.holds},
                        {"overPairs", trust.overPairs},
                        {"overRange", trust.overRange},
                        {"extrapolates", trust.extrapolates},
                        {"holdingPrecision", trust.holdingPrecision},
                        {"holdingOrder", trust.holdingOrder}};
}

std::string fitText(const FitInput& input, const FitResult& result, int precision) {
    std::string text =
        formatPrintf("Order Of Fit: %d\n%s\n\n", result.order, bestFitText(result.bestFit));
    for (const auto& line : coefficientLines(result, precision)) {
        text += line + "\n";
    }
    std::vector<std::vector<std::string>> rows{
        {"Pair #", "Telemetry Value", "EU Value", "Corrected EU Value", "Error"}};
    const auto fitted = fitRows(result);
    for (std::size_t i = 0; i < fitted.size(); ++i) {
        rows.push_back({fitted[i].number, exactText(input.x[i]), exactText(input.y[i]),
                        fitted[i].computed, fitted[i].error});
    }
    return text + "\n" + alignedTable(rows) +
           "\nCorrelation Coefficient: " + correlationText(result, precision) +
           "\nRMS: " + rmsText(result, precision) + "\n";
}

bool writePicture(const CommandContext& context, const FitInput& input, const FitResult& result,
                  const FitOptions& options) {
    SvgSurface surface(kPictureWidth, kPictureHeight);
    Plot plot;
    // Points and a line through them, unless the settings say otherwise.
    plot.attributes.series[0] = {0, LineStyle::None, 2, PlotSymbol::FilledCircle};
    plot.attributes.load(context.application.context().settings, kApplicationName);
    FitDrawing drawing;
    drawing.widthFraction = kPlotPart;
    drawing.heightFraction = kPlotPart;
    drawing.rescale = true;
    (void)drawFit(plot, surface, result, input, options, drawing);
    return report(context.ui, replaceUserFile(context.line.svg, surface.document()), "write");
}

}  // namespace

bool fitCommand(CommandContext& context, CommandOutput& output) {
    const auto& picture = context.line.svg;
    if (!picture.empty() && !mayWriteOutput(context.ui, context.line, picture)) {
        return false;
    }
    FitInput input;
    const auto options = optionsOf(context);
    input.order = context.line.order.value_or(1);
    input.bits = context.line.bits.value_or(0);
    input.binaryFormat = "UNS";
    const bool read = readPairs(context, input);
    if (options.sorted) {
        sortPairs(input);
    }
    const auto result = refitPairs(input, options);
    addMembers(output.members, input, result, options.precision);
    if (!read || cancelRequested(context.ui)) {
        return false;
    }
    if (!result.fitted) {
        showBox(context.ui, fitFailureText(result), kTitle);
    }
    const auto trust = judgeResult(result, input, options);
    addTrust(output.members, trust);
    if (const auto note = trustNote(trust, result.order, options.precision); !note.empty()) {
        showBox(context.ui, note, kTitle, Icon::Warning);
    }
    output.text = fitText(input, result, options.precision);
    if (!picture.empty()) {
        if (!writePicture(context, input, result, options)) {
            return false;
        }
        output.members["svg"] = jsonText(picture);
    }
    return result.fitted;
}

}  // namespace kavu::cli
