// The conversion data of a record as one text: the pairs of a discrete conversion, which come in
// three forms, and the words of the others.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// The texts between the blanks.
[[nodiscard]] std::vector<std::string_view> blankSeparated(std::string_view text);

/// A telemetry value with the name of its event.
using DiscretePair = std::pair<std::string, std::string>;

/// The pairs of a text in one of three forms: `0="Off line" 1="On"`; pieces between semicolons
/// with one `=` each and no blank left of it, `0=Off line;1=On`; else blanks between all texts,
/// and `_` for a blank within an event, `0 Off_line 1 On`. So "0 A=B 1 C" is of the third. A value
/// at the end without its event has an empty one.
[[nodiscard]] std::vector<DiscretePair> readDiscrete(std::string_view text);
/// The third form. An empty text between others becomes "_", so that the pairs stay pairs.
[[nodiscard]] std::string writeDiscrete(const std::vector<DiscretePair>& pairs);

/// The first form, in which a user edits them; what it cannot hold is left out: line breaks, and
/// quotes within an event become apostrophes.
[[nodiscard]] std::string quotedDiscrete(const std::vector<DiscretePair>& pairs);
/// True for an empty text and for one of the first form.
[[nodiscard]] bool isQuotedDiscrete(std::string_view text);

}  // namespace kavu
