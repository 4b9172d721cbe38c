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
    // 1 to 56, as far as there are commands.
    EXPECT_EQ(ids.size(), 44U);
}

TEST(Commands, PromptsComeFromTheTableOfMessagesWhereItHasThem) {
    EXPECT_EQ(commandPrompt(General), "Edit GENERAL Information Section");
    EXPECT_EQ(commandPrompt(Exit), "Exit KAVU-9");
    EXPECT_EQ(commandPrompt(NoBackups), "Overwrite TMATS files without a backup");
}

struct RuleCase {
    CommandId id;
    const char* what;
    DocumentFacts facts;
    bool allowed;
};

class CommandRules : public testing::TestWithParam<RuleCase> {};

TEST_P(CommandRules, AllowACommandAsTheDocumentIs) {
    EXPECT_EQ(documentAllows(GetParam().id, GetParam().facts), GetParam().allowed)
        << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CommandRules,
    testing::Values(
        RuleCase{Open, "always", {}, true}, RuleCase{CreateNew, "always", {}, true},
        RuleCase{Save, "nothing to save", {}, false}, RuleCase{Save, "open", {.open = true}, true},
        RuleCase{SaveAs, "nothing to save", {}, false},
        RuleCase{Close, "nothing to close", {}, false},
        RuleCase{Close, "open", {.open = true}, true}, RuleCase{General, "no document", {}, false},
        RuleCase{General, "open", {.open = true}, true},
        RuleCase{Hardware, "from 1996", {.open = true, .version = 1996}, true},
        RuleCase{Hardware, "before 1996", {.open = true, .version = 1995}, false},
        RuleCase{Vendor, "before 2004", {.open = true, .version = 2001}, false},
        RuleCase{Vendor, "from 2004", {.open = true, .version = 2004}, true},
        RuleCase{Transmission, "no RF source", {.open = true, .hasTapeSource = true}, false},
        RuleCase{Transmission, "an RF source", {.open = true, .hasRadioSource = true}, true},
        RuleCase{Recorder, "no tape source", {.open = true, .hasRadioSource = true}, false},
        RuleCase{Recorder, "a tape source", {.open = true, .hasTapeSource = true}, true},
        RuleCase{Multiplex, "neither", {.open = true}, false},
        RuleCase{Multiplex, "one of either", {.open = true, .hasTapeSource = true}, true},
        RuleCase{Stream, "no link", {.open = true}, false},
        RuleCase{Stream, "a link", {.open = true, .hasDataLink = true}, true},
        RuleCase{Stream,
                 "messages from 2009",
                 {.open = true, .version = 2009, .hasMessageStream = true},
                 true},
        RuleCase{Stream,
                 "messages before 2009",
                 {.open = true, .version = 2007, .hasMessageStream = true},
                 false},
        RuleCase{ExpandAll, "no document", {}, false},
        RuleCase{CollapseAll, "open", {.open = true}, true},
        RuleCase{ExpandBranch, "nothing selected", {.open = true}, false},
        RuleCase{ExpandBranch, "selected", {.open = true, .treeItemSelected = true}, true}));

}  // namespace
}  // namespace kavu
