// The P group: the rows of async embedded formats and of data merges; n is the record, k the
// location, j the range of frames, all counted from 1.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/PSubframeFields.h"
#include "vocabulary/StreamLimits.h"

#include <array>

namespace kavu::p {

inline constexpr int kFirstRanges = 2011;  ///< the first edition that states frames

constexpr Field ofEmbedded(Field field) {
    field.list = "AEF\\N";
    return field;
}
constexpr Field ofMerge(Field field) {
    field.list = "ADM\\N";
    return field;
}
// Common to both kinds.
constexpr Field recordCount(std::string_view code) {
    return {.code = code, .kind = FieldKind::Count, .rows = kMostAsyncFormats, .writesZero = true};
}
constexpr Field recordLink(std::string_view code) {
    return {.code = code, .label = "Data Link Name:", .limit = 32, .refersTo = Refers::Link};
}
/// "NO", or the number of locations.
constexpr Field recordSupercom(std::string_view code) {
    return {.code = code, .label = "Number Of Locations:", .limit = 3};
}
constexpr Field recordMode(std::string_view code) {
    return {.code = code,
            .label = "Location Type:",
            .limit = 2,
            .kind = FieldKind::Choice,
            .choices = choice::kLocationModes};
}
constexpr Field recordNumber(std::string_view code, std::string_view label, int firstEdition = 0) {
    return {.code = code, .label = label, .kind = FieldKind::Digits, .firstEdition = firstEdition};
}

inline constexpr auto kAefN = recordCount("AEF\\N");
inline constexpr auto kAefDln = ofEmbedded(recordLink("AEF\\DLN-n"));
inline constexpr auto kAef1 = ofEmbedded(recordSupercom("AEF1-n"));
inline constexpr auto kAef2 = ofEmbedded(recordMode("AEF2-n"));
inline constexpr auto kAef3 = ofEmbedded(recordNumber("AEF3-n-k", "Frame Word Position:"));
inline constexpr auto kAef4 = ofEmbedded(recordNumber("AEF4-n", "Interval:"));
inline constexpr auto kAef5 = ofEmbedded(recordNumber("AEF5-n-k", "Word Length:"));
inline constexpr auto kAef6 = ofEmbedded({.code = "AEF6-n-k", .label = "Bit Mask:", .limit = 64});
/// "NO", or the number of ranges.
inline constexpr auto kAef7 = ofEmbedded(recordNumber("AEF7-n-k", "Frames:", kFirstRanges));
inline constexpr auto kAef8 = ofEmbedded(recordNumber("AEF8-n-k-j", "Start Frame:", kFirstRanges));
inline constexpr auto kAef9 =
    ofEmbedded(recordNumber("AEF9-n-k-j", "Frame Interval:", kFirstRanges));
inline constexpr auto kAef10 = ofEmbedded(recordNumber("AEF10-n-k-j", "End Frame:", kFirstRanges));

constexpr Field mergeText(std::string_view code, std::string_view label) {
    return ofMerge({.code = code, .label = label, .limit = 64});
}
constexpr Field mergeNumber(std::string_view code, std::string_view label) {
    return ofMerge({.code = code, .label = label, .limit = 5, .kind = FieldKind::Digits});
}
inline constexpr auto kAdmN = recordCount("ADM\\N");
inline constexpr auto kAdmDmn = ofMerge(recordLink("ADM\\DMN-n"));
inline constexpr auto kAdmMp = mergeText("ADM\\MP-n", "Merge Parity:");
inline constexpr auto kAdmOhm = mergeText("ADM\\OHM-n", "Overhead Mask:");
inline constexpr auto kAdmFdp = mergeText("ADM\\FDP-n", "First Data Position:");
inline constexpr auto kAdmDop = mergeText("ADM\\DOP-n", "Data Order:");
inline constexpr auto kAdmSdp = mergeText("ADM\\SDP-n", "Second Data Position:");
inline constexpr auto kAdmUdp = mergeText("ADM\\UDP-n", "User Data Position:");
inline constexpr auto kAdm1 = ofMerge(recordSupercom("ADM1-n"));
inline constexpr auto kAdm2 = ofMerge(recordMode("ADM2-n"));
inline constexpr auto kAdm3 = ofMerge(recordNumber("ADM3-n-k", "Frame Word Position:"));
inline constexpr auto kAdm4 = ofMerge(recordNumber("ADM4-n", "Interval:"));
inline constexpr auto kAdm5 = mergeNumber("ADM5-n", "ADM5:");
inline constexpr auto kAdm6 = mergeNumber("ADM6-n", "ADM6:");
inline constexpr auto kAdm7 = mergeText("ADM7-n", "ADM7:");
inline constexpr auto kAdm8 = ofMerge(recordNumber("ADM8-n-k", "Frames:", kFirstRanges));
inline constexpr auto kAdm9 = ofMerge(recordNumber("ADM9-n-k-j", "Start Frame:", kFirstRanges));
inline constexpr auto kAdm10 =
    ofMerge(recordNumber("ADM10-n-k-j", "Frame Interval:", kFirstRanges));
inline constexpr auto kAdm11 = ofMerge(recordNumber("ADM11-n-k-j", "End Frame:", kFirstRanges));

}  // namespace kavu::p
