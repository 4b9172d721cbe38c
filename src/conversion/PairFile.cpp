#include "conversion/PairFile.h"

#include "conversion/PairText.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "vocabulary/FieldRules.h"

#include <optional>

namespace kavu {

namespace {

bool beginsAsNumber(std::string_view text) {
    return !text.empty() &&
           (isDigit(text[0]) || text[0] == '-' || text[0] == '+' || text[0] == '.');
}

/// The rows of a file that hold something, without their remarks.
class FilledRows {
  public:
    explicit FilledRows(std::string_view text) : text_(text) {
        if (text_.starts_with(kByteOrderMark)) {
            text_.remove_prefix(kByteOrderMark.size());
        }
    }

    /// Nothing at the end.
    std::optional<std::string_view> next() {
        while (!text_.empty()) {
            const auto end = text_.find('\n');
            const auto row = withoutRemark(text_.substr(0, end));
            text_.remove_prefix(end == std::string_view::npos ? text_.size() : end + 1);
            ++number_;
            if (!trim(row).empty()) {
                return row;
            }
        }
        return std::nullopt;
    }

    /// Of the row that `next` gave last, from 1; empty ones count.
    [[nodiscard]] int number() const { return number_; }

  private:
    /// A remark begins with `#`, at the start of a row or after white space.
    static std::string_view withoutRemark(std::string_view row) {
        for (auto at = row.find('#'); at != std::string_view::npos; at = row.find('#', at + 1)) {
            if (at == 0 || row[at - 1] == ' ' || row[at - 1] == '\t') {
                return row.substr(0, at);
            }
        }
        return row;
    }

    std::string_view text_;
    int number_ = 0;
};

/// What the rows of a file have in common.
struct PairLayout {
    ColumnSeparator separator = ColumnSeparator::Blanks;
    int firstRow = 0;            ///< number of the first one with values
    bool hasTwoColumns = false;  ///< some row, a head included, has a second cell
    CommaRule commas;
};

/// The first row with values says how all are separated: a comma that separated columns in one
/// row and was a decimal comma in the next could not be told from a missing column.
PairLayout layoutOf(std::string_view text) {
    PairLayout layout;
    FilledRows rows(text);
    bool mayBeHead = true;
    while (const auto row = rows.next()) {
        const auto own = layout.firstRow == 0 ? separatorOf(*row) : layout.separator;
        const auto cells = splitRow(*row, own);
        const bool isHead =
            mayBeHead && !beginsAsNumber(cells.first) && !beginsAsNumber(cells.second);
        mayBeHead = false;
        layout.hasTwoColumns = layout.hasTwoColumns || !cells.second.empty();
        if (isHead) {
            continue;
        }
        if (layout.firstRow == 0) {
            layout.firstRow = rows.number();
            layout.separator = own;
        }
        layout.commas.see(cells.first);
        layout.commas.see(cells.second);
    }
    return layout;
}

/// Passes the pairs one after the other to `take`. Returns what is wrong with the file, or an
/// empty text.
template <typename Take>
std::string readPairs(std::string_view text, const PairLayout& layout, Take take) {
    FilledRows rows(text);
    std::size_t count = 0;
    while (const auto row = rows.next()) {
        if (rows.number() < layout.firstRow || layout.firstRow == 0) {
            continue;
        }
        const auto cells = splitRow(*row, layout.separator);
        if (!cells.rest.empty()) {
            return pairColumnsError(rows.number(), cells.rest);
        }
        auto x = layout.commas.numberText(cells.first);
        auto y = layout.commas.numberText(cells.second);
        if (!x || !y) {
            return pairValueError(rows.number(), x ? "Y" : "X", x ? cells.second : cells.first);
        }
        if (++count > kMostFilePairs) {
            return formatPrintf("There are more than %d pairs in the file.", kMostFilePairs);
        }
        take(*x, *y);
    }
    return {};
}

}  // namespace

PairFile parsePairFile(std::string_view text) {
    PairFile file;
    const auto take = [&file](const std::string& x, const std::string& y) {
        file.x.push_back(parseDouble(x).value_or(0));
        file.y.push_back(parseDouble(y).value_or(0));
    };
    file.error = readPairs(text, layoutOf(text), take);
    if (!file.error.empty()) {
        file.x.clear();
        file.y.clear();
    }
    return file;
}

PairColumns splitPairFile(std::string_view text) {
    PairColumns columns;
    const auto layout = layoutOf(text);
    columns.isOneColumn = !layout.hasTwoColumns;
    auto error = readPairs(text, layout, [&columns](const std::string& x, const std::string& y) {
        columns.telemetry.append(x).append("\n");
        columns.engineering.append(y).append("\n");
        ++columns.count;
    });
    if (!error.empty()) {
        return {{}, {}, 0, columns.isOneColumn, std::move(error)};
    }
    return columns;
}

}  // namespace kavu
