#include "reports/writers/ExcelXmlWriter.h"

#include "core/talk/UserInterface.h"
#include "core/text/Markup.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <span>
#include <utility>

namespace kavu {

namespace {

/// Style 0 of the table has this number.
constexpr int kFirstStyleId = 21;
/// Of the rows of a sheet. Those of a large one are never twice in memory: each piece goes when it
/// is in the file.
constexpr std::size_t kPieceBytes = 1U << 22U;

struct FlagText {
    std::uint32_t flag;
    std::string_view text;
};
constexpr FlagText kHorizontal[] = {
    {style_flag::kCentre, "Center"}, {style_flag::kLeft, "Left"}, {style_flag::kRight, "Right"}};
constexpr FlagText kVertical[] = {
    {style_flag::kTop, "Top"}, {style_flag::kMiddle, "Center"}, {style_flag::kBottom, "Bottom"}};
constexpr FlagText kFormats[] = {{style_flag::kShortDate, "Short Date"},
                                 {style_flag::kShortTime, "Short Time"},
                                 {style_flag::kCurrency, "Currency"},
                                 {style_flag::kExponent, "0.####################E+00"}};
constexpr FlagText kBorders[] = {{style_flag::kLeftBorder, "Left"},
                                 {style_flag::kTopBorder, "Top"},
                                 {style_flag::kRightBorder, "Right"},
                                 {style_flag::kBottomBorder, "Bottom"}};

/// The text of the first flag that is set; empty if none is.
std::string_view textOfFlag(std::span<const FlagText> texts, std::uint32_t flags) {
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [flags](const FlagText& each) { return flags & each.flag; });
    return found == texts.end() ? std::string_view{} : found->text;
}

void addAttribute(std::string& text, const char* name, std::string_view value) {
    if (!value.empty()) {
        text += formatPrintf(" %s=\"%s\"", name, value);
    }
}

std::string fontText(const CellStyle& style) {
    std::string text = "<Font x:Family=\"Swiss\"";
    if (style.size > 0) {
        text += formatPrintf(" ss:Size=\"%d\"", style.size);
    }
    text += (style.flags & style_flag::kBold) != 0 ? " ss:Bold=\"1\"" : "";
    text += (style.flags & style_flag::kUnderline) != 0 ? " ss:Underline=\"Single\"" : "";
    text += (style.flags & style_flag::kItalic) != 0 ? " ss:Italic=\"1\"" : "";
    if (!style.colour.empty()) {
        text += formatPrintf(" ss:Color=\"#%s\"", escapeForWorkbook(style.colour));
    }
    return text + "/>\n";
}

std::string styleText(const CellStyle& style, int id) {
    std::string text = formatPrintf("<Style ss:ID=\"s%d\">\n<Alignment", id);
    addAttribute(text, "ss:Horizontal", textOfFlag(kHorizontal, style.flags));
    addAttribute(text, "ss:Vertical", textOfFlag(kVertical, style.flags));
    text += (style.flags & style_flag::kWrap) != 0 ? " ss:WrapText=\"1\"/>\n" : "/>\n";
    if (const auto format = textOfFlag(kFormats, style.flags); !format.empty()) {
        text += formatPrintf("<NumberFormat ss:Format=\"%s\"/>\n", format);
    }
    std::string borders;
    for (const auto& [flag, position] : kBorders) {
        if ((style.flags & flag) != 0) {
            borders += formatPrintf(
                "<Border ss:Position=\"%s\" ss:LineStyle=\"Continuous\" ss:Weight=\"1\"/>\n",
                position);
        }
    }
    if (!borders.empty()) {
        text += "<Borders>\n" + borders + "</Borders>\n";
    }
    text += fontText(style);
    if (!style.fill.empty()) {
        text += formatPrintf("<Interior ss:Color=\"#%s\" ss:Pattern=\"Solid\"/>\n",
                             escapeForWorkbook(style.fill));
    }
    return text + "</Style>\n";
}

/// The rows or columns that each page repeats.
std::string printTitles(const SheetSetup& setup) {
    const auto named = [&](char kind, const int(&range)[2]) {
        return formatPrintf(
            "<Names>\n<NamedRange ss:Name=\"Print_Titles\" "
            "ss:RefersTo=\"='%s'!%s%d:%s%d\"/>\n</Names>\n",
            escapeForWorkbook(replaceAll(setup.name, "'", "''")), std::string(1, kind), range[0],
            std::string(1, kind), range[1]);
    };
    if (setup.titleColumns[0] > 0) {
        return named('C', setup.titleColumns);
    }
    return setup.titleRows[0] > 0 ? named('R', setup.titleRows) : std::string();
}

std::string sheetOptions(const SheetSetup& setup, bool isFirst) {
    std::string text =
        "<WorksheetOptions xmlns=\"urn:schemas-microsoft-com:office:excel\">\n<PageSetup>\n"
        "<Layout x:Orientation=\"Landscape\" x:CenterHorizontal=\"1\"/>\n";
    if (!setup.header.empty()) {
        text += formatPrintf("<Header x:Data=\"%s\"/>\n", escapeForWorkbook(setup.header));
    }
    text += formatPrintf("<Footer x:Data=\"%s\"/>\n", escapeForWorkbook(setup.footer));
    text += "</PageSetup>\n<DoNotDisplayGridlines/>\n";
    text += isFirst ? "<Selected/>\n" : "";
    return text +
           "<ProtectObjects>False</ProtectObjects>\n<ProtectScenarios>False</ProtectScenarios>\n"
           "</WorksheetOptions>\n";
}

void appendEscaped(std::string& text, std::string_view bytes) {
    if (isPlainMarkup(bytes)) {
        text += bytes;
        return;
    }
    for (const char c : workbookText(bytes)) {
        if (const auto entity = markupEntity(c); !entity.empty()) {
            text += entity;
        } else if (c == '\'') {
            text += "&apos;";
        } else if (c == '\n') {
            text += "&#10;";
        } else {
            text += c;
        }
    }
}

}  // namespace

std::string escapeForWorkbook(std::string_view bytes) {
    std::string text;
    appendEscaped(text, bytes);
    return text;
}

int ExcelXmlWriter::addSheet(SheetSetup setup) {
    endRow();
    hasSheet_ = false;
    setup.name = freeName(setup.name);
    if (mode_ == Mode::Excel && setup.columns < 1) {
        showBox(parent_,
                formatPrintf("Unable to create Worksheet '%s'. Number of columns is %d", setup.name,
                             setup.columns),
                "Unable To Create Excel File");
        return -1;
    }
    if (mode_ == Mode::Excel && setup.columns > kMostSheetColumns) {
        showBox(
            parent_,
            formatPrintf("Error trying to create the Excel worksheet named '%s'. This worksheet "
                         "is being created with %d columns, but Excel worksheets are limited to "
                         "256 columns.",
                         setup.name, setup.columns),
            "Warning", Icon::Warning);
    }
    sheets_.push_back({.setup = std::move(setup)});
    hasSheet_ = true;
    return static_cast<int>(sheets_.size()) - 1;
}

void ExcelXmlWriter::beginRow(int style, double height, int index) {
    endRow();
    if (!hasSheet_) {
        return;
    }
    auto& sheet = sheets_.back();
    const int next = sheet.rowCount + 1;
    const int row = std::max(next, index);
    sheet.rowCount = row;
    inRow_ = true;
    column_ = 0;
    if (mode_ == Mode::Delimited) {
        return;
    }
    sheet.rows += "<Row";
    if (row > next) {
        sheet.rows += formatPrintf(" ss:Index=\"%d\"", row);
    }
    if (style >= 0) {
        sheet.rows += formatPrintf(" ss:StyleID=\"s%d\"", style + kFirstStyleId);
    }
    if (height > 0) {
        sheet.rows += formatPrintf(" ss:Height=\"%.2f\"", height);
    }
    sheet.rows += ">\n";
}

void ExcelXmlWriter::endRow() {
    if (inRow_) {
        sheets_.back().rows += mode_ == Mode::Delimited ? "\n" : "</Row>\n";
        inRow_ = false;
    }
}

void ExcelXmlWriter::cell(std::string_view type, std::string_view data, int style, CellSpan span) {
    if (!inRow_) {
        return;
    }
    auto& sheet = sheets_.back();
    auto& rows = sheet.rows;
    column_ += 1 + std::max(0, span.across);
    sheet.columnCount = std::max(sheet.columnCount, column_);
    sheet.lastRow = std::max(sheet.lastRow, sheet.rowCount + std::max(0, span.down));
    if (mode_ == Mode::Delimited) {
        rows += '"';
        rows += data;
        rows += "\";";
        return;
    }
    rows += "<Cell";
    if (span.across > 0) {
        rows += formatPrintf(" ss:MergeAcross=\"%d\"", span.across);
    }
    if (span.down > 0) {
        rows += formatPrintf(" ss:MergeDown=\"%d\"", span.down);
    }
    if (style >= 0) {
        rows += " ss:StyleID=\"s";
        rows += std::to_string(style + kFirstStyleId);
        rows += '"';
    }
    rows += "><Data ss:Type=\"";
    rows += type;
    rows += "\">";
    appendEscaped(rows, data);
    rows += "</Data></Cell>\n";
    if (rows.size() >= kPieceBytes) {
        sheet.pieces.push_back(std::move(rows));
        rows.clear();
        rows.reserve(kPieceBytes + kPieceBytes / 4);
    }
}

void ExcelXmlWriter::textCell(std::string_view text, int style, CellSpan span) {
    cell("String", text, style, span);
}

void ExcelXmlWriter::numberCell(std::string_view number, int style, CellSpan span) {
    cell(isWorkbookNumber(number) ? "Number" : "String", number, style, span);
}

void ExcelXmlWriter::dateCell(const CivilTime& time, int style, CellSpan span) {
    if (mode_ == Mode::Delimited) {
        cell({}, formatPrintf("%2.2d.%2.2d.%4.4d", time.day, time.month, time.year), style, span);
        return;
    }
    cell("DateTime",
         formatPrintf("%4.4d-%2.2d-%2.2dT%2.2d:%2.2d:%2.2d", time.year, time.month, time.day,
                      time.hour, time.minute, time.second),
         styleOfDate(style), span);
}

void ExcelXmlWriter::writeStyles(std::string& text) const {
    text +=
        "<Styles>\n<Style ss:ID=\"Default\" ss:Name=\"Normal\">\n<Alignment "
        "ss:Vertical=\"Bottom\"/>\n</Style>\n";
    int id = kFirstStyleId;
    for (const auto& each : styles()) {
        text += styleText(each, id++);
    }
    text += "</Styles>\n";
}

void ExcelXmlWriter::writeSheet(std::string& text, Sheet& sheet, bool isFirst) const {
    const int columns = std::max(sheet.setup.columns, sheet.columnCount);
    text += formatPrintf("<Worksheet ss:Name=\"%s\">\n", escapeForWorkbook(sheet.setup.name));
    text += printTitles(sheet.setup);
    text += formatPrintf("<Table ss:ExpandedColumnCount=\"%d\" ss:ExpandedRowCount=\"%d\">\n",
                         columns, std::max(sheet.lastRow, sheet.rowCount));
    for (std::size_t i = 0; i < static_cast<std::size_t>(columns); ++i) {
        const double width = i < sheet.setup.widths.size() ? sheet.setup.widths[i] : 0;
        text += width > 0 ? formatPrintf("<Column ss:Width=\"%.2f\"/>\n", width)
                          : std::string("<Column ss:AutoFitWidth=\"1\"/>\n");
    }
    addRows(text, sheet);
    text += "</Table>\n" + sheetOptions(sheet.setup, isFirst) + "</Worksheet>\n";
}

void ExcelXmlWriter::addRows(std::string& text, Sheet& sheet) {
    for (auto& piece : sheet.pieces) {
        text += piece;
        std::string().swap(piece);
    }
    text += sheet.rows;
    std::string().swap(sheet.rows);
}

std::string ExcelXmlWriter::document() {
    endRow();
    std::string text;
    if (mode_ == Mode::Delimited) {
        for (auto& sheet : sheets_) {
            addRows(text, sheet);
        }
        return text;
    }
    text =
        "<?xml version=\"1.0\"?>\n<?mso-application progid=\"Excel.Sheet\"?>\n"
        "<Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\"\n"
        " xmlns:o=\"urn:schemas-microsoft-com:office:office\"\n"
        " xmlns:x=\"urn:schemas-microsoft-com:office:excel\"\n"
        " xmlns:ss=\"urn:schemas-microsoft-com:office:spreadsheet\">\n";
    writeStyles(text);
    std::size_t size = text.size();
    for (const auto& sheet : sheets_) {
        size += sheet.rows.size();
        for (const auto& piece : sheet.pieces) {
            size += piece.size();
        }
    }
    constexpr std::size_t kRest = 1U << 16U;  // of columns and options; more is still possible
    text.reserve(size + kRest);               // half a million cells are joined once
    bool isFirst = true;
    for (auto& sheet : sheets_) {
        writeSheet(text, sheet, std::exchange(isFirst, false));
    }
    text += "</Workbook>\n";
    return text;
}

}  // namespace kavu
