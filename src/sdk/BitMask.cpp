#include "sdk/BitMask.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/model/FrameSyncPattern.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

/// Longer words are no words; a hostile length makes no long text.
constexpr int kMostWordBits = 64;
constexpr std::size_t kBitsOfValue = 64;

}  // namespace

BitMask::BitMask(std::string_view text, int wordLength)
    : wordLength_(std::clamp(wordLength, 0, kMostWordBits)) {
    text = trim(text);
    if (text.empty() || equalsIgnoreCase(text, kFullWord)) {
        binary_.assign(static_cast<std::size_t>(wordLength_), '1');
    } else if (text.find_first_not_of("01") == std::string_view::npos) {
        binary_ = text;
    } else if (isHexadecimalText(text)) {
        binary_ = hexToBinary(text);
    } else {
        isValid_ = false;
    }
}

bool BitMask::isFullWord() const {
    return isValid_ && !binary_.empty() && binary_.find('0') == std::string::npos &&
           static_cast<int>(binary_.size()) >= wordLength_;
}

std::vector<int> BitMask::bits() const {
    std::vector<int> set;
    for (std::size_t i = 0; i < binary_.size(); ++i) {
        if (binary_[i] == '1') {
            set.push_back(static_cast<int>(i) + 1);
        }
    }
    return set;
}

int BitMask::bitCount() const {
    return static_cast<int>(std::count(binary_.begin(), binary_.end(), '1'));
}

std::uint64_t BitMask::value() const {
    const auto from = binary_.size() - std::min(binary_.size(), kBitsOfValue);
    std::uint64_t value = 0;
    for (const char bit : std::string_view(binary_).substr(from)) {
        value = (value << 1U) | (bit == '1' ? 1U : 0U);
    }
    return value;
}

std::string BitMask::words() const {
    return formatPrintf("%8.8lX%8.8lX", static_cast<unsigned long>(value() >> 32U),
                        static_cast<unsigned long>(value() & 0xFFFFFFFFU));
}

}  // namespace kavu
