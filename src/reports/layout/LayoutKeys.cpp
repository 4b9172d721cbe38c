#include "reports/layout/LayoutKeys.h"

#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

LayoutKey numberKey(std::string_view key, int most = 1) {
    return {.key = std::string(key), .otherwise = "0", .most = most};
}

LayoutKey choiceKey(std::string_view key, int least, int most, int otherwise) {
    return {.key = std::string(key),
            .otherwise = std::to_string(otherwise),
            .least = least,
            .most = most};
}

LayoutKey textKey(std::string_view key, std::string_view otherwise = {}) {
    return {.key = std::string(key), .otherwise = std::string(otherwise), .isText = true};
}

void addColumns(std::vector<LayoutKey>& keys, std::string_view prefix, std::size_t columns) {
    for (std::size_t n = 1; n <= columns; ++n) {
        keys.push_back(numberKey(std::string(prefix) + std::to_string(n)));
    }
}

void addTitle(std::vector<LayoutKey>& keys, std::string_view title, std::string_view otherwise,
              std::string_view left, std::string_view right) {
    keys.push_back(textKey(title, otherwise));
    keys.push_back(textKey(left));
    keys.push_back(textKey(right));
}

}  // namespace

std::vector<LayoutKey> layoutKeys(std::size_t columns, std::size_t busColumns) {
    using namespace layout_key;
    std::vector<LayoutKey> keys = {
        numberKey(kFormat),
        numberKey(kFrame),
        numberKey(kMeasurements),
        numberKey(kDestination, kMostDestination),
        numberKey(kFont, kMostFont),
        numberKey(kFrameDelimited),
        numberKey(kMeasurementsDelimited),
        textKey(kReportPath),
        textKey(kDelimitedPath),
        numberKey(kSort, kMostSort),
    };
    addColumns(keys, kColumn, columns);
    addColumns(keys, kBusColumn, busColumns);
    addTitle(keys, kMeasurementTitle, "Measurement Report", kMeasurementLeft, kMeasurementRight);
    keys.push_back(numberKey(kFirstLocationOnly));
    addTitle(keys, kFormatTitle, "PCM Stream Attributes Report", kFormatLeft, kFormatRight);
    addTitle(keys, kFrameTitle, "PCM Major Frame Report", kFrameLeft, kFrameRight);
    keys.push_back(choiceKey(kFrameStyle, 1, 3, 1));
    keys.push_back(choiceKey(kFrameAllNames, 0, 1, 1));
    keys.push_back(choiceKey(kFrameCompact, 0, 1, 1));
    addTitle(keys, kPlotTitle, "Calibration Data Sheet", kPlotLeft, kPlotRight);
    keys.push_back(choiceKey(kPageNumberPlace, 0, kMostPageNumberPlace, 2));
    keys.push_back(textKey(kPageNumber, "Page ^"));
    return keys;
}

bool canHave(const LayoutKey& key, std::string_view value) {
    if (key.isText) {
        return true;
    }
    // A longer run of digits is no index of a list.
    constexpr std::size_t kMostDigits = 4;
    if (value.empty() || value.size() > kMostDigits ||
        !std::all_of(value.begin(), value.end(), isDigit)) {
        return false;
    }
    const int number = leadingInt(value);
    return number >= key.least && number <= key.most;
}

}  // namespace kavu
