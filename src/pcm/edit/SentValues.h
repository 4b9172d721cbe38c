// The values that are sent of a measurement, for comparing what a definition gives with what the
// cells show. A full frame is half a million cells: the parts of values are numbers, not texts.
#pragma once

#include "pcm/edit/RangePlaces.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

/// Numbers for masks: what is compared needs the same numbers.
class MaskNumbers {
  public:
    [[nodiscard]] std::uint64_t of(std::string_view mask);

  private:
    std::unordered_map<std::string, std::uint64_t> numbers_;
    std::string last_;  ///< of most measurements every part has the same mask
    std::uint64_t lastNumber_ = 0;
};

/// A part of a value in a minor frame, 0 being every minor frame. Parts sort by their words, masks,
/// orders and frames.
using SentPart = std::uint64_t;
[[nodiscard]] SentPart sentPart(int fwp, std::uint64_t mask, char order, int fn);

/// The values of a measurement: the parts of each, in order of the fragments.
class SentValues {
  public:
    /// With the repetitions that a shape gives the cells of its words.
    SentValues(const std::vector<LocationPlaces>& locations, const FrameShape& shape,
               MaskNumbers& masks);

    [[nodiscard]] bool operator==(const SentValues&) const = default;
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] std::size_t size() const { return single_.size() + others_.size(); }
    /// How many values are in both.
    [[nodiscard]] std::size_t countCommon(const SentValues& other) const;

    /// Each part as a value of its own, sorted, without the orders if these are not asked for.
    /// Parts that are in all `frames` one by one count as one that is in every frame.
    [[nodiscard]] std::vector<SentPart> parts(int frames, bool withOrders) const;

  private:
    void addStep(const LocationPlaces& places, const FrameShape& shape, std::size_t step,
                 MaskNumbers& masks);

    std::vector<SentPart> single_;               ///< values of one part: nearly all are
    std::vector<std::vector<SentPart>> others_;  ///< of several parts, or of none
};

/// Each cell of a measurement as a value of its own, as `SentValues::parts` without orders: cells
/// have none.
[[nodiscard]] std::vector<SentPart> shownParts(const PcmFormat& format, std::string_view name,
                                               const FrameShape& shape, MaskNumbers& masks);

}  // namespace kavu
