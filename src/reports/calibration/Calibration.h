// The calibration of one measurement: its pairs, their fit, and what the record says of it.
#pragma once

#include "conversion/PairSetFit.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class ConversionStore;
class PcmFormat;
class UserInterface;

struct Calibration {
    std::string name{};
    std::map<std::string_view, std::string> fields{};  ///< of the record, by code; none is empty
    std::string comment{};                             ///< without its private pairs
    std::vector<int> words{};                          ///< of the stream, each once
    FitInput input{};
    FitOptions options{};
    FitResult result{};

    [[nodiscard]] std::string field(std::string_view code) const;
};

/// The names of all pair sets with a curve fit, in the order of the store. Status "Searching For
/// Measurements (%.0f%%)". Stops when `parent`, who may be null, has cancelled.
[[nodiscard]] std::vector<std::string> calibrationNames(ConversionStore& store,
                                                        UserInterface* parent);

/// The calibration of a measurement with its refit; nothing for a name that is no pair set with a
/// curve fit. `format` is the stream in memory, or null: places and word length come from it.
[[nodiscard]] std::optional<Calibration> readCalibration(const DocumentContext& context,
                                                         ConversionStore& store,
                                                         const PcmFormat* format,
                                                         const std::string& name);

/// The same of a record that is being edited, from its working copy, with the last fit of its page.
/// REQUIRES: the record `name` has a working copy.
[[nodiscard]] Calibration editedCalibration(const DocumentContext& context, ConversionStore& store,
                                            const PcmFormat* format, const std::string& name,
                                            FitInput input, FitOptions options, FitResult result);

/// The polynomial of a fit as text: "(1.0E+00) + (2.0E+00)*Count", four terms on a line.
[[nodiscard]] std::string polynomialText(const FitResult& result, int precision);

}  // namespace kavu
