#include "pcm/edit/IntervalRefit.h"

#include "core/text/Printf.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "pcm/edit/RangePlaces.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/write/WordFrameBuild.h"
#include "pcm/write/WordFrameConversion.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>
#include <tuple>

namespace kavu {

namespace {

/// A cell of a measurement; `position` is that in its subframe, else the word.
struct Held {
    CellRef cell;
    int fwp = 0;
    int position = 0;
    int fragment = 0;
    std::string_view mask;
};

bool isType(const Measurement& measurement, std::string_view type) {
    return equalsIgnoreCase(measurement.locationType, type);
}

bool isByInterval(const Measurement& measurement) {
    return measurement.locationMode.view().starts_with('I');
}

std::vector<Held> cellsOf(const PcmFormat& format, std::string_view name) {
    const auto& cells = format.cells();
    auto places = cells.places(name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::vector<Held> held;
    std::vector<CellRef> found;
    const int number = cells.nameNumber(name);
    for (const auto& place : places) {
        cells.cellsAt(place.word, place.index, number, found);
        const auto* const subframe = format.subframeOfWord(place.word);
        for (const auto& at : found) {
            const auto& measurement = cells.measurement(at);
            const int position = subframe == nullptr ? place.word
                                                     : format.subframePosition(
                                                           subframe->name, place.word, place.index);
            held.push_back(
                {at, place.word, position, measurement.fragmentNumber, measurement.mask.view()});
        }
    }
    return held;
}

/// True if the cells are at the places of an interval, `numbered` with fragments in their order.
bool areSteps(std::vector<Held> held, int first, const Measurement& measurement, bool numbered) {
    std::sort(held.begin(), held.end(), [](const Held& a, const Held& b) {
        return std::tie(a.position, a.fragment) < std::tie(b.position, b.fragment);
    });
    std::int64_t at = first;
    int number = 0;
    for (const auto& cell : held) {
        if (cell.position != at || (numbered && cell.fragment != ++number)) {
            return false;
        }
        at += measurement.interval;
    }
    return static_cast<int>(held.size()) == measurement.locationCount;
}

/// The constant step of sorted positions: 0 for one position, nothing if there is none.
std::optional<int> stepOf(const std::vector<int>& positions) {
    Sequence sequence;
    if (!findSequence(positions, sequence) || (positions.size() > 1 && sequence.interval < 1)) {
        return std::nullopt;
    }
    return sequence.interval;
}

std::string listText(std::size_t count) {
    return formatPrintf("a list of %d locations", static_cast<int>(count));
}
std::string intervalText(std::size_t count, int interval) {
    return formatPrintf("%d locations by an interval of %d", static_cast<int>(count), interval);
}

/// Sets mode, interval and number of locations of every copy.
void setLocations(PcmFormat& format, std::string_view name, const char* mode, int interval,
                  std::size_t count) {
    format.cells().updateAll(name, [&](Measurement& copy) {
        copy.locationMode = mode;
        copy.interval = interval;
        copy.locationCount = static_cast<int>(count);
    });
}

/// A list of minor words is written with the masks of the first measurement of each word.
bool listKeepsMasks(const PcmFormat& format, const std::vector<Held>& held) {
    return std::all_of(held.begin(), held.end(), [&](const Held& cell) {
        const auto& first = format.cells().measurement(format.cellAt(cell.fwp, 1));
        return !isWordFrame(first) && first.mask == cell.mask;
    });
}

/// The same places as word/frame locations.
bool makeWordFrame(PcmFormat& format, std::string_view name) {
    if (format.edition() < kFirstWordFrameEdition) {
        return false;
    }
    std::vector<HeldPlace> places;
    for (const auto& cell : cellsOf(format, name)) {
        places.push_back({cell.cell, cell.fwp, 1});
    }
    const auto definition = buildWordFrame(format, places);
    if (!definition) {
        return false;
    }
    auto measurement = format.cells().measurement(places.front().cell);
    const std::string own = measurement.name.str();
    makeSingle(measurement);
    measurement.locationType = location_type::kWordFrame;
    measurement.locationCount = definition->locationCount();
    return placeWordFrameMeasurement(format, nullptr, measurement, *definition, {own}, 0);
}

bool haveOneMask(const std::vector<Held>& held) {
    return std::all_of(held.begin(), held.end(),
                       [&](const Held& cell) { return cell.mask == held.front().mask; });
}

std::vector<int> positionsOf(const std::vector<Held>& held) {
    std::vector<int> positions;
    for (const auto& cell : held) {
        positions.push_back(cell.position);
    }
    std::sort(positions.begin(), positions.end());
    return positions;
}

/// The words of a subframe by its first word and interval; nothing of a list.
std::optional<std::vector<int>> steppedWords(const PcmFormat& format, const Subframe& record,
                                             const std::vector<int>& words) {
    if (!record.isSupercommutated() || record.locationMode == kEveryLocation || words.empty()) {
        return std::nullopt;
    }
    std::vector<int> stepped;
    for (int i = 0; i < record.supercommutated.number(); ++i) {
        const auto fwp = words.front() + std::int64_t{i} * record.interval.number();
        if (fwp < format.wordsPerMinorFrame &&
            format.wordType(static_cast<int>(fwp)) != WordType::IdCounter) {
            stepped.push_back(static_cast<int>(fwp));
        }
    }
    return stepped;
}

template <typename Visit>
void forEachSubframe(const PcmFormat& format, const Visit& visit) {
    for (std::size_t c = 0; c < format.idCounters.size(); ++c) {
        const auto& subframes = format.idCounters[c].subframes;
        for (std::size_t j = 0; j < subframes.size(); ++j) {
            const SubframeRef ref{static_cast<int>(c), static_cast<int>(j)};
            if (!subframes[j].name.empty() && !subframes[j].hidden) {
                visit(ref, subframes[j]);
            }
        }
    }
}

}  // namespace

// --- subframes ------------------------------------------------------------------------------

LoadedSubframes::LoadedSubframes(const PcmFormat& format) {
    if (format.edition() >= kHiddenSubframesEdition) {
        return;
    }
    bool any = false;
    forEachSubframe(format, [&](SubframeRef ref, const Subframe& record) {
        const auto& words = format.wordsOf(ref);
        const auto stepped = steppedWords(format, record, words);
        any = any || (stepped && *stepped != words) || !isCounterLoaded(format, ref.counter);
    });
    if (!any) {
        return;
    }
    // A later interval takes words of earlier subframes.
    std::vector<SubframeRef> owner(static_cast<std::size_t>(format.wordsPerMinorFrame));
    forEachSubframe(format, [&](SubframeRef ref, const Subframe& record) {
        if (!isCounterLoaded(format, ref.counter)) {
            return;
        }
        const auto& words = format.wordsOf(ref);
        for (const int fwp : steppedWords(format, record, words).value_or(words)) {
            owner[static_cast<std::size_t>(fwp)] = ref;
        }
    });
    differs_.resize(owner.size());
    forEachSubframe(format, [&](SubframeRef ref, const Subframe&) {
        const auto& words = format.wordsOf(ref);
        const auto count = std::count(owner.begin(), owner.end(), ref);
        const bool same = static_cast<std::size_t>(count) == words.size() &&
                          std::all_of(words.begin(), words.end(), [&](int fwp) {
                              return owner[static_cast<std::size_t>(fwp)] == ref;
                          });
        for (const int fwp : words) {
            differs_[static_cast<std::size_t>(fwp)] = !same;
        }
    });
}

bool LoadedSubframes::differs(int fwp) const {
    const auto at = static_cast<std::size_t>(fwp);
    return fwp >= 0 && at < differs_.size() && differs_[at];
}

void refitSubframes(PcmFormat& format) {
    std::vector<SubframeRef> wrong;
    forEachSubframe(format, [&](SubframeRef ref, const Subframe& record) {
        const auto& words = format.wordsOf(ref);
        if (const auto stepped = steppedWords(format, record, words);
            stepped && *stepped != words) {
            wrong.push_back(ref);
        }
    });
    for (const auto& ref : wrong) {
        const auto& words = format.wordsOf(ref);
        auto& record = format.idCounters[static_cast<std::size_t>(ref.counter)]
                           .subframes[static_cast<std::size_t>(ref.index)];
        const auto step = stepOf(words);
        const bool single = words.size() == 1;
        const bool stepped = step && !single && *step <= kMostSubframeInterval;
        record.supercommutated =
            single ? std::string(kNotSupercommutated) : std::to_string(words.size());
        record.locationMode = single    ? kNoLocationMode
                              : stepped ? kFirstAndInterval
                                        : kEveryLocation;
        record.interval = stepped ? std::to_string(*step) : "0";
    }
    if (!wrong.empty()) {
        format.subframesChanged();
        format.changed = true;
    }
}

// --- measurements ---------------------------------------------------------------------------

bool isFoundByLoad(const PcmFormat& format, const LoadedSubframes& subframes, CellRef first,
                   int fwp, int index) {
    const auto& measurement = format.cells().measurement(first);
    const auto held = cellsOf(format, measurement.name);
    const bool inSubframes = std::any_of(held.begin(), held.end(), [&](const Held& cell) {
        return format.wordType(cell.fwp) == WordType::Subframe;
    });
    if (std::any_of(held.begin(), held.end(),
                    [&](const Held& cell) { return subframes.differs(cell.fwp); })) {
        return false;
    }
    const bool counted = static_cast<int>(held.size()) == measurement.locationCount;
    if (isType(measurement, location_type::kMinorFrameSupercommutated)) {
        return !inSubframes &&
               (isByInterval(measurement) ? areSteps(held, fwp, measurement, false) : counted);
    }
    if (isType(measurement, location_type::kMinorFrameFragments)) {
        return !inSubframes &&
               (isByInterval(measurement) ? areSteps(held, fwp, measurement, true) : counted);
    }
    if (isType(measurement, location_type::kSubframeSupercommutated)) {
        const auto* const subframe = format.subframeOfWord(fwp);
        const int start =
            subframe == nullptr ? 0 : format.subframePosition(subframe->name, fwp, index);
        return isByInterval(measurement) ? areSteps(held, start, measurement, false) : counted;
    }
    if (isType(measurement, location_type::kMinorFrame) ||
        isType(measurement, location_type::kSubframe)) {
        return held.size() == 1;
    }
    return true;
}

std::string refitOlderType(PcmFormat& format, std::string_view name) {
    auto held = cellsOf(format, name);
    if (held.empty()) {
        return {};
    }
    const auto measurement = format.cells().measurement(held.front().cell);
    const auto positions = positionsOf(held);
    const auto step = haveOneMask(held) ? stepOf(positions) : std::nullopt;
    const bool isMinor = isType(measurement, location_type::kMinorFrameSupercommutated) ||
                         isType(measurement, location_type::kMinorFrameFragments);
    const bool isFragments = isType(measurement, location_type::kMinorFrameFragments);
    if (!isMinor && !isType(measurement, location_type::kSubframeSupercommutated)) {
        return "the places of its subframe";
    }
    // The first cell of the frame is where the interval is written from.
    bool inOrder = held.front().position == positions.front();
    for (std::size_t i = 0; isFragments && i < held.size(); ++i) {
        inOrder = inOrder && held[i].fragment == static_cast<int>(i) + 1;
    }
    if (isByInterval(measurement) && step && inOrder) {
        setLocations(format, measurement.name, "I", std::max(1, *step), held.size());
        return intervalText(held.size(), std::max(1, *step));
    }
    setLocations(format, measurement.name, "E", 0, held.size());
    if (isType(measurement, location_type::kMinorFrameSupercommutated) &&
        !listKeepsMasks(format, held)) {
        if (makeWordFrame(format, measurement.name)) {
            return formatPrintf("%d word/frame locations", static_cast<int>(held.size()));
        }
        setLocations(format, measurement.name, measurement.locationMode.str().c_str(),
                     measurement.interval, static_cast<std::size_t>(measurement.locationCount));
        return {};
    }
    format.changed = true;
    return listText(held.size());
}

// --- async formats --------------------------------------------------------------------------

std::vector<int> asyncLeftBehind(const PcmFormat& format) {
    std::vector<int> records;
    const auto places = asyncPlaces(format);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& record = format.asyncFormats[i];
        std::vector<int> words;
        for (const auto& place : places[i]) {
            words.push_back(place.fwp);
        }
        if (!(record.locationMode == kFirstAndInterval) || words.empty()) {
            continue;
        }
        const auto step = stepOf(words);
        const bool fits = step && static_cast<int>(words.size()) == record.supercom.number() &&
                          (words.size() == 1 || *step == record.interval);
        if (!fits) {
            records.push_back(static_cast<int>(i) + 1);
        }
    }
    return records;
}

std::string refitAsync(PcmFormat& format, int record) {
    const auto places = asyncPlaces(format)[static_cast<std::size_t>(record - 1)];
    auto& contents = format.asyncFormats[static_cast<std::size_t>(record - 1)];
    std::vector<int> words;
    for (const auto& place : places) {
        words.push_back(place.fwp);
    }
    const auto step = stepOf(words);
    contents.supercom = std::to_string(words.size());
    contents.locationMode = step ? kFirstAndInterval : kEveryLocation;
    contents.interval = step ? std::max(1, *step) : 1;
    format.changed = true;
    return step ? intervalText(words.size(), contents.interval) : listText(words.size());
}

}  // namespace kavu
