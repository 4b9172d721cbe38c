// Splits the rows of pair files and pasted text, and reads numbers that may have a decimal comma.
// What cannot be read without a guess is refused, never cut to what can.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kavu {

/// What separates the columns of a row.
enum class ColumnSeparator : char { Tab = '\t', Semicolon = ';', Comma = ',', Blanks = ' ' };

/// Of the row by itself: a tab, else a semi-colon; else a comma, unless the row is two numbers
/// with blanks between them, whose commas are then decimal; else blanks.
[[nodiscard]] ColumnSeparator separatorOf(std::string_view row);

/// The cells of a row without the blanks and the quotes around them. Missing ones are empty; all
/// after the second is in `rest`, empty if no cell there holds anything.
struct RowCells {
    std::string_view first;
    std::string_view second;
    std::string_view rest;
};
[[nodiscard]] RowCells splitRow(std::string_view row, ColumnSeparator separator);

/// Decides for a whole text what the commas in its values are. "12,5" and "0,125" have a decimal
/// comma; the comma of "12,500" may also separate thousands, and is decimal only if another
/// value of the text shows it and none has a decimal point.
class CommaRule {
  public:
    void see(std::string_view value);
    /// The value with a decimal point; nothing if it is not a finite number, or not clearly one.
    [[nodiscard]] std::optional<std::string> numberText(std::string_view value) const;
    /// What the message for a value without a number adds: why its comma is not read, or nothing.
    [[nodiscard]] static std::string reason(std::string_view value);

  private:
    bool point_ = false;
    bool decimalComma_ = false;
};

/// The message for a value of a row, counted from 1, that is not a number. `axis` is "X" or "Y".
[[nodiscard]] std::string pairValueError(int row, const char* axis, std::string_view value);
/// The message for a row with more than two columns.
[[nodiscard]] std::string pairColumnsError(int row, std::string_view rest);

/// The two columns of a text every filled row of which has exactly one tab, one value per
/// line; nothing for any other text. Empty rows stay, so that the columns keep in step.
[[nodiscard]] std::optional<std::pair<std::string, std::string>> tabColumns(std::string_view text);

}  // namespace kavu
