// What the commands of all groups name: the one place that knows which values are names of data
// sources, data links and measurements. Renames, copies, the search for a stream's home and the
// removal of what nothing refers to ask here.
#pragma once

#include "vocabulary/Field.h"

#include <string_view>

namespace kavu {

/// What a field, without its head, of a group names. Its indices make no difference, nor their
/// number or whether they are numbers at all ("MN-1-2", "MN-1" and "MN-x" are alike, "MN" is
/// another field), nor its case, nor the edition that knows it. `letter` is an upper-case one.
[[nodiscard]] Refers refersTo(char letter, std::string_view field);

/// True for a name of a data link, whatever depends on it.
[[nodiscard]] constexpr bool namesLink(Refers refers) {
    return refers == Refers::LinkName || refers == Refers::Link || refers == Refers::LinkMention;
}
/// True for a name of a measurement, defined or mentioned.
[[nodiscard]] constexpr bool namesMeasurement(Refers refers) {
    return refers == Refers::MeasurementName || refers == Refers::Measurement;
}

}  // namespace kavu
