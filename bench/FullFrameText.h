// The groups of a stream of full size, for the measurements of all that goes through a whole frame.
#pragma once

#include "StreamWorld.h"

#include <string>

namespace kavu::bench {

inline constexpr int kInEachWord = 10;
inline constexpr int kMostWordsFilled = 2045;  // of 2047: the sync word and that of the counter

inline std::string command(const std::string& head, const std::string& code,
                           const std::string& value) {
    return head + code + ":" + value + ";\r\n";
}

/// Every word but that of the counter is a subframe of full depth.
inline std::string filledFormat(int subframes) {
    std::string text;
    const auto add = [&text](const std::string& code, const std::string& value) {
        text += command("P-1\\", code, value);
    };
    add("DLN", "S");
    add("D2", "20000000");
    add("TF", "TWO");
    add("F1", "16");
    add("MF\\N", "256");
    add("MF1", std::to_string(subframes + 2));
    add("MF2", std::to_string(24 + 16 * (subframes + 1)));
    add("MF4", "24");
    add("MF5", "111110101111001100100000");
    add("ISF\\N", "1");
    add("ISF1-1", "SFID");
    add("ISF2-1", "ID");
    add("IDC1-1", "1");
    add("IDC2-1", "16");
    add("IDC4-1", "8");
    add("IDC6-1", "1");
    add("IDC7-1", "1");
    add("IDC8-1", "256");
    add("IDC9-1", "256");
    add("IDC10-1", "INC");
    add("SF\\N-1", std::to_string(subframes));
    for (int m = 1; m <= subframes; ++m) {
        const auto at = "-1-" + std::to_string(m);
        add("SF1" + at, "SUB-" + std::to_string(m));
        add("SF2" + at, "NO");
        add("SF4" + at + "-1", std::to_string(m + 1));
        add("SF6" + at, "256");
    }
    return text;
}

/// So many measurements, ten in a word, each in every tenth frame.
inline std::string filledData(int count) {
    std::string text = "D-1\\DLN:S;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\n" +
                       command("D-1\\", "MN\\N-1", std::to_string(count));
    for (int m = 1; m <= count; ++m) {
        const auto at = "-1-" + std::to_string(m);
        const auto add = [&](const std::string& code, const std::string& value) {
            text += command("D-1\\", code + at, value);
        };
        const int first = 1 + m % kInEachWord;
        add("MN", "MEASUREMENT-" + std::to_string(m));
        add("LT", "SFSC");
        add("SFS1", "SUB-" + std::to_string((m - 1) / kInEachWord + 1));
        add("SFS\\N", std::to_string((kFrames - first) / kInEachWord + 1));
        add("SFS2", "I");
        add("SFS3", std::to_string(first));
        add("SFS4", "FW");
        add("SFS5", std::to_string(kInEachWord));
    }
    return text;
}

/// So many word/frame measurements, ten in a word: each in a tenth of the frames, which follow one
/// another, or in the first of them only.
inline std::string rangesData(int count, bool onePlace) {
    std::string text = "D-1\\DLN:S;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\n" +
                       command("D-1\\", "MN\\N-1", std::to_string(count));
    constexpr int kRange = kFrames / kInEachWord;
    for (int m = 1; m <= count; ++m) {
        const auto at = "-1-" + std::to_string(m);
        const auto add = [&](const std::string& code, const std::string& value) {
            text += command("D-1\\", code + at, value);
        };
        const int tenth = (m - 1) % kInEachWord;
        const int first = 1 + tenth * kRange;
        const int last = onePlace ? first : tenth == kInEachWord - 1 ? kFrames : first + kRange - 1;
        add("MN", "MEASUREMENT-" + std::to_string(m));
        add("LT", "WDFR");
        add("MML\\N", "1");
        const auto fragment = at + "-1-1";
        const auto addPlace = [&](const std::string& code, int value) {
            text += command("D-1\\", code + fragment, std::to_string(value));
        };
        addPlace("WP", (m - 1) / kInEachWord + 2);
        addPlace("WI", 0);
        addPlace("FP", first);
        addPlace("FI", onePlace ? 0 : 1);
        addPlace("EFP", last);
        text += command("D-1\\", "WFM" + fragment, "FW");
    }
    return text;
}

}  // namespace kavu::bench
