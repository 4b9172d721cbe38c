#include "conversion/PairText.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

/// A number with one comma between two digits and no point: where the comma is.
std::optional<std::size_t> commaOf(std::string_view value) {
    const auto at = value.find(',');
    if (at == std::string_view::npos || at == 0 || at + 1 == value.size() ||
        !isDigit(value[at - 1]) || !isDigit(value[at + 1]) ||
        value.find_first_of(",.", at + 1) != std::string_view::npos ||
        value.find('.') != std::string_view::npos) {
        return std::nullopt;
    }
    return at;
}

std::string withPoint(std::string_view value, std::size_t comma) {
    std::string text(value);
    text[comma] = '.';
    return text;
}

/// One to three digits, not from 0, then three: "12,500".
bool mayGroupThousands(std::string_view value, std::size_t comma) {
    auto whole = value.substr(0, comma);
    if (whole.starts_with('-') || whole.starts_with('+')) {
        whole.remove_prefix(1);
    }
    const auto behind = value.substr(comma + 1);
    constexpr std::size_t kGroup = 3;
    return whole.size() <= kGroup && !whole.starts_with('0') && behind.size() == kGroup &&
           std::all_of(behind.begin(), behind.end(), isDigit);
}

bool isNumberInSomeForm(std::string_view value) {
    const auto comma = commaOf(value);
    return parseDouble(comma ? withPoint(value, *comma) : std::string(value)).has_value();
}

std::string_view withoutQuotes(std::string_view text) {
    text = trim(text);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = trim(text.substr(1, text.size() - 2));
    }
    return text;
}

/// Takes the cell at the front of a row. A separator in quotes is part of its cell.
std::string_view takeCell(std::string_view& row, char separator) {
    std::size_t from = row.find_first_not_of(' ');
    if (from != std::string_view::npos && row[from] == '"') {
        from = row.find('"', from + 1);
    }
    const auto end = from == std::string_view::npos ? from : row.find(separator, from);
    const auto cell = row.substr(0, end);
    row.remove_prefix(end == std::string_view::npos ? row.size() : end + 1);
    if (separator == ' ') {
        row = trim(row);
    }
    return withoutQuotes(cell);
}

}  // namespace

ColumnSeparator separatorOf(std::string_view row) {
    if (row.find('\t') != std::string_view::npos) {
        return ColumnSeparator::Tab;
    }
    if (row.find(';') != std::string_view::npos) {
        return ColumnSeparator::Semicolon;
    }
    if (row.find(',') == std::string_view::npos) {
        return ColumnSeparator::Blanks;
    }
    const auto cells = splitRow(row, ColumnSeparator::Blanks);
    return isNumberInSomeForm(cells.first) && isNumberInSomeForm(cells.second) && cells.rest.empty()
               ? ColumnSeparator::Blanks
               : ColumnSeparator::Comma;
}

RowCells splitRow(std::string_view row, ColumnSeparator separator) {
    const char by = static_cast<char>(separator);
    row = separator == ColumnSeparator::Tab ? trimRight(row) : trim(row);
    RowCells cells;
    cells.first = takeCell(row, by);
    cells.second = takeCell(row, by);
    const auto filled = row.find_first_not_of(std::string{by, ' ', '\t'});
    cells.rest = filled == std::string_view::npos ? std::string_view() : trim(row.substr(filled));
    return cells;
}

void CommaRule::see(std::string_view value) {
    point_ = point_ || (value.find('.') != std::string_view::npos && parseDouble(value));
    const auto comma = commaOf(value);
    decimalComma_ = decimalComma_ || (comma && !mayGroupThousands(value, *comma) &&
                                      parseDouble(withPoint(value, *comma)));
}

std::optional<std::string> CommaRule::numberText(std::string_view value) const {
    const auto comma = commaOf(value);
    if (comma && mayGroupThousands(value, *comma) && (point_ || !decimalComma_)) {
        return std::nullopt;
    }
    auto text = comma ? withPoint(value, *comma) : std::string(value);
    return parseDouble(text) ? std::optional(std::move(text)) : std::nullopt;
}

std::string CommaRule::reason(std::string_view value) {
    const auto comma = commaOf(value);
    return comma && mayGroupThousands(value, *comma)
               ? formatPrintf(": the comma of '%s' can be a decimal comma or separate thousands",
                              value)
               : std::string();
}

std::string pairValueError(int row, const char* axis, std::string_view value) {
    return formatPrintf("Error in row #%d. %s Value found is not a valid floating point number%s",
                        row, axis, CommaRule::reason(value));
}

std::string pairColumnsError(int row, std::string_view rest) {
    constexpr std::size_t kShown = 40;
    return formatPrintf("Error in row #%d. There are more than two columns: '%s'", row,
                        cutToBytes(rest, kShown));
}

std::optional<std::pair<std::string, std::string>> tabColumns(std::string_view text) {
    std::pair<std::string, std::string> columns;
    bool found = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        auto row = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        const auto tab = row.find('\t');
        if (tab != std::string_view::npos) {
            if (row.find('\t', tab + 1) != std::string_view::npos) {
                return std::nullopt;
            }
            found = true;
        } else if (!trim(row).empty()) {
            return std::nullopt;
        }
        const bool split = tab != std::string_view::npos;
        columns.first.append(trim(row.substr(0, tab))).append("\n");
        columns.second.append(split ? trim(row.substr(tab + 1)) : std::string_view()).append("\n");
    }
    return found ? std::optional(std::move(columns)) : std::nullopt;
}

}  // namespace kavu
