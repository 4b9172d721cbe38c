#include "reports/writers/XlsxWriter.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <vector>
#include <xlsxwriter.h>

namespace kavu {

namespace {

/// What a cell of such a file can hold.
constexpr std::size_t kMostCellBytes = 32'767;
/// A column width is in characters there, and in points here.
constexpr double kPointsOfCharacter = 5.25;
constexpr int kFirstBit = 1;

struct AlignmentOf {
    std::uint32_t flag;
    lxw_format_alignments alignment;
};
constexpr AlignmentOf kAlignments[] = {{style_flag::kCentre, LXW_ALIGN_CENTER},
                                       {style_flag::kLeft, LXW_ALIGN_LEFT},
                                       {style_flag::kRight, LXW_ALIGN_RIGHT},
                                       {style_flag::kTop, LXW_ALIGN_VERTICAL_TOP},
                                       {style_flag::kMiddle, LXW_ALIGN_VERTICAL_CENTER},
                                       {style_flag::kBottom, LXW_ALIGN_VERTICAL_BOTTOM}};

lxw_color_t colourOf(const std::string& hex) {
    lxw_color_t colour = 0;
    std::from_chars(hex.data(), hex.data() + hex.size(), colour, 16);
    return colour;
}

void setNumberFormat(lxw_format* format, std::uint32_t flags) {
    // The numbers of the formats that every spreadsheet has, in the user's own notation.
    if ((flags & style_flag::kShortDate) != 0) {
        format_set_num_format_index(format, 14);
    } else if ((flags & style_flag::kShortTime) != 0) {
        format_set_num_format_index(format, 20);
    } else if ((flags & style_flag::kCurrency) != 0) {
        format_set_num_format_index(format, 7);
    } else if ((flags & style_flag::kExponent) != 0) {
        format_set_num_format(format, "0.####################E+00");
    }
}

void setBorders(lxw_format* format, std::uint32_t flags) {
    if ((flags & style_flag::kLeftBorder) != 0) {
        format_set_left(format, LXW_BORDER_THIN);
    }
    if ((flags & style_flag::kTopBorder) != 0) {
        format_set_top(format, LXW_BORDER_THIN);
    }
    if ((flags & style_flag::kRightBorder) != 0) {
        format_set_right(format, LXW_BORDER_THIN);
    }
    if ((flags & style_flag::kBottomBorder) != 0) {
        format_set_bottom(format, LXW_BORDER_THIN);
    }
}

void setLook(lxw_format* format, const CellStyle& style) {
    for (const auto& [flag, alignment] : kAlignments) {
        if ((style.flags & flag) != 0) {
            format_set_align(format, static_cast<std::uint8_t>(alignment));
        }
    }
    if ((style.flags & style_flag::kWrap) != 0) {
        format_set_text_wrap(format);
    }
    if ((style.flags & style_flag::kBold) != 0) {
        format_set_bold(format);
    }
    if ((style.flags & style_flag::kUnderline) != 0) {
        format_set_underline(format, LXW_UNDERLINE_SINGLE);
    }
    if ((style.flags & style_flag::kItalic) != 0) {
        format_set_italic(format);
    }
    if (style.size > 0) {
        format_set_font_size(format, style.size);
    }
    if (!style.colour.empty()) {
        format_set_font_color(format, colourOf(style.colour));
    }
    if (!style.fill.empty()) {
        format_set_pattern(format, LXW_PATTERN_SOLID);
        format_set_bg_color(format, colourOf(style.fill));
    }
    setNumberFormat(format, style.flags);
    setBorders(format, style.flags);
}

lxw_row_t rowAt(int number) {
    return static_cast<lxw_row_t>(number - kFirstBit);
}
lxw_col_t columnAt(int number) {
    return static_cast<lxw_col_t>(number - kFirstBit);
}

}  // namespace

struct XlsxWriter::Library {
    lxw_workbook* book = nullptr;
    lxw_worksheet* sheet = nullptr;
    std::vector<lxw_format*> formats{};

    /// The format of a style, which is made when it is first used.
    lxw_format* format(const std::vector<CellStyle>& styles, int style) {
        if (style < 0) {
            return nullptr;
        }
        const auto at = static_cast<std::size_t>(style);
        formats.resize(std::max(formats.size(), at + 1), nullptr);
        if (formats[at] == nullptr) {
            formats[at] = workbook_add_format(book);
            setLook(formats[at], styles[at]);
        }
        return formats[at];
    }
};

/// Where a cell is, from 0, and up to where it reaches.
struct XlsxWriter::Place {
    lxw_row_t row = 0;
    lxw_col_t column = 0;
    lxw_row_t lastRow = 0;
    lxw_col_t lastColumn = 0;
    [[nodiscard]] bool isMerged() const { return lastRow > row || lastColumn > column; }
};

XlsxWriter::XlsxWriter(std::string folder, const CivilTime& created)
    : folder_(std::move(folder)), library_(std::make_unique<Library>()) {
    lxw_workbook_options options{};
    options.tmpdir = folder_.data();
    library_->book = workbook_new_opt(path().c_str(), &options);
    if (library_->book != nullptr) {
        std::tm time{};
        time.tm_year = created.year - 1900;
        time.tm_mon = created.month - 1;
        time.tm_mday = created.day;
        time.tm_hour = created.hour;
        time.tm_min = created.minute;
        time.tm_sec = created.second;
        lxw_doc_properties properties{};
        properties.created = timegm(&time);
        workbook_set_properties(library_->book, &properties);
    }
}

XlsxWriter::~XlsxWriter() {
    if (library_->book != nullptr) {
        workbook_close(library_->book);
    }
    (void)deleteFile(path());
}

int XlsxWriter::addSheet(SheetSetup setup) {
    finishSheet();
    inRow_ = false;
    library_->sheet = nullptr;
    setup.name = freeName(setup.name);
    if (library_->book == nullptr || setup.columns < 1) {
        return -1;
    }
    library_->sheet = workbook_add_worksheet(library_->book, setup.name.c_str());
    if (library_->sheet == nullptr) {
        return -1;
    }
    auto* const sheet = library_->sheet;
    worksheet_set_landscape(sheet);
    worksheet_center_horizontally(sheet);
    worksheet_gridlines(sheet, LXW_HIDE_ALL_GRIDLINES);
    worksheet_set_header(sheet, workbookText(setup.header).c_str());
    worksheet_set_footer(sheet, workbookText(setup.footer).c_str());
    for (std::size_t i = 0; i < setup.widths.size(); ++i) {
        if (setup.widths[i] > 0) {
            const auto column = static_cast<lxw_col_t>(i);
            worksheet_set_column(sheet, column, column, setup.widths[i] / kPointsOfCharacter,
                                 nullptr);
        }
    }
    if (setup.titleColumns[0] > 0) {
        worksheet_repeat_columns(sheet, columnAt(setup.titleColumns[0]),
                                 columnAt(setup.titleColumns[1]));
    } else if (setup.titleRows[0] > 0) {
        worksheet_repeat_rows(sheet, rowAt(setup.titleRows[0]), rowAt(setup.titleRows[1]));
    }
    if (setup.frozenRows > 0 || setup.frozenColumns > 0) {
        worksheet_freeze_panes(sheet, static_cast<lxw_row_t>(setup.frozenRows),
                               static_cast<lxw_col_t>(setup.frozenColumns));
    }
    setup_ = std::move(setup);
    row_ = 0;
    columns_ = 0;
    return 0;
}

void XlsxWriter::finishSheet() {
    if (library_->sheet != nullptr && setup_.filterRow > 0 && row_ > setup_.filterRow) {
        worksheet_autofilter(library_->sheet, rowAt(setup_.filterRow), 0, rowAt(row_),
                             columnAt(std::max(1, columns_)));
    }
}

void XlsxWriter::beginRow(int style, double height, int index) {
    if (library_->sheet == nullptr) {
        return;
    }
    row_ = std::max(row_ + 1, index);
    column_ = 0;
    inRow_ = true;
    if (style >= 0 || height > 0) {
        worksheet_set_row(library_->sheet, rowAt(row_), height > 0 ? height : LXW_DEF_ROW_HEIGHT,
                          library_->format(styles(), style));
    }
}

bool XlsxWriter::takePlace(CellSpan span, Place& place) {
    if (library_->sheet == nullptr || !inRow_) {
        return false;
    }
    place = {rowAt(row_), static_cast<lxw_col_t>(column_), rowAt(row_ + std::max(0, span.down)),
             static_cast<lxw_col_t>(column_ + std::max(0, span.across))};
    column_ += 1 + std::max(0, span.across);
    columns_ = std::max(columns_, column_);
    return true;
}

void XlsxWriter::textCell(std::string_view text, int style, CellSpan span) {
    Place place;
    if (!takePlace(span, place)) {
        return;
    }
    const std::string shown(cutToBytes(workbookText(text), kMostCellBytes));
    auto* const format = library_->format(styles(), style);
    if (place.isMerged()) {
        worksheet_merge_range(library_->sheet, place.row, place.column, place.lastRow,
                              place.lastColumn, shown.c_str(), format);
    } else if (shown.empty()) {
        worksheet_write_blank(library_->sheet, place.row, place.column, format);
    } else {
        worksheet_write_string(library_->sheet, place.row, place.column, shown.c_str(), format);
    }
}

void XlsxWriter::numberCell(std::string_view number, int style, CellSpan span) {
    double value = 0;
    const auto digits = number.starts_with('+') ? number.substr(1) : number;
    if (!isWorkbookNumber(number) ||
        std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc()) {
        textCell(number, style, span);
        return;
    }
    Place place;
    if (takePlace(span, place)) {
        auto* const format = library_->format(styles(), style);
        if (place.isMerged()) {
            worksheet_merge_range(library_->sheet, place.row, place.column, place.lastRow,
                                  place.lastColumn, "", format);
        }
        worksheet_write_number(library_->sheet, place.row, place.column, value, format);
    }
}

void XlsxWriter::dateCell(const CivilTime& time, int style, CellSpan span) {
    const int dated = styleOfDate(style);
    Place place;
    if (takePlace(span, place)) {
        auto* const format = library_->format(styles(), dated);
        if (place.isMerged()) {
            worksheet_merge_range(library_->sheet, place.row, place.column, place.lastRow,
                                  place.lastColumn, "", format);
        }
        lxw_datetime value{time.year, time.month,  time.day,
                           time.hour, time.minute, static_cast<double>(time.second)};
        worksheet_write_datetime(library_->sheet, place.row, place.column, &value, format);
    }
}

IoStatus XlsxWriter::finish(std::string& bytes) {
    finishSheet();
    library_->sheet = nullptr;
    if (library_->book == nullptr) {
        return {path(), ENOMEM};
    }
    errno = 0;
    const auto error = workbook_close(library_->book);
    library_->book = nullptr;
    if (error != LXW_NO_ERROR) {
        return {path(), errno != 0 ? errno : EIO};
    }
    return readWholeFile(path(), bytes);
}

}  // namespace kavu
