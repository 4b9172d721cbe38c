// A bus group of many messages, for all that measure it.
#pragma once

#include <string>

namespace kavu::bench {

inline constexpr int kMeasurementsOfMessage = 32;

/// Messages of 32 measurements with one location each, with all fields of the latest edition.
inline std::string busGroup(int messages) {
    std::string text =
        "B-1\\DLN:Bus;\r\nB-1\\NBS\\N:1;\r\nB-1\\BID-1:000;\r\nB-1\\BT-1:1553;\r\n"
        "B-1\\TK\\N-1:0;\r\nB-1\\NMS\\N-1:" +
        std::to_string(messages) + ";\r\n";
    const auto add = [&](const char* code, const std::string& at, const std::string& value) {
        text.append("B-1\\").append(code).append(at).append(":").append(value).append(";\r\n");
    };
    for (int m = 1; m <= messages; ++m) {
        const auto at = "-1-" + std::to_string(m);
        add("MID", at, std::to_string(m));
        add("MNA", at, "MESSAGE " + std::to_string(m));
        add("TRN", at, "RT" + std::to_string(m % 31));
        add("TRA", at, "00101");
        add("STA", at, "00010");
        add("TRM", at, "0");
        add("DWC", at, "32");
        add("MN\\N", at, std::to_string(kMeasurementsOfMessage));
        for (int n = 1; n <= kMeasurementsOfMessage; ++n) {
            const auto place = at + "-" + std::to_string(n);
            add("MN", place, "MEASUREMENT" + place);
            add("MT", place, "D");
            add("MN1", place, "NO");
            add("NML\\N", place, "1");
            add("MWN", place + "-1", std::to_string(n));
            add("MBM", place + "-1", "FW");
            add("MTO", place + "-1", "MSB");
            add("MFP", place + "-1", "1");
        }
    }
    return text;
}

}  // namespace kavu::bench
