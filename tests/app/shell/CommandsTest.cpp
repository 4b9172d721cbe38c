#include "app/shell/Commands.h"

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using enum CommandId;

TEST(Commands, EachStandsInTheTableOnceAndHasAPrompt) {
    std::set<CommandId> ids;
    std::set<std::string_view> keys;
    for (const auto& row : commandTable()) {
        EXPECT_TRUE(ids.insert(row.id).second) << row.text;
        EXPECT_FALSE(commandPrompt(row.id).empty()) << row.text;
        if (!row.keys.empty()) {
            EXPECT_TRUE(keys.insert(row.keys).second) << row.text;
        }
    }
    // 1 to 56, as far as there are commands, and the nineteen without a number.
    EXPECT_EQ(ids.size(), 63U);
}

TEST(Commands, PromptsComeFromTheTableOfMessagesWhereItHasThem) {
    EXPECT_EQ(commandPrompt(General), "Edit GENERAL Information Section");
    EXPECT_EQ(commandPrompt(Exit), "Exit KAVU-9");
    EXPECT_EQ(commandPrompt(NoBackups), "Overwrite TMATS files without a backup");
}

struct RuleCase {
    CommandId id;
    const char* what;
    WindowFacts facts;
    bool allowed;
};

class CommandRules : public testing::TestWithParam<RuleCase> {};

TEST_P(CommandRules, AllowACommandAsTheDocumentAndTheTreeAre) {
    EXPECT_EQ(windowAllows(GetParam().id, GetParam().facts), GetParam().allowed) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CommandRules,
    testing::Values(
        RuleCase{Open, "always", {}, true}, RuleCase{About, "always", {}, true},
        RuleCase{Save, "nothing to save", {}, false},
        RuleCase{Save, "open", {.document = {.open = true}}, true},
        RuleCase{
            Hardware, "as its operation", {.document = {.open = true, .version = 1995}}, false},
        RuleCase{
            Stream, "as its operation", {.document = {.open = true, .hasDataLink = true}}, true},
        RuleCase{ExpandAll, "no document", {}, false},
        RuleCase{CollapseAll, "open", {.document = {.open = true}}, true},
        RuleCase{ExpandBranch, "nothing selected", {.document = {.open = true}}, false},
        RuleCase{ExpandBranch,
                 "selected",
                 {.document = {.open = true}, .treeItemSelected = true},
                 true}));

}  // namespace
}  // namespace kavu
