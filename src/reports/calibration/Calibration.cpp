#include "reports/calibration/Calibration.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/EuNumbers.h"
#include "conversion/PairSetPage.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr auto kSheetCodes = std::to_array<std::string_view>(
    {c::kMn1.code, c::kMn3.code, c::kTrd1.code, c::kTrd2.code, c::kTrd3.code, c::kTrd5.code,
     c::kTrd6.code, c::kTrd7.code, c::kPoc1.code});

bool isPairSetWithCurve(const ProfileFile& chunk, const std::string& section) {
    return equalsIgnoreCase(chunk.value(section, kTypeCode, kNoType), "PRS") &&
           startsWithIgnoreCase(chunk.value(section, c::kPs1.code, c::kPs1.missing), "Y");
}

/// The words of a measurement in the order in which it occurs, each once.
std::vector<int> wordsOf(const PcmFormat& format, std::string_view name) {
    std::vector<int> words;
    Occurrences occurrences(format, name);
    while (const auto hit = occurrences.next()) {
        if (std::find(words.begin(), words.end(), hit->fwp) == words.end()) {
            words.push_back(hit->fwp);
        }
    }
    return words;
}

/// What a record says besides its pairs, and where its measurement is.
Calibration describe(const ProfileFile& file, const std::string& section,
                     const std::string& comment, const PcmFormat* format) {
    Calibration made{.name = section};
    for (const auto code : kSheetCodes) {
        auto value = file.value(section, code, "");
        fromStoredForm(value);
        if (!value.empty()) {
            made.fields[code] = std::move(value);
        }
    }
    made.comment = splitCommentRecord(comment).plain;
    if (format != nullptr) {
        made.words = wordsOf(*format, made.name);
    }
    return made;
}

std::string termText(std::size_t power, double coefficient, int precision) {
    auto text = "(" + exponentText(coefficient, precision) + ")";
    if (power > 0) {
        text += "*Count";
    }
    return power > 1 ? text + "^" + std::to_string(power) : text;
}

}  // namespace

std::string Calibration::field(std::string_view code) const {
    const auto found = fields.find(code);
    return found == fields.end() ? std::string() : found->second;
}

std::vector<std::string> calibrationNames(ConversionStore& store, UserInterface* parent) {
    std::vector<std::string> names;
    const auto numbers = store.chunkNumbers();
    double done = 0;
    for (const auto number : numbers) {
        if (cancelRequested(parent)) {
            return names;
        }
        const auto chunk = store.chunk(number);
        for (const auto& section : chunk->sections()) {
            if (section.hasKeys() && isPairSetWithCurve(*chunk, section.name())) {
                names.push_back(section.name());
            }
        }
        setStatusText(parent, formatPrintf("Searching For Measurements (%.0f%%)",
                                           100 * ++done / static_cast<double>(numbers.size())));
        yieldToInterface(parent);
    }
    return names;
}

std::optional<Calibration> readCalibration(const DocumentContext& context, ConversionStore& store,
                                           const PcmFormat* format, const std::string& name) {
    const auto place = store.locateDefinition(name);
    if (!place.found) {
        return std::nullopt;
    }
    const auto chunk = store.chunk(place.chunk);
    if (!isPairSetWithCurve(*chunk, place.section)) {
        return std::nullopt;
    }
    auto made = describe(*chunk, place.section, store.readEuComment(place.section, false), format);
    const int bits =
        made.words.empty() || format == nullptr ? 0 : format->wordLength(made.words.front());
    made.options = FitOptions::read(context.settings);
    made.input = fitInputOf(*chunk, place.section, made.options.sorted, bits);
    made.input.zero = store.commentRecordGet(place.section, seriespair::kZero);
    made.input.cal = store.commentRecordGet(place.section, seriespair::kCal);
    made.input.series =
        made.options.seriesEnabled && (!made.input.zero.empty() || !made.input.cal.empty());
    made.result = refitPairs(made.input, made.options);
    return made;
}

Calibration editedCalibration(const DocumentContext& context, ConversionStore& store,
                              const PcmFormat* format, const std::string& name, FitInput input,
                              FitOptions options, FitResult result) {
    const ProfileFile copy(context.store.pathOf(working::kData1));
    auto made = describe(copy, name, store.readEuComment(name, true), format);
    made.input = std::move(input);
    made.options = options;
    made.result = std::move(result);
    return made;
}

std::string polynomialText(const FitResult& result, int precision) {
    constexpr std::size_t kTermsOnLine = 4;
    std::string text;
    std::size_t power = 0;
    for (const double coefficient : result.fittedCoefficients()) {
        if (power > 0) {
            text += power % kTermsOnLine == 0 ? " +\n\t" : " + ";
        }
        text += termText(power++, coefficient, precision);
    }
    return text;
}

}  // namespace kavu
