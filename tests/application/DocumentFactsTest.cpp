#include "application/DocumentFacts.h"

#include <set>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using enum OperationId;

struct RuleCase {
    OperationId id;
    const char* what;
    DocumentFacts facts;
    bool allowed;
};

class OperationRules : public testing::TestWithParam<RuleCase> {};

TEST_P(OperationRules, AllowAnOperationAsTheDocumentIs) {
    EXPECT_EQ(allows(GetParam().id, GetParam().facts), GetParam().allowed) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OperationRules,
    testing::Values(
        RuleCase{Open, "always", {}, true}, RuleCase{Create, "always", {}, true},
        RuleCase{Save, "nothing to save", {}, false}, RuleCase{Save, "open", {.open = true}, true},
        RuleCase{SaveAs, "nothing to save", {}, false},
        RuleCase{Close, "nothing to close", {}, false},
        RuleCase{Close, "open", {.open = true}, true},
        RuleCase{EditGeneral, "no document", {}, false},
        RuleCase{EditGeneral, "open", {.open = true}, true},
        RuleCase{EditHardware, "from 1996", {.open = true, .version = 1996}, true},
        RuleCase{EditHardware, "before 1996", {.open = true, .version = 1995}, false},
        RuleCase{EditVendor, "before 2004", {.open = true, .version = 2001}, false},
        RuleCase{EditVendor, "from 2004", {.open = true, .version = 2004}, true},
        RuleCase{EditTransmission, "no RF source", {.open = true, .hasTapeSource = true}, false},
        RuleCase{EditTransmission, "an RF source", {.open = true, .hasRadioSource = true}, true},
        RuleCase{EditRecorder, "no tape source", {.open = true, .hasRadioSource = true}, false},
        RuleCase{EditRecorder, "a tape source", {.open = true, .hasTapeSource = true}, true},
        RuleCase{EditMultiplex, "neither", {.open = true}, false},
        RuleCase{EditMultiplex, "one of either", {.open = true, .hasTapeSource = true}, true},
        RuleCase{EditStream, "no link", {.open = true}, false},
        RuleCase{EditStream, "a link", {.open = true, .hasDataLink = true}, true},
        RuleCase{EditStream,
                 "messages from 2009",
                 {.open = true, .version = 2009, .hasMessageStream = true},
                 true},
        RuleCase{EditStream,
                 "messages before 2009",
                 {.open = true, .version = 2007, .hasMessageStream = true},
                 false},
        RuleCase{EditPam, "no document", {}, false},
        RuleCase{EditConversion, "open", {.open = true}, true},
        RuleCase{RenameSource, "no document", {}, false},
        RuleCase{ChangeEdition, "always", {}, true}));

TEST(Operations, ThatChangeTheDocumentHaveANameOfTheirOwn) {
    std::set<std::string_view> names;
    for (int id = static_cast<int>(EditGeneral); id <= static_cast<int>(ChangeEdition); ++id) {
        const auto name = operationName(static_cast<OperationId>(id));
        EXPECT_FALSE(name.empty()) << id;
        EXPECT_TRUE(names.insert(name).second) << name;
    }
    for (const auto id : {Create, Open, Save, SaveAs, Close, Undo, Redo, ShowPlots}) {
        EXPECT_TRUE(operationName(id).empty());
    }
    EXPECT_EQ(operationName(RenameSource), "Rename of Data Source");
}

}  // namespace
}  // namespace kavu
