// Reading the location types of minor frames: MF, MFSC, MFFR.
#include "pcm/read/MeasurementInput.h"
#include "pcm/read/MeasurementPlacing.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

bool add(MeasurementInput& input, int fwp) {
    return addMeasurementLocation(input.load, fwp, 1, input.cell, Expected::MinorWord);
}

void readSupercomInterval(MeasurementInput& input, int count) {
    auto& load = input.load;
    const auto first = input.number(minor_supercom_field::kFirst);
    if (!first) {
        load.log(247, title::kError, load.prefix, input.code(minor_supercom_field::kFirst),
                 input.name());
        load.abort = true;
        return;
    }
    input.cell.mask = input.textOrMissing(minor_supercom_field::kMask);
    const auto interval = input.number(minor_supercom_field::kInterval);
    if (!interval) {
        load.log(248, title::kErrorReadingMeasurement, input.name());
        load.abort = true;
        return;
    }
    input.cell.interval = *interval;
    int added = 0;
    while (added < count && add(input, stepped(*first, added, *interval))) {
        ++added;
    }
    input.setLocationCount(added);
}

void readSupercomList(MeasurementInput& input, int count) {
    auto& load = input.load;
    int added = 0;
    int missing = 0;
    for (int k = 1; k <= count && missing < MeasurementInput::kMostMissing; ++k) {
        if (load.cancelled()) {
            return;
        }
        const auto from = input.readSoFar();
        const auto fwp = input.number(minor_supercom_field::kWord, {k});
        if (!fwp) {
            ++missing;
            load.log(249, title::kError,
                     load.prefix + input.code(minor_supercom_field::kWord, {k}));
            continue;
        }
        missing = 0;
        input.cell.mask = input.textOrMissing(minor_supercom_field::kWordMask, {k});
        if (add(input, *fwp)) {
            ++added;
        } else {
            input.leaveOut(from);
        }
        if (load.abort) {
            return;
        }
    }
    input.setLocationCount(added);
}

/// Finds the fragments that a definition does not list.
class SeenFragments {
  public:
    void add(int number) { seen_.insert(number); }
    /// The missing numbers up to `count`, as many as a message can show.
    [[nodiscard]] std::string missing(int count) const {
        constexpr std::size_t kLongest = 1200;
        std::string list;
        for (int n = 1; n <= count && list.size() < kLongest; ++n) {
            if (!seen_.contains(n)) {
                appendNumber(list, n);
                list.push_back(' ');
            }
        }
        if (!list.empty()) {
            list.pop_back();
        }
        return list;
    }

  private:
    std::set<int> seen_;
};

/// The result of reading the fragments of a measurement.
struct Fragments {
    SeenFragments seen;
    long bits = 0;
    bool failed = false;
};

void readFragmentInterval(MeasurementInput& input, int count, Fragments& fragments) {
    auto& load = input.load;
    const auto first = input.number(minor_fragment_field::kFirst);
    if (!first) {
        load.log(255, title::kError, load.prefix, input.code(minor_fragment_field::kFirst),
                 input.name());
        load.abort = true;
        return;
    }
    input.cell.mask = input.textOrMissing(minor_fragment_field::kMask);
    const auto interval = input.number(minor_fragment_field::kInterval);
    if (!interval) {
        load.log(256, title::kErrorReadingMeasurement, input.name());
        load.abort = true;
        return;
    }
    input.cell.interval = *interval;
    // Fragments may share a word, so an interval of 0 would go on for as long as the count says.
    const int most = *interval > 0 ? count : std::min(count, kMostWords);
    int added = 0;
    while (added < most) {
        const int fwp = stepped(*first, added, *interval);
        fragments.seen.add(added + 1);
        input.cell.fragmentNumber = added + 1;
        if (!add(input, fwp)) {
            break;
        }
        ++added;
        fragments.bits += input.format.maskBits(fwp, input.cell.mask, false);
    }
    input.setLocationCount(added);
}

void readFragmentList(MeasurementInput& input, int count, Fragments& fragments) {
    auto& load = input.load;
    int added = 0;
    int missing = 0;
    for (int k = 1; k <= count && missing < MeasurementInput::kMostMissing; ++k) {
        if (load.cancelled()) {
            return;
        }
        const auto from = input.readSoFar();
        const auto fwp = input.number(minor_fragment_field::kWord, {k});
        if (!fwp) {
            ++missing;
            load.log(257, title::kError, input.name(), load.prefix,
                     input.code(minor_fragment_field::kWord, {k}));
            fragments.failed = true;
            continue;
        }
        missing = 0;
        input.cell.mask = input.textOrMissing(minor_fragment_field::kWordMask, {k});
        input.cell.fragmentTransferOrder =
            input.textOrMissing(minor_fragment_field::kTransferOrder, {k});
        input.cell.fragmentNumber = input.number(minor_fragment_field::kFragment, {k}).value_or(0);
        fragments.seen.add(input.cell.fragmentNumber);
        if (!add(input, *fwp)) {
            input.leaveOut(from);
            fragments.failed = true;
            if (load.abort) {
                return;
            }
            continue;
        }
        ++added;
        fragments.bits += input.format.maskBits(*fwp, input.cell.mask, false);
    }
    input.setLocationCount(added);
}

}  // namespace

void readMinorWord(MeasurementInput& input) {
    auto& load = input.load;
    const auto fwp = input.number(minor_word_field::kWord);
    if (!fwp) {
        load.log(242, title::kError, load.prefix, input.code(minor_word_field::kWord),
                 input.name());
        return;
    }
    input.cell.mask = input.textOrMissing(minor_word_field::kMask);
    add(input, *fwp);
}

void readMinorFrameSupercom(MeasurementInput& input) {
    auto& load = input.load;
    const auto count = input.places(minor_supercom_field::kCount);
    if (!count) {
        load.log(246, title::kErrorReadingMeasurement, input.name());
        load.abort = true;
        return;
    }
    input.cell.locationCount = *count;
    input.cell.locationMode = input.textOrMissing(minor_supercom_field::kMode);
    if (input.cell.locationMode == "I") {
        readSupercomInterval(input, *count);
    } else {
        readSupercomList(input, *count);
    }
}

void readMinorFrameFragments(MeasurementInput& input) {
    auto& load = input.load;
    const auto count = input.places(minor_fragment_field::kCount);
    if (!count) {
        load.log(254, title::kIncompleteFragments, load.prefix,
                 input.code(minor_fragment_field::kCount), input.name());
        return;
    }
    input.cell.locationCount = *count;
    input.cell.reconstructedLength = input.number(minor_fragment_field::kLength).value_or(0);
    input.cell.locationMode = input.textOrMissing(minor_fragment_field::kMode);
    Fragments fragments;
    if (input.cell.locationMode == "I") {
        readFragmentInterval(input, *count, fragments);
    } else {
        readFragmentList(input, *count, fragments);
    }
    if (load.abort) {
        return;
    }
    if (!fragments.failed) {
        checkReconstructedLength(input, "Minor Word", fragments.bits);
    }
    if (const auto list = fragments.seen.missing(*count); !list.empty()) {
        load.log(274, title::kWarning, input.name(), list);
    }
}

void checkReconstructedLength(MeasurementInput& input, std::string_view kind, long bits) {
    const int told = input.cell.reconstructedLength;
    if (told > 0 && bits > 0 && told != bits) {
        input.load.log(280, title::kWarning, kind, input.name(), told, bits);
    }
}

}  // namespace kavu
