// The two date formats in TMATS values, up to edition 1996 and after it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

struct ConvertedDate {
    std::string text;
    /// The user should check the new text: its time of day is invalid, or text after the
    /// date is lost.
    bool doubtful = false;
};

/// Brings a date into the format of the other editions.
///
/// From 1996: day, month and year of two digits become month, day and year of four. The
/// year is of this century, or of the one before if it would be beyond `currentYear`. From
/// 1999 on: month, day and year of four digits become the same with the last two digits of
/// the year. Nothing if the text is too short, has other separators or no digits.
[[nodiscard]] std::optional<ConvertedDate> convertDate(std::string_view text, int sourceYear,
                                                       int currentYear);

/// Logs a date written by a migration that the user has to correct.
void reportDoubtfulDate(DocumentContext& context, UserInterface* parent, const std::string& where,
                        std::string_view before, std::string_view after);

}  // namespace kavu
