// The place of a node in the tree of a group, and the values that a form gives it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// From the root down: a number from 1, or the letter of a branch that has no number ('F').
using GroupPlace = std::vector<std::variant<int, char>>;

/// What is entered in a form: by the name of the field, in the order in which it is entered.
using EnteredValues = std::span<const std::pair<std::string, std::string>>;

/// `[1, 2, "F", 3]`
[[nodiscard]] std::string placeText(const GroupPlace& place);

/// Reports that there is nothing at a place.
void reportNoPlace(UserInterface* parent, const GroupPlace& place);
/// Reports that nothing can be done of this kind at a place: `act` is "added", "edited", "deleted".
void reportNoAct(UserInterface* parent, const GroupPlace& place, std::string_view act);
/// Reports that a form has no field of this name.
void reportNoField(UserInterface* parent, std::string_view name);

/// A text that is entered, with the line breaks of a file.
[[nodiscard]] std::string withLineBreaks(std::string_view text);

// The checks of a text that is entered; each reports what is wrong.

/// False after message 402 ("semi-colon").
[[nodiscard]] bool hasNoSemicolon(const DocumentContext& context, UserInterface* parent,
                                  std::string_view text);
/// False for a comma, which would break the lines of a tree.
[[nodiscard]] bool hasNoComma(UserInterface* parent, std::string_view text);
/// False for more characters than a limit above 0.
[[nodiscard]] bool isWithinLimit(UserInterface* parent, std::string_view text, std::size_t limit);
/// Reports a text that is no entry of the list of a field.
void reportNoEntry(UserInterface* parent, std::string_view text,
                   const std::vector<std::string>& entries);
/// Reports a text for a field that does not apply as the other fields are.
void reportDisabled(UserInterface* parent, std::string_view field);

/// Asks message 82 ("Are You Sure?") under "Delete this " and the word. False without a parent.
[[nodiscard]] bool asksToDelete(const DocumentContext& context, UserInterface* parent,
                                std::string_view word);

}  // namespace kavu
