#include "pcm/edit/FrameEditMask.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

TEST(FrameEditMask, AShortMaskIsPaddedAtTheLeftAndAllOnesAreAFullWord) {
    struct Row {
        std::string mask;
        int length;
        std::string shown;
    };
    TestContext t;
    for (const auto& [mask, length, shown] :
         {Row{"1111", 16, "0000000000001111"}, Row{"1111", 4, "FW"},
          Row{"1111111111111111", 16, "FW"}, Row{"1111", 0, "FW"}, Row{"FW", 16, "FW"},
          Row{"", 16, "FW"}, Row{"000011110101", 8, "11110101"}, Row{"000011111111", 8, "FW"},
          Row{"0000", 4, "0000"}, Row{"10", 0, "10"}}) {
        EXPECT_EQ(shownMask(t.context, mask, length), shown) << mask << " " << length;
    }
    t.settings.write("DMask", "01");
    EXPECT_EQ(shownMask(t.context, "", 4), "0001");
    t.settings.writeInteger("HexBM", 1);
    EXPECT_EQ(shownMask(t.context, "1111", 16), "000F");
    EXPECT_EQ(shownMask(t.context, "1111", 4), "FW");
}

TEST(FrameEditMask, ABinaryEntryIsCutOrPaddedAtTheRight) {
    TestContext t;
    EXPECT_EQ(enteredMask(t.context, &t.ui, "1111", 8), "11110000");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "1101", 2), "11");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "1101", 0), "1101");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "FW", 8), "FW");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(FrameEditMask, AHexadecimalEntryIsEnteredFromTheLeft) {
    TestContext t;
    t.settings.writeInteger("HexBM", 1);
    EXPECT_EQ(enteredMask(t.context, &t.ui, "F", 12), "111100000000");
    EXPECT_EQ(shownMask(t.context, *enteredMask(t.context, &t.ui, "F", 12), 12), "F00");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "ABCD", 8), "10101011");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "FFF", 10), "1111111100");
    EXPECT_EQ(enteredMask(t.context, &t.ui, "FW", 12), "FW");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST(FrameEditMask, ABinaryEntryIsOneWhateverTheSettingSays) {
    TestContext t;
    t.settings.writeInteger("HexBM", 1);
    EXPECT_EQ(enteredBinaryMask(t.context, &t.ui, "1111", 8), "11110000");
    EXPECT_EQ(enteredBinaryMask(t.context, &t.ui, "FW", 8), "FW");
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(enteredBinaryMask(t.context, &t.ui, "FF", 8), std::nullopt);
    EXPECT_EQ(t.ui.boxes.back().id, 142);
}

TEST(FrameEditMask, OtherTextsAreRefused) {
    TestContext t;
    const std::vector<std::string> refused{"", "12", "F", "0x1", std::string(65, '1'), "fw"};
    for (const auto& text : refused) {
        EXPECT_EQ(enteredMask(t.context, &t.ui, text, 16), std::nullopt) << text;
        EXPECT_EQ(t.ui.boxes.back().id, 142);
    }
    t.settings.writeInteger("HexBM", 1);
    for (const std::string text : {"", "G", "f", "12 ", "12345678123456781"}) {
        EXPECT_EQ(enteredMask(t.context, &t.ui, text, 16), std::nullopt) << text;
        EXPECT_EQ(t.ui.boxes.back().id, 143);
    }
}

TEST(FrameEditMask, ThePromptReturnsUntilTheMaskIsValidOrCancelled) {
    TestContext t;
    t.ui.texts = {"2", "1010"};
    EXPECT_EQ(editBitmask(t.context, &t.ui, "FW", {}, 8), "10100000");
    EXPECT_EQ(t.ui.countBoxes(142), 1);
    ASSERT_EQ(t.ui.textPrompts.size(), 2U);
    EXPECT_EQ(t.ui.textPrompts[0].prompt, "Enter Binary Bitmask (or FW)");
    EXPECT_EQ(t.ui.textPrompts[1].initial, "2");
    t.ui.texts = {"Z", std::nullopt};
    EXPECT_EQ(editBitmask(t.context, &t.ui, "FW", {}, 8), std::nullopt);
    EXPECT_EQ(editBitmask(t.context, nullptr, "FW", {}, 8), std::nullopt);
}

TEST(FrameEditMask, ADefaultIsKeptInBinary) {
    TestContext t;
    t.settings.writeInteger("HexBM", 1);
    t.ui.texts = {"F"};
    EXPECT_EQ(editBitmask(t.context, &t.ui, "FW", "DMask", 8), "11110000");
    EXPECT_EQ(t.ui.textPrompts.at(0).prompt, "Enter Hex Bitmask (or FW)");
    EXPECT_EQ(t.settings.text("DMask"), "11110000");
}

}  // namespace
}  // namespace kavu
