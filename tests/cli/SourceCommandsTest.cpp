#include "cli/CommandLine.h"
#include "cli/ParsedLine.h"
#include "cli/ScriptedInterface.h"

#include <sstream>

#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

TEST(SourceCommandLine, EveryOperationHasItsCommand) {
    struct Case {
        std::vector<std::string> arguments;
        Command command;
    };
    const Case cases[] = {
        {{"source", "list", "f"}, Command::SourceList},
        {{"source", "copy", "f", "A", "B", "-o", "x"}, Command::SourceCopy},
        {{"source", "rename", "f", "A", "B", "-o", "x"}, Command::SourceRename},
        {{"source", "delete", "f", "A", "-o", "x"}, Command::SourceDelete},
        {{"source", "import", "f", "g", "A", "-o", "x"}, Command::SourceImport},
        {{"link", "rename", "f", "A", "B", "-o", "x"}, Command::LinkRename},
    };
    for (const auto& test : cases) {
        const auto line = parsed(test.arguments);
        EXPECT_EQ(static_cast<int>(line.command), static_cast<int>(test.command));
        EXPECT_EQ(line.file, "f");
    }
}

TEST(SourceCommandLine, ArgumentsAreInTheirOrder) {
    auto line = parsed({"source", "import", "in", "other", "Pod", "--recorder", "--conversions",
                        "--prefix", "P_", "--suffix", "_S", "-o", "out", "--json"});
    EXPECT_EQ(line.otherFile, "other");
    EXPECT_EQ(line.source, "Pod");
    EXPECT_TRUE(line.recorder);
    EXPECT_TRUE(line.withConversions);
    EXPECT_EQ(line.prefix, "P_");
    EXPECT_EQ(line.suffix, "_S");
    EXPECT_EQ(line.output, "out");
    EXPECT_TRUE(line.json);
    line = parsed({"--quiet", "link", "rename", "in", "Old", "New", "-o", "out"});
    EXPECT_EQ(line.link, "Old");
    EXPECT_EQ(line.newName, "New");
    EXPECT_TRUE(line.quiet);
    EXPECT_FALSE(line.recorder);
}

TEST(SourceCommandLine, WhatIsMissingOrUnknownIsWrongUsage) {
    const std::vector<std::vector<std::string>> wrong = {
        {"source"},
        {"link"},
        {"source", "move"},
        {"source", "list"},
        {"source", "copy", "f", "A", "-o", "x"},
        {"source", "delete", "f", "A"},
        {"source", "delete", "f", "A", "-o", "x", "--prefix", "p"},
        {"link", "delete", "f", "A", "-o", "x"},
    };
    for (const auto& arguments : wrong) {
        const auto result = parseCommandLine(arguments);
        EXPECT_FALSE(result.line.has_value()) << arguments.back();
        EXPECT_EQ(result.status, ExitStatus::Usage);
    }
}

TEST(SourceCommandReplies, AReplyOfTheProgramAnswersItsPromptAndNoOther) {
    std::ostringstream err;
    ScriptedInterface ui({}, err);
    ui.setReply("Sure?", "yes");
    ui.setReply("Name", "no");  // a name that is a reply elsewhere
    ui.setReply("Empty", "");
    ui.setReply("File", "cancel");
    ui.setReply("Table", "2");
    MessageBox box;
    box.buttons = Buttons::YesNo;
    box.text = "Sure?";
    EXPECT_EQ(ui.message(box), Button::Yes);
    box.text = "Really?";
    EXPECT_EQ(ui.message(box), Button::No);
    // A question with a number is not answered by its text.
    box.text = "Sure?";
    box.id = -140;
    EXPECT_EQ(ui.message(box), Button::No);
    EXPECT_EQ(ui.enterText({.title = "t", .prompt = "Name", .initial = "x"}), "no");
    EXPECT_EQ(ui.enterText({.title = "t", .prompt = "Empty", .initial = "x"}), "");
    EXPECT_EQ(ui.enterText({.title = "t", .prompt = "Other", .initial = "x"}), std::nullopt);
    FilePrompt file;
    file.title = "File";
    EXPECT_EQ(ui.chooseFile(file)->path, "cancel");
    // A row is named by its first cell, not by its number.
    TablePrompt table{.title = "Table", .columns = {"A"}, .rows = {{"x"}, {"y"}, {"2"}}};
    EXPECT_EQ(ui.selectFromTable(table), 2);
    table.rows.pop_back();
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_EQ(ui.selectFromTable(table), -1);
    ASSERT_EQ(ui.messages().size(), 1U);
    EXPECT_EQ(ui.messages()[0].text, "There is no '2' in this list.");
}

}  // namespace
}  // namespace kavu::cli
