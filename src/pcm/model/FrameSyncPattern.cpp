#include "pcm/model/FrameSyncPattern.h"

#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>

namespace kavu {

namespace {

constexpr int kLeastRecommended = 7;

struct Recommended {
    std::string_view binary;
    std::string_view hexadecimal;
};
/// The optimum patterns by length, from 7. Both forms are the same bits.
constexpr auto kRecommended = std::to_array<Recommended>({
    {"101 100 0", "58"},
    {"101 110 00", "B8"},
    {"101 110 000", "170"},
    {"110 111 000 0", "370"},
    {"101 101 110 00", "5B8"},
    {"110 101 100 000", "D60"},
    {"111 010 110 000 0", "1D60"},
    {"111 001 101 000 00", "39A0"},
    {"111 011 001 010 000", "7650"},
    {"111 010 111 001 000 0", "EB90"},
    {"111 100 110 101 000 00", "1 E6A0"},
    {"111 100 110 101 000 000", "3 CD40"},
    {"111 110 011 001 010 000 0", "7 CCA0"},
    {"111 011 011 110 001 000 00", "E DE20"},
    {"111 011 101 001 011 000 000", "1D D2C0"},
    {"111 100 110 110 101 000 000 0", "3C DA80"},
    {"111 101 011 100 110 100 000 00", "7A E680"},
    {"111 110 101 111 001 100 100 000", "FA F320"},
    {"111 110 010 110 111 000 100 000 0", "1F2 DC40"},
    {"111 110 100 110 101 100 110 000 00", "3E9 ACC0"},
    {"111 110 101 101 001 100 110 000 000", "7D6 9980"},
    {"111 101 011 110 010 110 011 000 000 0", "F5E 5980"},
    {"111 101 011 110 011 001 101 000 000 00", "1EBC CD00"},
    {"111 110 101 111 001 100 110 100 000 000", "3EBC CD00"},
    {"111 111 100 110 111 110 101 000 010 000 0", "7F37 D420"},
    {"111 111 100 110 101 100 101 000 010 000 00", "FE6B 2840"},
    {"111 110 111 010 011 101 001 010 010 011 000", "1 F74E 9498"},
});
static_assert(kRecommended.size() == kMostSyncBits - kLeastRecommended + 1);

int digitValue(char c) {
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = toLowerAscii(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

char digitOf(int value) {
    return "0123456789ABCDEF"[value & 15];
}

std::string groupFromLeft(std::string_view digits, std::size_t size) {
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i != 0 && i % size == 0) {
            result.push_back(' ');
        }
        result.push_back(digits[i]);
    }
    return result;
}

}  // namespace

std::string recommendedPattern(int length, bool hexadecimal) {
    if (length >= kLeastRecommended && length <= kMostSyncBits) {
        const auto& row = kRecommended[static_cast<std::size_t>(length - kLeastRecommended)];
        return std::string(hexadecimal ? row.hexadecimal : row.binary);
    }
    if (hexadecimal) {
        // Not a pattern of ones but the length itself: users know these short patterns in
        // this way.
        return std::string(1, digitOf(std::clamp(length, 0, 15)));
    }
    return groupFromLeft(std::string(static_cast<std::size_t>(std::clamp(length, 0, 6)), '1'), 3);
}

std::string withoutBlanks(std::string_view text) {
    std::string result(text);
    std::erase(result, ' ');
    return result;
}

std::string groupFromRight(std::string_view digits, std::size_t size) {
    const auto first = digits.size() % size;
    std::string result(digits.substr(0, first));
    const auto rest = groupFromLeft(digits.substr(first), size);
    return result.empty() || rest.empty() ? result + rest : result + " " + rest;
}

bool isBinaryText(std::string_view text) {
    return !text.empty() && text.find_first_not_of("01") == std::string_view::npos;
}

bool isHexadecimalText(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return digitValue(c) >= 0; });
}

std::string binaryToHex(std::string_view binary) {
    std::string result;
    int value = 0;
    int bits = 0;
    const auto endDigit = [&] {
        if (bits > 0) {
            result.push_back(digitOf(value));
        }
        value = bits = 0;
    };
    for (std::size_t i = binary.size(); i-- > 0;) {
        if (binary[i] == ' ') {
            endDigit();
            continue;
        }
        value |= (binary[i] == '1' ? 1 : 0) << bits;
        if (++bits == 4) {
            endDigit();
        }
    }
    endDigit();
    std::reverse(result.begin(), result.end());
    return result;
}

std::string hexToBinary(std::string_view hexadecimal) {
    std::string result;
    for (const char c : hexadecimal) {
        const int value = digitValue(c);
        if (value < 0) {
            continue;
        }
        for (int bit = 8; bit != 0; bit /= 2) {
            result.push_back((value & bit) != 0 ? '1' : '0');
        }
    }
    return result;
}

int countPatternBits(std::string_view pattern, bool hexadecimal) {
    const auto digits = withoutBlanks(pattern);
    if (!hexadecimal) {
        return static_cast<int>(digits.size());
    }
    const auto first = digits.find_first_not_of('0');
    const int value = first == std::string::npos ? 8 : digitValue(digits[first]);
    const auto usedBits =
        static_cast<int>(std::bit_width(static_cast<unsigned>(std::max(value, 1))));
    return 4 * static_cast<int>(digits.size()) - (4 - usedBits);
}

std::string switchPattern(std::string_view pattern, bool toHexadecimal) {
    const auto digits = withoutBlanks(pattern);
    if (toHexadecimal) {
        return groupFromRight(binaryToHex(digits), 4);
    }
    const auto binary = hexToBinary(digits);
    const auto first = binary.find('1');
    return first == std::string::npos ? std::string()
                                      : groupFromRight(std::string_view(binary).substr(first), 3);
}

}  // namespace kavu
