#include "cli/CommandLine.h"
#include "cli/EditRun.h"
#include "cli/ParsedLine.h"

#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

TEST(EditRun, MessageAndPacketTakeStepsAndAnOutputIfTheyAreGiven) {
    for (const auto& [name, command] :
         {std::pair{"message", Command::Message}, {"packet", Command::Packet}}) {
        const auto shown = parsed({name, "in.tma", "Link"});
        EXPECT_EQ(shown.command, command);
        EXPECT_EQ(shown.link, "Link");
        EXPECT_FALSE(shown.edits);
        EXPECT_TRUE(shown.output.empty());
        const auto edited =
            parsed({name, "in.tma", "Link", "--edit", R"([{"do":"delete","at":[1]}])", "-o", "x"});
        ASSERT_TRUE(edited.edits);
        ASSERT_EQ(edited.edits->size(), 1U);
        EXPECT_EQ(edited.edits->front().act, EditAct::Delete);
        EXPECT_EQ(edited.output, "x");
        EXPECT_EQ(parseCommandLine({name, "in.tma"}).status, ExitStatus::Usage);
        EXPECT_EQ(parseCommandLine({name, "in.tma", "Link", "--edit", "[7]"}).status,
                  ExitStatus::Usage);
    }
}

TEST(EditRun, ALineOfTheTreeIsIndentedAndStaysOnOneLine) {
    EXPECT_EQ(treeLine(0, "Streams"), "Streams\n");
    EXPECT_EQ(treeLine(2, "a\r\nb"), "    " + treeLine(0, "a\r\nb"));
    EXPECT_EQ(treeLine(0, "a\nb"), "a b\n");
}

}  // namespace
}  // namespace kavu::cli
