#include "reports/writers/TextWriter.h"

#include "core/talk/UserInterface.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kLabelWidth = 4;

/// The lines of a text; an empty one has one.
std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (true) {
        const auto end = text.find('\n');
        auto line = text.substr(0, end);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        lines.push_back(line);
        if (end == std::string_view::npos) {
            return lines;
        }
        text.remove_prefix(end + 1);
    }
}

void writeHead(const ReportHead& head, LineSink& sink) {
    std::size_t widest = 0;
    for (const auto line : linesOf(head.title)) {
        sink.line(line);
        widest = std::max(widest, shownWidth(line));
    }
    sink.line(head.tmats);
    sink.line(head.link);
    sink.line({});
    sink.line(std::string(widest, '='));
    sink.line(dateLine(head, "  "));
}

// --- Lists ------------------------------------------------------------------------------------

/// Nothing after a cancel.
std::vector<std::size_t> widthsOf(const ReportTable& table, UserInterface* parent) {
    std::vector<std::size_t> widths;
    for (const auto& column : table.columns) {
        std::size_t width = 0;
        for (const auto& line : column.head) {
            width = std::max(width, shownWidth(line));
        }
        widths.push_back(width);
    }
    std::size_t count = 0;
    for (const auto& row : table.rows) {
        if (++count % kRowsOfAPoll == 0 && cancelRequested(parent)) {
            return {};
        }
        std::size_t i = 0;
        for (const auto cell : row.cells()) {
            // A field that has several lines is a little narrower than this on one line.
            widths[i] =
                std::max(widths[i],
                         shownWidth(isOnOneLine(cell) ? cell : std::string_view(onOneLine(cell))));
            ++i;
        }
    }
    return widths;
}

template <typename Texts>
std::string listLine(const Texts& texts, const std::vector<std::size_t>& widths) {
    std::string line;
    std::size_t i = 0;
    for (const auto& text : texts) {
        line += i > 0 ? " " : "";
        if (isOnOneLine(text)) {
            appendPadded(line, text, widths[i++]);
        } else {
            appendPadded(line, onOneLine(text), widths[i++]);
        }
    }
    return line;
}

void writeList(const ReportTable& table, LineSink& sink, UserInterface* parent) {
    if (table.columns.empty()) {
        return;
    }
    const auto widths = widthsOf(table, parent);
    if (widths.empty()) {
        return;
    }
    std::vector<std::string> head;
    for (std::size_t i = 0; i < table.headLines; ++i) {
        std::vector<std::string> texts;
        for (const auto& column : table.columns) {
            texts.push_back(i < column.head.size() ? column.head[i] : std::string());
        }
        head.push_back(listLine(texts, widths));
    }
    std::vector<std::string> rules;
    for (const auto width : widths) {
        rules.emplace_back(width, '-');
    }
    head.push_back(listLine(rules, widths));
    for (const auto& line : head) {
        sink.line(line);
    }
    sink.setTableHead(head);
    std::size_t count = 0;
    for (const auto& row : table.rows) {
        if (++count % kPollEvery == 0 && cancelRequested(parent)) {
            return;
        }
        sink.line(listLine(row.cells(), widths));
    }
    sink.setTableHead({});
}

// --- Grids ------------------------------------------------------------------------------------

/// Columns of a grid that stand side by side.
struct GridBlock {
    std::size_t first = 0;
    std::size_t end = 0;
};

class GridWriter {
  public:
    GridWriter(const ReportTable& table, std::size_t pageWidth, LineSink& sink,
               UserInterface* parent)
        : table_(table), pageWidth_(pageWidth), sink_(sink), parent_(parent) {
        for (const auto& row : table.rows) {
            cells_.push_back(row.cells());
        }
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            std::size_t width = shownWidth(table.columns[i].head.front());
            for (const auto& row : cells_) {
                for (const auto line : linesOf(row[i])) {
                    width = std::max(width, shownWidth(line));
                }
            }
            widths_.push_back(width);
        }
    }

    void write() {
        for (std::size_t first = 0; first < widths_.size() && !cells_.empty();) {
            const auto end = endOfBlock(first);
            if (first > 0) {
                sink_.setTableHead({});
                sink_.line({});
            }
            if (!writeBlock({first, end})) {
                return;
            }
            first = end;
        }
        sink_.setTableHead({});
        for (const auto& list : table_.lists) {
            sink_.line({});
            sink_.line(list.heading);
            for (const auto& line : list.lines) {
                sink_.line("\t" + onOneLine(line));
            }
        }
    }

  private:
    /// As many columns as the line has room for, at least one.
    [[nodiscard]] std::size_t endOfBlock(std::size_t first) const {
        std::size_t width = kLabelWidth + 1 + widths_[first];
        std::size_t end = first + 1;
        while (end < widths_.size() && width + 1 + widths_[end] <= pageWidth_) {
            width += 1 + widths_[end++];
        }
        return end;
    }

    /// False after a cancel.
    bool writeBlock(GridBlock block) {
        std::string head;
        appendPadded(head, {}, kLabelWidth);
        for (std::size_t i = block.first; i < block.end; ++i) {
            head += ' ';
            appendPadded(head, table_.columns[i].head.front(), widths_[i]);
        }
        sink_.line(head);
        sink_.setTableHead({head});
        for (std::size_t row = 0; row < cells_.size(); ++row) {
            if (row % kPollEvery == 0 && cancelRequested(parent_)) {
                return false;
            }
            writeRow(row, block);
        }
        return true;
    }

    struct Line {
        std::string text{};
        std::size_t width = 0;

        void add(std::string_view added, std::size_t at, std::size_t most) {
            text.append(at - width, ' ');
            appendPadded(text, added, most);
            width = at + std::max(most, shownWidth(added));
        }
    };

    /// The further names of a cell stand below its first.
    void writeRow(std::size_t row, GridBlock block) {
        std::vector<Line> lines(1);
        lines.front().add(table_.rows[row].label(), 0, kLabelWidth);
        std::size_t width = kLabelWidth;
        for (std::size_t i = block.first; i < block.end; ++i) {
            std::size_t n = 0;
            for (const auto text : linesOf(cells_[row][i])) {
                if (n == lines.size()) {
                    lines.emplace_back();
                }
                lines[n++].add(text, width + 1, widths_[i]);
            }
            width += 1 + widths_[i];
        }
        for (auto& line : lines) {
            line.add({}, width, 0);
            sink_.line(line.text);
        }
    }

    const ReportTable& table_;
    std::size_t pageWidth_;
    LineSink& sink_;
    UserInterface* parent_;
    std::vector<std::vector<std::string_view>> cells_{};
    std::vector<std::size_t> widths_{};
};

}  // namespace

void writeLines(const ReportContent& report, std::size_t pageWidth, LineSink& sink,
                UserInterface* parent) {
    sink.startReport(report.head);
    writeHead(report.head, sink);
    for (const auto& line : report.lines) {
        sink.captionLine(line);
    }
    if (report.table.isGrid) {
        GridWriter(report.table, pageWidth, sink, parent).write();
    } else {
        writeList(report.table, sink, parent);
    }
}

void TextPages::startReport(const ReportHead&) {
    text_ += text_.empty() ? "" : "\f";
    onPage_ = 0;
    tableHead_.clear();
}

void TextPages::put(std::string_view text) {
    text_ += text;
    text_ += '\n';
    ++onPage_;
}

void TextPages::line(std::string_view text) {
    if (pageLines_ > 0 && onPage_ >= pageLines_) {
        text_ += '\f';
        onPage_ = 0;
        for (const auto& head : tableHead_) {
            put(head);
        }
    }
    put(text);
}

void TextPages::captionLine(const ReportLine& line) {
    this->line(line.lead + onOneLine(line.value));
}

std::string reportText(const std::vector<ReportContent>& reports, const TextLayout& layout,
                       UserInterface* parent) {
    TextPages pages(layout.pageLines);
    for (const auto& report : reports) {
        writeLines(report, layout.pageWidth, pages, parent);
        if (cancelRequested(parent)) {
            break;
        }
    }
    return pages.text();
}

std::string delimitedTable(const ReportTable& table) {
    std::string text;
    bool isFirst = true;
    const auto add = [&](std::string_view field) {
        text += isFirst ? "" : ";";
        if (isOnOneLine(field)) {
            text += field;
        } else {
            text += onOneLine(field);
        }
        isFirst = false;
    };
    for (const auto& column : table.columns) {
        add(column.name);
    }
    text += '\n';
    for (const auto& row : table.rows) {
        isFirst = true;
        for (const auto cell : row.cells()) {
            add(cell);
        }
        text += '\n';
    }
    return text;
}

}  // namespace kavu
