// The one clipboard of all tables: texts separated by tabs for every other program, and the same
// with what the texts do not say for this one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

using TableRows = std::vector<std::vector<std::string>>;

struct TableClip {
    TableRows rows{};    ///< as they are shown, as bytes of the document
    std::string kind{};  ///< what `own` holds, as in "frame"; empty for text of other programs
    TableRows own{};     ///< of the table that was copied, for a table of its kind
};

/// The type that is offered next to text.
inline constexpr const char* kTableMimeType = "application/x-kavu-table";

void copyTable(const TableClip& clip);
/// What is in the clipboard; nothing if that is no text. Text of other programs is taken apart at
/// tabs and line ends, quotes around a cell with either of these are understood.
[[nodiscard]] std::optional<TableClip> pasteTable();

/// A table as text: cells with tabs, line ends or quotes are quoted, as spreadsheets do.
[[nodiscard]] std::string tableText(const TableRows& rows);
[[nodiscard]] TableRows tableFromText(std::string_view text);

}  // namespace kavu
