#include "application/AboutText.h"

#include "core/text/Printf.h"

#include <array>

namespace kavu {

namespace {

constexpr std::size_t kClosingLength = 179;

template <std::size_t N>
constexpr std::array<char, N - 1> turnedOver(const char (&text)[N]) {
    std::array<char, N - 1> bytes{};
    for (std::size_t i = 0; i + 1 < N; ++i) {
        bytes[i] = static_cast<char>(~static_cast<unsigned char>(text[i]));
    }
    return bytes;
}

constexpr auto kClosingWords = turnedOver(
    "\nMade for all the people who stand on the ramp before sunrise, and need every word, each "
    "coefficient and every comma of their data to be where they have put it. Fly well\n"
    "Ad astra.");
static_assert(kClosingWords.size() == kClosingLength);

}  // namespace

std::string_view storedClosingWords() {
    return {kClosingWords.data(), kClosingWords.size()};
}

std::string closingWords() {
    std::string text(storedClosingWords());
    for (auto& c : text) {
        c = static_cast<char>(~static_cast<unsigned char>(c));
    }
    return text;
}

std::string aboutText(const InstalledParts& parts) {
    auto text = formatPrintf(
        "Kavu Telemetry Workbench\nTMATS Editor\n\n%s\nSupporting IRIG "
        "106-%2.2d\n",
        "Version 5.00 - January 2011", 11);
    if (parts.reports) {
        text += "(Report Generator Installed)\n";
    }
    if (parts.database) {
        text += "(Measurement Database Installed)\n";
    }
    return text + closingWords();
}

std::string rightsText(int currentYear) {
    return formatPrintf("Copyright (c) 1994 - %d, Kavu developers. MIT licence.", currentYear);
}

}  // namespace kavu
