#include "core/document/GroupRewrite.h"
#include "support/TestContext.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <sys/stat.h>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr auto kRules = std::to_array<ValueRule>({
    {'M', "SIF2-", Indices::One, "OTH", "OT"},
    {'M', "X", Indices::None, "A", "B"},
    {'M', "X", Indices::None, "B", "C"},
    {'M', "GONE"},
    {'P', "PAIR-", Indices::Two},
});

struct RewriteCase {
    const char* name;
    char letter;
    const char* before;
    const char* after;  ///< null: untouched
};

class ApplyRules : public testing::TestWithParam<RewriteCase> {};

TEST_P(ApplyRules, ChangesWhatMatches) {
    const auto& c = GetParam();
    test::TestContext t;
    t.write("file", c.before);
    IoStatus status;
    EXPECT_EQ(applyRules(t.reader, t.files, "file", c.letter, 1, kRules, status),
              c.after != nullptr);
    EXPECT_TRUE(status.ok());
    EXPECT_EQ(t.read("file"), c.after == nullptr ? c.before : c.after);
    EXPECT_FALSE(t.has("file.new"));
}

INSTANTIATE_TEST_SUITE_P(
    Files, ApplyRules,
    testing::Values(
        RewriteCase{"ALongerValueThatBeginsWithTheOldOne", 'M', "M-1\\SIF2-1:OTHER;\r\n",
                    "M-1\\SIF2-1:OT;\r\n"},
        RewriteCase{"ThePatternInsideAnotherValue", 'M', "M-1\\COM:see M-1\\X:A;\r\n",
                    "M-1\\COM:B;\r\n"},
        RewriteCase{"NotWhatIsBehindAGap", 'M', "M-1\\SIF2-1:LP;\r\nM-1\\SIF2-3:OTH;\r\n", nullptr},
        RewriteCase{"AnIndexWithoutAValueIsAGap", 'M', "M-1\\SIF2-1:;\r\nM-1\\SIF2-2:OTH;\r\n",
                    nullptr},
        RewriteCase{"NotAnIndexWithALeadingZero", 'M', "M-1\\SIF2-01:OTH;\r\n", nullptr},
        RewriteCase{"NotAnIndexBeyondAllNumbers", 'M', "M-1\\SIF2-99999999999999999999:OTH;\r\n",
                    nullptr},
        RewriteCase{"NotAnotherGroup", 'M', "M-2\\X:A;\r\n", nullptr},
        RewriteCase{"NotAnotherCase", 'M', "m-1\\x:A;\r\n", nullptr},
        RewriteCase{"RulesOneAfterTheOther", 'M', "M-1\\X:A;\r\nM-1\\X:B;\r\n",
                    "M-1\\X:C;\r\nM-1\\X:C;\r\n"},
        RewriteCase{"DeletesAnyValue", 'M', "M-1\\GONE:1;\r\nM-1\\KEPT:2;\r\n", "M-1\\KEPT:2;\r\n"},
        RewriteCase{
            "PairsUpToTheirGaps", 'P',
            "P-1\\PAIR-1-1:a;\r\nP-1\\PAIR-1-2:b;\r\nP-1\\PAIR-1-4:c;\r\nP-1\\PAIR-3-1:d;\r\n",
            "P-1\\PAIR-1-4:c;\r\nP-1\\PAIR-3-1:d;\r\n"}),
    [](const auto& row) { return row.param.name; });

TEST(ApplyRulesTest, AMissingFileIsNoFailure) {
    test::TestContext t;
    IoStatus status;
    EXPECT_FALSE(applyRules(t.reader, t.files, "none", 'M', 1, kRules, status));
    EXPECT_TRUE(status.ok());
}

TEST(ApplyRulesTest, AHundredThousandIndicesAreOnePass) {
    test::TestContext t;
    std::string before;
    std::string after;
    for (int k = 1; k <= 100000; ++k) {
        before += formatPrintf("M-1\\SIF2-%d:OTH;\r\n", k);
        after += formatPrintf("M-1\\SIF2-%d:OT;\r\n", k);
    }
    t.write("file", before);
    IoStatus status;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(applyRules(t.reader, t.files, "file", 'M', 1, kRules, status));
    // A pass for each index would take minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(t.read("file"), after);
}

TEST(RewriteFileTest, AFailureLeavesTheOldFileWhole) {
    test::TestContext t;
    t.write("file", "M-1\\X:A;\r\n");
    ASSERT_TRUE(makeFolder(t.store.pathOf("file.new")).ok());
    IoStatus status;
    EXPECT_FALSE(applyRules(t.reader, t.files, "file", 'M', 1, kRules, status));
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(status.path(), t.store.pathOf("file.new"));
    EXPECT_EQ(t.read("file"), "M-1\\X:A;\r\n");
}

// --- One pass over a file ---------------------------------------------------------------

class RewriteGroupTest : public testing::Test {
  protected:
    bool rewrite(Cut cut, const Visit& visit, const Tail& tail = {}) {
        const bool changed = rewriteGroup(t.files, t.reader, "file", cut, visit, tail, status);
        EXPECT_FALSE(t.has("file.new"));
        return changed;
    }
    ino_t inode() const {
        struct stat info {};
        EXPECT_EQ(::stat(t.store.pathOf("file").c_str(), &info), 0);
        return info.st_ino;
    }
    static void nothing(CommandEdit&) {}

    test::TestContext t;
    IoStatus status;
};

TEST_F(RewriteGroupTest, AFileInWhichNothingChangesIsNotTouched) {
    t.write("file", "A:1 ;B:2;\n");
    const auto before = inode();
    EXPECT_FALSE(rewrite(Cut::Commands, nothing, [](bool) { return std::string(); }));
    EXPECT_TRUE(status.ok());
    EXPECT_EQ(inode(), before);
    EXPECT_EQ(t.read("file"), "A:1 ;B:2;\n");
}

TEST_F(RewriteGroupTest, TheTwoCutsAreNotTheSame) {
    // A lone line feed, a run of carriage returns, a blank and a byte 26, no end.
    t.write("file",
            " \x1a"
            "A:1\n2 ;\r\n\tB:3\r\r\n4;C:5");
    EXPECT_FALSE(rewrite(Cut::Runs, nothing));
    EXPECT_TRUE(status.ok());
    EXPECT_EQ(t.read("file"),
              "\x1a"
              "A:1\n2 ;\r\nB:3\r\r\n4;\r\nC:5\r\n");

    t.write("file",
            " \x1a"
            "A:1\n2 ;\r\n\tB:3\r\r\n4;C:5");
    bool cutOff = false;
    EXPECT_TRUE(rewrite(Cut::Commands, nothing, [&](bool cut) {
        cutOff = cut;
        return std::string("T:1;\r\n");
    }));
    EXPECT_TRUE(cutOff);
    EXPECT_EQ(t.read("file"), "A:1\r\n2;\r\nB:3\r\n4;\r\nT:1;\r\n");
}

TEST_F(RewriteGroupTest, EditsOneCommandAfterTheOther) {
    t.write("file", "A:1;\r\nCOMMENT: x;\r\nB:2;\r\nC:3;\r\n");
    EXPECT_TRUE(rewrite(Cut::Commands, [](CommandEdit& command) {
        if (command.text() == "A:1;") {
            command.before("HEAD:;\r\n");
        } else if (command.text() == "B:2;") {
            command.erase();
        } else if (command.text() == "C:3;") {
            command.setValue("new");
        }
    }));
    EXPECT_EQ(t.read("file"), "HEAD:;\r\nA:1;\r\nCOMMENT: x;\r\nC:new;\r\n");
}

TEST_F(RewriteGroupTest, AFileThatIsNotThereIsAFailureAndIsNotMade) {
    EXPECT_FALSE(rewrite(Cut::Commands, nothing, [](bool) { return std::string("A:1;\r\n"); }));
    EXPECT_EQ(status.code(), ENOENT);
    EXPECT_FALSE(t.has("file"));
}

TEST_F(RewriteGroupTest, ValuesAreAskedForFieldByField) {
    t.write("file", "P-1\\A:1;\r\nP-1\\E:;\r\nNOHEAD:1;\r\nP-1\\B:2;\r\n");
    std::string asked;
    EXPECT_TRUE(rewriteValues(
        t.files, t.reader, "file",
        [&](std::string_view field, std::string_view value) {
            asked.append(field).append("=").append(value).append(" ");
            return field == "B" ? std::optional<std::string>("new") : std::nullopt;
        },
        status));
    EXPECT_EQ(asked, "A=1 B=2 ");
    EXPECT_EQ(t.read("file"), "P-1\\A:1;\r\nP-1\\E:;\r\nNOHEAD:1;\r\nP-1\\B:new;\r\n");
}

}  // namespace
}  // namespace kavu
