// The arguments and results of the automation: texts in UTF-8 against the bytes of the file,
// numbers that are held as text, codes in any case, and the rules of new names.
#pragma once

#include "application/automation/AutomationError.h"
#include "vocabulary/Field.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class AutomationTalk;
class Messages;

/// The longest name of a counter, a subframe or a measurement, in bytes.
inline constexpr std::size_t kMostNameBytes = 32;

/// The text in Windows-1252; empty if that does not have all its characters.
[[nodiscard]] std::string toWindows1252(std::string_view utf8);
/// The bytes under which a file may hold a name: as UTF-8, and as Windows-1252 if they differ
/// there.
[[nodiscard]] std::vector<std::string> storedForms(std::string_view utf8);
/// A result: UTF-8 with real line breaks.
[[nodiscard]] std::string shownText(std::string_view stored);
/// The bytes of a new text: those that were there if it is the same text, Windows-1252 where the
/// field had bytes of it, else UTF-8. Line breaks stay real ones.
[[nodiscard]] std::string storedText(std::string_view utf8, std::string_view before);

/// Throws `NotFound` for what (as in "ID counter") has no such name.
[[noreturn]] void throwNotFound(std::string_view what, std::string_view name);
/// The number of a field that holds it as text; throws `NotANumber` for any other text.
[[nodiscard]] std::int32_t numberOfText(std::string_view text, std::string_view what);
/// Throws `OutOfRange` outside `least` to `most`.
void requireRange(std::int64_t value, std::int64_t least, std::int64_t most, std::string_view what);
/// The stored code of a text in any case, of those that the edition knows; throws `BadValue`.
[[nodiscard]] std::string requireCode(std::span<const Choice> choices, int edition,
                                      std::string_view text, std::string_view what);
/// Throws `BadValue` for a text with control characters other than line breaks (none at all without
/// `lineBreaks`), `Refused` 402 ("not allowed to use a semi-colon"), and `BadValue` beyond the
/// limit in bytes; 0 is no limit.
void requireText(std::string_view bytes, std::size_t limit, bool lineBreaks, std::string_view what);
/// Throws for what no new name can be: the message for an empty one (361, 353, 326), `BadValue` for
/// more than 32 bytes, outer blanks or control characters, `Refused` 402 for a semicolon.
void requireNewName(std::string_view bytes, int messageForEmpty);
/// The same for a method with a window: the messages are shown by `talk`.
void requireNewName(AutomationTalk& talk, const Messages& messages, std::string_view bytes,
                    int messageForEmpty);

}  // namespace kavu
