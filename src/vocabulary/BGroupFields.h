// The rows of the B group, one part for each level: the group, its buses (n), their messages (m),
// the measurements of these (k) and their locations (j); t counts the track sequences of a bus,
// r the receive commands of a message. IRIG 106, Chapter 9, Bus Data Attributes Group.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

/// The levels of a bus definition, each with a form of its own, and the two lists without one.
enum class BusLevel { Group, Bus, Message, Measurement, Location, Track, Receive };

// The counts, by which the lists of a level are found.
inline constexpr std::string_view kBusCount = "NBS\\N";
inline constexpr std::string_view kBusTrackCount = "TK\\N-n";
inline constexpr std::string_view kBusMessageCount = "NMS\\N-n";
inline constexpr std::string_view kReceiveCount = "RNRT\\N-n-m";
inline constexpr std::string_view kBusMeasurementCount = "MN\\N-n-m";
inline constexpr std::string_view kBusLocationCount = "NML\\N-n-m-k";

/// A list can have as many rows as its file says, up to this number.
inline constexpr std::size_t kMostBusRows = 999'999;

inline constexpr std::string_view kBusTypeArinc = "A429";
/// The first edition that has one receive command, without a number of its own.
inline constexpr int kSingleReceiveEdition = 2011;
/// The first edition in which a message has exactly one receive command.
inline constexpr int kOneReceiveEdition = 1999;
inline constexpr std::string_view kBroadcastAddress = "11111";
inline constexpr std::size_t kTerminalAddressWidth = 5;
inline constexpr std::size_t kTerminalNameWidth = 32;
inline constexpr int kUserDefinedWords = 3;
inline constexpr std::string_view kCommandWordValue = "W";
inline constexpr std::string_view kCommandWordDerived = "F";

/// The fields of a level without its counts, in the order in which they are written.
[[nodiscard]] std::span<const Field> busFields(BusLevel level);
/// A field of a level by its code without indices, whatever the case; null if it has none. The
/// receive command's five are of `BusLevel::Receive` only.
[[nodiscard]] const Field* findBusField(BusLevel level, std::string_view stem);
/// The count of the list that the rows of a level are in. REQUIRES: not the group.
[[nodiscard]] std::string_view countOfLevel(BusLevel level);

/// All commands of the group, in the order in which they are written.
[[nodiscard]] std::span<const Field> busVocabulary();

}  // namespace kavu
