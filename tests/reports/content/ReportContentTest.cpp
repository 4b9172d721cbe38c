// The cells of a row.
#include "reports/content/ReportContent.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(TableRow, GivesBackCellsOfWhateverLength) {
    std::vector<std::string> cells;
    for (const std::size_t size : {0U, 1U, 15U, 127U, 128U, 254U, 255U, 256U, 70'000U}) {
        cells.emplace_back(size, size % 2 == 0 ? '\xFF' : 'x');
        cells.emplace_back();
    }
    TableRow row("label");
    for (const auto& cell : cells) {
        row.add(cell);
    }
    const auto given = row.cells();
    ASSERT_EQ(given.size(), cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_EQ(given[i], cells[i]) << i;
    }
    row.clearCells();
    EXPECT_TRUE(row.cells().empty());
    EXPECT_EQ(row.label(), "label");
}

}  // namespace
}  // namespace kavu
