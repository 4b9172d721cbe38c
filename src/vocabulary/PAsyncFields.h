// The P group: the rows of async embedded formats and of data merges; n is the record, k the
// location, j the range of frames, all counted from 1.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/PSubframeFields.h"
#include "vocabulary/StreamLimits.h"

#include <array>

namespace kavu::p {

inline constexpr int kFirstRanges = 2011;  ///< the first edition that states frames

namespace choice {
inline constexpr auto kMergeParities = std::to_array<Choice>({
    {"EV", {}, "Even"},
    {"OD", {}, "Odd"},
    {"NO", {}, "None"},
});
/// Of what is a number otherwise.
inline constexpr auto kSupercoms = std::to_array<Choice>({{.value = "NO", .schema = "No"}});
}  // namespace choice

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
    return {
        .code = code, .label = "Number Of Locations:", .limit = 3, .choices = choice::kSupercoms};
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

inline constexpr auto kAefN = inXml(recordCount("AEF\\N"), "AsyncEmbeddedFormat");
inline constexpr auto kAefDln =
    inXml(ofEmbedded(recordLink("AEF\\DLN-n")), "AsyncEmbeddedFormat/DataLinkName");
inline constexpr auto kAef1 =
    inXml(ofEmbedded(recordSupercom("AEF1-n")), "AsyncEmbeddedFormat/Supercom");
inline constexpr auto kAef2 =
    inXml(ofEmbedded(recordMode("AEF2-n")), "AsyncEmbeddedFormat/LocationDefinition");
inline constexpr auto kAef3 = inXml(ofEmbedded(recordNumber("AEF3-n-k", "Frame Word Position:")),
                                    "AsyncEmbeddedFormat/Location");
inline constexpr auto kAef4 =
    inXml(ofEmbedded(recordNumber("AEF4-n", "Interval:")), "AsyncEmbeddedFormat/Interval");
inline constexpr auto kAef5 =
    inXml(ofEmbedded(recordNumber("AEF5-n-k", "Word Length:")), "AsyncEmbeddedFormat/WordLength");
inline constexpr auto kAef6 =
    inXml(ofEmbedded({.code = "AEF6-n-k", .label = "Bit Mask:", .limit = 64}),
          "AsyncEmbeddedFormat/Mask");
/// "NO", or the number of ranges.
inline constexpr auto kAef7 = inXml(ofEmbedded(recordNumber("AEF7-n-k", "Frames:", kFirstRanges)),
                                    "AsyncEmbeddedFormat/Subcommutation");
inline constexpr auto kAef8 =
    inXml(ofEmbedded(recordNumber("AEF8-n-k-j", "Start Frame:", kFirstRanges)),
          "AsyncEmbeddedFormat/Subcommutation/StartFrame");
inline constexpr auto kAef9 =
    inXml(ofEmbedded(recordNumber("AEF9-n-k-j", "Frame Interval:", kFirstRanges)),
          "AsyncEmbeddedFormat/Subcommutation/FrameInterval");
inline constexpr auto kAef10 =
    inXml(ofEmbedded(recordNumber("AEF10-n-k-j", "End Frame:", kFirstRanges)),
          "AsyncEmbeddedFormat/Subcommutation/EndFrame");

constexpr Field mergeText(std::string_view code, std::string_view label) {
    return ofMerge({.code = code, .label = label, .limit = 64});
}
constexpr Field mergeNumber(std::string_view code, std::string_view label) {
    return ofMerge({.code = code, .label = label, .limit = 5, .kind = FieldKind::Digits});
}
/// A text on the page; only XML has names for the values.
constexpr Field mergeParity(std::string_view code, std::string_view label) {
    auto field = mergeText(code, label);
    field.choices = choice::kMergeParities;
    return field;
}
inline constexpr auto kAdmN = inXml(recordCount("ADM\\N"), "AsynchronousDataMergeFormat");
inline constexpr auto kAdmDmn =
    inXml(ofMerge(recordLink("ADM\\DMN-n")), "AsynchronousDataMergeFormat/Name");
inline constexpr auto kAdmMp =
    inXml(mergeText("ADM\\MP-n", "Merge Parity:"), "AsynchronousDataMergeFormat/MaskAndPattern");
inline constexpr auto kAdmOhm = inXml(mergeText("ADM\\OHM-n", "Overhead Mask:"),
                                      "AsynchronousDataMergeFormat/MaskAndPattern/OverheadMask");
inline constexpr auto kAdmFdp =
    inXml(mergeText("ADM\\FDP-n", "First Data Position:"),
          "AsynchronousDataMergeFormat/MaskAndPattern/FreshDataPattern");
inline constexpr auto kAdmDop =
    inXml(mergeText("ADM\\DOP-n", "Data Order:"),
          "AsynchronousDataMergeFormat/MaskAndPattern/DataOverflowPattern");
inline constexpr auto kAdmSdp =
    inXml(mergeText("ADM\\SDP-n", "Second Data Position:"),
          "AsynchronousDataMergeFormat/MaskAndPattern/StaleDataPattern");
inline constexpr auto kAdmUdp =
    inXml(mergeText("ADM\\UDP-n", "User Data Position:"),
          "AsynchronousDataMergeFormat/MaskAndPattern/UserDefinedPattern");
inline constexpr auto kAdm1 =
    inXml(ofMerge(recordSupercom("ADM1-n")), "AsynchronousDataMergeFormat/Supercom");
inline constexpr auto kAdm2 =
    inXml(ofMerge(recordMode("ADM2-n")), "AsynchronousDataMergeFormat/LocationDefinition");
inline constexpr auto kAdm3 = inXml(ofMerge(recordNumber("ADM3-n-k", "Frame Word Position:")),
                                    "AsynchronousDataMergeFormat/Location");
inline constexpr auto kAdm4 =
    inXml(ofMerge(recordNumber("ADM4-n", "Interval:")), "AsynchronousDataMergeFormat/Interval");
inline constexpr auto kAdm5 =
    inXml(mergeNumber("ADM5-n", "ADM5:"), "AsynchronousDataMergeFormat/Length");
inline constexpr auto kAdm6 =
    inXml(mergeNumber("ADM6-n", "ADM6:"), "AsynchronousDataMergeFormat/MSBLocation");
inline constexpr auto kAdm7 =
    inXml(mergeParity("ADM7-n", "ADM7:"), "AsynchronousDataMergeFormat/Parity");
inline constexpr auto kAdm8 = inXml(ofMerge(recordNumber("ADM8-n-k", "Frames:", kFirstRanges)),
                                    "AsynchronousDataMergeFormat/Subcommutation");
inline constexpr auto kAdm9 =
    inXml(ofMerge(recordNumber("ADM9-n-k-j", "Start Frame:", kFirstRanges)),
          "AsynchronousDataMergeFormat/Subcommutation/StartFrame");
inline constexpr auto kAdm10 =
    inXml(ofMerge(recordNumber("ADM10-n-k-j", "Frame Interval:", kFirstRanges)),
          "AsynchronousDataMergeFormat/Subcommutation/FrameInterval");
inline constexpr auto kAdm11 =
    inXml(ofMerge(recordNumber("ADM11-n-k-j", "End Frame:", kFirstRanges)),
          "AsynchronousDataMergeFormat/Subcommutation/EndFrame");

}  // namespace kavu::p
