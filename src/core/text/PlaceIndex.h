// Finds texts of a long list by their hashes. The list is somebody else's: the index has a place
// in it for each text, and no copy of the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace kavu {

/// A hash of a text, for an index in which case counts.
[[nodiscard]] inline std::size_t textHash(std::string_view text) {
    return std::hash<std::string_view>()(text);
}
/// The same for texts that differ only in case.
[[nodiscard]] std::size_t foldedHash(std::string_view text);

class PlaceIndex {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    [[nodiscard]] bool empty() const { return count_ == 0; }
    void clear();
    /// Adds the place of a text that is not in the index yet, of this hash.
    void add(std::size_t hash, std::size_t place);
    /// The place of a text of this hash for which `isSame(place)` is true, or `kNone`.
    template <typename IsSame>
    [[nodiscard]] std::size_t find(std::size_t hash, const IsSame& isSame) const {
        if (count_ == 0) {
            return kNone;
        }
        for (auto at = slotOf(hash); slots_[at].place != kNone; at = nextTo(at)) {
            if (slots_[at].hash == hash && isSame(slots_[at].place)) {
                return slots_[at].place;
            }
        }
        return kNone;
    }

  private:
    struct Slot {
        std::size_t hash = 0;
        std::size_t place = kNone;
    };
    [[nodiscard]] std::size_t slotOf(std::size_t hash) const { return hash & (slots_.size() - 1); }
    [[nodiscard]] std::size_t nextTo(std::size_t at) const {
        return (at + 1) & (slots_.size() - 1);
    }
    void put(const Slot& slot);

    std::vector<Slot> slots_;  ///< a power of two of them, at most half of them taken
    std::size_t count_ = 0;
};

}  // namespace kavu
