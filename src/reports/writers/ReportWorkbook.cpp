#include "reports/writers/ReportWorkbook.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <span>
#include <string>

namespace kavu {

namespace {

constexpr const char* kHeadFill = "c0c0c0";
constexpr int kHeadRows = 4;
constexpr double kLinePoints = 15;
// Of a column: as wide as its widest text in points, within reason.
constexpr double kCharacterPoints = 6;
constexpr double kColumnMargin = 6;
constexpr double kMostColumnPoints = 320;
constexpr std::size_t kFewestCharacters = 6;

std::size_t widestLine(std::string_view text) {
    std::size_t widest = 0;
    while (true) {
        const auto end = text.find('\n');
        widest = std::max(widest, shownWidth(text.substr(0, end)));
        if (end == std::string_view::npos) {
            return widest;
        }
        text.remove_prefix(end + 1);
    }
}

double pointsOf(std::size_t characters) {
    return std::min(kMostColumnPoints,
                    kColumnMargin + kCharacterPoints * static_cast<double>(std::max(
                                                           kFewestCharacters, characters)));
}

std::string headerText(const ReportHead& head) {
    std::string text;
    if (!head.left.empty()) {
        text += "&L" + replaceAll(head.left, "&", "&&");
    }
    if (!head.right.empty()) {
        text += "&R" + replaceAll(head.right, "&", "&&");
    }
    return text;
}

/// The styles of a report in a workbook.
struct SheetStyles {
    explicit SheetStyles(WorkbookWriter& workbook)
        : title(workbook.style({.flags = style_flag::kCentre | style_flag::kTop |
                                         style_flag::kWrap | style_flag::kBold})),
          head(workbook.style({.flags = style_flag::kBold, .fill = kHeadFill})),
          heading(workbook.style({.flags = style_flag::kBold})),
          cell(workbook.style({.flags = style_flag::kTop | style_flag::kWrap})) {}

    int title;
    int head;
    int heading;
    int cell;
};

/// The part of a report that goes to one sheet.
class SheetMaker {
  public:
    SheetMaker(const ReportContent& report, WorkbookWriter& workbook, UserInterface* parent)
        : report_(report), workbook_(workbook), parent_(parent), styles_(workbook) {}

    void writeLines() {
        SheetSetup setup{.name = report_.sheet, .columns = 2, .header = headerText(report_.head)};
        std::size_t caption = 0;
        std::size_t value = 0;
        for (const auto& line : report_.lines) {
            caption = std::max(caption, shownWidth(line.caption()));
            value = std::max(value, shownWidth(line.value));
        }
        setup.widths = {pointsOf(caption), pointsOf(value)};
        if (workbook_.addSheet(std::move(setup)) < 0) {
            return;
        }
        writeHead(2);
        for (const auto& line : report_.lines) {
            if (line.isOnPaperOnly) {
                continue;
            }
            workbook_.beginRow();
            workbook_.textCell(line.caption(), line.isHeading ? styles_.heading : kNoStyle);
            if (!line.isHeading) {
                workbook_.textCell(line.value, styles_.cell);
            }
            workbook_.endRow();
        }
    }

    /// The columns of a table from `first` to before `end`. False after a cancel.
    bool writeTable(std::string name, std::size_t first, std::size_t end) {
        const auto& table = report_.table;
        const int labels = table.isGrid ? 1 : 0;
        const int columns = static_cast<int>(end - first) + labels;
        SheetSetup setup{.name = std::move(name),
                         .columns = columns,
                         .widths = widths(first, end),
                         .header = headerText(report_.head)};
        const bool hasRows = !table.isGrid || !table.rows.empty();
        if (hasRows) {
            setup.titleRows[0] = kHeadRows + 1;
            setup.titleRows[1] = kHeadRows + static_cast<int>(table.headLines);
            setup.frozenRows = setup.titleRows[1];
            setup.frozenColumns = 1;
            setup.filterRow = setup.titleRows[1];
        }
        if (workbook_.addSheet(std::move(setup)) < 0) {
            return true;
        }
        writeHead(columns);
        if (hasRows) {
            writeTableHead(first, end);
            std::size_t count = 0;
            for (const auto& row : table.rows) {
                if (count++ % kPollEvery == 0 && cancelRequested(parent_)) {
                    return false;
                }
                writeRow(row, first, end);
            }
            writeLists(first, end);
        }
        return true;
    }

  private:
    void writeHead(int columns) {
        const CellSpan span{.across = columns - 1};
        const auto& head = report_.head;
        const auto lines = 1 + std::count(head.title.begin(), head.title.end(), '\n');
        workbook_.beginRow(kNoStyle, lines > 1 ? kLinePoints * static_cast<double>(lines) : 0);
        workbook_.textCell(head.title, styles_.title, span);
        for (const auto& text : {head.tmats, head.link, dateLine(head, " ")}) {
            workbook_.endRow();
            workbook_.beginRow();
            workbook_.textCell(text, kNoStyle, span);
        }
        workbook_.endRow();
    }

    std::vector<double> widths(std::size_t first, std::size_t end) const {
        std::vector<std::size_t> widest(end - first, 0);
        const auto& table = report_.table;
        for (std::size_t i = first; i < end; ++i) {
            for (const auto& line : table.columns[i].head) {
                widest[i - first] = std::max(widest[i - first], shownWidth(line));
            }
        }
        std::size_t count = 0;
        for (const auto& row : table.rows) {
            if (++count % kRowsOfAPoll == 0 && cancelRequested(parent_)) {
                break;  // the rows of the sheet see the cancel as well
            }
            const auto cells = row.cells();
            for (std::size_t i = first; i < std::min(end, cells.size()); ++i) {
                widest[i - first] = std::max(widest[i - first], widestLine(cells[i]));
            }
        }
        for (const auto& list : table.lists) {
            for (const auto& line : list.lines) {
                if (list.column >= first && list.column < end) {
                    widest[list.column - first] =
                        std::max(widest[list.column - first], shownWidth(line));
                }
            }
        }
        std::vector<double> points;
        if (table.isGrid) {
            points.push_back(pointsOf(0));
        }
        for (const auto characters : widest) {
            points.push_back(pointsOf(characters));
        }
        return points;
    }

    void writeTableHead(std::size_t first, std::size_t end) {
        const auto& table = report_.table;
        for (std::size_t line = 0; line < table.headLines; ++line) {
            workbook_.beginRow();
            if (table.isGrid) {
                workbook_.textCell({}, styles_.head);
            }
            for (std::size_t i = first; i < end; ++i) {
                const auto& head = table.columns[i].head;
                const auto text = line < head.size() ? head[line] : std::string();
                if (table.isGrid) {
                    workbook_.numberCell(text, styles_.head);
                } else {
                    workbook_.textCell(text, styles_.head);
                }
            }
            workbook_.endRow();
        }
    }

    void writeRow(const TableRow& row, std::size_t first, std::size_t end) {
        const auto cells = row.cells();
        workbook_.beginRow();
        if (report_.table.isGrid) {
            workbook_.numberCell(row.label(), styles_.cell);
        }
        for (std::size_t i = first; i < std::min(end, cells.size()); ++i) {
            if (!report_.table.isGrid && report_.table.columns[i].isNumber) {
                workbook_.numberCell(cells[i], styles_.cell);
            } else {
                workbook_.textCell(cells[i], styles_.cell);
            }
        }
        workbook_.endRow();
    }

    /// The frames of subcommutated words, each below its word.
    void writeLists(std::size_t first, std::size_t end) {
        std::vector<const WordList*> lists(end - first, nullptr);
        std::size_t rows = 0;
        for (const auto& list : report_.table.lists) {
            if (list.column >= first && list.column < end) {
                lists[list.column - first] = &list;
                rows = std::max(rows, list.lines.size());
            }
        }
        for (std::size_t row = 0; row < rows; ++row) {
            workbook_.beginRow();
            workbook_.textCell({});
            for (const auto* const list : lists) {
                const bool has = list != nullptr && row < list->lines.size();
                workbook_.textCell(has ? std::string_view(list->lines[row]) : std::string_view{},
                                   styles_.cell);
            }
            workbook_.endRow();
        }
    }

    const ReportContent& report_;
    WorkbookWriter& workbook_;
    UserInterface* parent_;
    SheetStyles styles_;
};

}  // namespace

void writeSheets(const ReportContent& report, WorkbookWriter& workbook, UserInterface* parent) {
    SheetMaker maker(report, workbook, parent);
    const auto columns = report.table.columns.size();
    if (report.kind == ReportKind::Format) {
        maker.writeLines();
        return;
    }
    if (!report.table.isGrid || columns <= kMostSheetWords) {
        (void)maker.writeTable(report.sheet, 0, columns);
        return;
    }
    for (std::size_t first = 0; first < columns; first += kMostSheetWords) {
        const auto end = std::min(columns, first + kMostSheetWords);
        if (!maker.writeTable(formatPrintf("%s (%d-%d)", report.sheet, first + 1, end), first,
                              end)) {
            return;
        }
    }
}

}  // namespace kavu
