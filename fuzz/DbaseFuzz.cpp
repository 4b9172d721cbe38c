// Tables: whatever a header states, every cell is within the file, a search and a purge end, and
// a new row is read as it was written.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"
#include "mdb/dbase/DbaseTable.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace {

using namespace kavu;

constexpr std::int64_t kMostRowsRead = 1000;

void readAll(DbaseTable& table) {
    const auto rows = std::min(table.rowCount(), kMostRowsRead);
    for (std::int64_t row = 0; row < rows; ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const auto text = table.readCell(nullptr, row, column);
            const auto& at = table.columns()[static_cast<std::size_t>(column)];
            KAVU_CHECK(text && text->size() <= static_cast<std::size_t>(at.length));
        }
    }
    for (int column = 0; column < table.columnCount(); ++column) {
        KAVU_CHECK(table.findRows(column, "A", {})->size() <= DbaseTable::kMostMatches);
    }
}

void addRow(DbaseTable& table) {
    const auto& columns = table.columns();
    const auto text = std::find_if(columns.begin(), columns.end(), [](const DbaseColumn& column) {
        return isDbaseTextType(column.type) && column.length > 0;
    });
    if (text == columns.end()) {
        return;
    }
    const int column = static_cast<int>(text - columns.begin());
    const auto rows = table.rowCount();
    std::int64_t row = DbaseTable::kNewRow;
    KAVU_CHECK(table.writeCell(nullptr, &row, column, "Z"));
    KAVU_CHECK(row == rows && table.rowCount() == rows + 1);
    KAVU_CHECK(table.readCell(nullptr, row, column) == "Z");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = fuzz::makeScratch() + "/t.dbf";
    static const WorkingStore store{Environment{}};
    static const Messages messages(store);
    KAVU_CHECK(
        writeWholeFile(path, std::string_view(reinterpret_cast<const char*>(data), size)).ok());
    DbaseTable table(messages);
    if (!table.open(nullptr, path)) {
        return 0;
    }
    readAll(table);
    KAVU_CHECK(table.purgeDeletedRows(nullptr) == 0);
    addRow(table);
    const auto rows = table.rowCount();
    table.close();
    KAVU_CHECK(table.open(nullptr, path));
    KAVU_CHECK(table.rowCount() == rows);
    return 0;
}
