#include "pcm/edit/SentValues.h"

#include <algorithm>
#include <iterator>

namespace kavu {

namespace {

constexpr unsigned kOrderAt = 16;  // below it is the frame
constexpr unsigned kMaskAt = 24;
constexpr unsigned kWordAt = 48;
constexpr char kNoOrder = 'D';

/// All but the frame.
SentPart bitsOf(SentPart part) {
    return part >> kOrderAt;
}

SentPart withoutOrder(SentPart part) {
    const SentPart mask = SentPart{0xFF} << kOrderAt;
    return (part & ~mask) | (SentPart{static_cast<unsigned char>(kNoOrder)} << kOrderAt);
}

/// Appends the frames in which the cells of a word are sent, repetitions added; all are 0.
void addSentFrames(const std::vector<int>& cells, const FrameShape& shape, int fwp,
                   std::vector<int>& frames) {
    frames.clear();
    if (cells.size() == 1 && cells.front() == 0) {
        frames.push_back(0);
        return;
    }
    for (int first = 0; first < shape.frames; first += shape.period(fwp)) {
        for (const int cell : cells) {
            if (first + cell <= shape.frames) {
                frames.push_back(first + cell);
            }
        }
    }
    if (static_cast<int>(frames.size()) == shape.frames) {
        frames.assign(1, 0);
    }
}

/// Parts of the same bits of a word, sorted by their frames.
void addJoined(std::vector<SentPart>& joined, std::vector<SentPart>::const_iterator first,
               std::vector<SentPart>::const_iterator end, int frames) {
    constexpr SentPart kFrame = 0xFFFF;
    std::vector<int> count(static_cast<std::size_t>(frames) + 1);
    for (auto it = first; it != end; ++it) {
        ++count[static_cast<std::size_t>(*it & kFrame)];
    }
    const int full = *std::min_element(count.begin() + 1, count.end());
    for (std::size_t fn = 0; fn < count.size(); ++fn) {
        const int left = fn == 0 ? count[fn] + full : count[fn] - full;
        joined.insert(joined.end(), static_cast<std::size_t>(left), (*first & ~kFrame) | fn);
    }
}

std::vector<SentPart> joinedParts(std::vector<SentPart> parts, int frames) {
    std::sort(parts.begin(), parts.end());
    std::vector<SentPart> joined;
    joined.reserve(parts.size());
    for (auto first = parts.cbegin(); first != parts.cend();) {
        const auto end = std::find_if(
            first, parts.cend(), [&](SentPart part) { return bitsOf(part) != bitsOf(*first); });
        if (end - first < frames || frames < 2) {
            joined.insert(joined.end(), first, end);
        } else {
            addJoined(joined, first, end, frames);
        }
        first = end;
    }
    return joined;
}

}  // namespace

std::uint64_t MaskNumbers::of(std::string_view mask) {
    if (numbers_.empty() || mask != last_) {
        last_ = mask;
        lastNumber_ = numbers_.try_emplace(last_, numbers_.size()).first->second;
    }
    return lastNumber_;
}

SentPart sentPart(int fwp, std::uint64_t mask, char order, int fn) {
    return (static_cast<SentPart>(fwp) << kWordAt) | (mask << kMaskAt) |
           (SentPart{static_cast<unsigned char>(order)} << kOrderAt) | static_cast<SentPart>(fn);
}

SentValues::SentValues(const std::vector<LocationPlaces>& locations, const FrameShape& shape,
                       MaskNumbers& masks) {
    for (const auto& places : locations) {
        for (std::size_t step = 0; step < places.steps.size(); ++step) {
            addStep(places, shape, step, masks);
        }
    }
    std::sort(single_.begin(), single_.end());
    std::sort(others_.begin(), others_.end());
}

void SentValues::addStep(const LocationPlaces& places, const FrameShape& shape, std::size_t step,
                         MaskNumbers& masks) {
    std::vector<std::vector<SentPart>> parts;
    std::vector<int> frames;
    const auto& words = places.steps[step];
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i].fwp < 0) {
            continue;
        }
        const auto& source = places.fragments[places.isPaired ? i : step];
        const auto mask = masks.of(source.mask);
        auto& list = parts.emplace_back();
        addSentFrames(words[i].frames, shape, words[i].fwp, frames);
        list.reserve(frames.size());
        for (const int fn : frames) {
            list.push_back(sentPart(words[i].fwp, mask, source.transferOrder, fn));
        }
    }
    const bool together =
        places.isPaired && std::all_of(parts.begin(), parts.end(), [&](const auto& list) {
            return list.size() == parts.front().size();
        });
    if (together && parts.size() == 1) {
        single_.insert(single_.end(), parts.front().begin(), parts.front().end());
        return;
    }
    for (std::size_t t = 0; together && !parts.empty() && t < parts.front().size(); ++t) {
        auto& value = others_.emplace_back();
        for (const auto& list : parts) {
            value.push_back(list[t]);
        }
    }
    if (together) {
        return;
    }
    std::vector<SentPart> value;
    for (const auto& list : parts) {
        value.insert(value.end(), list.begin(), list.end());
    }
    if (value.size() == 1) {
        single_.push_back(value.front());
    } else {
        others_.push_back(std::move(value));
    }
}

std::size_t SentValues::countCommon(const SentValues& other) const {
    const auto count = [](const auto& a, const auto& b) {
        auto common = a;
        common.clear();
        std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
        return common.size();
    };
    return count(single_, other.single_) + count(others_, other.others_);
}

std::vector<SentPart> SentValues::parts(int frames, bool withOrders) const {
    auto parts = single_;
    for (const auto& value : others_) {
        parts.insert(parts.end(), value.begin(), value.end());
    }
    if (!withOrders) {
        std::transform(parts.begin(), parts.end(), parts.begin(), withoutOrder);
    }
    return joinedParts(std::move(parts), frames);
}

std::vector<SentPart> shownParts(const PcmFormat& format, std::string_view name,
                                 const FrameShape& shape, MaskNumbers& masks) {
    const auto& cells = format.cells();
    const int number = cells.nameNumber(name);
    auto places = cells.places(name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::vector<SentPart> parts;
    parts.reserve(places.size());
    std::vector<CellRef> found;
    for (const auto& place : places) {
        cells.cellsAt(place.word, place.index, number, found);
        for (const auto& at : found) {
            const auto every =
                sentPart(place.word, masks.of(cells.measurement(at).mask), kNoOrder, 0);
            if (!shape.hasFrames(place.word)) {
                parts.push_back(every);
                continue;
            }
            const int period = shape.period(place.word);
            for (int fn = place.index; fn <= shape.frames; fn += period) {
                parts.push_back(every | static_cast<SentPart>(shape.frames > 1 ? fn : 0));
            }
        }
    }
    return joinedParts(std::move(parts), shape.frames);
}

}  // namespace kavu
