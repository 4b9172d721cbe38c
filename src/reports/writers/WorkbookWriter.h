// A workbook that is written sheet by sheet, row by row, cell by cell, whatever its format.
#pragma once

#include "core/text/Clock.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The bits of `CellStyle::flags`. The numbers are known outside of the program.
namespace style_flag {

inline constexpr std::uint32_t kCentre = 0x1;
inline constexpr std::uint32_t kLeft = 0x2;
inline constexpr std::uint32_t kRight = 0x4;
inline constexpr std::uint32_t kTop = 0x8;
inline constexpr std::uint32_t kMiddle = 0x10;
inline constexpr std::uint32_t kBottom = 0x20;
inline constexpr std::uint32_t kWrap = 0x40;
inline constexpr std::uint32_t kBold = 0x80;
inline constexpr std::uint32_t kUnderline = 0x100;
inline constexpr std::uint32_t kItalic = 0x200;
inline constexpr std::uint32_t kShortDate = 0x400;
inline constexpr std::uint32_t kShortTime = 0x800;
inline constexpr std::uint32_t kCurrency = 0x1000;
inline constexpr std::uint32_t kExponent = 0x2000;
inline constexpr std::uint32_t kNumberFormats = kShortDate | kShortTime | kCurrency | kExponent;
inline constexpr std::uint32_t kLeftBorder = 0x10000000;
inline constexpr std::uint32_t kTopBorder = 0x20000000;
inline constexpr std::uint32_t kRightBorder = 0x40000000;
inline constexpr std::uint32_t kBottomBorder = 0x80000000;

}  // namespace style_flag

struct CellStyle {
    std::uint32_t flags = 0;
    int size = 0;          ///< points; 0 for that of the workbook
    std::string colour{};  ///< of the text, "rrggbb"; empty for none
    std::string fill{};
    [[nodiscard]] bool operator==(const CellStyle&) const = default;
};

/// How far a cell reaches over those at its right and below it.
struct CellSpan {
    int across = 0;
    int down = 0;
};

/// No style of its own.
inline constexpr int kNoStyle = -1;
/// What stands below each page without anything else.
inline constexpr std::string_view kPageFooter = "Page &P of &N";
inline constexpr int kMostSheetColumns = 256;

struct SheetSetup {
    std::string name{};
    int columns = 0;
    std::vector<double> widths{};  ///< points; 0, or none, for an automatic one
    std::string header{};          ///< with the codes of the workbook, as in "&L...&R..."
    std::string footer{kPageFooter};
    /// The rows or columns that each page repeats, from 1; 0 for none.
    int titleRows[2] = {0, 0};
    int titleColumns[2] = {0, 0};
    /// Where the format can do it: rows and columns that stay in sight, and the row whose cells
    /// filter those below it, from 1; 0 for none.
    int frozenRows = 0;
    int frozenColumns = 0;
    int filterRow = 0;
};

class WorkbookWriter {
  public:
    WorkbookWriter() = default;
    WorkbookWriter(const WorkbookWriter&) = delete;
    WorkbookWriter& operator=(const WorkbookWriter&) = delete;
    virtual ~WorkbookWriter() = default;

    /// Begins a sheet, and returns its index; -1 if it is refused: what follows is dropped then,
    /// until the next sheet begins.
    virtual int addSheet(SheetSetup setup) = 0;
    /// The index of a style, which is added if there is none like it.
    virtual int style(const CellStyle& style);

    // Without a sheet these do nothing.

    /// Begins the next row, or that of an index from 1, which must be after the last one. A height
    /// of 0 is an automatic one.
    virtual void beginRow(int style = kNoStyle, double height = 0, int index = 0) = 0;
    virtual void endRow() = 0;
    virtual void textCell(std::string_view text, int style = kNoStyle, CellSpan span = {}) = 0;
    /// A text that is no number is a text cell.
    virtual void numberCell(std::string_view number, int style = kNoStyle, CellSpan span = {}) = 0;
    /// A style without a format of numbers shows the date.
    virtual void dateCell(const CivilTime& time, int style = kNoStyle, CellSpan span = {}) = 0;
    void numberCell(int number, int style = kNoStyle) { numberCell(std::to_string(number), style); }

  protected:
    [[nodiscard]] const std::vector<CellStyle>& styles() const { return styles_; }
    /// The style with a date format, if it has no format of numbers.
    [[nodiscard]] int styleOfDate(int style);
    /// A name that no sheet has yet, whatever the case, and that every sheet may have: with
    /// " (Part n)" if it is taken.
    [[nodiscard]] std::string freeName(std::string_view name);

  private:
    std::vector<CellStyle> styles_{};
    std::vector<std::string> names_{};  ///< in lower case
};

/// True for a decimal number as a workbook can hold it.
[[nodiscard]] bool isWorkbookNumber(std::string_view text);
/// True if every character stands in XML as it is: letters of ASCII without markup, quotes or line
/// breaks, as most cells have them.
[[nodiscard]] bool isPlainMarkup(std::string_view bytes);
/// The bytes as UTF-8 that an XML file can hold: what it cannot becomes U+FFFD. A carriage return
/// is a blank, one with a line feed is that alone.
[[nodiscard]] std::string workbookText(std::string_view bytes);

}  // namespace kavu
