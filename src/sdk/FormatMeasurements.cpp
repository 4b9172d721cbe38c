#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "sdk/StreamMeasurements.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <initializer_list>
#include <new>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace kavu {

namespace {

/// The range of a value whose end an older edition does not state.
SdkRange rangeOf(int start, int interval, int end, int last) {
    interval = std::max(0, interval);
    if (end < start || end == 0) {
        end = interval > 0 ? std::max(start, last) : start;
    }
    return {start, interval, end};
}

SdkFragment fragmentOf(const PcmFormat& format, const WordFrameFragment& fragment, int number) {
    SdkFragment result;
    result.number = number;
    result.word = rangeOf(fragment.startWord, fragment.wordInterval, fragment.endWord,
                          format.wordsPerMinorFrame - 1);
    result.frame = rangeOf(fragment.startFrame, fragment.frameInterval, fragment.endFrame,
                           format.numberOfFrames);
    result.mask = fragment.mask.str();
    result.wordLength = format.wordLength(fragment.startWord);
    result.transferOrder = fragment.transferOrder;
    return result;
}

std::vector<SdkLocation> locationsOf(const PcmFormat& format,
                                     const WordFrameDefinition& definition) {
    std::vector<SdkLocation> locations;
    for (const auto& location : definition.locations) {
        if (location.fragments.empty()) {
            continue;
        }
        SdkLocation result;
        for (const auto& fragment : location.fragments) {
            const auto number = static_cast<int>(result.fragments.size()) + 1;
            result.fragments.push_back(fragmentOf(format, fragment, number));
        }
        result.wordLength = location.wordLength;
        if (result.wordLength <= 0) {
            result.wordLength =
                result.fragments.size() == 1
                    ? result.fragments.front().wordLength
                    : std::accumulate(result.fragments.begin(), result.fragments.end(), 0,
                                      [](int sum, const SdkFragment& fragment) {
                                          return sum + fragment.bitMask().bitCount();
                                      });
        }
        locations.push_back(std::move(result));
    }
    return locations;
}

/// The word/frame locations of a measurement as its commands state them. An editor does not place
/// one that is not in every frame of a stream without an ID counter, but where it is is known.
class StatedRanges {
  public:
    StatedRanges(const PcmFormat& format, const SdkGroup& group, const SdkRow& row)
        : format_(format), group_(group), row_(row) {}

    /// None if any of them is outside the frame.
    [[nodiscard]] std::vector<SdkLocation> read() const {
        WordFrameDefinition definition;
        if (!equalsIgnoreCase(row_.locationType, location_type::kWordFrame)) {
            return {};
        }
        const int count = number(word_frame_field::kCount, {row_.list, row_.number}).value_or(0);
        for (int k = 1; k <= count; ++k) {
            auto location = readLocation(k);
            if (location.fragments.empty()) {
                return {};
            }
            definition.locations.push_back(std::move(location));
        }
        return locationsOf(format_, definition);
    }

  private:
    [[nodiscard]] std::optional<int> number(const Field& field,
                                            std::initializer_list<int> numbers) const {
        return group_.number(fieldCode(field.code, numbers));
    }

    /// One without fragments if any of them cannot be used.
    [[nodiscard]] WordFrameLocation readLocation(int k) const {
        WordFrameLocation location;
        location.wordLength =
            number(word_frame_field::kLength, {row_.list, row_.number, k}).value_or(0);
        const int count = std::max(
            1, number(word_frame_field::kFragments, {row_.list, row_.number, k}).value_or(1));
        for (int f = 1; f <= count; ++f) {
            auto fragment = readFragment(k, f);
            if (!fragment) {
                return {};
            }
            location.fragments.push_back(std::move(*fragment));
        }
        std::stable_sort(
            location.fragments.begin(), location.fragments.end(),
            [](const auto& a, const auto& b) { return a.fragmentPosition < b.fragmentPosition; });
        return location;
    }

    [[nodiscard]] std::optional<WordFrameFragment> readFragment(int k, int f) const {
        const std::initializer_list<int> at{row_.list, row_.number, k, f};
        const auto text = [&](const Field& field) {
            return group_.value(field.code, at).value_or(std::string_view());
        };
        const auto value = [&](const Field& field) { return number(field, at).value_or(0); };
        WordFrameFragment fragment;
        fragment.startWord = value(word_frame_field::kWord);
        fragment.wordInterval = value(word_frame_field::kWordInterval);
        fragment.endWord = value(word_frame_field::kEndWord);
        fragment.startFrame = value(word_frame_field::kFrame);
        fragment.frameInterval = value(word_frame_field::kFrameInterval);
        fragment.endFrame = value(word_frame_field::kEndFrame);
        fragment.mask = text(word_frame_field::kMask);
        fragment.fragmentPosition = value(word_frame_field::kPosition);
        if (const auto order = text(word_frame_field::kTransferOrder); !order.empty()) {
            fragment.transferOrder = toUpperAscii(order.front());
        }
        const bool isInside =
            fragment.startWord >= 1 && fragment.startWord < format_.wordsPerMinorFrame &&
            fragment.endWord < format_.wordsPerMinorFrame && fragment.startFrame >= 1 &&
            fragment.startFrame <= format_.numberOfFrames &&
            fragment.endFrame <= format_.numberOfFrames;
        return isInside ? std::optional(fragment) : std::nullopt;
    }

    const PcmFormat& format_;
    const SdkGroup& group_;
    const SdkRow& row_;
};

/// Each sample of a measurement that ranges cannot state as a location of its own.
std::vector<SdkLocation> samplesOf(const PcmFormat& format, const std::string& name) {
    std::vector<SdkLocation> locations;
    Occurrences occurrences(format, name);
    while (const auto at = occurrences.next()) {
        const auto& measurement = format.cells().measurement(at->cell);
        SdkFragment fragment;
        fragment.number = std::max(1, measurement.fragmentNumber);
        fragment.word = {at->fwp, 0, at->fwp};
        fragment.frame = {at->fn, 0, at->fn};
        fragment.mask = measurement.mask.str();
        fragment.wordLength = format.wordLength(at->fwp);
        fragment.transferOrder = measurement.fragmentTransferOrder.empty()
                                     ? 'D'
                                     : measurement.fragmentTransferOrder.view().front();
        locations.push_back({measurement.reconstructedLength > 0 ? measurement.reconstructedLength
                                                                 : fragment.wordLength,
                             {fragment}});
    }
    return locations;
}

std::set<int> fragmentNumbersOf(const SdkMeasurement& measurement) {
    std::set<int> numbers;
    for (const auto& location : measurement.locations) {
        for (const auto& fragment : location.fragments) {
            numbers.insert(fragment.number);
        }
    }
    return numbers;
}

/// Says of which fragments the interval between frames is not known.
void reportIntervals(const SdkMeasurement& measurement, const SessionReport& report) {
    for (const int number : fragmentNumbersOf(measurement)) {
        report(
            formatPrintf("WARNING: Could not determine Frame Increment for SFFR measurement\n"
                         "'%s' (Fragment #%d).\n\n",
                         measurement.name, number));
    }
}

/// Says if a measurement has fewer fragments than its file says.
void reportFragments(const SdkRow& row, const SdkMeasurement& measurement,
                     const SessionReport& report) {
    if (static_cast<int>(fragmentNumbersOf(measurement).size()) < row.fragments) {
        report(formatPrintf("ERROR: Unable to completely define measurement '%s'.\n", row.name));
    }
}

bool isFragmentedRow(const SdkRow& row) {
    return isFragmented(FixedText<4>(row.locationType));
}

/// Where the frame has a measurement first.
struct FirstCell {
    CellRef cell;
    int fwp;
    int fn;
};

void placeAsStated(const PcmFormat& format, const SdkGroup& group, const SdkRow& row,
                   const SessionReport& report, SdkMeasurement& measurement) {
    measurement.locations = StatedRanges(format, group, row).read();
    if (measurement.locations.empty() && isFragmentedRow(row)) {
        report(formatPrintf("ERROR: Unable to add %s measurement '%s'.\n", row.locationType,
                            row.name));
    }
}

void placeByCell(const PcmFormat& format, const SdkRow& row, const FirstCell& first,
                 const SessionReport& report, SdkMeasurement& measurement) {
    if (const auto* const definition =
            format.wordFrameDefinition(format.cells().measurement(first.cell).wordFrameIndex)) {
        measurement.idCounterName = definition->idCounterName;
        measurement.locations = locationsOf(format, *definition);
        return;
    }
    measurement.locations = samplesOf(format, row.name);
    if (isFragmentedRow(row)) {
        reportIntervals(measurement, report);
    }
}

}  // namespace

std::vector<SdkMeasurement> measurementsOfFormat(const PcmFormat& format, const SdkGroup& group,
                                                 const std::vector<SdkRow>& rows,
                                                 const SessionReport& report) {
    std::unordered_map<std::string, FirstCell> cells;
    format.forEachMeasurement([&](CellRef cell, int fwp, int fn) {
        cells.try_emplace(lowerAscii(format.cells().measurement(cell).name.view()),
                          FirstCell{cell, fwp, fn});
        return true;
    });
    std::vector<SdkMeasurement> measurements;
    measurements.reserve(rows.size());
    for (const auto& row : rows) {
        SdkMeasurement measurement;
        measurement.name = row.name;
        measurement.locationType = row.locationType;
        const auto found = cells.find(lowerAscii(FixedText<32>(row.name).view()));
        const bool isPlaced = found != cells.end();
        try {
            if (isPlaced) {
                placeByCell(format, row, found->second, report, measurement);
            } else {
                placeAsStated(format, group, row, report, measurement);
            }
        } catch (const std::bad_alloc&) {
            measurement.locations = {};
            report(
                formatPrintf("ERROR: Unable to allocate memory for measurement at FWP:%d "
                             "FN:%d.\n",
                             isPlaced ? found->second.fwp : 0, isPlaced ? found->second.fn : 0));
        }
        if (!measurement.locations.empty()) {
            reportFragments(row, measurement, report);
            measurement.wordLength = measurement.locations.front().wordLength;
        }
        measurements.push_back(std::move(measurement));
    }
    return measurements;
}

}  // namespace kavu
