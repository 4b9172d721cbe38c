// Text for a terminal. A text from a file may hold anything, and a terminal obeys control
// characters: none from a file must reach it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavu::cli {

/// The text as UTF-8 with its line breaks and tabs; every other control character becomes
/// a visible symbol.
[[nodiscard]] std::string terminalText(std::string_view bytes);
/// The same on one line: line breaks and tabs are blanks.
[[nodiscard]] std::string terminalLine(std::string_view bytes);

/// Rows as aligned columns, each two blanks after the widest cell of the one before.
/// Cells must be terminal text. Nothing follows the last cell of a row.
[[nodiscard]] std::string alignedTable(const std::vector<std::vector<std::string>>& rows);

}  // namespace kavu::cli
