// The vocabulary of ID counters and subframes in the order in which they are written: n is the
// counter, m its subframe, k the location, all from 1.
#pragma once

#include "pcm/model/RecordField.h"
#include "pcm/model/Subframe.h"
#include "pcm/model/SubframeCodes.h"

#include <array>

namespace kavu {

using CounterField = RecordField<IdCounter>;
using SubframeField = RecordField<Subframe>;

namespace subframe_choice {

inline constexpr auto kCounterTypes = std::to_array<Choice>({
    {"ID", "ID Counter", "ID Counter"},
    {"OT", "OTher", "Other"},
});
inline constexpr auto kTransferOrders = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
    {"D", "Default", "Default", 2009},
});
inline constexpr auto kCountDirections = std::to_array<Choice>({
    {"INC", "INCrease", "Increasing"},
    {"DEC", "DECrease", "Decreasing"},
});
inline constexpr auto kLocationModes = std::to_array<Choice>({
    {kFirstAndInterval, "FI - First word and interval"},
    {kEveryLocation, "EL - Every location"},
});

}  // namespace subframe_choice

namespace counter_field {

inline constexpr std::string_view kNewValue = "Enter New Value";
inline constexpr std::string_view kList = "ISF\\N";

template <auto Member>
constexpr CounterField text(Field field) {
    field.list = kList;
    return textField<IdCounter, Member>(field);
}

inline constexpr CounterField kCount{
    {.code = kList, .kind = FieldKind::Count, .rows = kMostIdCounters}};
inline constexpr auto kName = text<&IdCounter::name>({.code = "ISF1-n", .label = "Name:"});
inline constexpr auto kType = text<&IdCounter::type>({.code = "ISF2-n",
                                                      .label = "Sync Type:",
                                                      .kind = FieldKind::Choice,
                                                      .choices = subframe_choice::kCounterTypes});
/// The word that bears the counter.
inline constexpr CounterField kWord{{.code = "IDC1-n", .kind = FieldKind::Digits, .list = kList}};
inline constexpr auto kWordLength = text<&IdCounter::wordLength>(
    {.code = "IDC2-n", .label = "Word Length:", .kind = FieldKind::Digits, .unit = "bits"});
inline constexpr auto kMsbStartBit = text<&IdCounter::msbStartBit>(
    {.code = "IDC3-n", .label = "MSB Start Bit:", .kind = FieldKind::Digits, .prompt = kNewValue});
inline constexpr auto kCounterLength = text<&IdCounter::counterLength>(
    {.code = "IDC4-n", .label = "ID Counter Length:", .kind = FieldKind::Digits, .unit = "bits"});
inline constexpr auto kTransferOrder =
    text<&IdCounter::transferOrder>({.code = "IDC5-n",
                                     .label = "Transfer Order:",
                                     .kind = FieldKind::Choice,
                                     .choices = subframe_choice::kTransferOrders});
inline constexpr auto kInitialValue = text<&IdCounter::initialValue>(
    {.code = "IDC6-n", .label = "Initial Value:", .kind = FieldKind::Digits, .prompt = kNewValue});
inline constexpr auto kStartFrame = text<&IdCounter::startFrame>({.code = "IDC7-n",
                                                                  .label = "Initial Frame Number:",
                                                                  .kind = FieldKind::Digits,
                                                                  .prompt = kNewValue});
inline constexpr auto kEndValue =
    text<&IdCounter::endValue>({.code = "IDC8-n", .label = "End Value:"});
inline constexpr auto kEndFrame = text<&IdCounter::endFrame>({.code = "IDC9-n",
                                                              .label = "End Frame Number:",
                                                              .kind = FieldKind::Digits,
                                                              .prompt = kNewValue});
inline constexpr auto kCountDirection =
    text<&IdCounter::countDirection>({.code = "IDC10-n",
                                      .label = "Count Direction:",
                                      .kind = FieldKind::Choice,
                                      .choices = subframe_choice::kCountDirections});

}  // namespace counter_field

/// The commands of one counter, without its subframes.
inline constexpr auto kCounterFields = std::to_array<CounterField>({
    counter_field::kName,
    counter_field::kType,
    counter_field::kWord,
    counter_field::kWordLength,
    counter_field::kMsbStartBit,
    counter_field::kCounterLength,
    counter_field::kTransferOrder,
    counter_field::kInitialValue,
    counter_field::kStartFrame,
    counter_field::kEndValue,
    counter_field::kEndFrame,
    counter_field::kCountDirection,
});

namespace subframe_field {

inline constexpr std::string_view kHead = "SF";  ///< how all its codes begin
inline constexpr std::string_view kList = "SF\\N-n";
inline constexpr int kLastEdition = 2009;

constexpr Field inList(Field field) {
    field.list = kList;
    field.lastEdition = kLastEdition;
    return field;
}
template <auto Member>
constexpr SubframeField text(Field field) {
    return textField<Subframe, Member>(inList(field));
}

inline constexpr SubframeField kCount{{.code = kList,
                                       .kind = FieldKind::Count,
                                       .lastEdition = kLastEdition,
                                       .list = counter_field::kList,
                                       .rows = kMostSubframes}};
inline constexpr auto kName = text<&Subframe::name>({.code = "SF1-n-m", .label = "Name:"});
/// "NO", or the number of locations.
inline constexpr auto kSupercommutated =
    text<&Subframe::supercommutated>({.code = "SF2-n-m", .label = "Number Of Locations:"});
inline constexpr auto kLocationMode =
    text<&Subframe::locationMode>({.code = "SF3-n-m",
                                   .label = "Location Type:",
                                   .kind = FieldKind::Choice,
                                   .choices = subframe_choice::kLocationModes});
inline constexpr SubframeField kLocation{inList({.code = "SF4-n-m-k", .kind = FieldKind::Digits})};
inline constexpr auto kInterval =
    text<&Subframe::interval>({.code = "SF5-n-m", .label = "Interval:", .kind = FieldKind::Digits});
inline constexpr auto kDepth = text<&Subframe::depth>(
    {.code = "SF6-n-m", .label = "Depth:", .kind = FieldKind::Digits, .unit = "frames"});

}  // namespace subframe_field

/// The commands of one subframe.
inline constexpr auto kSubframeFields = std::to_array<SubframeField>({
    subframe_field::kName,
    subframe_field::kSupercommutated,
    subframe_field::kLocationMode,
    subframe_field::kLocation,
    subframe_field::kInterval,
    subframe_field::kDepth,
});

}  // namespace kavu
