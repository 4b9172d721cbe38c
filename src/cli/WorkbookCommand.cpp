// A workbook from a JSON description of its sheets.
#include "application/Application.h"
#include "cli/OutputFile.h"
#include "cli/ReportCommands.h"
#include "cli/ScriptedInterface.h"
#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "reports/writers/ExcelXmlWriter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kavu::cli {

namespace {

constexpr const char* kWorkbookTitle = "Workbook";
/// A description is not read beyond this.
constexpr std::uint64_t kMostDescription = std::uint64_t{1} << 28;
constexpr double kMostPoints = 10'000;

/// Why a description is none; the text names the place.
struct DescriptionError {
    std::string text;
};

/// The members of a description, with what each must be.
class Description {
  public:
    Description(const Json& value, std::string place) : value_(value), place_(std::move(place)) {
        if (!value.is_object()) {
            throw DescriptionError{place_ + " is no object"};
        }
    }

    [[nodiscard]] bool has(const char* key) const { return value_.contains(key); }
    [[nodiscard]] std::string text(const char* key, std::string otherwise = {}) const {
        if (!has(key)) {
            return otherwise;
        }
        if (!value_[key].is_string()) {
            throw DescriptionError{placeOf(key) + " is no text"};
        }
        return value_[key].get<std::string>();
    }
    [[nodiscard]] std::string requiredText(const char* key) const {
        require(key);
        return text(key);
    }
    [[nodiscard]] int integer(const char* key, int otherwise = 0) const {
        if (!has(key)) {
            return otherwise;
        }
        const auto& value = value_[key];
        if (!value.is_number_integer() || value < std::numeric_limits<int>::min() ||
            value > std::numeric_limits<int>::max()) {
            throw DescriptionError{placeOf(key) + " is no whole number"};
        }
        return value.get<int>();
    }
    [[nodiscard]] std::uint32_t flags(const char* key) const {
        if (!has(key)) {
            return 0;
        }
        const auto& value = value_[key];
        if (!value.is_number_unsigned() || value > std::numeric_limits<std::uint32_t>::max()) {
            throw DescriptionError{placeOf(key) + " is no set of flags"};
        }
        return value.get<std::uint32_t>();
    }
    [[nodiscard]] double points(const char* key) const {
        return has(key) ? pointsOf(value_[key], placeOf(key)) : 0;
    }
    /// Nothing if it is missing.
    [[nodiscard]] const Json* list(const char* key) const {
        if (has(key) && !value_[key].is_array()) {
            throw DescriptionError{placeOf(key) + " is no list"};
        }
        return has(key) ? &value_[key] : nullptr;
    }
    [[nodiscard]] const Json& member(const char* key) const { return value_[key]; }
    void require(const char* key) const {
        if (!has(key)) {
            throw DescriptionError{placeOf(key) + " is missing"};
        }
    }
    [[nodiscard]] std::string placeOf(const char* key) const { return place_ + "." + key; }

    static double pointsOf(const Json& value, const std::string& place) {
        if (!value.is_number() || !std::isfinite(value.get<double>()) || value.get<double>() < 0 ||
            value.get<double>() > kMostPoints) {
            throw DescriptionError{place + " is no size"};
        }
        return value.get<double>();
    }

  private:
    const Json& value_;
    std::string place_;
};

class WorkbookReader {
  public:
    explicit WorkbookReader(WorkbookWriter& workbook) : workbook_(workbook) {}

    void read(const Json& document) {
        const Description whole(document, "the description");
        whole.require("sheets");
        std::size_t number = 0;
        for (const auto& sheet : *whole.list("sheets")) {
            readSheet(Description(sheet, formatPrintf("sheet %d", ++number)));
        }
    }

  private:
    int styleOf(const Description& owner) {
        if (!owner.has("style")) {
            return kNoStyle;
        }
        const Description style(owner.member("style"), owner.placeOf("style"));
        return workbook_.style({.flags = style.flags("flags"),
                                .size = style.integer("size"),
                                .colour = colour(style, "color"),
                                .fill = colour(style, "fill")});
    }

    static std::string colour(const Description& style, const char* key) {
        constexpr std::size_t kDigits = 6;
        auto text = style.text(key);
        const auto isHex = [](char c) {
            return std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos;
        };
        if (!text.empty() &&
            (text.size() != kDigits || !std::all_of(text.begin(), text.end(), isHex))) {
            throw DescriptionError{style.placeOf(key) + " is no color of six digits"};
        }
        return text;
    }

    static void readRange(const Description& titles, const char* key, int (&range)[2]) {
        const auto* const list = titles.list(key);
        if (list == nullptr) {
            return;
        }
        if (list->size() != 2 || !(*list)[0].is_number_unsigned() ||
            !(*list)[1].is_number_unsigned() || (*list)[0] < 1 || (*list)[0] > (*list)[1] ||
            (*list)[1] > std::numeric_limits<int>::max()) {
            throw DescriptionError{titles.placeOf(key) + " is no range"};
        }
        range[0] = (*list)[0].get<int>();
        range[1] = (*list)[1].get<int>();
    }

    void readSheet(const Description& sheet) {
        SheetSetup setup{.name = sheet.requiredText("name"),
                         .header = sheet.text("header"),
                         .footer = sheet.text("footer", std::string(kPageFooter))};
        sheet.require("columns");
        setup.columns = sheet.integer("columns");
        if (const auto* const widths = sheet.list("widths")) {
            for (const auto& width : *widths) {
                setup.widths.push_back(Description::pointsOf(width, sheet.placeOf("widths")));
            }
        }
        if (sheet.has("printTitles")) {
            const Description titles(sheet.member("printTitles"), sheet.placeOf("printTitles"));
            readRange(titles, "rows", setup.titleRows);
            readRange(titles, "columns", setup.titleColumns);
        }
        (void)workbook_.addSheet(std::move(setup));
        row_ = 0;
        const auto* const rows = sheet.list("rows");
        std::size_t number = 0;
        for (const auto& row : rows != nullptr ? *rows : Json::array()) {
            readRow(Description(row, sheet.placeOf("rows") + formatPrintf("[%d]", ++number)));
        }
    }

    void readRow(const Description& row) {
        const int index = row.integer("index");
        if (index < 0 || (index > 0 && index <= row_)) {
            throw DescriptionError{row.placeOf("index") + " is not after the row before"};
        }
        row_ = index > 0 ? index : row_ + 1;
        workbook_.beginRow(styleOf(row), row.points("height"), index);
        const auto* const cells = row.list("cells");
        std::size_t number = 0;
        for (const auto& cell : cells != nullptr ? *cells : Json::array()) {
            readCell(Description(cell, row.placeOf("cells") + formatPrintf("[%d]", ++number)));
        }
        workbook_.endRow();
    }

    void readCell(const Description& cell) {
        const CellSpan span{spanOf(cell, "across"), spanOf(cell, "down")};
        const int style = styleOf(cell);
        if (cell.has("number")) {
            const auto& number = cell.member("number");
            workbook_.numberCell(number.is_number() ? number.dump() : cell.text("number"), style,
                                 span);
        } else if (cell.has("date")) {
            const auto text = cell.text("date");
            if (const auto time = parseIsoTime(text)) {
                workbook_.dateCell(*time, style, span);
            } else {
                workbook_.textCell(text, style, span);
            }
        } else {
            workbook_.textCell(cell.text("text"), style, span);
        }
    }

    static int spanOf(const Description& cell, const char* key) {
        constexpr int kMostSpan = 16'384;
        const int span = cell.integer(key);
        if (span < 0 || span > kMostSpan) {
            throw DescriptionError{cell.placeOf(key) + " is no number of cells"};
        }
        return span;
    }

    WorkbookWriter& workbook_;
    int row_ = 0;  ///< of the present sheet
};

bool refuseDescription(const CommandContext& context, const std::string& text) {
    showBox(context.ui, text, kWorkbookTitle);
    return false;
}

}  // namespace

bool workbookCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    if (!mayWriteOutput(context.ui, line, line.output)) {
        return false;
    }
    std::string bytes;
    std::uint64_t size = 0;
    auto status = probeSize(line.file, size);
    if (status.ok() && size > kMostDescription) {
        return refuseDescription(context,
                                 formatPrintf("'%s' is too large for a description.", line.file));
    }
    status = status.ok() ? readWholeFile(line.file, bytes) : status;
    if (!status.ok()) {
        return refuseDescription(context, formatPrintf("Unable to read '%s'\n\nReason: %s",
                                                       status.path(), status.reason()));
    }
    const auto document = Json::parse(bytes, nullptr, false);
    if (document.is_discarded()) {
        return refuseDescription(context, formatPrintf("'%s' is no JSON document.", line.file));
    }
    ExcelXmlWriter workbook(context.ui, line.report.isDelimited ? ExcelXmlWriter::Mode::Delimited
                                                                : ExcelXmlWriter::Mode::Excel);
    try {
        WorkbookReader(workbook).read(document);
    } catch (const DescriptionError& error) {
        return refuseDescription(context, formatPrintf("'%s': %s", line.file, error.text));
    }
    return writeReport(context, output, workbook.document());
}

}  // namespace kavu::cli
