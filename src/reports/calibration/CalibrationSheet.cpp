#include "reports/calibration/CalibrationSheet.h"

#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "reports/content/ReportContent.h"
#include "reports/layout/ReportLayout.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr std::size_t kTableColumns = 4;
constexpr std::string_view kBetweenHalves = "   ";

/// A label, a tab if it ends in none, and a value that is not empty.
void addField(std::string& text, std::string_view label, const std::string& value) {
    if (!value.empty()) {
        text += label;
        text += label.ends_with('\t') ? "" : "\t";
        text += value + "\n";
    }
}

std::string wordsText(const std::vector<int>& words) {
    std::string text;
    for (const int word : words) {
        text += (text.empty() ? "" : ", ") + std::to_string(word);
    }
    return text;
}

/// The name of who calibrates, if the setting holds one: it was a number once.
std::string calibratedBy(const DocumentContext& context) {
    const auto name = context.settings.get(setting::kCalibratedBy);
    return parseDouble(name) ? std::string() : name;
}

std::string captionText(const DocumentContext& context, const Calibration& calibration) {
    const auto value = [&](const Field& field) { return calibration.field(field.code); };
    std::string text = "Parameter Name:\t" + calibration.name + "\n\n";
    addField(text, "\tDescription", value(c::kMn1));
    addField(text, "\tUnits\t", value(c::kMn3));
    std::string transducer;
    addField(transducer, "\tType\t", value(c::kTrd1));
    addField(transducer, "\tModel\t", value(c::kTrd2));
    addField(transducer, "\tS/N\t", value(c::kTrd3));
    text += transducer.empty() ? "" : "Transducer\n\n" + transducer;
    addField(text, "Date\t", value(c::kTrd5));
    addField(text, "Revision", value(c::kTrd6));
    addField(text, "Orientation", value(c::kTrd7));
    addField(text, "POC:\t\t", value(c::kPoc1));
    addField(text, "Calibrated By:", calibratedBy(context));
    addField(text, "Locations (FWP):\t", wordsText(calibration.words));
    if (const auto comment = trim(calibration.comment); !comment.empty()) {
        text += "Comments:\n\n\t" + replaceAll(comment, "\r\n", "\n") + "\n";
    }
    return text;
}

/// The table of pairs, in two halves if they fit side by side.
class PairRows {
  public:
    explicit PairRows(const FitResult& result) : result_(result) {
        for (std::size_t i = 0; i < result.x.size(); ++i) {
            rows_.push_back({fixedText(result.x[i], kDigits), fixedText(result.y[i], kDigits),
                             fixedText(result.computed[i], kDigits),
                             fixedText(result.errors[i], kDigits)});
        }
        for (std::size_t column = 0; column < kTableColumns; ++column) {
            widths_[column] = kHeads[column].size();
            for (const auto& row : rows_) {
                widths_[column] = std::max(widths_[column], row[column].size());
            }
        }
    }

    [[nodiscard]] std::string text(std::size_t width) const {
        const auto head = line("   #", {std::string(kHeads[0]), std::string(kHeads[1]),
                                        std::string(kHeads[2]), std::string(kHeads[3])});
        const auto half = (rows_.size() + 1) / 2;
        const auto block = head.size() + 1;  // with the mark of a row
        if (rows_.size() < 2 || 2 * block + kBetweenHalves.size() > width) {
            return one(head);
        }
        std::string text = padded(head, block) + std::string(kBetweenHalves) + head + "\n";
        for (std::size_t i = 0; i < half; ++i) {
            if (half + i < rows_.size()) {
                text += padded(row(i), block) + std::string(kBetweenHalves) + row(half + i) + "\n";
            } else {
                text += row(i) + "\n";
            }
        }
        return text;
    }

  private:
    using Cells = std::array<std::string, kTableColumns>;
    static constexpr int kDigits = 4;
    static constexpr std::array<std::string_view, kTableColumns> kHeads = {"TM Value", "EU Value",
                                                                           "Corrected", "Error"};

    static std::string padded(std::string text, std::size_t width) {
        text.resize(std::max(text.size(), width), ' ');
        return text;
    }
    [[nodiscard]] std::string line(std::string text, const Cells& cells) const {
        for (std::size_t i = 0; i < kTableColumns; ++i) {
            text += ' ';
            text.append(widths_[i] - cells[i].size(), ' ');
            text += cells[i];
        }
        return text;
    }
    [[nodiscard]] std::string row(std::size_t i) const {
        return line(formatPrintf("%4d", i + 1), rows_[i]) + (result_.marked[i] ? "*" : "");
    }
    [[nodiscard]] std::string one(const std::string& head) const {
        std::string text = head + "\n";
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            text += row(i) + "\n";
        }
        return text;
    }

    const FitResult& result_;
    std::vector<Cells> rows_{};
    std::array<std::size_t, kTableColumns> widths_{};
};

/// What one count, and the whole word, are worth in engineering units.
std::string countText(const Calibration& calibration, int precision) {
    const auto range = fitCountRange(calibration.input, calibration.options);
    if (!range) {
        return {};
    }
    const auto coefficients = calibration.result.fittedCoefficients();
    const auto at = [&](double count) {
        return evaluatePolynomial(count, coefficients, calibration.result.order);
    };
    const double span = range->highest - range->lowest;
    const double step = at(range->highest) - at(range->lowest);
    return "\n1 Count: " + fixedText(span > 0 ? step / span : 0, precision) + "\t" +
           fixedText(span, 0) + " Counts: " + fixedText(step, precision) + "\n\n";
}

std::string resultText(const Calibration& calibration) {
    const auto& result = calibration.result;
    const int precision = calibration.options.precision;
    std::string text = calibration.options.useBestFit ? "Best Fit" : "Manually Selected";
    text += "\nEU (" + calibration.field(c::kMn3.code) +
            ") = " + polynomialText(result, precision) + "\n";
    if (result.zeroX && result.zeroY && result.calX && result.calY) {
        text += "Series Zero " + formatPrintf("(%f) = %f\t", *result.zeroX, *result.zeroY) +
                "Series Cal " + formatPrintf("(%f) = %f\n", *result.calX, *result.calY);
    }
    text += "\nCorrelation Coefficient: " + fixedText(result.correlation, precision) + "\t" +
            formatPrintf("Order Of Fit: %d\n\n", result.order) +
            "RMS: " + fixedText(result.rms, precision) + "\n" + countText(calibration, precision);
    if (std::find(result.marked.begin(), result.marked.end(), true) != result.marked.end()) {
        text +=
            " = Items marked with asterisks are more than 0.5% (of full scale) away from the "
            "calculated line.\n";
    }
    return text;
}

}  // namespace

std::vector<SheetText> sheetTexts(const DocumentContext& context, const Calibration& calibration,
                                  std::size_t width) {
    return {{SheetFont::Caption, captionText(context, calibration)},
            {SheetFont::Table, PairRows(calibration.result).text(width)},
            {SheetFont::Result, resultText(calibration)}};
}

std::string CalibrationSheet::text() const {
    std::string all;
    for (const auto& part : texts) {
        all += part.text;
    }
    return all;
}

CalibrationSheet makeCalibrationSheet(const DocumentContext& context, const ReportLayout& layout,
                                      Calibration calibration, int page, std::size_t width) {
    auto texts = sheetTexts(context, calibration, width);
    return {.calibration = std::move(calibration),
            .page = page,
            .title = layout.text(layout_key::kPlotTitle),
            .left = layout.text(layout_key::kPlotLeft),
            .right = layout.text(layout_key::kPlotRight),
            .pageText = pageNumberText(layout.text(layout_key::kPageNumber), page),
            .pageLocation = layout.number(layout_key::kPageNumberPlace),
            .texts = std::move(texts)};
}

std::vector<CalibrationSheet> makeCalibrationSheets(const DocumentContext& context,
                                                    ConversionStore& store, const PcmFormat* format,
                                                    const ReportLayout& layout,
                                                    UserInterface* parent,
                                                    const std::vector<std::string>& names,
                                                    int startPage, std::size_t width) {
    std::vector<CalibrationSheet> sheets;
    int page = startPage;
    for (const auto& name : names) {
        yieldToInterface(parent);
        if (cancelRequested(parent)) {
            return sheets;
        }
        auto calibration = readCalibration(context, store, format, name);
        if (!calibration || !calibration->result.fitted || calibration->result.pairs < 2) {
            continue;
        }
        sheets.push_back(
            makeCalibrationSheet(context, layout, std::move(*calibration), page++, width));
    }
    return sheets;
}

std::string calibrationText(const std::vector<CalibrationSheet>& sheets) {
    std::string text;
    for (const auto& sheet : sheets) {
        text += text.empty() ? "" : "\f";
        text += sheet.text();
    }
    return text;
}

}  // namespace kavu
