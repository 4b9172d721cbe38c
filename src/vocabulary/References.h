// What the commands of all groups name: the one place that knows which values are names of data
// sources, data links and measurements. Renames, copies, the search for a stream's home and the
// removal of unreferenced groups use it.
#pragma once

#include "vocabulary/Field.h"

#include <string_view>

namespace kavu {

/// What a field of a group, without its head, names. Its indices make no difference, nor their
/// number or whether they are numbers at all ("MN-1-2", "MN-1" and "MN-x" are alike, "MN" is
/// another field), nor its case, nor the edition. `letter` is upper case.
[[nodiscard]] Refers refersTo(char letter, std::string_view field);
/// False only if `refersTo` gives No for every field that begins as the text does: one look at one
/// character, for a pass over all commands.
[[nodiscard]] bool mayRefer(char letter, std::string_view field);

/// True if fields of the group refer so.
[[nodiscard]] bool hasReferences(char letter, Refers refers);

/// Characters of the name of a data source, a data link or a measurement.
inline constexpr int kNameLimit = 32;

/// The field by which a group's file is found, the name of the group: "ID" of a
/// data source's groups, "DLN" of a stream's. Empty for a group without one.
[[nodiscard]] std::string_view ownNameOf(char letter);

/// True for any name of a data link.
[[nodiscard]] constexpr bool namesLink(Refers refers) {
    return refers == Refers::LinkName || refers == Refers::Link || refers == Refers::LinkMention;
}
/// True for a name of a measurement, defined or mentioned.
[[nodiscard]] constexpr bool namesMeasurement(Refers refers) {
    return refers == Refers::MeasurementName || refers == Refers::Measurement;
}

}  // namespace kavu
