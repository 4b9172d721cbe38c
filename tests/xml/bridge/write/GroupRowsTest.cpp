#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "xml/bridge/write/GroupRows.h"

#include <array>

#include <gtest/gtest.h>

namespace kavu {
namespace {

GroupRows rowsOf(std::string_view text) {
    CommandIndex commands;
    TmatsReader reader;
    auto source = ByteSource::fromMemory(text);
    (void)commands.read(reader, source);
    return GroupRows(SdkGroup('R', 1, std::move(commands)));
}

std::vector<std::string> leftOf(const GroupRows& rows) {
    std::vector<std::string> fields;
    rows.forEachLeft([&](std::string_view field, std::string_view) { fields.emplace_back(field); });
    return fields;
}

TEST(GroupRows, FindsTheFirstValueInAnyCase) {
    auto rows = rowsOf("R-1\\rid:;R-1\\RID:a;R-1\\RID:b;");
    EXPECT_EQ(rows.take(rows.stem("rid"), {}), "a");
    EXPECT_EQ(leftOf(rows), (std::vector<std::string>{"RID"}));
}

TEST(GroupRows, WalksTheRowsThatAreThere) {
    auto rows = rowsOf("R-1\\A-999999999:x;R-1\\B-7:x;R-1\\A-7:x;R-1\\C-5-3:x;");
    const std::array<int, 3> stems{rows.stem("A"), rows.stem("B"), rows.stem("C")};
    EXPECT_EQ(rows.nextRow(stems, {}, 0), 5);
    EXPECT_EQ(rows.nextRow(stems, {}, 5), 7);
    EXPECT_EQ(rows.nextRow(stems, {}, 7), 999999999);
    EXPECT_EQ(rows.nextRow(stems, {}, 999999999), 0);
    EXPECT_EQ(rows.nextRow(stems, {5}, 0), 3);
    EXPECT_EQ(rows.nextRow(stems, {6}, 0), 0);
}

TEST(GroupRows, KeepsAFieldThatIsNoCodeAmongWhatIsLeft) {
    const auto rows = rowsOf("R-1\\A-1-x:1;R-1\\B-01:1;");
    EXPECT_EQ(leftOf(rows), (std::vector<std::string>{"A-1-x", "B-01"}));
}

TEST(GroupRows, TakesAllOfAStemBelowARow) {
    auto rows = rowsOf("R-1\\A-1-1:x;R-1\\A-1-2-3:x;R-1\\A-2-1:x;");
    rows.takeBelow(rows.stem("A"), {1});
    EXPECT_EQ(leftOf(rows), (std::vector<std::string>{"A-2-1"}));
}

}  // namespace
}  // namespace kavu
