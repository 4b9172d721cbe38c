#include "reports/content/MeasurementRows.h"

#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

namespace kavu {

namespace {

bool isOneOf(int at, int start, int interval, int end) {
    return interval < 1 ? at == start : at >= start && at <= end && (at - start) % interval == 0;
}

/// True if a fragment is in any of the frames that a cell stands for: those that are `index` when
/// folded by the depth of the word.
bool coversFrames(const WordFrameFragment& fragment, int index, int depth) {
    if (fragment.frameInterval < 1) {
        return (fragment.startFrame - index) % std::max(1, depth) == 0;
    }
    for (int fn = fragment.startFrame; fn <= fragment.endFrame; fn += fragment.frameInterval) {
        if ((fn - index) % std::max(1, depth) == 0) {
            return true;
        }
    }
    return false;
}

bool isSupercommutated(const MeasurementPlace& place) {
    return equalsIgnoreCase(place.type, location_type::kMinorFrameSupercommutated) ||
           equalsIgnoreCase(place.type, location_type::kSubframeSupercommutated);
}

class PlaceCollector {
  public:
    PlaceCollector(const PcmFormat& format, bool firstOnly)
        : format_(format), firstOnly_(firstOnly) {}

    void addWord(int fwp) {
        const auto& cells = format_.cells();
        addCounter(fwp);
        for (int index = 1; index <= cells.cellCount(fwp); ++index) {
            copies_.clear();
            bool holds = false;
            for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
                if (cells.isMeasurement(at)) {
                    holds = true;
                    addMeasurement(at, fwp, index);
                }
            }
            if (index == 1 && !holds) {
                addSubframe(fwp);
            }
        }
    }
    [[nodiscard]] std::vector<MeasurementPlace> take() { return std::move(places_); }

  private:
    static MeasurementPlace placeAt(std::string_view name, int fwp, int frame) {
        MeasurementPlace place;
        place.name = name;
        place.startWord = place.endWord = fwp;
        place.startFrame = place.endFrame = frame;
        return place;
    }

    void addCounter(int fwp) {
        const auto* const counter =
            format_.wordType(fwp) == WordType::IdCounter ? format_.idCounterOfWord(fwp) : nullptr;
        if (counter != nullptr) {
            auto place = placeAt(counter->name, fwp, 1);
            place.type = kCounterType;
            place.length = format_.wordLength(fwp);
            places_.push_back(std::move(place));
        }
    }

    void addSubframe(int fwp) {
        const auto* const subframe =
            format_.wordType(fwp) == WordType::Subframe ? format_.subframeOfWord(fwp) : nullptr;
        if (subframe != nullptr && !subframe->hidden) {
            auto place = placeAt(subframe->name, fwp, 1);
            place.length = format_.wordLength(fwp);
            places_.push_back(std::move(place));
        }
    }

    void addMeasurement(CellRef at, int fwp, int index) {
        const auto& measurement = format_.cells().measurement(at);
        auto place = placeAt(measurement.name, fwp, index);
        place.type = measurement.locationType;
        place.fragment = measurement.fragmentNumber;
        place.mask = measurement.mask;
        place.parity = measurement.parity;
        place.parityOrder = measurement.parityTransferOrder;
        place.transferOrder = measurement.transferOrder;
        const int name = format_.cells().nameNumber(at);
        if (isWordFrame(measurement)) {
            takeFragment(place, measurement, copies_[name]++);
        }
        place.length = format_.maskBits(fwp, place.mask, false);
        if (!firstOnly_ || isFirst(place, isWordFrame(measurement), name)) {
            places_.push_back(std::move(place));
        }
    }

    /// The mask and the number of a fragment of a word/frame measurement are those of its
    /// definition: of the n-th copy in a place those of the n-th fragment that is there.
    void takeFragment(MeasurementPlace& place, const Measurement& measurement, int copy) const {
        const auto* const definition = format_.wordFrameDefinition(measurement.wordFrameIndex);
        if (definition == nullptr) {
            return;
        }
        const int depth = format_.wordType(place.startWord) == WordType::Subframe
                              ? format_.wordDepth(place.startWord)
                              : 1;
        for (const auto& location : definition->locations) {
            for (const auto& fragment : location.fragments) {
                if (isOneOf(place.startWord, fragment.startWord, fragment.wordInterval,
                            fragment.endWord) &&
                    coversFrames(fragment, place.startFrame, depth) && copy-- == 0) {
                    place.mask = fragment.mask;
                    place.fragment = location.fragmentCount() > 1 ? fragment.fragmentPosition : 0;
                    return;
                }
            }
        }
    }

    /// False for a later place of a supercommutated measurement, and for a place in another word
    /// of a word/frame one, each of the same fragment.
    bool isFirst(const MeasurementPlace& place, bool isWordFrameType, int name) {
        if (!isSupercommutated(place) && !isWordFrameType) {
            return true;
        }
        const auto [seen, isNew] = firstWords_.try_emplace({name, place.fragment}, place.startWord);
        return isNew || (isWordFrameType && seen->second == place.startWord);
    }

    const PcmFormat& format_;
    bool firstOnly_;
    std::map<int, int> copies_{};  ///< of a name in the present cell
    std::map<std::pair<int, int>, int> firstWords_{};
    std::vector<MeasurementPlace> places_{};
};

bool continues(const MeasurementPlace& before, const MeasurementPlace& place) {
    const auto key = [](const MeasurementPlace& each) {
        return std::tie(each.name, each.startWord, each.type, each.mask, each.length, each.fragment,
                        each.parity, each.parityOrder, each.transferOrder);
    };
    return !isSupercommutated(place) && before.endFrame + 1 == place.startFrame &&
           key(before) == key(place);
}

/// So many rows are sorted, or looked at, between two looks whether the user has cancelled.
constexpr std::size_t kSortedRun = 1U << 14U;

/// The order of the rows, equal ones as they are; nothing after a cancel. Half a million rows take
/// a while: runs are sorted on their own, and merged pair by pair.
template <typename Before>
std::vector<std::uint32_t> sortedInRuns(const std::vector<MeasurementPlace>& places,
                                        const Before& isBefore, UserInterface* parent) {
    std::vector<std::uint32_t> order(places.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto isLess = [&](std::uint32_t a, std::uint32_t b) {
        return isBefore(places[a], places[b]);
    };
    const auto at = [&](std::size_t i) {
        return order.begin() + static_cast<std::ptrdiff_t>(std::min(i, order.size()));
    };
    for (std::size_t i = 0; i < order.size(); i += kSortedRun) {
        if (cancelRequested(parent)) {
            return {};
        }
        std::stable_sort(at(i), at(i + kSortedRun), isLess);
    }
    for (std::size_t run = kSortedRun; run < order.size(); run *= 2) {
        for (std::size_t i = 0; i + run < order.size(); i += 2 * run) {
            if (cancelRequested(parent)) {
                return {};
            }
            // Rows are collected in the order of their places, mostly as they are wanted.
            if (isLess(*at(i + run), *std::prev(at(i + run)))) {
                std::inplace_merge(at(i), at(i + run), at(i + 2 * run), isLess);
            }
        }
    }
    return order;
}

/// Puts each row where the order wants it, without a second copy of all of them.
void arrange(std::vector<MeasurementPlace>& places, std::vector<std::uint32_t> order) {
    for (std::uint32_t first = 0; first < order.size(); ++first) {
        if (order[first] == first) {
            continue;
        }
        const auto kept = places[first];
        std::uint32_t to = first;
        for (auto from = order[to]; from != first; from = order[to]) {
            places[to] = places[from];
            order[to] = to;
            to = from;
        }
        places[to] = kept;
        order[to] = to;
    }
}

}  // namespace

std::vector<MeasurementPlace> collectPlaces(const PcmFormat& format, bool firstOnly,
                                            UserInterface* parent) {
    PlaceCollector collector(format, firstOnly);
    for (int fwp = 1; fwp < format.wordsPerMinorFrame && !cancelRequested(parent); ++fwp) {
        collector.addWord(fwp);
        yieldToInterface(parent);
    }
    return collector.take();
}

bool sortPlaces(std::vector<MeasurementPlace>& places, MeasurementSort sort,
                UserInterface* parent) {
    const auto isBefore = [sort](const MeasurementPlace& a, const MeasurementPlace& b) {
        const auto key = [](const MeasurementPlace& each) {
            return std::pair(each.startWord, each.startFrame);
        };
        return sort == MeasurementSort::Name
                   ? std::pair(a.name, key(a)) < std::pair(b.name, key(b))
                   : std::pair(key(a), a.name) < std::pair(key(b), b.name);
    };
    const auto order = sortedInRuns(places, isBefore, parent);
    if (order.size() != places.size()) {
        return false;
    }
    arrange(places, order);
    return true;
}

bool mergePlaces(std::vector<MeasurementPlace>& places, UserInterface* parent) {
    std::size_t last = 0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (i % kSortedRun == 0 && cancelRequested(parent)) {
            return false;
        }
        if (continues(places[last], places[i])) {
            places[last].endFrame = places[i].startFrame;
        } else if (++last != i) {
            places[last] = std::move(places[i]);
        }
    }
    places.resize(places.empty() ? 0 : last + 1);
    return true;
}

}  // namespace kavu
