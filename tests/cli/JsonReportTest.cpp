#include "cli/JsonReport.h"

#include <sstream>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

std::vector<std::string> keysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items()) {
        keys.push_back(key);
    }
    return keys;
}

TEST(JsonReport, TheMembersOfAFileStandFirstAndInTheirOrder) {
    std::ostringstream err;
    ScriptedInterface ui({}, err);
    const Json document = fileMembers({"in.tma", true, true, 2009}, ui);
    EXPECT_EQ(keysOf(document), (std::vector<std::string>{"file", "opened", "changed", "version",
                                                          "messages", "questions"}));
    EXPECT_EQ(document["file"], "in.tma");
    EXPECT_EQ(document["opened"], true);
    EXPECT_EQ(document["changed"], true);
    EXPECT_EQ(document["version"], 2009);
    EXPECT_TRUE(document["messages"].is_array());
    EXPECT_TRUE(document["questions"].empty());
}

TEST(JsonReport, MessagesAndQuestionsHaveTheirMembersInOrder) {
    std::ostringstream err;
    ScriptedInterface ui({}, err);
    ui.logged({176, 88, "t", "Bits"});
    MessageBox question;
    question.id = -304;
    question.titleId = 79;
    question.text = "Make a home?";
    question.buttons = Buttons::YesNo;
    ui.message(question);
    const Json document = fileMembers({"f", true, false, 2011}, ui);
    EXPECT_EQ(document["messages"].dump(), R"([{"id":176,"title":88,"text":"Bits"}])");
    EXPECT_EQ(document["questions"].dump(),
              R"([{"id":304,"title":79,"text":"Make a home?","reply":"no"}])");
}

TEST(JsonReport, BytesThatAreNotUtf8AreReadAsWindows1252) {
    EXPECT_EQ(jsonText("caf\xE9").dump(), "\"caf\xC3\xA9\"");
    EXPECT_EQ(jsonText("caf\xC3\xA9").dump(), "\"caf\xC3\xA9\"");
    EXPECT_EQ(jsonText("\x80").dump(), "\"\xE2\x82\xAC\"");
    EXPECT_EQ(jsonText(std::string("a\0b", 3)).dump(), R"("a\u0000b")");
}

TEST(JsonReport, AnObjectOfManyMembersIsMadeInOnePass) {
    // With a look through all members for each one this would take minutes.
    constexpr int kMembers = 300000;
    JsonMembers members;
    for (int i = 0; i < kMembers; ++i) {
        members.set("PS3-" + std::to_string(i), i);
    }
    members.set("PS3-7", "other");
    const Json object = members.take();
    ASSERT_EQ(object.size(), static_cast<std::size_t>(kMembers));
    EXPECT_EQ(object.begin().key(), "PS3-0");
    EXPECT_EQ(std::next(object.items().begin(), 7).key(), "PS3-7");
    EXPECT_EQ(object["PS3-0"], 0);
    EXPECT_EQ(object["PS3-7"], "other");
    EXPECT_EQ(object["PS3-299999"], kMembers - 1);
    EXPECT_EQ(members.take(), Json::object());
}

TEST(JsonReport, ADocumentEndsWithALineFeed) {
    const std::string text = printed(Json::object());
    EXPECT_EQ(text, "{}\n");
}

}  // namespace
}  // namespace kavu::cli
