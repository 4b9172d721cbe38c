#include "conversion/PairTable.h"

#include "conversion/EuNumbers.h"
#include "conversion/PairSetFit.h"
#include "core/text/Text.h"

#include <span>
#include <string_view>
#include <vector>

namespace kavu {

namespace {

std::string quotedCell(const std::string& text, char separator) {
    return text.find_first_of(std::string{separator, '"', '\r', '\n'}) == std::string::npos
               ? text
               : "\"" + replaceAll(text, "\"", "\"\"") + "\"";
}

void appendRow(std::string& table, std::span<const std::string> cells, char separator) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        table += i == 0 ? std::string() : std::string(1, separator);
        table += quotedCell(cells[i], separator);
    }
    table += '\n';
}

}  // namespace

std::string pairTable(const PairSet& pairs, const FitResult& result, char separator) {
    std::string table;
    std::vector<std::string> cells = {"Pair #", "Telemetry Value", "EU Value"};
    if (result.fitted) {
        cells.insert(cells.end(), {"Corrected EU Value", "Error", "Out Of Tolerance"});
    }
    appendRow(table, cells, separator);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto& pair = pairs.pairs()[i];
        cells = {std::to_string(i + 1), pair.telemetry, pair.engineering};
        if (result.fitted && i < result.computed.size()) {
            cells.insert(cells.end(), {exactText(result.computed[i]), exactText(result.errors[i]),
                                       result.marked[i] ? "*" : ""});
        }
        appendRow(table, cells, separator);
    }
    return table;
}

}  // namespace kavu
