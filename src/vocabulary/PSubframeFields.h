// The P group: the rows of ID counters and subframes in the order in which they are written; n
// is the counter, m its subframe, k the location, all counted from 1.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/StreamLimits.h"
#include "vocabulary/SubframeCodes.h"

#include <array>

namespace kavu::p {

namespace choice {

inline constexpr auto kCounterTypes = std::to_array<Choice>({
    {kIdCounterType, "ID Counter", "ID Counter"},
    {"OT", "OTher", "Other"},
});
inline constexpr auto kTransferOrders = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
    {"D", "Default", "Default", 2009},
});
inline constexpr auto kCountDirections = std::to_array<Choice>({
    {kCountsUp, "INCrease", "Increasing"},
    {.value = kCountsDown, .text = "DECrease", .xml = "Decreasing", .isRead = false},
});
inline constexpr auto kLocationModes = std::to_array<Choice>({
    {kFirstAndInterval, "FI - First word and interval", "First Word And Interval"},
    {kEveryLocation, "EL - Every location", "Every Location"},
    {"CW", {}, "Contiguous Words"},
    {kNoLocationMode, {}, "Not Applicable"},
});

}  // namespace choice

inline constexpr std::string_view kNewValue = "Enter New Value";

constexpr Field ofCounter(Field field) {
    field.list = "ISF\\N";
    return field;
}
inline constexpr Field kIsfN{.code = "ISF\\N",
                             .kind = FieldKind::Count,
                             .element = "SubframeSynchronization/IDCounter",
                             .rows = kMostIdCounters};
inline constexpr auto kIsf1 = ofCounter({.code = "ISF1-n",
                                         .label = "Name:",
                                         .limit = 32,
                                         .element = "SubframeSynchronization/IDCounter/Name"});
inline constexpr auto kIsf2 = ofCounter({.code = "ISF2-n",
                                         .label = "Sync Type:",
                                         .limit = 2,
                                         .kind = FieldKind::Choice,
                                         .element = "SubframeSynchronization/IDCounter/SyncType",
                                         .choices = choice::kCounterTypes});
/// The word that holds the counter.
inline constexpr auto kIdc1 = ofCounter({.code = "IDC1-n",
                                         .kind = FieldKind::Digits,
                                         .element = "SubframeSynchronization/IDCounter/Location"});
inline constexpr auto kIdc2 = ofCounter({.code = "IDC2-n",
                                         .label = "Word Length:",
                                         .limit = 2,
                                         .kind = FieldKind::Digits,
                                         .element = "SubframeSynchronization/IDCounter/WordLength",
                                         .unit = "bits"});
inline constexpr auto kIdc3 =
    ofCounter({.code = "IDC3-n",
               .label = "MSB Start Bit:",
               .limit = 2,
               .kind = FieldKind::Digits,
               .element = "SubframeSynchronization/IDCounter/CounterStartingBitLocation",
               .prompt = kNewValue});
inline constexpr auto kIdc4 =
    ofCounter({.code = "IDC4-n",
               .label = "ID Counter Length:",
               .limit = 2,
               .kind = FieldKind::Digits,
               .element = "SubframeSynchronization/IDCounter/CounterLength",
               .unit = "bits"});
inline constexpr auto kIdc5 =
    ofCounter({.code = "IDC5-n",
               .label = "Transfer Order:",
               .limit = 1,
               .kind = FieldKind::Choice,
               .element = "SubframeSynchronization/IDCounter/TransferOrder",
               .choices = choice::kTransferOrders});
inline constexpr auto kIdc6 =
    ofCounter({.code = "IDC6-n",
               .label = "Initial Value:",
               .limit = 3,
               .kind = FieldKind::Digits,
               .element = "SubframeSynchronization/IDCounter/InitialValue",
               .prompt = kNewValue});
inline constexpr auto kIdc7 =
    ofCounter({.code = "IDC7-n",
               .label = "Initial Frame Number:",
               .limit = 3,
               .kind = FieldKind::Digits,
               .element = "SubframeSynchronization/IDCounter/InitialMinorFrameNumber",
               .prompt = kNewValue});
inline constexpr auto kIdc8 = ofCounter({.code = "IDC8-n",
                                         .label = "End Value:",
                                         .limit = 3,
                                         .element = "SubframeSynchronization/IDCounter/EndValue"});
inline constexpr auto kIdc9 =
    ofCounter({.code = "IDC9-n",
               .label = "End Frame Number:",
               .limit = 3,
               .kind = FieldKind::Digits,
               .element = "SubframeSynchronization/IDCounter/EndMinorFrameNumber",
               .prompt = kNewValue});
inline constexpr auto kIdc10 =
    ofCounter({.code = "IDC10-n",
               .label = "Count Direction:",
               .limit = 3,
               .kind = FieldKind::Choice,
               .element = "SubframeSynchronization/IDCounter/CountDirection",
               .choices = choice::kCountDirections});

/// The last edition that describes subframes; later ones have only word/frame locations.
inline constexpr int kLastSubframeEdition = 2009;

constexpr Field ofSubframe(Field field) {
    field.list = "SF\\N-n";
    field.lastEdition = kLastSubframeEdition;
    return field;
}
inline constexpr Field kSfN{.code = "SF\\N-n",
                            .kind = FieldKind::Count,
                            .lastEdition = kLastSubframeEdition,
                            .list = kIsfN.code,
                            .rows = kMostSubframes};
inline constexpr auto kSf1 = ofSubframe({.code = "SF1-n-m", .label = "Name:", .limit = 32});
/// "NO", or the number of locations.
inline constexpr auto kSf2 =
    ofSubframe({.code = "SF2-n-m", .label = "Number Of Locations:", .limit = 3});
inline constexpr auto kSf3 = ofSubframe({.code = "SF3-n-m",
                                         .label = "Location Type:",
                                         .limit = 2,
                                         .kind = FieldKind::Choice,
                                         .choices = choice::kLocationModes});
inline constexpr auto kSf4 = ofSubframe({.code = "SF4-n-m-k", .kind = FieldKind::Digits});
inline constexpr auto kSf5 =
    ofSubframe({.code = "SF5-n-m", .label = "Interval:", .limit = 4, .kind = FieldKind::Digits});
inline constexpr auto kSf6 = ofSubframe({.code = "SF6-n-m",
                                         .label = "Depth:",
                                         .limit = 3,
                                         .kind = FieldKind::Digits,
                                         .unit = "frames"});

}  // namespace kavu::p
