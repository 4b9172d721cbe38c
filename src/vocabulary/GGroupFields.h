// The general information group: its pages, its fields and its lists.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <span>
#include <string_view>

namespace kavu {

inline constexpr std::size_t kMostContacts = 9;
inline constexpr std::size_t kMostSources = 99;

/// Characters of the type of a data source.
inline constexpr std::size_t kSourceTypeWidth = 3;

inline constexpr std::string_view kContactCount = "POC\\N";
inline constexpr std::string_view kSourceCount = "DSI\\N";
inline constexpr std::string_view kSourceName = "DSI-n";
inline constexpr std::string_view kSourceType = "DST-n";

/// The commands in the order in which they are written. For the contacts' telephone the
/// page reads `POC42-n`, but it writes `POC4-n`, as does the XML bridge.
[[nodiscard]] std::span<const Field> generalFields();
/// The same, followed by what only the XML bridge has.
[[nodiscard]] std::span<const Field> generalVocabulary();
/// The columns of the points of contact, and of the data sources.
[[nodiscard]] std::span<const Field> contactFields();
[[nodiscard]] std::span<const Field> sourceFields();
/// The dates that a change of program information sets.
[[nodiscard]] std::span<const AutomaticDate> generalDates();

/// The types of data sources that an edition offers, in list order.
[[nodiscard]] std::vector<Choice> sourceTypes(int edition);
/// What is shown for a stored type: the entry of exactly this value, whatever the case,
/// and "Other" for every other value, even one of a newer edition.
[[nodiscard]] std::string_view sourceTypeText(std::string_view stored, int edition);
/// What is stored for a shown type.
[[nodiscard]] std::string_view storedSourceType(std::string_view text);

}  // namespace kavu
