// The mask of a measurement: which bits of its word it takes. Bits are numbered from 1 at the left.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class BitMask {
  public:
    /// The mask of a word of so many bits. An empty text and "FW" stand for all of them; a text
    /// of 0 and 1 for its bits; one with other hexadecimal digits for four bits each.
    BitMask(std::string_view text, int wordLength);

    /// False for a text that is no mask; then it has no bits.
    [[nodiscard]] bool isValid() const { return isValid_; }
    [[nodiscard]] bool isFullWord() const;
    /// The numbers of the bits that are set, ascending.
    [[nodiscard]] std::vector<int> bits() const;
    [[nodiscard]] int bitCount() const;
    /// The mask as a number; its last 64 bits if it is longer.
    [[nodiscard]] std::uint64_t value() const;
    /// That number as two 32-bit words, "%8.8lX%8.8lX".
    [[nodiscard]] std::string words() const;
    /// One character, 0 or 1, for each bit.
    [[nodiscard]] const std::string& binary() const { return binary_; }

  private:
    std::string binary_;
    int wordLength_;
    bool isValid_ = true;
};

}  // namespace kavu
