#include "core/text/PlaceIndex.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kavu {

std::size_t foldedHash(std::string_view text) {
    std::array<char, 64> room;
    if (text.size() > room.size()) {
        return textHash(lowerAscii(text));
    }
    std::transform(text.begin(), text.end(), room.begin(), toLowerAscii);
    return textHash({room.data(), text.size()});
}

void PlaceIndex::clear() {
    slots_.clear();
    count_ = 0;
}

void PlaceIndex::add(std::size_t hash, std::size_t place) {
    if (2 * (count_ + 1) > slots_.size()) {
        constexpr std::size_t kFirst = 64;
        const auto former =
            std::exchange(slots_, std::vector<Slot>(std::max(kFirst, 2 * slots_.size())));
        for (const auto& slot : former) {
            if (slot.place != kNone) {
                put(slot);
            }
        }
    }
    put({hash, place});
    ++count_;
}

void PlaceIndex::put(const Slot& slot) {
    auto at = slotOf(slot.hash);
    while (slots_[at].place != kNone) {
        at = nextTo(at);
    }
    slots_[at] = slot;
}

}  // namespace kavu
