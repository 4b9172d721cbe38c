#include "core/document/ConversionRuns.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "support/TestContext.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::TestContext;
using Runs = std::vector<ConversionRuns::Run>;

ConversionRuns noted(const std::vector<std::string>& commands, const std::string& path) {
    ConversionRunNotes notes;
    for (const auto& command : commands) {
        notes.add(command, command.size() + 2);
    }
    return notes.take(path);
}

TEST(ConversionRuns, CommandsOfOneChunkThatAreTogetherAreOneRun) {
    TestContext t;
    t.write(working::kData1, "");
    const auto path = t.store.pathOf(working::kData1);
    const auto runs = noted({"C-1\\DCN:A;", "C-1\\DCT:NON;", "C-24\\DCN:B;", "C-25\\DCN:C;",
                             "C-3\\MN1:x;", "C-x\\DCN:D;", "C--9\\DCN:E;"},
                            path);
    EXPECT_EQ(runs.runs, (Runs{{0, 12 + 14 + 13}, {1, 13}, {0, 12 + 12 + 13}}));
    EXPECT_EQ(runs.stamp, fileStamp(path));
    EXPECT_FALSE(runs.stamp.empty());
}

TEST(ConversionRuns, WhereIndicesAlternateTooOftenThereAreNoNotes) {
    TestContext t;
    t.write(working::kData1, "");
    ConversionRunNotes notes;
    for (std::size_t i = 0; i <= ConversionRunNotes::kMostRuns; ++i) {
        notes.add(i % 2 == 0 ? "C-1\\A:1;" : "C-99\\A:1;", 10);
    }
    const auto none = notes.take(t.store.pathOf(working::kData1));
    EXPECT_TRUE(none.runs.empty());
    EXPECT_EQ(none.stamp, "");
}

TEST(ConversionRuns, ASplitNotesTheWholeFileThatItHasWritten) {
    TestContext t;
    ConversionRuns runs;
    t.steps.noteConversions = [&](ConversionRuns&& made) { runs = std::move(made); };
    const auto path = t.folder / "in.tma";
    test::writeFile(
        path, "G\\106:09;C-1\\DCN:A;\r\nC-026\\DCN:B;C-1\\COM:two\r\nlines;COMMENT: c;C-2\\X;C-y;");
    ASSERT_TRUE(splitIntoGroupFiles(t.context, &t.ui, path));
    const auto written = t.store.pathOf(working::kData1);
    EXPECT_EQ(runs.stamp, fileStamp(written));
    ASSERT_EQ(runs.runs.size(), 3U);
    std::uint64_t at = 0;
    const auto bytes = t.read(working::kData1);
    for (const auto& run : runs.runs) {
        at += run.length;
        EXPECT_EQ(bytes.substr(at - 3, 3), ";\r\n");
    }
    EXPECT_EQ(at, bytes.size());
    EXPECT_EQ(runs.runs[1], (ConversionRuns::Run{1, std::string_view("C-26\\DCN:B;\r\n").size()}));
}

}  // namespace
}  // namespace kavu
