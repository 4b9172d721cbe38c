// Reading the location types of subframes: SF, SFSC, SFFR.
#include "pcm/read/MeasurementInput.h"
#include "pcm/read/MeasurementPlacing.h"

#include <algorithm>
#include <map>

namespace kavu {

namespace {

/// The position of an "SF" measurement, put into the subframe if the user agrees.
std::optional<int> askPosition(MeasurementInput& input, std::string_view subframe) {
    auto& load = input.load;
    int position = input.number(subframe_word_field::kPosition).value_or(0);
    const int positions = input.format.subframePositions(subframe);
    const auto code = input.code(subframe_word_field::kPosition);
    bool agreed = true;
    if (position < 1) {
        agreed =
            load.ask(244, title::kErrorReadingSubframe, load.prefix, code, input.name(), position);
        position = 1;
    } else if (position > positions) {
        agreed = load.ask(245, title::kErrorReadingSubframe, load.prefix, code, input.name(),
                          position, positions, positions);
        position = positions;
    } else {
        return position;
    }
    if (!agreed) {
        load.abort = true;
        return std::nullopt;
    }
    load.corrected();
    return position;
}

/// Reports the first of the locations that is not a position of the subframe.
void checkSupercomPositions(MeasurementInput& input, std::string_view subframe, int first,
                            int interval, int count) {
    auto& load = input.load;
    const int positions = input.format.subframePositions(subframe);
    if (first < 1 && count > 0) {
        load.log(269, title::kUnableToInitializeMeasurement, subframe, first, input.name());
        return;
    }
    for (int i = 0; i < count; ++i) {
        if (stepped(first, i, interval) > positions) {
            load.log(270, title::kUnableToInitializeSupercomInterval, subframe, positions,
                     input.name(), i + 1);
            return;
        }
        if (interval == 0) {
            return;
        }
    }
}

void readSupercomInterval(MeasurementInput& input, std::string_view subframe, int count) {
    auto& load = input.load;
    auto& format = input.format;
    const auto first = input.number(subframe_supercom_field::kFirst);
    if (!first) {
        load.log(251, title::kError, input.name(), load.prefix,
                 input.code(subframe_supercom_field::kFirst));
        load.abort = true;
        return;
    }
    input.cell.mask = input.textOrMissing(subframe_supercom_field::kMask);
    const auto interval = input.number(subframe_supercom_field::kInterval);
    if (!interval) {
        load.log(252, title::kErrorReadingMeasurement, input.name());
        load.abort = true;
        return;
    }
    input.cell.interval = *interval;
    checkSupercomPositions(input, subframe, *first, *interval, count);
    const int positions = format.subframePositions(subframe);
    // With an interval of 0 all copies are at one position.
    const int most = *interval > 0 ? count : std::min(count, positions);
    for (int i = 0; i < most; ++i) {
        const int position = stepped(*first, i, *interval);
        int fwp = 0;
        int fn = 0;
        if (position > positions) {
            break;
        }
        if (format.subframeLocation(subframe, position, fwp, fn) != 1 ||
            !format.cellAtFrame(fwp, fn)) {
            continue;
        }
        const auto cell = format.getFreeCell(load.parent, fwp, fn);
        if (!cell) {
            break;
        }
        format.cells().store(cell, input.cell);
    }
}

void readSupercomList(MeasurementInput& input, std::string_view subframe, int count) {
    auto& load = input.load;
    int added = 0;
    int missing = 0;
    for (int k = 1; k <= count && missing < MeasurementInput::kMostMissing; ++k) {
        if (load.cancelled()) {
            return;
        }
        const auto from = input.readSoFar();
        const auto position = input.number(subframe_supercom_field::kPosition, {k});
        if (!position) {
            ++missing;
            load.log(253, title::kError, input.name(), load.prefix,
                     input.code(subframe_supercom_field::kPosition, {k}));
            continue;
        }
        missing = 0;
        input.cell.mask = input.textOrMissing(subframe_supercom_field::kPositionMask, {k});
        int fwp = 0;
        int fn = 0;
        if (input.format.subframeLocation(subframe, *position, fwp, fn) != 1) {
            const int positions = input.format.subframePositions(subframe);
            load.log(272, title::kUnableToInitializeMeasurement, *position, subframe, positions,
                     positions, input.name());
            input.leaveOut(from);
            continue;
        }
        if (placeInSubframe(input, subframe, fwp, fn)) {
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

// --- SFFR -----------------------------------------------------------------------------------

/// The fragments of one word of ordinary subframes: all in one frame, or all the same.
struct WordFragments {
    int fragment = 0;
    int frame = 0;
    bool severalFragments = false;
    bool severalFrames = false;

    /// True if another fragment is in another frame.
    [[nodiscard]] bool contradicts(int number, int fn) const {
        if (fragment == 0) {
            return false;
        }
        const bool otherFrame = severalFrames || frame != fn;
        const bool otherFragment = severalFragments || fragment != number;
        return otherFrame && otherFragment;
    }
    void add(int number, int fn) {
        severalFragments = severalFragments || (fragment != 0 && fragment != number);
        severalFrames = severalFrames || (fragment != 0 && frame != fn);
        fragment = number;
        frame = fn;
    }
};

class SubframeFragments {
  public:
    SubframeFragments(MeasurementInput& input, int count) : input_(input), count_(count) {}

    void readAll(int subframes);

  private:
    /// False if no further subframe is to be read.
    bool readOne(int s);
    bool readInterval(int s, std::string_view subframe, bool supercommutated);
    void placeInterval(std::string_view subframe, int first, int interval);
    void placeSupercom(std::string_view subframe, int interval);
    bool placeNext(int fwp, int fn);
    void readList(int s, std::string_view subframe, bool supercommutated);
    bool readListEntry(int s, int j, int position, std::string_view subframe, bool supercommutated);
    bool fail() {
        failed_ = true;
        return false;
    }
    bool failCorrected() {
        input_.load.corrected();
        return fail();
    }

    MeasurementInput& input_;
    int count_;
    int added_ = 0;
    long bits_ = 0;
    int missing_ = 0;
    bool failed_ = false;
    bool usedInterval_ = false;
    bool usedList_ = false;
    std::map<int, FixedText<64>> masks_;  ///< by fragment, of the subframe being read
    std::map<int, WordFragments> words_;
};

/// Places the next location by the interval.
bool SubframeFragments::placeNext(int fwp, int fn) {
    input_.cell.fragmentNumber = added_ + 1;
    if (!addMeasurementLocation(input_.load, fwp, fn, input_.cell, Expected::Subframe)) {
        input_.setLocationCount(added_);
        return fail();
    }
    ++added_;
    bits_ += input_.format.maskBits(fwp, input_.cell.mask, false);
    return true;
}

void SubframeFragments::placeInterval(std::string_view subframe, int first, int interval) {
    const int fwp = input_.format.subframeWord(subframe, 0);
    const int depth = input_.format.wordDepth(fwp);
    for (std::int64_t position = first; position <= depth; position += interval) {
        if (!placeNext(fwp, static_cast<int>(position)) || interval < 1) {
            return;
        }
    }
}

void SubframeFragments::placeSupercom(std::string_view subframe, int interval) {
    const auto& format = input_.format;
    for (int fwp = format.subframeWord(subframe, 0); fwp >= 0;
         fwp = interval < kMostWords ? format.subframeWord(subframe, fwp + interval + 1) : -1) {
        // The frame is the value of the interval itself: streams in use are described
        // like this.
        if (!placeNext(fwp, interval)) {
            return;
        }
    }
}

bool SubframeFragments::readInterval(int s, std::string_view subframe, bool supercommutated) {
    auto& load = input_.load;
    usedInterval_ = true;
    const auto from = input_.readSoFar();
    const auto first = input_.number(subframe_fragment_field::kFirst, {s});
    if (!first) {
        load.log(261, title::kError, load.prefix, input_.code(subframe_fragment_field::kFirst, {s}),
                 input_.name());
        return failCorrected();
    }
    input_.cell.mask = input_.textOrMissing(subframe_fragment_field::kMask, {s});
    const auto interval = input_.text(subframe_fragment_field::kInterval, {s});
    if (!interval) {
        load.log(262, title::kErrorReadingMeasurement, input_.name());
        load.abort = true;
        return fail();
    }
    input_.cell.interval = std::max(0, leadingInt(*interval));
    input_.leaveOut(from);  // no place of the model holds what tells the others
    if (supercommutated) {
        placeSupercom(subframe, input_.cell.interval);
    } else {
        placeInterval(subframe, *first, input_.cell.interval);
    }
    return true;
}

bool SubframeFragments::readListEntry(int s, int j, int position, std::string_view subframe,
                                      bool supercommutated) {
    auto& load = input_.load;
    auto& cell = input_.cell;
    int fwp = 0;
    int fn = 0;
    const int found = input_.format.subframeLocation(subframe, position, fwp, fn);
    if (found != 1) {
        load.log(279, title::kErrorReadingMeasurement, load.prefix,
                 input_.code(subframe_fragment_field::kPosition, {s, j}), std::to_string(position),
                 input_.name(), position, subframe,
                 found == 0 ? std::string("Subframe position not found")
                            : formatPrintf("This subframe only has %d positions.", -found));
        return fail();
    }
    cell.mask = input_.textOrMissing(subframe_fragment_field::kPositionMask, {s, j});
    cell.fragmentTransferOrder =
        input_.textOrMissing(subframe_fragment_field::kTransferOrder, {s, j});
    const auto fragment = input_.number(subframe_fragment_field::kFragment, {s, j});
    const auto code = input_.code(subframe_fragment_field::kFragment, {s, j});
    if (!fragment) {
        load.log(263, title::kErrorReadingMeasurement, load.prefix, code, input_.name());
        return failCorrected();
    }
    if (*fragment < 1 || *fragment > count_) {
        load.log(290, title::kErrorReadingMeasurement, input_.name(), count_, *fragment);
        return failCorrected();
    }
    cell.fragmentNumber = *fragment;
    if (!supercommutated && words_[fwp].contradicts(*fragment, fn)) {
        load.log(282, title::kErrorReadingMeasurement, load.prefix, code, input_.name(), fwp);
        return failCorrected();
    }
    if (const auto known = masks_.find(*fragment);
        known != masks_.end() && !equalsIgnoreCase(known->second, cell.mask)) {
        load.log(291, title::kErrorReadingMeasurement, *fragment, input_.name());
        load.corrected();
        cell.mask = known->second;
    }
    const bool placed = supercommutated
                            ? placeInSubframe(input_, subframe, fwp, fn)
                            : addMeasurementLocation(load, fwp, fn, cell, Expected::Subframe);
    if (!placed) {
        input_.setLocationCount(j + 1);
        return fail();
    }
    masks_.try_emplace(*fragment, cell.mask);
    if (!supercommutated) {
        words_[fwp].add(*fragment, fn);
    }
    return true;
}

void SubframeFragments::readList(int s, std::string_view subframe, bool supercommutated) {
    usedList_ = true;
    masks_.clear();
    for (int j = 1; !input_.load.cancelled(); ++j) {
        const auto from = input_.readSoFar();
        const auto position = input_.number(subframe_fragment_field::kPosition, {s, j});
        if (!position || !readListEntry(s, j, *position, subframe, supercommutated)) {
            input_.leaveOut(from);
            return;
        }
    }
}

bool SubframeFragments::readOne(int s) {
    auto& load = input_.load;
    const auto from = input_.readSoFar();
    const auto named = input_.text(subframe_fragment_field::kSubframe, {s});
    missing_ = named ? 0 : missing_ + 1;
    const std::string subframe(named.value_or("Unknown"));
    const auto ref = input_.format.findSubframe(subframe);
    if (!ref) {
        load.log(260, title::kErrorReadingSubframeFragments, subframe);
        failed_ = true;
        input_.leaveOut(from);
        return missing_ < MeasurementInput::kMostMissing;
    }
    const bool supercommutated = input_.format.subframe(*ref)->isSupercommutated();
    input_.cell.locationMode = input_.textOrMissing(subframe_fragment_field::kMode, {s});
    if (input_.cell.locationMode == "I") {
        return readInterval(s, subframe, supercommutated);
    }
    readList(s, subframe, supercommutated);
    return true;
}

void SubframeFragments::readAll(int subframes) {
    auto& load = input_.load;
    for (int s = 1; s <= subframes && !load.abort && readOne(s); ++s) {
    }
    if (failed_ || load.abort) {
        return;
    }
    if (usedInterval_ && usedList_) {
        load.log(289, title::kWarning, input_.name());
    }
    checkReconstructedLength(input_, "Subframe", bits_);
}

}  // namespace

bool placeInSubframe(MeasurementInput& input, std::string_view subframe, int fwp, int fn) {
    auto& format = input.format;
    const auto head = format.cellAtFrame(fwp, fn);
    if (!head) {
        input.load.log(271, title::kUnableToInitializeSupercomList, input.name(), subframe, fwp,
                       fn);
        return false;
    }
    const auto cell =
        format.cells().isFree(head) ? head : format.getFreeCell(input.load.parent, fwp, fn);
    if (!cell) {
        input.load.abort = true;
        return false;
    }
    format.cells().store(cell, input.cell);
    return true;
}

void readSubframeWord(MeasurementInput& input) {
    auto& load = input.load;
    const std::string subframe(input.text(subframe_word_field::kSubframe).value_or("????????"));
    if (!input.format.findSubframe(subframe)) {
        load.log(243, title::kErrorReadingSubframe, input.name(), subframe, load.prefix,
                 input.code(subframe_word_field::kSubframe));
        return;
    }
    const auto position = askPosition(input, subframe);
    if (!position) {
        return;
    }
    input.cell.mask = input.textOrMissing(subframe_word_field::kMask);
    int fwp = 0;
    int fn = 0;
    if (input.format.subframeLocation(subframe, *position, fwp, fn) == 1) {
        addMeasurementLocation(load, fwp, fn, input.cell, Expected::Subframe);
    }
}

void readSubframeSupercom(MeasurementInput& input) {
    auto& load = input.load;
    const std::string subframe(input.textOrMissing(subframe_supercom_field::kSubframe));
    const auto count = input.places(subframe_supercom_field::kCount);
    if (!count) {
        load.log(250, title::kErrorReadingMeasurement, input.name());
        load.abort = true;
        return;
    }
    input.cell.locationCount = *count;
    input.cell.locationMode = input.textOrMissing(subframe_supercom_field::kMode);
    if (input.cell.locationMode == "I") {
        readSupercomInterval(input, subframe, *count);
    } else {
        readSupercomList(input, subframe, *count);
    }
}

void readSubframeFragments(MeasurementInput& input) {
    auto& load = input.load;
    const auto count = input.places(subframe_fragment_field::kCount);
    if (!count) {
        load.log(258, title::kIncompleteSubframeFragments, load.prefix,
                 input.code(subframe_fragment_field::kCount), input.name());
        return;
    }
    input.cell.locationCount = *count;
    input.cell.reconstructedLength = input.number(subframe_fragment_field::kLength).value_or(0);
    const auto subframes = input.places(subframe_fragment_field::kSubframes);
    if (!subframes) {
        load.log(259, title::kIncompleteSubframeFragments, load.prefix,
                 input.code(subframe_fragment_field::kSubframes), input.name());
        return;
    }
    SubframeFragments(input, *count).readAll(*subframes);
}

}  // namespace kavu
