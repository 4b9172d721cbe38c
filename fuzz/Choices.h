// The input of a fuzz target as a sequence of choices: numbers, names, texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kavu::fuzz {

class Choices {
  public:
    Choices(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    [[nodiscard]] bool atEnd() const { return at_ >= size_; }
    /// A number below `count`; 0 after the end.
    unsigned below(unsigned count) { return atEnd() ? 0 : data_[at_++] % count; }
    const std::string& oneOf(std::span<const std::string> texts) {
        return texts[below(static_cast<unsigned>(texts.size()))];
    }
    /// A few bytes as they are in the input.
    std::string text(unsigned longest) {
        std::string text;
        for (auto left = below(longest + 1); left > 0 && !atEnd(); --left) {
            text.push_back(static_cast<char>(data_[at_++]));
        }
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

}  // namespace kavu::fuzz
