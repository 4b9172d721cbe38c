#include "conversion/PairFile.h"

#include "conversion/PairSet.h"
#include "core/FieldRules.h"
#include "core/Printf.h"
#include "core/Text.h"

namespace kavu {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutQuotes(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = trim(text.substr(1, text.size() - 2));
    }
    return text;
}

bool beginsAsNumber(std::string_view text) {
    text = withoutQuotes(text);
    return !text.empty() &&
           (isDigit(text[0]) || text[0] == '-' || text[0] == '+' || text[0] == '.');
}

PairFile failed(std::string text) {
    PairFile file;
    file.error = std::move(text);
    return file;
}

}  // namespace

PairFile parsePairFile(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    PairFile file;
    bool mayBeHead = true;
    for (int row = 1; !text.empty(); ++row) {
        const auto end = text.find('\n');
        const auto line = trim(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const auto columns = splitColumnPair(line);
        const auto x = parseDouble(withoutQuotes(columns.first));
        const auto y = parseDouble(withoutQuotes(columns.second));
        if (mayBeHead && !beginsAsNumber(columns.first) && !beginsAsNumber(columns.second)) {
            mayBeHead = false;
            continue;
        }
        mayBeHead = false;
        if (!x || !y) {
            return failed(formatPrintf(
                "Error in row #%d. %s Value found is not a valid floating point number", row,
                x ? "Y" : "X"));
        }
        if (file.x.size() == kMostFilePairs) {
            return failed(
                formatPrintf("There are more than %d pairs in the file.", kMostFilePairs));
        }
        file.x.push_back(*x);
        file.y.push_back(*y);
    }
    return file;
}

}  // namespace kavu
