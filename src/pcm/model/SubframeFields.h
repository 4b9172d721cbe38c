// The rows of ID counters and subframes bound to their records, in the order in which they are
// written.
#pragma once

#include "pcm/model/RecordField.h"
#include "pcm/model/Subframe.h"
#include "vocabulary/PSubframeFields.h"

#include <array>

namespace kavu {

using CounterField = RecordField<IdCounter>;
using SubframeField = RecordField<Subframe>;

namespace counter_field {

inline constexpr CounterField kCount{p::kIsfN};
inline constexpr auto kName = textField<IdCounter, &IdCounter::name>(p::kIsf1);
inline constexpr auto kType = textField<IdCounter, &IdCounter::type>(p::kIsf2);
inline constexpr CounterField kWord{p::kIdc1};
inline constexpr auto kWordLength = textField<IdCounter, &IdCounter::wordLength>(p::kIdc2);
inline constexpr auto kMsbStartBit = textField<IdCounter, &IdCounter::msbStartBit>(p::kIdc3);
inline constexpr auto kCounterLength = textField<IdCounter, &IdCounter::counterLength>(p::kIdc4);
inline constexpr auto kTransferOrder = textField<IdCounter, &IdCounter::transferOrder>(p::kIdc5);
inline constexpr auto kInitialValue = textField<IdCounter, &IdCounter::initialValue>(p::kIdc6);
inline constexpr auto kStartFrame = textField<IdCounter, &IdCounter::startFrame>(p::kIdc7);
inline constexpr auto kEndValue = textField<IdCounter, &IdCounter::endValue>(p::kIdc8);
inline constexpr auto kEndFrame = textField<IdCounter, &IdCounter::endFrame>(p::kIdc9);
inline constexpr auto kCountDirection = textField<IdCounter, &IdCounter::countDirection>(p::kIdc10);

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

inline constexpr std::string_view kHead = "SF";  ///< the start of all its codes
inline constexpr int kLastEdition = p::kLastSubframeEdition;

inline constexpr SubframeField kCount{p::kSfN};
inline constexpr auto kName = textField<Subframe, &Subframe::name>(p::kSf1);
inline constexpr auto kSupercommutated = textField<Subframe, &Subframe::supercommutated>(p::kSf2);
inline constexpr auto kLocationMode = textField<Subframe, &Subframe::locationMode>(p::kSf3);
inline constexpr SubframeField kLocation{p::kSf4};
inline constexpr auto kInterval = textField<Subframe, &Subframe::interval>(p::kSf5);
inline constexpr auto kDepth = textField<Subframe, &Subframe::depth>(p::kSf6);

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
