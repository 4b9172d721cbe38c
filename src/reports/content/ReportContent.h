// What a report says, before it is known where it goes: text, a page, a workbook and a web page are
// writers of this.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

struct DocumentContext;
class ReportLayout;

/// In the order in which they are made.
enum class ReportKind { Format, Frame, Measurements };

struct ReportHead {
    std::string title{};  ///< may have several lines
    std::string tmats{};  ///< "TMATS File: " or "TMATS Project: ", with the name
    std::string link{};   ///< "Data Link: ", with the name
    std::string date{};
    std::string time{};
    std::string left{};  ///< of each printed page
    std::string right{};
};

/// A line of a caption, with its value or alone.
struct ReportLine {
    std::string lead{};   ///< with the tabs before and after the caption
    std::string value{};  ///< with what always follows it
    bool isHeading = false;
    bool isOnPaperOnly = false;  ///< a workbook does not have it

    /// The caption without tabs.
    [[nodiscard]] std::string_view caption() const;
};

struct TableColumn {
    std::string name{};               ///< in delimited text
    std::vector<std::string> head{};  ///< as many lines as the head of the table has
    bool isNumber = false;
};

/// The cells of a row, as many as there are columns; several lines in a cell are possible. They are
/// one text: a report can have half a million rows.
class TableRow {
  public:
    TableRow() = default;
    explicit TableRow(std::string label) : label_(std::move(label)) {}

    void add(std::string_view cell);
    /// Takes the cells away, and keeps the room that they had.
    void clearCells() { text_.clear(); }
    /// The number of the frame, in a grid.
    [[nodiscard]] const std::string& label() const { return label_; }
    /// Valid until the next `add`.
    [[nodiscard]] std::vector<std::string_view> cells() const;

  private:
    std::string label_{};
    std::string text_{};  ///< each cell after its length, a byte for nearly all of them
};

/// What stands below a column of a grid with one row.
struct WordList {
    std::size_t column = 0;
    std::string heading{};             ///< "FWP 5:"
    std::vector<std::string> lines{};  ///< "1=A"
};

/// Rows that are gone through between two looks whether the user has cancelled.
inline constexpr std::size_t kRowsOfAPoll = 4096;

struct ReportTable {
    /// A grid has rows with labels, and is cut into blocks of columns.
    bool isGrid = false;
    std::size_t headLines = 1;
    std::vector<TableColumn> columns{};
    std::vector<TableRow> rows{};
    std::vector<WordList> lists{};
};

struct ReportContent {
    ReportKind kind = ReportKind::Format;
    ReportHead head{};
    std::string sheet{};              ///< its name in a workbook
    std::vector<ReportLine> lines{};  ///< before the table
    ReportTable table{};
};

/// The head of a report with the title and the headers that these keys of a layout have.
[[nodiscard]] ReportHead reportHead(const DocumentContext& context, const ReportLayout& layout,
                                    std::string_view link, std::string_view titleKey,
                                    std::string_view leftKey, std::string_view rightKey);
/// "Date: MM-DD-YYYY  Time: HH:MM:SS", with this between them.
[[nodiscard]] std::string dateLine(const ReportHead& head, std::string_view gap);

/// The number of characters that a text takes; bytes that are no UTF-8 are one each.
[[nodiscard]] std::size_t shownWidth(std::string_view text);
/// With blanks behind it up to a width of characters.
void appendPadded(std::string& line, std::string_view text, std::size_t width);
/// The text on one line: each line break is a blank.
[[nodiscard]] std::string onOneLine(std::string_view text);
/// True if it is on one line already.
[[nodiscard]] bool isOnOneLine(std::string_view text);

}  // namespace kavu
