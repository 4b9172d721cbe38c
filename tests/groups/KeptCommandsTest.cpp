#include "groups/KeptCommands.h"
#include "support/RecordingInterface.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Commands = std::vector<std::string>;

/// A file of three commands that the editor reads and some that it does not know.
GroupFile someFile() {
    GroupFile kept;
    for (const char* command : {"T-1\\A:1;", "T-1\\X:one;", "T-1\\B:2;", "T-1\\Y:y;", "T-1\\X:two;",
                                "T-1\\C:3;", "T-1\\x:three;"}) {
        kept.commands().add(command);
    }
    kept.commands().markRead(0);
    kept.commands().markRead(2);
    kept.commands().markRead(5);
    return kept;
}

TEST(KeptCommands, NothingThatWasReadIsKept) {
    GroupFile kept;
    kept.commands().add("T-1\\A:1;");
    kept.commands().markRead(0);
    EXPECT_EQ(kept.leftovers("T-1\\A:2;\r\n"), Commands());
    EXPECT_EQ(kept.leftovers(""), Commands());
}

TEST(KeptCommands, WhatWasNotReadIsKeptInItsOrderWithItsRepeats) {
    EXPECT_EQ(someFile().leftovers("T-1\\A:1;\r\n"),
              (Commands{"T-1\\X:one;", "T-1\\Y:y;", "T-1\\X:two;", "T-1\\x:three;"}));
}

TEST(KeptCommands, WhatTheEditorWritesUnreadIsNotDoubled) {
    EXPECT_EQ(someFile().leftovers("T-1\\x:new;\r\n"), Commands{"T-1\\Y:y;"});
}

TEST(KeptCommands, ARepeatOfAFieldIsKeptUntilTheFieldIsEmptied) {
    GroupFile kept;
    kept.commands().add("G\\PN:first;");
    kept.commands().add("G\\PN:second;");
    kept.commands().markRead(0);
    EXPECT_EQ(kept.leftovers("G\\PN:new;\r\n"), Commands{"G\\PN:second;"});
    EXPECT_EQ(kept.leftovers(""), Commands());
}

TEST(KeptCommands, WhatSomebodyElseWritesIsNotKept) {
    auto kept = someFile();
    kept.erase("t-1\\x");
    EXPECT_EQ(kept.leftovers(""), Commands{"T-1\\Y:y;"});
}

TEST(KeptCommands, TheUserIsAskedWithYesAsDefault) {
    test::RecordingInterface ui;
    ui.otherwise = Button::Yes;
    EXPECT_EQ(keptText(&ui, someFile(), "T-1\\X:n;\r\n"), "T-1\\X:n;\r\nT-1\\Y:y;\r\n");
    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].buttons, Buttons::YesNo);
    EXPECT_EQ(ui.boxes[0].defaultButton, Button::Yes);
    EXPECT_NE(ui.boxes[0].text.find("T-1\\Y:y;\n"), std::string::npos);
    EXPECT_EQ(ui.boxes[0].details, "");
}

TEST(KeptCommands, WithNoAndWithoutAParentTheyGo) {
    test::RecordingInterface ui;
    ui.otherwise = Button::No;
    EXPECT_EQ(keptText(&ui, someFile(), ""), "");
    EXPECT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(keptText(nullptr, someFile(), ""), "");
}

TEST(KeptCommands, NobodyIsAskedAboutNothing) {
    test::RecordingInterface ui;
    EXPECT_EQ(keptText(&ui, GroupFile(), "T-1\\A:1;\r\n"), "T-1\\A:1;\r\n");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST(KeptCommands, WhatCannotBeTakenApartStaysWithoutAQuestion) {
    GroupFile kept;
    for (const char* command : {"T-1\\A:1;", "T-1\\X;", "T-1\\B:2;", "T-1:x;"}) {
        kept.commands().add(command);
    }
    kept.commands().markRead(0);
    kept.commands().markRead(2);
    test::RecordingInterface ui;
    const std::string text = "T-1\\B:3;\r\n";
    EXPECT_EQ(keptText(&ui, kept, text), "T-1\\X;\r\nT-1\\B:3;\r\nT-1:x;\r\n");
    EXPECT_EQ(keptText(nullptr, kept, text), "T-1\\X;\r\nT-1\\B:3;\r\nT-1:x;\r\n");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST(KeptCommands, ManyCommandsAreListedInFullOnDemand) {
    GroupFile kept;
    for (int i = 1; i <= 300; ++i) {
        kept.commands().add("G\\X-" + std::to_string(i) + ":" + std::string(100, 'v') +
                            "\x14\x15;");
    }
    test::RecordingInterface ui;
    ui.otherwise = Button::Yes;
    const auto tail = keptText(&ui, kept, "");
    EXPECT_EQ(tail.substr(tail.rfind("G\\")),
              "G\\X-300:" + std::string(100, 'v') + "\x14\x15;\r\n");
    EXPECT_NE(ui.boxes[0].text.find("... and 288 more"), std::string::npos);
    EXPECT_EQ(ui.boxes[0].text.find("G\\X-13:"), std::string::npos);
    EXPECT_NE(ui.boxes[0].details.find("G\\X-300:"), std::string::npos);
    EXPECT_EQ(ui.boxes[0].text.find('\x14'), std::string::npos);
}

}  // namespace
}  // namespace kavu
