// The vocabulary of async embedded formats and of data merges in the P group: n is the record,
// k the location, j the range of frames, all from 1.
#pragma once

#include "pcm/model/AsyncFormat.h"
#include "pcm/model/RecordField.h"
#include "pcm/model/SubframeCodes.h"

#include <array>

namespace kavu {

namespace async_field {

inline constexpr int kFirstRanges = 2011;  ///< the first edition that tells frames
inline constexpr auto kLocationModes = std::to_array<Choice>({
    {kFirstAndInterval, "FI - First word and interval"},
    {kEveryLocation, "EL - Every location"},
});

constexpr Field count(std::string_view code) {
    return {.code = code, .kind = FieldKind::Count, .rows = kMostAsyncFormats, .writesZero = true};
}
constexpr Field name(std::string_view code, std::string_view list) {
    return {.code = code, .label = "Data Link Name:", .limit = 32, .list = list};
}
constexpr Field supercom(std::string_view code, std::string_view list) {
    return {.code = code, .label = "Number Of Locations:", .limit = 3, .list = list};
}
constexpr Field mode(std::string_view code, std::string_view list) {
    return {.code = code,
            .label = "Location Type:",
            .limit = 2,
            .kind = FieldKind::Choice,
            .choices = kLocationModes,
            .list = list};
}
constexpr Field number(std::string_view code, std::string_view label, std::string_view list) {
    return {.code = code, .label = label, .kind = FieldKind::Digits, .list = list};
}
constexpr Field range(std::string_view code, std::string_view label, std::string_view list) {
    return {.code = code,
            .label = label,
            .kind = FieldKind::Digits,
            .firstEdition = kFirstRanges,
            .list = list};
}

}  // namespace async_field

/// The commands of one kind, and what messages call it.
struct AsyncCodes {
    bool isDataMerge;
    std::string_view defaultName;  ///< a printf format of n
    // As the thing itself, within a sentence, and at its head.
    std::string_view streamWord;
    std::string_view lowerWord;
    std::string_view word;

    Field count;
    Field name;       ///< n
    Field supercom;   ///< n: "NO", or the number of locations
    Field mode;       ///< n
    Field location;   ///< n, k
    Field interval;   ///< n
    Field length;     ///< n, k; without a code there is none
    Field mask;       ///< n, k; without a code there is none
    Field ranges;     ///< n, k: "NO", or the number of ranges
    Field start;      ///< n, k, j
    Field frameStep;  ///< n, k, j
    Field end;        ///< n, k, j
};

inline constexpr AsyncCodes kAsyncEmbeddedCodes = [] {
    using namespace async_field;
    constexpr std::string_view list = "AEF\\N";
    return AsyncCodes{.isDataMerge = false,
                      .defaultName = "AsyncDataLink%d",
                      .streamWord = "Embdedded PCM Stream",
                      .lowerWord = "embedded",
                      .word = "Embedded",
                      .count = count(list),
                      .name = name("AEF\\DLN-n", list),
                      .supercom = supercom("AEF1-n", list),
                      .mode = mode("AEF2-n", list),
                      .location = number("AEF3-n-k", "Frame Word Position:", list),
                      .interval = number("AEF4-n", "Interval:", list),
                      .length = number("AEF5-n-k", "Word Length:", list),
                      .mask = {.code = "AEF6-n-k", .label = "Bit Mask:", .limit = 64, .list = list},
                      .ranges = range("AEF7-n-k", "Frames:", list),
                      .start = range("AEF8-n-k-j", "Start Frame:", list),
                      .frameStep = range("AEF9-n-k-j", "Frame Interval:", list),
                      .end = range("AEF10-n-k-j", "End Frame:", list)};
}();

inline constexpr AsyncCodes kDataMergeCodes = [] {
    using namespace async_field;
    constexpr std::string_view list = "ADM\\N";
    return AsyncCodes{.isDataMerge = true,
                      .defaultName = "AsyncDataMerge%d",
                      .streamWord = "Data Merge",
                      .lowerWord = "data merge",
                      .word = "Data Merge",
                      .count = count(list),
                      .name = name("ADM\\DMN-n", list),
                      .supercom = supercom("ADM1-n", list),
                      .mode = mode("ADM2-n", list),
                      .location = number("ADM3-n-k", "Frame Word Position:", list),
                      .interval = number("ADM4-n", "Interval:", list),
                      .length = {},
                      .mask = {},
                      .ranges = range("ADM8-n-k", "Frames:", list),
                      .start = range("ADM9-n-k-j", "Start Frame:", list),
                      .frameStep = range("ADM10-n-k-j", "Frame Interval:", list),
                      .end = range("ADM11-n-k-j", "End Frame:", list)};
}();

/// A command that only a data merge has: a text or a number of its record. What is missing
/// has the value of a new record.
struct MergeField {
    Field field;
    std::string AsyncFormat::*text = nullptr;
    int AsyncFormat::*number = nullptr;
};

namespace async_field {

constexpr MergeField merge(std::string_view code, std::string_view label,
                           std::string AsyncFormat::*member) {
    constexpr std::size_t kLimit = 64;
    return {{.code = code, .label = label, .limit = kLimit, .list = kDataMergeCodes.count.code},
            member};
}
constexpr MergeField merge(std::string_view code, std::string_view label,
                           int AsyncFormat::*member) {
    constexpr std::size_t kDigits = 5;
    return {{.code = code,
             .label = label,
             .limit = kDigits,
             .kind = FieldKind::Digits,
             .list = kDataMergeCodes.count.code},
            nullptr,
            member};
}

}  // namespace async_field

/// Behind the name.
inline constexpr auto kMergeTexts = std::to_array<MergeField>({
    async_field::merge("ADM\\MP-n", "Merge Parity:", &AsyncFormat::mergeParity),
    async_field::merge("ADM\\OHM-n", "Overhead Mask:", &AsyncFormat::overheadMask),
    async_field::merge("ADM\\FDP-n", "First Data Position:", &AsyncFormat::firstDataPosition),
    async_field::merge("ADM\\DOP-n", "Data Order:", &AsyncFormat::dataOrder),
    async_field::merge("ADM\\SDP-n", "Second Data Position:", &AsyncFormat::secondDataPosition),
    async_field::merge("ADM\\UDP-n", "User Data Position:", &AsyncFormat::userDataPosition),
});
/// Behind the locations.
inline constexpr auto kMergeValues = std::to_array<MergeField>({
    async_field::merge("ADM5-n", "ADM5:", &AsyncFormat::adm5),
    async_field::merge("ADM6-n", "ADM6:", &AsyncFormat::adm6),
    async_field::merge("ADM7-n", "ADM7:", &AsyncFormat::adm7),
});

}  // namespace kavu
