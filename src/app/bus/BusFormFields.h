// The fields of a bus group as its forms show them: the rows of the vocabulary by their codes
// without indices, and the values of a row before and after a form.
#pragma once

#include "bus/definition/BusEdit.h"
#include "vocabulary/FieldRules.h"

#include <string_view>
#include <vector>

namespace kavu {

/// The fields of a level that are on a page (all of them if it is empty), for a form of their own.
[[nodiscard]] std::vector<Field> busFormFields(BusLevel level, std::string_view page = {});
/// One of them, with another label if one is given. REQUIRES: a field of the level.
[[nodiscard]] Field busFormField(BusLevel level, std::string_view stem,
                                 std::string_view label = {});

/// The values of a row; those of a message with those of its first receive command.
[[nodiscard]] FieldValues busFormValues(const GroupRow& row, BusLevel level);
/// What a form has changed, in the order of the vocabulary.
[[nodiscard]] BusForm changedBusForm(BusLevel level, const FieldValues& before,
                                     const FieldValues& now);

/// The value of a code; empty if there is none.
[[nodiscard]] std::string_view valueOf(const FieldValues& values, std::string_view code);

}  // namespace kavu
