#include "core/text/Text.h"

#include "core/text/TextEncoding.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

namespace kavu {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}
constexpr bool isWhiteSpace(char c) {
    return isBlank(c) || (c >= '\n' && c <= '\r');
}

}  // namespace

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), toLowerAscii);
    return lower;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return toLowerAscii(x) == toLowerAscii(y);
           });
}

bool startsWithIgnoreCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equalsIgnoreCase(text.substr(0, prefix.size()), prefix);
}

std::string_view trim(std::string_view text) {
    while (!text.empty() && isWhiteSpace(text.front())) {
        text.remove_prefix(1);
    }
    return trimRight(text);
}

std::string_view trimRight(std::string_view text) {
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view trimTrailingBlanks(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::int64_t leadingInteger(std::string_view text) {
    const auto first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(first);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') {
        text.remove_prefix(1);
    }
    if (text.empty() || !isDigit(text.front())) {
        return 0;
    }
    std::int64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int64_t>;
        return negative ? Limits::min() : Limits::max();
    }
    return negative ? -number : number;
}

int leadingInt(std::string_view text) {
    return static_cast<int>(std::clamp<std::int64_t>(
        leadingInteger(text), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

bool isPrintable(std::string_view text) {
    using Word = std::uint64_t;
    constexpr Word kOnes = ~Word{0} / 0xFF;  // 1 in each byte
    constexpr Word kHighBits = kOnes * 0x80;
    constexpr unsigned char kBlank = ' ';
    // A byte below the blank borrows from its high bit, unless that was set before. The bytes
    // above it may be taken for such a one if there is one, and only then.
    const auto below = [](Word word) { return (word - kOnes * kBlank) & ~word & kHighBits; };
    if (text.size() < sizeof(Word)) {
        return std::none_of(text.begin(), text.end(),
                            [](char c) { return static_cast<unsigned char>(c) < kBlank; });
    }
    const auto wordAt = [text](std::size_t at) {
        Word word = 0;
        std::memcpy(&word, text.data() + at, sizeof(Word));
        return word;
    };
    const auto last = text.size() - sizeof(Word);
    Word found = below(wordAt(last));
    for (std::size_t at = 0; at < last; at += sizeof(Word)) {
        found |= below(wordAt(at));
    }
    return found == 0;
}

bool holdsLineBreak(std::string_view text) {
    // Two searches by the C library are many times faster than one for either byte.
    return text.find('\n') != std::string_view::npos || text.find('\r') != std::string_view::npos;
}

bool holdsStoredBreak(std::string_view text) {
    return text.find(kStoredLineFeed) != std::string_view::npos ||
           text.find(kStoredCarriageReturn) != std::string_view::npos;
}

void toStoredForm(std::string& text) {
    if (!holdsLineBreak(text)) {
        return;
    }
    for (char& c : text) {
        if (c == '\r') {
            c = kStoredCarriageReturn;
        } else if (c == '\n') {
            c = kStoredLineFeed;
        }
    }
}

void fromStoredForm(std::string& text, std::size_t from) {
    if (!holdsStoredBreak(std::string_view(text).substr(from))) {
        return;
    }
    for (auto i = from; i < text.size(); ++i) {
        if (text[i] == kStoredCarriageReturn) {
            text[i] = '\r';
        } else if (text[i] == kStoredLineFeed) {
            text[i] = '\n';
        }
    }
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    while (!from.empty()) {
        const auto hit = text.find(from, start);
        if (hit == std::string_view::npos) {
            break;
        }
        result.append(text, start, hit - start);
        result.append(to);
        start = hit + from.size();
    }
    result.append(text, start);
    return result;
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        auto end = text.find('\n', start);
        const bool last = end == std::string_view::npos;
        if (last) {
            end = text.size();
        }
        auto line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
        start = end + 1;
    }
    return lines;
}

std::string_view cutToBytes(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) {
        return text;
    }
    std::size_t end = bytes;
    if (isValidUtf8(text)) {
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
            --end;
        }
    }
    return text.substr(0, end);
}

void appendNumber(std::string& text, std::int64_t number) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    text.append(digits, result.ptr);
}

}  // namespace kavu
