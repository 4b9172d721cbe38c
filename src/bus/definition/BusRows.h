// The rows of a bus definition as lists and trees show them.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The titles of the columns in which the rows of a level are listed, in an edition.
[[nodiscard]] std::vector<std::string> busColumns(BusLevel level, int edition);
/// The cells of a row, as many as there are columns: the texts of choices, and for a message the
/// type that follows from its addresses.
[[nodiscard]] std::vector<std::string> busCells(BusLevel level, const GroupRow& row, int edition);

/// What a field shows: the text of its choice, else the value with real line breaks.
[[nodiscard]] std::string shownBusValue(const Field& field, const GroupRow& row);

/// The title of the form of a new row, "Bus #3" or "Message #1".
[[nodiscard]] std::string busRowTitle(BusLevel level, std::size_t number);
/// A row as a branch of the tree: its number or word and its name where it has them, else its
/// title.
[[nodiscard]] std::string busRowLabel(BusLevel level, const GroupRow& row, std::size_t number);

}  // namespace kavu
