#include "conversion/PairFile.h"

#include "conversion/PairSet.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "vocabulary/FieldRules.h"

namespace kavu {

namespace {

std::string_view withoutQuotes(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = trim(text.substr(1, text.size() - 2));
    }
    return text;
}

bool beginsAsNumber(std::string_view text) {
    return !text.empty() &&
           (isDigit(text[0]) || text[0] == '-' || text[0] == '+' || text[0] == '.');
}

/// One line of values.
struct PairLine {
    std::string_view first;
    std::string_view second;
    double x;
    double y;
};

/// Passes the lines one after the other to `take`. Returns what is wrong with the file, or
/// an empty text.
template <typename Take>
std::string readLines(std::string_view text, Take take) {
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    bool mayBeHead = true;
    std::size_t count = 0;
    for (int row = 1; !text.empty(); ++row) {
        const auto end = text.find('\n');
        const auto line = trim(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const auto columns = splitColumnPair(line);
        const auto first = withoutQuotes(columns.first);
        const auto second = withoutQuotes(columns.second);
        const bool isHead = mayBeHead && !beginsAsNumber(first) && !beginsAsNumber(second);
        mayBeHead = false;
        if (isHead) {
            continue;
        }
        const auto x = parseDouble(first);
        const auto y = parseDouble(second);
        if (!x || !y) {
            return formatPrintf(
                "Error in row #%d. %s Value found is not a valid floating point number", row,
                x ? "Y" : "X");
        }
        if (++count > kMostFilePairs) {
            return formatPrintf("There are more than %d pairs in the file.", kMostFilePairs);
        }
        take(PairLine{first, second, *x, *y});
    }
    return {};
}

}  // namespace

PairFile parsePairFile(std::string_view text) {
    PairFile file;
    file.error = readLines(text, [&file](const PairLine& line) {
        file.x.push_back(line.x);
        file.y.push_back(line.y);
    });
    if (!file.error.empty()) {
        file.x.clear();
        file.y.clear();
    }
    return file;
}

PairColumns splitPairFile(std::string_view text) {
    PairColumns columns;
    auto error = readLines(text, [&columns](const PairLine& line) {
        columns.telemetry.append(line.first).append("\n");
        columns.engineering.append(line.second).append("\n");
        ++columns.count;
    });
    return error.empty() ? columns : PairColumns{{}, {}, 0, std::move(error)};
}

}  // namespace kavu
