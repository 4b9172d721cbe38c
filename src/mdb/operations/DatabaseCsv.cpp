#include "mdb/operations/DatabaseCsv.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "mdb/operations/DatabaseEdit.h"
#include "mdb/record/MdbFields.h"

namespace kavu {

namespace {

bool needsQuotes(const std::string& value) {
    return value.find_first_of(",\"\r\n") != std::string::npos ||
           trimBlanks(value).size() != value.size();
}

}  // namespace

std::string csvLine(const std::vector<std::string>& values) {
    std::string line;
    for (std::size_t i = 0; i < values.size(); ++i) {
        line += i == 0 ? "" : ",";
        if (!needsQuotes(values[i])) {
            line += values[i];
            continue;
        }
        line += '"';
        for (const char c : values[i]) {
            line += c == '"' ? "\"\"" : std::string(1, c);
        }
        line += '"';
    }
    return line + "\r\n";
}

IoStatus writeDatabaseCsv(const std::string& path, const DatabaseEdit& edit,
                          const std::vector<std::size_t>& rows,
                          const std::vector<std::size_t>& fields) {
    std::vector<std::string> values;
    for (const auto field : fields) {
        values.emplace_back(mdbFields()[field].label);
    }
    auto text = csvLine(values);
    for (const auto row : rows) {
        values.clear();
        for (const auto field : fields) {
            fromStoredForm(values.emplace_back(edit.row(row)[field]));
        }
        text += csvLine(values);
    }
    return replaceUserFile(path, text);
}

}  // namespace kavu
