#include "core/text/TextEncoding.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kavu {

namespace {

/// Windows-1252 for the bytes 0x80 to 0x9F; all others equal their code point.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void appendCodePoint(std::string& text, char16_t c) {
    if (c < 0x80) {
        text.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (c >> 6)));
        text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        text.push_back(static_cast<char>(0xE0 | (c >> 12)));
        text.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

/// The length of the well-formed sequence at `at`, or 0.
std::size_t sequenceLength(std::string_view bytes, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = byte(at);
    std::size_t length = 0;
    std::uint32_t least = 0;
    std::uint32_t value = 0;
    if (lead < 0x80) {
        return 1;
    }
    if ((lead & 0xE0) == 0xC0) {
        length = 2, least = 0x80, value = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, least = 0x800, value = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, least = 0x10000, value = lead & 0x07;
    } else {
        return 0;
    }
    if (at + length > bytes.size()) {
        return 0;
    }
    for (std::size_t i = at + 1; i < at + length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0;
        }
        value = (value << 6) | (byte(i) & 0x3F);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return value < least || value > 0x10FFFF || surrogate ? 0 : length;
}

/// The bytes below 0x80 that a text begins with, in steps of a word: large files are ASCII for the
/// most part.
std::size_t asciiWordsAt(std::string_view bytes, std::size_t at) {
    const auto start = at;
    std::uint64_t word = 0;
    for (; bytes.size() - at >= sizeof word; at += sizeof word) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if ((word & 0x8080808080808080U) != 0) {
            break;
        }
    }
    return at - start;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
    for (std::size_t at = asciiWordsAt(bytes, 0); at < bytes.size();) {
        if (static_cast<unsigned char>(bytes[at]) < 0x80) {
            ++at;
            at += asciiWordsAt(bytes, at);
            continue;
        }
        const auto length = sequenceLength(bytes, at);
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

std::string toUtf8(std::string_view bytes) {
    if (isValidUtf8(bytes)) {
        return std::string(bytes);
    }
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 4);
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        appendCodePoint(text, c >= 0x80 && c < 0xA0 ? kWindows1252[c - 0x80u] : char16_t{c});
    }
    return text;
}

}  // namespace kavu
