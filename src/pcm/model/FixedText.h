// A text of at most `Width` bytes, held in place: the fields of a stream's records are
// short, and there are very many of them.
#pragma once

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace kavu {

template <std::size_t Width>
class FixedText {
    static_assert(Width <= 255);

  public:
    static constexpr std::size_t kWidth = Width;

    constexpr FixedText() = default;
    /// A longer text is cut to the width.
    FixedText(std::string_view text) { assign(text); }
    FixedText(const std::string& text) { assign(text); }
    FixedText(const char* text) { assign(text); }

    void assign(std::string_view text) {
        size_ = static_cast<std::uint8_t>(std::min(text.size(), Width));
        std::copy_n(text.begin(), size_, bytes_.begin());
    }
    void clear() { size_ = 0; }

    [[nodiscard]] std::string_view view() const { return {bytes_.data(), size_}; }
    operator std::string_view() const { return view(); }
    [[nodiscard]] std::string str() const { return std::string(view()); }
    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] std::size_t size() const { return size_; }
    /// The decimal number at the front; 0 without one.
    [[nodiscard]] int number() const {
        // Depths are read for every cell; plain digits need no parser.
        int value = 0;
        for (std::size_t i = 0; i < size_; ++i) {
            if (!isDigit(bytes_[i]) || i >= 9) {
                return leadingInt(view());
            }
            value = 10 * value + (bytes_[i] - '0');
        }
        return value;
    }

    friend bool operator==(const FixedText& a, const FixedText& b) { return a.view() == b.view(); }
    friend bool operator==(const FixedText& a, std::string_view b) { return a.view() == b; }
    friend bool operator==(const FixedText& a, const char* b) { return a.view() == b; }
    friend std::ostream& operator<<(std::ostream& out, const FixedText& text) {
        return out << text.view();
    }

  private:
    std::uint8_t size_ = 0;
    std::array<char, Width> bytes_{};
};

}  // namespace kavu
