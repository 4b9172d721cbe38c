#include "cli/EditSteps.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

std::vector<EditStep> stepsOf(std::string_view json, EditActs acts = EditActs::WithTerminals) {
    auto steps = parseEditSteps(json, acts);
    if (const auto* wrong = std::get_if<std::string>(&steps)) {
        ADD_FAILURE() << *wrong;
        return {};
    }
    return std::get<std::vector<EditStep>>(steps);
}

std::string wrongOf(std::string_view json, EditActs acts = EditActs::Plain) {
    const auto steps = parseEditSteps(json, acts);
    const auto* wrong = std::get_if<std::string>(&steps);
    return wrong == nullptr ? "" : *wrong;
}

TEST(EditSteps, ReadsEveryMemberOfAStepInOrder) {
    const auto steps = stepsOf(R"([
        { "do": "add", "at": [1], "values": { "MNA": "Kö\nln", "TRA": "00101" } },
        { "do": "set", "at": [1, "M", 2], "type": "RT To RT", "tracks": ["7", "8"] },
        { "do": "delete", "at": [] },
        { "do": "add-terminal", "at": [2], "list": "sub", "values": { "name": "A" } } ])");
    ASSERT_EQ(steps.size(), 4U);
    EXPECT_EQ(steps[0].act, EditAct::Add);
    EXPECT_EQ(steps[0].numbers(), std::vector<std::size_t>{1});
    ASSERT_EQ(steps[0].values.size(), 2U);
    EXPECT_EQ(steps[0].values[0], std::pair(std::string("MNA"), std::string("K\xC3\xB6\nln")));
    EXPECT_EQ(steps[0].values[1].first, "TRA");
    EXPECT_EQ(steps[1].at, (std::vector<PlacePart>{1, 'M', 2}));
    EXPECT_EQ(steps[1].numbers(), std::nullopt);
    EXPECT_EQ(steps[1].type, "RT To RT");
    EXPECT_EQ(steps[1].tracks, (std::vector<std::string>{"7", "8"}));
    EXPECT_EQ(steps[2].act, EditAct::Delete);
    EXPECT_TRUE(steps[2].at.empty());
    EXPECT_EQ(steps[3].list, "sub");
}

TEST(EditSteps, RefusesWhatIsNoListOfSteps) {
    EXPECT_THAT(wrongOf("[{"), testing::HasSubstr("no JSON"));
    EXPECT_THAT(wrongOf("{}"), testing::HasSubstr("no JSON list"));
    EXPECT_THAT(wrongOf("[1]"), testing::HasSubstr("step 1: it is not an object"));
}

TEST(EditSteps, RefusesAnUnknownActAndThoseOfTerminalsWhereThereAreNone) {
    EXPECT_THAT(wrongOf(R"([{"do":"move","at":[1]}])"), testing::HasSubstr("'move'"));
    EXPECT_THAT(wrongOf(R"([{"at":[1]}])"), testing::HasSubstr("no \"do\""));
    EXPECT_THAT(wrongOf(R"([{"do":"save-terminals","at":[1]}])"),
                testing::HasSubstr("'save-terminals'"));
    EXPECT_EQ(wrongOf(R"([{"do":"save-terminals","at":[1]}])", EditActs::WithTerminals), "");
}

TEST(EditSteps, RefusesAStepWithoutItsMembers) {
    EXPECT_THAT(wrongOf(R"([{"do":"delete","at":[1]},{"do":"set","values":{}}])"),
                testing::HasSubstr("step 2: it has no \"at\""));
    EXPECT_THAT(wrongOf(R"([{"do":"add","at":[1]}])"), testing::HasSubstr("no \"values\""));
    EXPECT_THAT(wrongOf(R"([{"do":"add-terminal","at":[1],"values":{}}])", EditActs::WithTerminals),
                testing::HasSubstr("\"list\""));
}

TEST(EditSteps, RefusesValuesAndPlacesOfTheWrongKind) {
    EXPECT_THAT(wrongOf(R"([{"do":"set","at":[1],"values":{"DWC":4}}])"),
                testing::HasSubstr("\"DWC\" is not a text"));
    EXPECT_THAT(wrongOf(R"([{"do":"set","at":[0],"values":{}}])"), testing::HasSubstr("no place"));
    EXPECT_THAT(wrongOf(R"([{"do":"set","at":[1],"value":{}}])"),
                testing::HasSubstr("\"value\", which no step has"));
}

TEST(EditSteps, TakesTheListItselfOrThePathOfAFile) {
    const auto inPlace = readEditSteps(" [{\"do\":\"delete\",\"at\":[1]}]");
    ASSERT_TRUE(std::holds_alternative<std::vector<EditStep>>(inPlace));
    EXPECT_EQ(std::get<std::vector<EditStep>>(inPlace).size(), 1U);

    const auto path = testing::TempDir() + "steps.json";
    std::ofstream(path) << "[{\"do\":\"delete\",\"at\":[1]}]";
    EXPECT_TRUE(std::holds_alternative<std::vector<EditStep>>(readEditSteps(path)));
    std::filesystem::remove(path);
    const auto missing = readEditSteps(path);
    ASSERT_TRUE(std::holds_alternative<std::string>(missing));
    EXPECT_THAT(std::get<std::string>(missing), testing::HasSubstr(path));
}

}  // namespace
}  // namespace kavu::cli
